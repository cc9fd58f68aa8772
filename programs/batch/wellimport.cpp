#include "programs/batch/wellimport.h"

#include "base/numbers.h"
#include "datastore/curvegroupassignment.h"
#include "las/feet.h"
#include "las/importnotices.h"
#include "las/importrun.h"
#include "las/lasheader.h"
#include "las/showntext.h"
#include "programs/batch/curvechoice.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/importedwell.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <limits>

namespace batch {

namespace {

/// The first curve of each data section, which holds its depths.
QSet<int> depthCurves(const WellInfo &file)
{
    QSet<int> curves;
    for (const LasDataSection &section : file.dataSections)
        curves.insert(section.firstCurve);
    return curves;
}

bool isAtOneDepth(const LogCurveData &curve)
{
    return curve.depths.size() > 1 && std::all_of(curve.depths.begin(), curve.depths.end(), [&curve](double depth) {
               return depth == curve.depths.first();
           });
}

} // namespace

QStringList fileNotices(const WellInfo &file, bool convertsFeet)
{
    las::NoticeTexts texts;
    texts.feet = convertsFeet ? QStringLiteral("They are converted to metres.")
                              : QStringLiteral("They are taken as metres unless --convert-feet is given.");
    texts.repeatedNames = QStringLiteral("The first of each counts.");
    return las::importNotices(file, std::numeric_limits<int>::max(), texts);
}

QString importProblem(const WellInfo &file)
{
    if (file.wrapped)
        return QStringLiteral(
            "it is wrapped, so the import would read wrong values; \"lorva-batch las-unwrap\" makes a "
            "file of it that can be imported.");
    const QSet<int> depths = depthCurves(file);
    const LogCurveData *sampled = nullptr;
    bool hasLog = false;
    for (int i = 0; i < file.curves.size(); ++i) {
        const LogCurveData &curve = file.curves.at(i);
        if (curve.values.isEmpty())
            continue;
        sampled = &curve;
        if (depths.contains(i))
            continue;
        if (!isAtOneDepth(curve))
            return {};
        hasLog = true;
    }
    if (!sampled)
        return QStringLiteral("it has no curve with samples.");
    return hasLog ? QStringLiteral("all its depths are %1: no sample has a place.")
                        .arg(QString::fromLatin1(base::formatGeneral(sampled->depths.first())))
                  : QStringLiteral("it has no curve but its depths.");
}

namespace {

/// Imports files into one well, one after the other.
class WellImport
{
public:
    WellImport(Session &session, const host::WellEntry &well, const CurveChoice &choice)
        : m_session(session)
        , m_data(session.project())
        , m_well(well)
        , m_choice(choice)
        , m_run(m_data)
        , m_groups(m_data.project.projectFolder)
    {
        m_imported.well = m_well.name;
    }

    Result run(const QStringList &files);

private:
    void fail(const QString &path, const QString &reason)
    {
        m_result.failures.append(path + QStringLiteral(": ") + reason);
    }
    void note(const QString &path, const QString &sentence)
    {
        m_imported.notices.append(QFileInfo(path).fileName() + QStringLiteral(": ") + sentence);
    }
    void importFile(const QString &path, double wellMaximumDepth);
    void chooseRows(const QString &path, las::ImportTab *tab);
    QString takenNames(const las::ImportTab &tab) const;
    QString nameClash(const las::ImportTab &tab) const;
    QString unwantedProblem(const WellInfo &file) const;
    QString depthProblem(const las::ImportTab &tab) const;
    bool write(const QString &path, const las::ImportTab &tab);

