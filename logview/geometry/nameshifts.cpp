#include "logview/geometry/nameshifts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace logview {

namespace {

// Names that touch form a block, which stands where its names move least on average; blocks that meet become one.
struct NameBlock
{
    int first = 0; // in the order
    int count = 0;
    double height = 0;
    double wanted = 0; // sum of the tops that its names want it to have

    double top() const { return wanted / count; }
};

QVector<NameBlock> nameBlocks(const QVector<NameSpan> &names, const QVector<int> &order)
{
    QVector<NameBlock> blocks;
    for (int i = 0; i < order.size(); ++i) {
        const NameSpan &name = names[order[i]];
        NameBlock block{i, 1, name.bottom - name.top, name.top};
        while (!blocks.isEmpty() && blocks.last().top() + blocks.last().height > block.top()) {
            const NameBlock above = blocks.takeLast();
            block = {above.first, above.count + block.count, above.height + block.height,
                     above.wanted + block.wanted - block.count * above.height};
        }
        blocks.append(block);
    }
    return blocks;
}

// Those names of a block that find room no farther than \a reach from their own places; the upper ones choose first.
QVector<int> namesWithRoom(const QVector<NameSpan> &names, const QVector<int> &block, double reach)
{
    QVector<int> kept;
    double occupiedTo = -std::numeric_limits<double>::infinity();
    for (const int index : block) {
        const NameSpan &name = names[index];
        const double top = std::max(name.top - reach, occupiedTo);
        if (top > name.top + reach)
            continue;
        kept.append(index);
        occupiedTo = top + name.bottom - name.top;
    }
    return kept;
}

} // namespace

QVector<std::optional<double>> nameShifts(const QVector<NameSpan> &names)
{
    QVector<int> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&names](int a, int b) { return names[a].top < names[b].top; });

    // A crowd that is thinned may still push a name too far, since others of it choose their places too: it is thinned
    // until none does. At a reach of 0 what is left of it stands at its own places.
    QVector<std::optional<double>> shifts;
    bool isCrowded = true;
    for (double reach = farthestNameShift; isCrowded; reach = reach < 1 ? 0 : reach / 2) {
        isCrowded = false;
        shifts.fill(std::nullopt, names.size());
        QVector<int> kept;
        for (const NameBlock &block : nameBlocks(names, order)) {
            const QVector<int> members = order.mid(block.first, block.count);
            double top = block.top();
            double farthest = 0;
            for (const int index : members) {
                shifts[index] = top - names[index].top;
                farthest = std::max(farthest, std::abs(*shifts[index]));
                top += names[index].bottom - names[index].top;
            }
            const bool isTooFar = farthest > farthestNameShift;
            isCrowded = isCrowded || isTooFar;
            kept += isTooFar ? namesWithRoom(names, members, reach) : members;
        }
        order = kept;
    }
    return shifts;
}

} // namespace logview
