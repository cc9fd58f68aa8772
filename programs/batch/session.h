#pragma once

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "host/host.h"
#include "survey/surveystore.h"

#include <QStringList>

#include <memory>

namespace batch {

class Arguments;

/// Nobody is there to be asked: what a window would ask is answered "No" and named, or "Yes" where --force was given. What
/// boxes would tell is kept for who wants to tell it.
class UnattendedAsker : public base::Asker
{
public:
    explicit UnattendedAsker(bool isForced)
        : m_isForced(isForced)
    {
    }

    base::BoxButton show(const base::Box &box) override;

    /// The questions that were answered "No", as sentences that name the option; forgotten then.
    QStringList takeRefusals();
    /// The texts of warning boxes; forgotten then.
    QStringList takeWarnings();

private:
    bool m_isForced = false;
    QStringList m_refusals;
    QStringList m_warnings;
};

/// The survey as the plug-in's parts see it: no window, no menu, no icons.
class SurveyHost : public host::Host
{
public:
    explicit SurveyHost(const QString &surveyDirectory);

    QString surveyDirectory() const override { return m_store.surveyDirectory(); }
    QString surveyName() const override;
    QString setupDataFolder() const override;
    QString documentationFolder() const override;
    QIcon icon(const QString &fileName) const override;
    void showError(const QString &text) override { m_errors.append(text); }
    QWidget *mainWidget() const override { return nullptr; }
    int appendAction(const host::MenuAction &action) override;
    void removeAction(int id) override;
    survey::SurveyStore &wells() override { return m_store; }
    void addListener(host::Listener *listener) override;
    void removeListener(host::Listener *listener) override;

    /// The texts of error boxes; forgotten then.
    QStringList takeErrors();

private:
    survey::SurveyStore m_store;
    QStringList m_errors;
};

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
