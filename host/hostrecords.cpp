#include "host/hostrecords.h"

#include <algorithm>
#include <numeric>

namespace host {

void sortByDepth(LogData *log)
{
    if (std::is_sorted(log->depths.cbegin(), log->depths.cend()))
        return;
    const QVector<float> depths = log->depths;
    const QVector<float> values = log->values;
    QVector<int> order(depths.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&depths](int a, int b) { return depths.at(a) < depths.at(b); });
    for (int i = 0; i < order.size(); ++i) {
        log->depths[i] = depths.at(order.at(i));
        log->values[i] = values.at(order.at(i));
    }
}

} // namespace host
