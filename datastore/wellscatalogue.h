#pragma once

#include "datastore/logcurvedata.h"
#include "datastore/wellrecord.h"
#include "host/wells.h"

#include <QColor>
#include <QHash>
#include <QStringList>

#include <functional>
#include <optional>

namespace base {
class Asker;
}

/// One marker of a well as the displays and reports use it.
struct WellMarker
{
    QString name;
    float measuredDepth = 0; ///< along hole, as the host stores it
    double subseaDepth = 0; ///< measured depth less KB elevation less second elevation
    QColor color; ///< opaque
};

/// The wells of the survey with their log and marker names, in the host's order, and everything that is read of a
/// well. Wells are addressed by index or by name; a name stands for the first well of that name. Nothing but names
/// is kept: every operation reads the host.
class WellsCatalogue
{
public:
    using ErrorBox = std::function<void(const QString &text)>;
    /// Whether a failed read is told in the host's error box.
    enum class OnFailure { Tell, BeSilent };

    /// \a wells and \a asker must outlive the catalogue. \a showError is the host's error box.
    WellsCatalogue(host::Wells &wells, base::Asker &asker, const ErrorBox &showError);

    /// Reads all wells anew. A well that cannot be read is told in a warning box and stays with empty lists.
    void build();

    int wellCount() const { return m_wellNames.size(); }
    const QStringList &wellNames() const { return m_wellNames; }
    const QStringList &logNames(int well) const { return m_logNames.at(well); }
    const QStringList &markerNames(int well) const { return m_markerNames.at(well); }
    QString wellKey(int well) const { return m_keys.value(well); }
    /// Whether the well's logs could be listed; without, its log names are empty because nobody knows them.
    bool hasLogNames(int well) const { return m_hasLogNames.value(well); }
    /// -1 when there is none.
    int indexOf(const QString &wellName) const { return m_indexByName.value(wellName, -1); }
    int indexOfKey(const QString &key) const { return m_keys.indexOf(key); }

    /// Re-reads the well's log names into the catalogue.
    QStringList refreshLogNames(int well);
    QStringList refreshLogNames(const QString &wellName) { return refreshLogNames(indexOf(wellName)); }
    /// Re-reads the well's marker names into the catalogue.
    QStringList refreshMarkerNames(int well);
    QStringList refreshMarkerNames(const QString &wellName) { return refreshMarkerNames(indexOf(wellName)); }

    /// The group of a log by its unit; "Others" when the log is missing.
    QString curveGroup(int well, int log) const;
    QString curveGroup(const QString &wellName, const QString &logName) const;
    /// The same for all logs of a well at once, in the order of its log names.
    QStringList curveGroups(int well) const;
    /// The same without an error box: the error is handed back.
    host::Outcome<QStringList> readCurveGroups(int well) const;

    /// The well's first log of this name; where there is none, the first that stands so in the project's files
    /// (textfields::fieldName); -1 when there is no such log either.
    int logIndex(int well, const QString &logName) const;

    /// One log ready to draw; without samples when the well or the log is missing or cannot be read.
    LogCurveData curve(const QString &wellName, const QString &logName) const;
    LogCurveData curve(int well, int log) const;
    /// The same for who has to know of a failure: nothing where there is no such log or it cannot be read.
    std::optional<LogCurveData> readCurve(int well, int log, OnFailure onFailure = OnFailure::Tell) const;
    /// The same in silence, of a well whose record could be read just now: it is not read again for each log.
    std::optional<LogCurveData> readCurveOfReadWell(int well, int log) const;
    /// The same in silence, as the host keeps the log: in single precision, missing values undefined.
    std::optional<host::LogData> readStoredLog(int well, int log) const;

    /// The well's markers in the order of its marker names.
    QVector<WellMarker> markers(int well) const;
    QVector<WellMarker> markers(const QString &wellName) const { return markers(indexOf(wellName)); }
    /// The same for who has to know of a failure: nothing where there is no such well or it cannot be read.
    std::optional<QVector<WellMarker>> readWellMarkers(int well, OnFailure onFailure = OnFailure::Tell) const;
    /// Invalid when there is no such marker.
    QColor markerColor(int well, const QString &markerName) const;
    QColor markerColor(const QString &wellName, const QString &markerName) const
    {
        return markerColor(indexOf(wellName), markerName);
    }

    WellRecord wellRecord(const QString &wellName) const;
    WellRecord wellRecord(int well) const;
    /// The same for who has to know of a failure: nothing where there is no such well or it cannot be read.
    std::optional<WellRecord> readWellRecord(int well, OnFailure onFailure = OnFailure::Tell) const;

private:
    bool isWell(int well) const { return well >= 0 && well < m_wellNames.size(); }
    bool isReadable(int well) const;
    void warnUnreadable(const QString &wellName) const;
    std::optional<WellRecord> readRecord(int well, const QString &wellName, OnFailure onFailure) const;
    bool readSamples(int well, int log, LogCurveData *curve) const;
    void tell(const QString &error, OnFailure onFailure) const;
    host::Outcome<QVector<host::LogInfo>> readLogs(int well) const;
    host::Outcome<host::LogData> readLog(int well, int log) const;
    host::Outcome<QVector<host::Marker>> readMarkers(int well) const;

    host::Wells &m_wells;
    base::Asker &m_asker;
    ErrorBox m_showError;
    QStringList m_wellNames;
    QStringList m_keys;
    QVector<QStringList> m_logNames;
    QVector<bool> m_hasLogNames;
    QVector<QStringList> m_markerNames;
    QHash<QString, int> m_indexByName;
};
