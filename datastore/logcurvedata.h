#pragma once

#include <QPointF>
#include <QString>
#include <QVector>

/// The value that stands for a missing sample everywhere inside the plug-in.
constexpr double nullSampleValue = -999.25;

/// One log of one well, ready to draw, export or write. A value type: arrays are shared until one copy changes.
struct LogCurveData
{
    QString wellName;
    QString logName;
    QString curveGroup;
    QString displayName;
    QString unit;
    QString source; ///< where it was read: "Read from OD", or the path of a LAS file
    QString description;
    double minimum = 0;
    double maximum = 0;
    double nullValue = nullSampleValue;
    int isLogarithmic = 0; ///< 1 for a logarithmic scale
    QVector<double> depths; ///< measured depth along hole of each sample
    QVector<double> values; ///< same length; nullValue where missing
    QVector<QPointF> points; ///< for drawing; empty until a display fills it
    QVector<quint8> sampleFlags; ///< one a sample, zero until a display uses it
    QVector<double> firstAuxiliary; ///< for the displays; empty until used
    QVector<double> secondAuxiliary; ///< for the displays; empty until used
};
