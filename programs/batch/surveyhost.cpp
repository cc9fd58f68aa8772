#include "programs/batch/surveyhost.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

#include <utility>

namespace batch {

SurveyHost::SurveyHost(const QString &surveyDirectory)
    : m_store(surveyDirectory)
{
}

QString SurveyHost::surveyName() const
{
    return QFileInfo(surveyDirectory()).fileName();
}

// As the workbench: beside the programs.
QString SurveyHost::setupDataFolder() const
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/lorva"));
}

QString SurveyHost::documentationFolder() const
{
    return setupDataFolder() + QStringLiteral("/doc");
}

QIcon SurveyHost::icon(const QString &) const
{
    return {};
}

int SurveyHost::appendAction(const host::MenuAction &)
{
    return 0;
}

void SurveyHost::removeAction(int)
{
}

void SurveyHost::addListener(host::Listener *)
{
}

void SurveyHost::removeListener(host::Listener *)
{
}

QStringList SurveyHost::takeErrors()
{
    return std::exchange(m_errors, {});
}

} // namespace batch
