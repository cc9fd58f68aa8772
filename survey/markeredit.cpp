#include "survey/markeredit.h"

#include "base/numbers.h"
#include "survey/odfile.h"
#include "survey/wellinput.h"

#include <algorithm>
#include <cmath>

namespace survey {

namespace {

QColor tellingColor(int number)
{
    constexpr int goldenAngle = 137; // neighbours get hues far apart
    return QColor::fromHsv((number * goldenAngle) % 360, 200, 190);
}

int indexOf(const QVector<host::Marker> &markers, const QString &name)
{
    const auto found =
        std::find_if(markers.begin(), markers.end(), [&](const host::Marker &marker) { return marker.name == name; });
    return found == markers.end() ? -1 : static_cast<int>(found - markers.begin());
}

} // namespace

QString markerNameProblem(const QVector<host::Marker> &markers, int index, const QString &name)
{
    const QString stored = storedText(name);
    if (stored.isEmpty())
        return QStringLiteral("A marker needs a name.");
    const int taken = indexOf(markers, stored);
    return taken >= 0 && taken != index ? QStringLiteral("The well has a marker \"%1\" already.").arg(stored)
                                        : QString();
}

QString markerDepthProblem(const QString &text, DepthUnit unit, double totalDepthM)
{
    QString problem;
    const double depth = typedNumber(QStringLiteral("The depth"), text, -1e8, 1e8, &problem);
    if (!problem.isEmpty())
        return problem;
    const double end = fromMetres(totalDepthM, unit);
    // In single precision, as markers and the end of the well are compared.
    if (depth >= 0 && static_cast<float>(depth) <= static_cast<float>(end))
        return {};
    return QStringLiteral("The depth must lie between 0 and the total depth, %1 %2.")
        .arg(QString::fromLatin1(base::formatShortest(static_cast<float>(end))), symbol(unit));
}

TopsMerge withTops(const QVector<host::Marker> &markers, const QVector<TopsLine> &tops, DepthUnit unit,
                   double totalDepthM)
{
    TopsMerge merge;
    merge.markers = markers;
    for (const TopsLine &top : tops) {
        const auto depth = static_cast<float>(toMetres(top.depth, unit));
        const QString name = storedText(top.name);
        if (depth > static_cast<float>(totalDepthM)) {
            merge.outside.append(name);
            continue;
        }
        const int index = indexOf(merge.markers, name);
        if (index < 0) {
            merge.markers.append({name, depth, tellingColor(merge.markers.size())});
            ++merge.added;
        } else if (merge.markers.at(index).depth != depth) {
            merge.markers[index].depth = depth;
            ++merge.moved;
        }
    }
    return merge;
}

} // namespace survey
