#include "las/importrun.h"

#include "datastore/projectdata.h"
#include "las/showntext.h"

#include <algorithm>

namespace las {

namespace {

QString listed(const QStringList &names)
{
    QStringList shown;
    for (const QString &name : names)
        shown.append(shortened(name));
    return shown.join(QStringLiteral(", "));
}

} // namespace

ImportRun::ImportRun(ProjectData &data)
    : m_data(data)
    , m_groups(data.project.projectFolder)
{
}

ImportRun::Well &ImportRun::wellOf(const ImportTab &tab)
{
    const auto found = m_wells.find(tab.wellKey);
    if (found != m_wells.end())
        return found->second;
    LogRun logs(m_data.host.wells(), m_data.catalogue, m_data.asker, tab.wellKey);
    return m_wells.emplace(tab.wellKey, Well{logs, tab.wellName}).first->second;
}

LogOutcome ImportRun::write(const ImportTab &tab, const ImportRow &row, const ImportOptions &options)
{
    ImportedCurve curve = importedCurve(tab, row, options);
    Well &well = wellOf(tab);
    const LogOutcome outcome = well.logs.write(withHostNulls(std::move(curve.record), *tab.file));
    m_error = well.logs.error();
    // Whatever became of the log, the name's group is what the user chose.
    m_groups.add(row.logName, row.group);
    switch (outcome) {
    case LogOutcome::Written:
        well.isChanged = true;
        if (curve.isUnsuited)
            m_unsuitedCurves.add(tab.title, row.logName);
        break;
    case LogOutcome::Declined:
        well.declined.append(row.logName);
        break;
    case LogOutcome::NoWell:
        well.withoutWell.append(row.logName);
        break;
    case LogOutcome::Failed:
        well.failed.append(row.logName);
        break;
    }
    return outcome;
}

void ImportRun::release()
{
    m_groups.write();
    for (auto &entry : m_wells)
        entry.second.logs.reload();
}

void ImportRun::finish()
{
    release();
    for (auto &entry : m_wells)
        entry.second.logs.finish();
}

QVector<int> ImportRun::changedWells() const
{
    QVector<int> wells;
    for (const auto &[key, well] : m_wells) {
        const int index = m_data.catalogue.indexOfKey(key);
        if (well.isChanged && index >= 0)
            wells.append(index);
    }
    std::sort(wells.begin(), wells.end());
    return wells;
}

QStringList ImportRun::failures() const
{
    QStringList texts;
    for (const auto &entry : m_wells) {
        const Well &well = entry.second;
        if (!well.withoutWell.isEmpty())
            texts.append(QStringLiteral("Cannot get data for this well : ") + well.name + QLatin1Char('\n')
                         + listed(well.withoutWell));
        if (!well.failed.isEmpty())
            texts.append(QStringLiteral("Cannot write new log for ") + well.name + QLatin1Char('\n')
                         + listed(well.failed));
    }
    return texts;
}

QString ImportRun::leftOut() const
{
    QStringList wells;
    for (const auto &entry : m_wells)
        if (!entry.second.declined.isEmpty())
            wells.append(listed(entry.second.declined) + QStringLiteral(" of ") + shortened(entry.second.name));
    return wells.isEmpty()
        ? QString()
        : QStringLiteral("Not overwritten and so left out: ") + wells.join(QStringLiteral("; ")) + QLatin1Char('.');
}

} // namespace las
