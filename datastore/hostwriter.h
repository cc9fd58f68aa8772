#pragma once

#include "datastore/logcurvedata.h"
#include "datastore/storeresult.h"
#include "datastore/wellscatalogue.h"

/// The complete marker set of a well as the editors hold it: parallel lists.
struct MarkerSetRecord
{
    QString wellName;
    QStringList names;
    QVector<float> measuredDepths; ///< along hole, written unchanged
    QVector<float> subseaDepths; ///< for display only, not written
    QVector<QColor> colors;
};

/// The one door through which logs and markers are written into the host's wells. Reports by message boxes.
class HostWriter
{
public:
    /// All three must outlive the writer.
    HostWriter(host::Wells &wells, WellsCatalogue &catalogue, base::Asker &asker,
               const WellsCatalogue::ErrorBox &showError);

    /// Writes one log as LogRun does and tells what became of it. True when the log was written. The catalogue's log
    /// names of the well are refreshed. Several logs of a well are a LogRun.
    bool writeLog(int well, const LogCurveData &curve, bool showSuccess);

    /// Replaces the well's whole marker set. Depths are written as they are, without any elevation; a marker whose
    /// depth is no finite number is left out. Of lists of unequal length the common part counts. Asks first where the
    /// host would delete markers that it cannot give out.
    StoreResult writeMarkers(int well, const MarkerSetRecord &markers);

private:
    bool mayLose(int well, const QStringList &markers);

    host::Wells &m_wells;
    WellsCatalogue &m_catalogue;
    base::Asker &m_asker;
    WellsCatalogue::ErrorBox m_showError;
};
