#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QVector>

/// How a track scales its curves; the numbers are those of TrackInfo::type.
enum TrackType { LinearTrack = 0, LogarithmicTrack = 1, DepthTrack = 2 };

/// One curve line of a display template.
struct TemplateCurveInfo
{
    QString group; ///< curve group
    QString curve; ///< a log name, or "Default" for the well's default log of the group
    double minimum = 0; ///< value at the track's left side
    double maximum = 0; ///< value at its right side; may be less than minimum
    QColor color; ///< invalid where the file names none
    QColor leftFillColor;
    QColor rightFillColor;
    bool isLeftFillOn = false;
    bool isRightFillOn = false;
    int leftFillIndex = 0; ///< of the fill chooser; 0 is no fill
    int rightFillIndex = 0;
    QString leftUpTo; ///< "None", "Left Boundary" or "Curve_" and a number
    QString rightUpTo; ///< "None", "Right Boundary" or "Curve_" and a number
    int lineTypeIndex = 0; ///< as read
    int lineWidthIndex = 0; ///< as read
    int penStyle = 1; ///< 1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot
    int penWidth = 1; ///< 1 to 5
    bool isCalibrationShown = false;
    QColor pointColor = QColor(0, 0, 0);
    int pointSize = 1;
    int pointShape = 1; ///< 1 circle, 2 rectangle
};

bool operator==(const TemplateCurveInfo &a, const TemplateCurveInfo &b);

/// One track of a display template.
struct TrackInfo
{
    QString name; ///< "Track_3"; empty when the file could not be read
    int type = DepthTrack;
    QVector<TemplateCurveInfo> curves; ///< in file order
};

/// Whether both look alike; names do not count.
bool operator==(const TrackInfo &a, const TrackInfo &b);

/// The text of a track type, as it stands in a file's first line: "Linear", "Logrithmic" (spelled so) or "Depth".
QString trackTypeText(int type);

/// One row of a template editor as it is written into a track file; the defaults are those of a line that says nothing
/// of it. Numbers stand as the user typed them.
struct TemplateCurveRow
{
    QString group;
    QString curve;
    QString minimum;
    QString maximum;
    QColor color;
    int leftFillIndex = 0;
    QColor leftFillColor = QColor(255, 255, 255);
    int rightFillIndex = 0;
    QColor rightFillColor = QColor(255, 255, 255);
    QString leftUpTo = QStringLiteral("None");
    QString rightUpTo = QStringLiteral("None");
    int lineTypeIndex = 0;
    int lineWidthIndex = 1;
    bool isCalibrationShown = false;
    QColor pointColor = QColor(0, 0, 0);
    int pointSize = 1;
    QString pointShape = QStringLiteral("Circle");
};

/// Reads the bytes of a track file. \a name is the track's name. Lines of fewer than eleven fields are skipped;
/// numbers that are none read as 0.
TrackInfo parseTrack(const QByteArray &bytes, const QString &name);

/// The bytes of a track file: the type line and one line per row, of a "Depth" track the first row only. A "|" in a
/// text becomes a broken bar, a line break a blank.
QByteArray trackBytes(const QString &typeText, const QVector<TemplateCurveRow> &rows);
