#include "survey/markeredit.h"

#include "base/numbers.h"
#include "survey/odfile.h"
#include "survey/wellinput.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace survey {

namespace {

// The same in each run and on each machine, which qHash() is not.
quint32 hashOf(const QString &name)
{
    quint32 hash = 2166136261U; // FNV-1a
    for (const char byte : name.toUtf8())
        hash = (hash ^ static_cast<quint8>(byte)) * 16777619U;
    return hash ^ hash >> 16; // names that differ in their last letter only differ in all bits
}

QColor colorOf(const QString &name)
{
    const quint32 hash = hashOf(name);
    return QColor::fromHsv(static_cast<int>(hash % 360), 160 + static_cast<int>(hash / 360 % 3) * 40,
                           150 + static_cast<int>(hash / 1080 % 3) * 25);
}

// The names of tops that the file has at another depth in front of them get "_2", "_3"… behind them.
QString freeName(const QString &name, double depth, QHash<QString, double> *taken)
{
    QString free = name;
    for (int number = 2; taken->contains(free) && taken->value(free) != depth; ++number)
        free = QStringLiteral("%1_%2").arg(name, QString::number(number));
    taken->insert(free, depth);
    return free;
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
        .arg(QString::fromLatin1(base::formatWritten(static_cast<float>(end))), symbol(unit));
}

TopsMerge withTops(const QVector<host::Marker> &markers, const QVector<TopsLine> &tops, DepthUnit unit,
                   double totalDepthM)
{
    TopsMerge merge;
    merge.markers = markers;
    QHash<QString, double> taken;
    for (const TopsLine &top : tops) {
        const auto depth = static_cast<float>(toMetres(top.depth, unit));
        if (depth > static_cast<float>(totalDepthM)) {
            merge.outside.append(storedText(top.name));
            continue;
        }
        const QString name = freeName(storedText(top.name), top.depth, &taken);
        if (name != storedText(top.name) && !merge.repeated.contains(storedText(top.name)))
            merge.repeated.append(storedText(top.name));
        const int index = indexOf(merge.markers, name);
        if (index < 0) {
            merge.markers.append({name, depth, colorOf(name)});
            ++merge.added;
        } else if (merge.markers.at(index).depth != depth) {
            merge.markers[index].depth = depth;
            ++merge.moved;
        }
    }
    return merge;
}

} // namespace survey
