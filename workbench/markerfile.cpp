#include "workbench/markerfile.h"

#include "base/numbers.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace workbench {

namespace {

constexpr char markerType[] = "Well Markers";

// A key "12.Name" as 12 and "Name"; number 0 for keys of another form.
struct MarkerKey
{
    int number = 0;
    QByteArray field;
};

MarkerKey splitKey(const QByteArray &key)
{
    const int dot = key.indexOf('.');
    const std::optional<int> number = base::parseInteger(key.left(qMax(dot, 0)));
    if (!number || *number < 1)
        return {};
    return {*number, key.mid(dot + 1)};
}

// The lines of each marker by its number, in file order.
using MarkerLines = QHash<int, QVector<QPair<QByteArray, QByteArray>>>;

MarkerLines markerLines(const KeyValues &keys)
{
    MarkerLines lines;
    for (int i = 0; i < keys.size(); ++i) {
        const MarkerKey key = splitKey(keys.keyAt(i));
        if (key.number > 0)
            lines[key.number].append({key.field, keys.valueAt(i)});
    }
    return lines;
}

QByteArray fieldOf(const QVector<QPair<QByteArray, QByteArray>> &lines, const QByteArray &field)
{
    for (const auto &line : lines)
        if (line.first == field)
            return line.second;
    return {};
}

// "r`g`b", with a fourth number for transparency, or "#rrggbb".
QColor parseColor(const QByteArray &text)
{
    if (text.startsWith('#'))
        return QColor(QString::fromLatin1(text));
    const QList<QByteArray> parts = text.split('`');
    if (parts.size() < 3)
        return QColor(0, 0, 0);
    int rgb[3];
    for (int i = 0; i < 3; ++i)
        rgb[i] = qBound(0, base::parseInteger(parts.at(i)).value_or(0), 255);
    return QColor(rgb[0], rgb[1], rgb[2]);
}

QByteArray colorText(const QColor &color, const QByteArray &old)
{
    // An unchanged colour keeps its text, and with it a transparency that does not cross the host interface.
    if (!old.isEmpty() && parseColor(old).rgb() == color.rgb())
        return old;
    return QByteArray::number(color.red()) + '`' + QByteArray::number(color.green()) + '`'
        + QByteArray::number(color.blue());
}

bool isMarkerDepth(float depth)
{
    return std::isfinite(depth) && !host::isUndefined(depth);
}

QVector<host::Marker> sortedUnique(const QVector<host::Marker> &markers, QStringList *problems)
{
    QVector<host::Marker> result;
    QSet<QString> names;
    for (const host::Marker &marker : markers) {
        if (names.contains(marker.name)) {
            if (problems)
                problems->append(QStringLiteral("a second marker named \"%1\" is left out").arg(marker.name));
            continue;
        }
        names.insert(marker.name);
        result.append(marker);
    }
    std::stable_sort(result.begin(), result.end(),
                     [](const host::Marker &a, const host::Marker &b) { return a.depth < b.depth; });
    return result;
}

} // namespace

host::Outcome<QVector<host::Marker>> parseMarkerFile(const QByteArray &bytes, float top, float bottom,
                                                     QStringList *problems)
{
    const host::Outcome<OdFile> file = parseOdFile(bytes, markerType);
    if (!file.ok())
        return {{}, file.error};
    QStringList ignored;
    QStringList *report = problems ? problems : &ignored;
    const MarkerLines lines = markerLines(file.value.keys);
    QVector<host::Marker> markers;
    for (int number = 1; lines.contains(number); ++number) {
        const auto &fields = lines[number];
        host::Marker marker;
        marker.name = QString::fromUtf8(fieldOf(fields, "Name"));
        const std::optional<double> depth = base::parseNumber(fieldOf(fields, "Depth along hole"));
        marker.depth = static_cast<float>(depth.value_or(host::undefinedValue));
        marker.color = parseColor(fieldOf(fields, "Color"));
        if (marker.name.isEmpty())
            break; // numbering ends at the first entry without a name
        if (!isMarkerDepth(marker.depth))
            report->append(QStringLiteral("the marker \"%1\" has no depth and is left out").arg(marker.name));
        else if (marker.depth < top || marker.depth > bottom)
            report->append(QStringLiteral("the marker \"%1\" at %2 lies outside the well's track and is left out")
                               .arg(marker.name, QString::fromLatin1(base::formatShortest(marker.depth))));
        else
            markers.append(marker);
    }
    return {sortedUnique(markers, report), {}};
}

QByteArray markerFileBytes(const QVector<host::Marker> &markers, const QByteArray &depthUnit,
                           const QByteArray &oldBytes)
{
    const host::Outcome<OdFile> old = parseOdFile(oldBytes, markerType);
    KeyValues keys;
    QHash<QString, QVector<QPair<QByteArray, QByteArray>>> oldByName;
    if (old.ok()) {
        keys = old.value.keys;
        const MarkerLines lines = markerLines(keys);
        for (const auto &fields : lines)
            oldByName.insert(QString::fromUtf8(fieldOf(fields, "Name")), fields);
        keys.removeIf([](const QByteArray &key) { return splitKey(key).number > 0; });
    }
    if (!keys.contains("Depth-Unit"))
        keys.set("Depth-Unit", depthUnit);

    QByteArray bytes = odFileHeader(markerType) + keys.toBytes();
    int number = 0;
    for (const host::Marker &marker : sortedUnique(markers, nullptr)) {
        if (!isMarkerDepth(marker.depth) || marker.name.isEmpty())
            continue;
        const auto fields = oldByName.value(marker.name);
        const QByteArray prefix = QByteArray::number(++number) + '.';
        QByteArray stratLevel = fieldOf(fields, "Strat Level");
        if (stratLevel.isEmpty())
            stratLevel = "-1";
        QByteArray name = marker.name.toUtf8();
        name.replace('\r', "").replace('\n', "#-NL-#");
        bytes += prefix + "Name: " + name + '\n';
        bytes += prefix + "Depth along hole: " + base::formatShortest(marker.depth) + '\n';
        bytes += prefix + "Strat Level: " + stratLevel + '\n';
        bytes += prefix + "Color: " + colorText(marker.color, fieldOf(fields, "Color")) + '\n';
        for (const auto &field : fields) {
            static const QSet<QByteArray> written {"Name", "Depth along hole", "Strat Level", "Color"};
            if (!written.contains(field.first))
                bytes += prefix + escapedKey(field.first) + ": " + field.second + '\n';
        }
    }
    return bytes;
}

} // namespace workbench
