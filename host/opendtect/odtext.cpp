#include "host/opendtect/odtext.h"

#include <QDir>

#include <uistring.h>

namespace opendtect {

QString toQString(const char *text)
{
    return QString::fromUtf8(text);
}

QString toQString(const uiString &text)
{
    QString result;
    text.fillQString(result);
    return result;
}

QString withReason(const QString &failure, const QString &reason)
{
    return reason.isEmpty() ? failure + QLatin1Char('.') : failure + QStringLiteral(": ") + reason;
}

QString toFolder(const char *path)
{
    QString folder = QDir::cleanPath(toQString(path));
    while (folder.size() > 1 && folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    return folder;
}

} // namespace opendtect
