#pragma once

#include "datastore/logcurvedata.h"

#include <QVector>

namespace logview {

enum class DepthOrder { Ascending, Descending, Unsorted };

/// The samples of one log as the display uses them: unchangeable arrays in the single precision in which hosts keep logs, which
/// share their memory with the log they come from. A missing value is nullSampleValue. Copies are cheap. Every set of samples that is
/// made has a revision of its own, and copies keep it.
class CurveSamples
{
public:
    CurveSamples() = default;
    /// The longer array is cut to the length of the shorter. Costs one pass over the depths.
    CurveSamples(const QVector<float> &depthsM, const QVector<float> &values);

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    double depthM(int i) const { return static_cast<double>(m_firstDepthM[i]); }
    double value(int i) const { return static_cast<double>(m_firstValue[i]); }
    const float *depthsM() const { return m_firstDepthM; } ///< size() of them, measured, in metres
    const float *values() const { return m_firstValue; } ///< size() of them
    /// The first of the samples [first, last) whose depth is not before something, by binary search.
    template<class IsBefore>
    int partition(int first, int last, const IsBefore &isBefore) const
    {
        while (first < last) {
            const int middle = first + (last - first) / 2;
            if (isBefore(depthM(middle)))
                first = middle + 1;
            else
                last = middle;
        }
        return first;
    }
    /// A null value or not a finite number: the curve breaks here.
    bool isNull(int i) const;
    /// Equal neighbours count as in order; a depth that is not finite makes it Unsorted.
    DepthOrder order() const { return m_order; }
    quint64 revision() const { return m_revision; }

private:
    QVector<float> m_depthsM;
    QVector<float> m_values;
    const float *m_firstDepthM = nullptr; // of the arrays, which nobody changes
    const float *m_firstValue = nullptr;
    int m_size = 0;
    DepthOrder m_order = DepthOrder::Ascending;
    quint64 m_revision = 0;
};

} // namespace logview
