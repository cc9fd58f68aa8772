#include "base/usersettings.h"

#include <QSettings>

namespace base {

namespace {

class Store : public QSettings
{
public:
    explicit Store(const QString &program)
        : QSettings(QStringLiteral("LORVA"), program)
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
    return Store(m_program).value(key);
}

void UserSettings::setValue(const QString &key, const QVariant &value) const
{
    Store(m_program).setValue(key, value);
}

} // namespace base
