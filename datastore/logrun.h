#pragma once

#include "datastore/logcurvedata.h"
#include "datastore/wellscatalogue.h"

#include <QSet>

/// What became of a log on its way into a well.
enum class LogOutcome {
    Written,
    Declined, ///< the user keeps the log of that name
    NoWell, ///< the well is gone or cannot be read
    Failed,
};

/// Writes logs into one well, one after the other: what the well has is listed once, and it is reloaded once, at the
/// end. Asks before it replaces a log; what failed is for the caller to tell.
class LogRun
{
public:
    /// All three must outlive the run.
    LogRun(host::Wells &wells, WellsCatalogue &catalogue, base::Asker &asker, const QString &wellKey);

    /// Writes the record as a log of its name, in one trimmed line as hosts store it; asks where the catalogue, the
    /// host or an earlier call of this run has one. Samples whose depth no float holds are left out.
    LogOutcome write(const LogCurveData &curve);
    /// Why the host did not take the last log, a sentence; empty when it did, or was not asked.
    QString error() const { return m_error; }

    /// Makes the host read the well anew when it is next asked for. Does nothing where nothing was tried since.
    void reload();
    /// The same, and the catalogue gets the well's log names where one was written.
    void finish();

private:
    bool isTaken(const QString &logName);

    host::Wells &m_wells;
    WellsCatalogue &m_catalogue;
    base::Asker &m_asker;
    QString m_wellKey;
    QString m_error;
    QSet<QString> m_logNames;
    bool m_isListed = false;
    bool m_isReadable = false; ///< it was, when it was looked up
    bool m_wasTried = false; ///< since the last reload
    bool m_wasWritten = false; ///< since the last finish
};
