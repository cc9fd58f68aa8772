#pragma once

#include "datastore/logcurvedata.h"

#include <QVector>

namespace logview {

enum class DepthOrder { Ascending, Descending, Unsorted };

/// The samples of one log as the display uses them: unchangeable arrays that share their memory with the log they
/// come from, in single precision as hosts keep logs, or in double. Copies are cheap. Every set of samples that is made
/// has a revision of its own, and copies keep it.
class CurveSamples
{
public:
    CurveSamples() = default;
    /// The longer array is cut to the length of the shorter. Costs one pass over the depths.
    CurveSamples(const QVector<double> &depthsM, const QVector<double> &values, double nullValue);
    static CurveSamples ofFloats(const QVector<float> &depthsM, const QVector<float> &values, double nullValue);

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    double depthM(int i) const { return m_depthsM.at(i); }
    double value(int i) const { return m_values.at(i); }
    /// What \a use(pointer) gives for the values, a pointer to floats or doubles.
    template<class Use>
    auto useValues(const Use &use) const
    {
        return m_values.singles() ? use(m_values.singles()) : use(m_values.doubles());
    }
    /// The same for the depths, in metres.
    template<class Use>
    auto useDepths(const Use &use) const
    {
        return m_depthsM.singles() ? use(m_depthsM.singles()) : use(m_depthsM.doubles());
    }
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
    double nullValue() const { return m_nullValue; }
    /// A null value or not a finite number: the curve breaks here.
    bool isNull(int i) const;
    /// Equal neighbours count as in order; a depth that is not finite makes it Unsorted.
    DepthOrder order() const { return m_order; }
    /// The farthest that two neighbours are apart, where depths are in order.
    double largestStepM() const { return m_largestStepM; }
    quint64 revision() const { return m_revision; }

private:
    template<class Number>
    CurveSamples(const QVector<Number> &depthsM, const QVector<Number> &values, double nullValue, int size);

    /// Numbers of one of two precisions.
    class Numbers
    {
    public:
        Numbers() = default;
        explicit Numbers(const QVector<float> &numbers)
            : m_singles(numbers)
            , m_firstSingle(m_singles.constData())
        {
        }
        explicit Numbers(const QVector<double> &numbers)
            : m_doubles(numbers)
            , m_firstDouble(m_doubles.constData())
        {
        }
        double at(int i) const { return m_firstSingle ? static_cast<double>(m_firstSingle[i]) : m_firstDouble[i]; }
        const float *singles() const { return m_firstSingle; }
        const double *doubles() const { return m_firstDouble; }

    private:
        QVector<float> m_singles;
        QVector<double> m_doubles;
        const float *m_firstSingle = nullptr;
        const double *m_firstDouble = nullptr;
    };

    Numbers m_depthsM;
    Numbers m_values;
    double m_nullValue = nullSampleValue;
    int m_size = 0;
    double m_largestStepM = 0; // before the order, which finds it
    DepthOrder m_order = DepthOrder::Ascending;
    quint64 m_revision = 0;
};

} // namespace logview