    Session &m_session;
    ProjectData &m_data;
    host::WellEntry m_well;
    const CurveChoice &m_choice;
    las::ImportRun m_run;
    CurveGroupFinder m_groups;
    QSet<QString> m_logNames; ///< those that the well has
    ImportedWell m_imported;
    Result m_result;
};

// The depths become a log only where they are asked for.
void WellImport::chooseRows(const QString &path, las::ImportTab *tab)
{
    const WellInfo &file = *tab->file;
    const QSet<int> depths = depthCurves(file);
    QSet<QString> seen;
    for (int i = 0; i < file.curves.size(); ++i) {
        const QString mnemonic = file.curves.at(i).logName;
        const bool isWanted = m_choice.isWanted(mnemonic) && !file.curves.at(i).values.isEmpty()
            && (!m_choice.curves.isEmpty() || !depths.contains(i));
        if (!isWanted)
            continue;
        if (seen.contains(mnemonic))
            continue; // the file's notices tell it
        if (m_choice.nameOf(mnemonic).trimmed().isEmpty()) {
            note(path, QStringLiteral("the curve %1 has no name and is left out.").arg(i + 1));
            continue;
        }
        seen.insert(mnemonic);
        const QString group = m_choice.groupOf(mnemonic, file.curves.at(i).unit, m_groups);
        if (const QString notice = m_choice.groupNotice(mnemonic, group); !notice.isEmpty())
            note(path, notice);
        tab->rows.append({i, true, m_choice.nameOf(mnemonic).trimmed(), group});
    }
    for (const QString &mnemonic : m_choice.curves)
        if (!seen.contains(mnemonic))
            note(path, QStringLiteral("it has no curve \"%1\" with samples.").arg(mnemonic));
}

/// Why none of the curves is wanted.
QString WellImport::unwantedProblem(const WellInfo &file) const
{
    QStringList curves;
    for (const LogCurveData &curve : file.curves)
        if (!curve.values.isEmpty())
            curves.append(las::shortened(curve.logName));
    return QStringLiteral("it has no curve \"%1\" with samples%2.")
        .arg(m_choice.curves.join(QStringLiteral("\", \"")), insteadOf(m_choice.curves.value(0), curves));
}

/// Why the well is not deep enough; empty when it is.
QString WellImport::depthProblem(const las::ImportTab &tab) const
{
    const QString problem = las::stopReason(tab, 1);
    return problem.isEmpty() || m_choice.convertsFeet || !las::metresPerFeetUnit(tab.file->depthUnit)
        ? problem
        : problem + QStringLiteral("\nThe depths of the file are in feet: with --convert-feet they become metres.");
}

/// The names that would replace a log of the well; empty when there are none.
QString WellImport::takenNames(const las::ImportTab &tab) const
{
    QStringList taken;
    for (const las::ImportRow &row : tab.rows)
        if (m_logNames.contains(row.logName))
            taken.append(las::shortened(row.logName));
    return taken.join(QStringLiteral(", "));
}

/// Two curves of the file that would become one log; empty when there are none.
QString WellImport::nameClash(const las::ImportTab &tab) const
{
    QHash<QString, QString> curves; // by the names of their logs
    for (const las::ImportRow &row : tab.rows) {
        const QString curve = tab.file->curves.at(row.curve).logName;
        if (curves.contains(row.logName))
            return sameNameProblem(curves.value(row.logName), curve, row.logName);
        curves.insert(row.logName, curve);
    }
    return {};
}

/// True when a log of the file was written.
bool WellImport::write(const QString &path, const las::ImportTab &tab)
{
    const int before = m_imported.logs.size();
    for (const las::ImportRow &row : tab.rows) {
        LogOutcome outcome = LogOutcome::Written;
        if (!m_session.isDryRun()) {
            const HeldSignals held;
            outcome = m_run.write(tab, row, m_choice.options);
        }
        if (outcome != LogOutcome::Written) {
            const QString why = m_run.error().isEmpty() ? QStringLiteral("the well cannot be read.") : m_run.error();
            fail(path,
                 QStringLiteral("the log \"%1\" was not written into the well \"%2\": %3")
                     .arg(las::shortened(row.logName), m_well.name, why));
            continue;
        }
        m_logNames.insert(row.logName);
        m_imported.addLog(row.logName, tab.file->curves.at(row.curve).logName, row.group);
    }
    return m_imported.logs.size() > before;
}

void WellImport::importFile(const QString &path, double wellMaximumDepth)
{
    WellInfo file;
    if (file.load(path) != 0) {
        fail(path,
             QFileInfo::exists(path) ? QStringLiteral("it cannot be read.")
                                     : QStringLiteral("there is no such file."));
        return;
    }
    if (file.curves.isEmpty()) {
        const QString notLas = las::readHeader(path).error;
        if (!notLas.isEmpty()) {
            m_result.failures.append(notLas);
            return;
        }
    }
    QString problem = importProblem(file);
    las::ImportTab tab = las::importTab(file, path, m_choice.convertsFeet);
    tab.wellName = m_well.name;
    tab.wellKey = m_well.key;
    tab.wellMaximumDepth = wellMaximumDepth;
    if (problem.isEmpty()) {
        chooseRows(path, &tab);
        if (tab.rows.isEmpty())
            problem = unwantedProblem(file);
    }
    if (problem.isEmpty())
        problem = depthProblem(tab);
    if (problem.isEmpty())
        problem = las::refusal({tab}, m_choice.options);
    if (problem.isEmpty())
        problem = nameClash(tab);
    const QString taken = takenNames(tab);
    if (problem.isEmpty() && !taken.isEmpty() && !m_session.isForced())
        problem = QStringLiteral("the well \"%1\" has logs of these names: %2. --force replaces them, --rename gives "
                                 "others, --curves leaves them out.")
                      .arg(m_well.name, taken);
    if (!problem.isEmpty()) {
        fail(path, problem);
        return;
    }
    for (const QString &notice : fileNotices(file, m_choice.convertsFeet))
        note(path, notice);
    if (write(path, tab))
        m_imported.files.append(path);
}

Result WellImport::run(const QStringList &files)
{
    const int index = m_data.catalogue.indexOfKey(m_well.key);
    const auto record = m_data.catalogue.readWellRecord(index, WellsCatalogue::OnFailure::BeSilent);
    if (!record)
        return Result::failed(m_well.name + QStringLiteral(": ") + m_session.store().header(m_well.key).error);
    const QStringList names = m_data.catalogue.logNames(index);
    m_logNames = QSet<QString>(names.begin(), names.end());
    for (const QString &path : files)
        importFile(path, record->totalDepth);
    if (!m_run.unsuitedCurves().isEmpty())
        m_imported.notices.append(las::unsuitedWarning(m_run.unsuitedCurves()));
    if (m_imported.files.isEmpty())
        return m_result;
    m_result.records.append(m_imported.record());
    return m_result;
}

} // namespace

Result importIntoWell(Session &session, const host::WellEntry &well, const QStringList &files,
                      const CurveChoice &choice)
{
    return WellImport(session, well, choice).run(files);
}

} // namespace batch
