#pragma once

#include "datastore/curvegroupassignment.h"
#include "datastore/logrun.h"
#include "las/importplan.h"

#include <map>

struct ProjectData;

namespace las {

/// Takes curves into their wells and remembers what became of them. Each well is listed and reloaded once, and the
/// curve groups are written once, however many curves there are.
class ImportRun
{
public:
    /// \a data must outlive the run.
    explicit ImportRun(ProjectData &data);

    /// Writes the curve of a selected row and tells what became of it; refusal() must have been asked. May ask, and
    /// throws std::bad_alloc where memory is short.
    LogOutcome write(const ImportTab &tab, const ImportRow &row, const ImportOptions &options);
    /// Why the host did not take the last curve, a sentence; empty when it did, or was not asked.
    QString error() const { return m_error; }

    /// Writes the curve groups and makes the host reload the wells. All that is left to do when nobody is there any more
    /// who would look at the catalogue.
    void release();
    /// The same, and the catalogue gets the names of the new logs.
    void finish();

    /// The wells of the catalogue that got logs, in its order.
    QVector<int> changedWells() const;
    /// The boxes about curves that could not be written: one a well, and one more where the well could not be read.
    QStringList failures() const;
    /// The logs that the user kept, as a sentence; empty when there are none.
    QString leftOut() const;
    /// The curves that could not be resampled and were imported as they are.
    const NameList &unsuitedCurves() const { return m_unsuitedCurves; }

private:
    struct Well
    {
        LogRun logs;
        QString name;
        bool isChanged = false;
        QStringList withoutWell = {}; ///< names of curves, as are the two below
        QStringList failed = {};
        QStringList declined = {};
    };
    Well &wellOf(const ImportTab &tab);

    ProjectData &m_data;
    CurveGroupAssignments m_groups;
    std::map<QString, Well> m_wells; ///< by key
    NameList m_unsuitedCurves;
    QString m_error;
};

} // namespace las
