#pragma once

#include <QColor>
#include <QString>
#include <QVector>

#include <cmath>

/// Plain records that cross the line between the plug-in and its host. Depths are measured along hole from the
/// well's reference level (kelly bushing). Depths and elevations are in metres, whatever the survey stores.
namespace host {

/// The host's undefined sample or elevation.
constexpr float undefinedValue = 1e30f;

/// True for every value that the host takes as undefined (a band around 1e30).
inline bool isUndefined(float value)
{
    return std::fabs(value - undefinedValue) < 1e25f;
}

/// A value, or the host's reason why there is none (a sentence that names the file or well concerned).
template<class T>
struct [[nodiscard]] Outcome
{
    T value{};
    QString error;
    bool ok() const { return error.isEmpty(); }
};

struct [[nodiscard]] Status
{
    QString error;
    bool ok() const { return error.isEmpty(); }
};

/// A well in the survey's list. The key identifies it for as long as it exists, names may repeat.
struct WellEntry
{
    QString name;
    QString key;
};

/// The host's codes of a well's type; others exist and are kept as they are.
enum WellTypeCode { NoWellType = 0, OilWell = 1, GasWell = 2, OilGasWell = 3, DryWell = 4 };

struct WellHeader
{
    QString name;
    double x = 0; ///< surface position, survey coordinates
    double y = 0;
    float kbElevation = undefinedValue; ///< reference level above the survey's datum
    float groundElevation = undefinedValue; ///< ground level above the survey's datum
    double totalDepth = 0; ///< last measured depth of the well's track
    int typeCode = NoWellType;
};

/// One log without its samples.
struct LogInfo
{
    QString name;
    QString unit; ///< the unit label as the host stores it
};

/// One log. Both arrays have the same length; a value may be undefinedValue, a depth may not.
struct LogData
{
    QString name;
    QString unit;
    QVector<float> depths;
    QVector<float> values;
};

/// Brings the samples into ascending order of depth; those of one depth stay in their order. Every host stores logs so.
/// Depths must be numbers, the arrays of one length.
void sortByDepth(LogData *log);

struct Marker
{
    QString name;
    float depth = 0; ///< along hole
    QColor color;
};

} // namespace host
