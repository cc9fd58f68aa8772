#include "survey/markeredit.h"

#include "base/numbers.h"
#include "survey/odfile.h"
#include "survey/wellinput.h"

#include <QHash>
#include <QPair>
#include <QSet>

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

/// Names for the tops of a file: one that the file has at another depth in front of it gets "_2", "_3"… behind it. Tables
/// of numbers that were taken for tops have one name at thousands of depths: no number is tried again for a name.
class TopNames
{
public:
    QString of(const QString &name, float depth)
    {
        const auto known = m_found.constFind({name, depth});
        if (known != m_found.constEnd())
            return *known;
        QString free = name;
        for (int &number = m_numbers[name]; m_depths.contains(free) && m_depths.value(free) != depth; ++number) {
            m_found.insert({name, m_depths.value(free)}, free);
            free = QStringLiteral("%1_%2").arg(name, QString::number(number + 2));
        }
        m_depths.insert(free, depth);
        m_found.insert({name, depth}, free);
        return free;
    }

private:
    QHash<QString, float> m_depths; ///< of the names that were given
    QHash<QString, int> m_numbers; ///< how many were tried for a name
    QHash<QPair<QString, float>, QString> m_found; ///< what was given for a name at a depth, or stood in its way
};

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

float markerDepthM(double depth, DepthUnit surveyUnit)
{
    const auto stored = static_cast<float>(depth);
    return surveyUnit == DepthUnit::Foot ? host::feetToMetres(stored) : stored;
}

TopsMerge withTops(const QVector<host::Marker> &markers, const QVector<TopsLine> &tops, DepthUnit unit,
                   double totalDepthM, DepthUnit surveyUnit)
{
    const auto end = static_cast<float>(fromMetres(totalDepthM, surveyUnit));
    TopsMerge merge;
    merge.markers = markers;
    QHash<QString, int> places;
    for (int i = markers.size() - 1; i >= 0; --i)
        places.insert(markers.at(i).name, i); // of several the first
    TopNames names;
    QSet<QString> repeated;
    QSet<QString> told;
    for (const TopsLine &top : tops) {
        const DepthUnit ofTop = top.unit.value_or(unit);
        const double surveyDepth =
            ofTop == surveyUnit ? top.depth : fromMetres(toMetres(top.depth, ofTop), surveyUnit);
        if (static_cast<float>(surveyDepth) > end) {
            merge.outside.append(storedText(top.name));
            continue;
        }
        const float depth = markerDepthM(surveyDepth, surveyUnit);
        const QString stored = storedText(top.name);
        const QString name = names.of(stored, depth);
        if (name != stored && !repeated.contains(stored)) {
            repeated.insert(stored);
            merge.repeated.append(stored);
        }
        if (told.contains(name))
            continue; // the file says it again
        told.insert(name);
        const int index = places.value(name, -1);
        if (index < 0) {
            merge.markers.append({name, depth, colorOf(name)});
            ++merge.added;
            continue;
        }
        const auto before = static_cast<double>(merge.markers.at(index).depth);
        const double moveM = std::abs(static_cast<double>(depth) - before);
        merge.furthestM = qMax(merge.furthestM, moveM);
        merge.markers[index].depth = depth;
        ++(moveM > 0 ? merge.moved : merge.unchanged);
    }
    return merge;
}

} // namespace survey
