#pragma once

#include "datastore/projectdata.h"
#include "programs/batch/surveyhost.h"
#include "programs/batch/unattendedasker.h"

#include <QStringList>

#include <memory>

namespace batch {

class Arguments;

/// What a command works with: the survey and the plug-in's project in it, each read when it is first asked for.
class Session
{
public:
    /// \a surveyDirectory is empty for a command without a survey.
    Session(const QString &surveyDirectory, const Arguments &arguments);

    QString surveyDirectory() const { return m_host.surveyDirectory(); }
    survey::SurveyStore &store() { return m_host.wells(); }
    SurveyHost &host() { return m_host; }
    UnattendedAsker &asker() { return m_asker; }

    /// Whether what is there may be replaced.
    bool isForced() const { return m_isForced; }
    /// Whether nothing is to be written.
    bool isDryRun() const { return m_isDryRun; }
    /// How many processes may work at once.
    int jobs() const { return m_jobs; }

    /// The plug-in's folder in the survey; it may be missing. The project's curve group table is read.
    QString projectFolder();

    /// The same with all that is the same for a whole launch, and the global templates that there are.
    Project projectPaths();

    /// The plug-in's project, with the survey's wells in its catalogue. Nothing is written: a project folder that is
    /// missing stays so.
    ProjectData &project();
    /// The same, and a missing project folder is made with its seed files, as a launch does. Nothing is written in a
    /// dry run.
    ProjectData &projectToWrite();
    /// Reads the wells of the project's catalogue anew.
    void readWells();

    /// The well of that name, or of that key; an error where there is none, or where several have the name.
    host::Outcome<host::WellEntry> well(const QString &nameOrKey);
    /// Whether several wells have the name.
    bool hasSeveral(const QString &wellName);

    /// What could not be read of the survey's files, as sentences that name them; forgotten then. Whose command depends on it
    /// takes it as failures, else it becomes notices.
    QStringList takeProblems();

    /// What the survey and the boxes of the parts had to tell since this was last called, as sentences.
    QStringList takeFailures();

private:
    SurveyHost m_host;
    UnattendedAsker m_asker;
    std::unique_ptr<ProjectData> m_project;
    bool m_isForced = false;
    bool m_isDryRun = false;
    int m_jobs = 1;
    QStringList m_unreadableWells; ///< as sentences that name their files
    bool m_isProjectOpen = false;
    bool m_isGroupTableRead = false;
};

} // namespace batch
