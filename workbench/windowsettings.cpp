#include "workbench/windowsettings.h"

#include "base/keptlooks.h"
#include "base/usersettings.h"

#include <QDialog>
#include <QDir>

namespace workbench::settings {

namespace {

const QLatin1String recentKey("recentSurveys");
const QLatin1String lastSurveyKey("lastSurvey");
const QLatin1String folderGroup("folders/");
const QLatin1String widgetGroup("widgets/");

class Store : public base::UserSettings
{
public:
    Store()
        : base::UserSettings(QStringLiteral("workbench"))
    {
    }
};

} // namespace

QStringList recentSurveys()
{
    return Store().value(recentKey).toStringList().mid(0, maximumRecentSurveys);
}

void addRecentSurvey(const QString &path)
{
    QStringList surveys = recentSurveys();
    surveys.removeAll(path);
    surveys.prepend(path);
    Store().setValue(recentKey, QStringList(surveys.mid(0, maximumRecentSurveys)));
}

void removeRecentSurvey(const QString &path)
{
    QStringList surveys = recentSurveys();
    surveys.removeAll(path);
    Store().setValue(recentKey, surveys);
}

QString lastSurvey()
{
    return Store().value(lastSurveyKey).toString();
}

void setLastSurvey(const QString &path)
{
    Store().setValue(lastSurveyKey, path);
}

QString lastFolder(const QString &purpose)
{
    const QString folder = Store().value(folderGroup + purpose).toString();
    return folder.isEmpty() ? QDir::homePath() : folder;
}

void setLastFolder(const QString &purpose, const QString &path)
{
    Store().setValue(folderGroup + purpose, path);
}

QByteArray widgetState(const QString &name)
{
    return Store().value(widgetGroup + name).toByteArray();
}

void setWidgetState(const QString &name, const QByteArray &state)
{
    Store().setValue(widgetGroup + name, state);
}

void keepSize(QDialog *dialog)
{
    base::keepSize(dialog, dialog->objectName(), Store());
}

} // namespace workbench::settings
