#pragma once

#include <QString>
#include <QVariant>

namespace base {

/// What a program of ours remembers of its user between two runs: sizes, places, recent folders. Nothing here is data;
/// where it cannot be read or kept, programs begin anew, in silence.
class UserSettings
{
public:
    /// \a program has settings of its own.
    explicit UserSettings(const QString &program)
        : m_program(program)
    {
    }

    /// Invalid when there is none.
    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value) const;

private:
    QString m_program;
};

/// From here on all settings are those of a folder, for programs that no user sits in front of.
void keepSettingsIn(const QString &folder);

/// Those of the plug-in's windows, whichever program has loaded it.
inline UserSettings pluginSettings()
{
    return UserSettings(QStringLiteral("plugin"));
}

} // namespace base
