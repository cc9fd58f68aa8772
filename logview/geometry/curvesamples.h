#pragma once

#include "datastore/logcurvedata.h"

#include <QVector>

namespace logview {

enum class DepthOrder { Ascending, Descending, Unsorted };

/// The samples of one log as the display uses them: unchangeable arrays that share their memory with the log they
/// come from. Copies are cheap. Every set of samples that is made has a revision of its own, and copies keep it.
class CurveSamples
{
public:
    CurveSamples() = default;
    /// The longer array is cut to the length of the shorter. Costs one pass over the depths.
    CurveSamples(const QVector<double> &depthsM, const QVector<double> &values, double nullValue);
    explicit CurveSamples(const LogCurveData &curve);

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    double depthM(int i) const { return m_depthsM.at(i); }
    double value(int i) const { return m_values.at(i); }
    const double *depthsM() const { return m_depthsM.constData(); }
    const double *values() const { return m_values.constData(); }
    double nullValue() const { return m_nullValue; }
    /// A null value or not a finite number: the curve breaks here.
    bool isNull(int i) const;
    /// Equal neighbours count as in order; a depth that is not finite makes it Unsorted.
    DepthOrder order() const { return m_order; }
    /// The farthest that two neighbours are apart, where depths are in order.
    double largestStepM() const { return m_largestStepM; }
    quint64 revision() const { return m_revision; }

private:
    QVector<double> m_depthsM;
    QVector<double> m_values;
    double m_nullValue = nullSampleValue;
    int m_size = 0;
    double m_largestStepM = 0; // before the order, which finds it
    DepthOrder m_order = DepthOrder::Ascending;
    quint64 m_revision = 0;
};

} // namespace logview
