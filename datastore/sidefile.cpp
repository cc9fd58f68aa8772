#include "datastore/sidefile.h"

#include "base/asker.h"
#include "base/atomicfile.h"
#include "base/numbers.h"

#include <QFileInfo>

#include <cmath>

namespace sidefile {

bool writeAfterQuestion(const QString &path, const QByteArray &bytes, const QString &title, const QString &question,
                        base::Asker &asker)
{
    if (QFileInfo::exists(path) && !asker.confirm(title, question))
        return false;
    if (base::writeFileAtomically(path, bytes).ok())
        return true;
    asker.warn(title, QStringLiteral("Unable to create file please check file read/write permission."));
    return false;
}

QVector<QStringRef> parts(const QString &line)
{
    return line.splitRef(QLatin1Char('|'), Qt::SkipEmptyParts);
}

float toFloat(const QStringRef &text)
{
    const auto value = static_cast<float>(base::parseNumber(text.toUtf8()).value_or(0));
    return std::isfinite(value) ? value : 0.0F;
}

QByteArray number(float value)
{
    return base::formatGeneral(static_cast<double>(value));
}

} // namespace sidefile
