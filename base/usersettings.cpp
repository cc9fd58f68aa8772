#include "base/usersettings.h"

#include <QSettings>

namespace base {

namespace {

// Qt keeps what it was given beyond the end of a plug-in, whose literals go with its code.
QString ownCopy(const QString &text)
{
    return QString(text.constData(), text.size());
}

class Store : public QSettings
{
public:
    explicit Store(const QString &program)
        : QSettings(QString::fromLatin1("LORVA"), ownCopy(program))
    {
        setFallbacksEnabled(false);
    }
};

} // namespace

void keepSettingsIn(const QString &folder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}

QVariant UserSettings::value(const QString &key) const
{
    return Store(m_program).value(ownCopy(key));
}

void UserSettings::setValue(const QString &key, const QVariant &value) const
{
    Store(m_program).setValue(ownCopy(key), value);
}

} // namespace base
