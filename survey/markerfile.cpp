#include "survey/markerfile.h"

#include "base/numbers.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace workbench {

namespace {

constexpr char markerType[] = "Well Markers";
constexpr const char *writtenFields[] = {"Name", "Depth along hole", "Strat Level", "Color"};

// The number 12 of a key "12.Name" and where "Name" begins; number 0 for keys of another form.
struct MarkerKey
{
    int number = 0;
    int fieldAt = 0;
};

MarkerKey splitKey(const QByteArray &key)
{
    const int dot = key.indexOf('.');
    if (dot < 1)
        return {};
    const std::optional<int> number = base::parseInteger(QByteArray::fromRawData(key.constData(), dot));
    if (!number || *number < 1)
        return {};
    return {*number, dot + 1};
}

// A line of a marker in the KeyValues that hold it.
struct MarkerLine
{
    int index = 0;
    int fieldAt = 0;
};

using OneMarker = QVector<MarkerLine>;
// The lines of each marker by its number, in file order.
using MarkerLines = QMap<int, OneMarker>;

MarkerLines markerLines(const KeyValues &keys)
{
    MarkerLines lines;
    for (int i = 0; i < keys.size(); ++i) {
        const MarkerKey key = splitKey(keys.keyAt(i));
        if (key.number > 0)
            lines[key.number].append({i, key.fieldAt});
    }
    return lines;
}

bool isField(const KeyValues &keys, const MarkerLine &line, const char *field)
{
    return std::strcmp(keys.keyAt(line.index).constData() + line.fieldAt, field) == 0;
}

QByteArray fieldOf(const KeyValues &keys, const OneMarker &marker, const char *field)
{
    for (const MarkerLine &line : marker)
        if (isField(keys, line, field))
            return keys.valueAt(line.index);
    return {};
}

// The first line that is no "Key: value"; empty when there is none.
QByteArray strangeLine(const KeyValues &keys)
{
    for (int i = 0; i < keys.size(); ++i)
        if (keys.keyAt(i).isEmpty() && !keys.lineAt(i).trimmed().isEmpty())
            return keys.lineAt(i);
    return {};
}

// "r`g`b", with a fourth number for transparency, or "#rrggbb".
QColor parseColor(const QByteArray &text)
{
    if (text.startsWith('#')) {
        const QColor color(QString::fromLatin1(text));
        return color.isValid() ? QColor(color.rgb()) : QColor(0, 0, 0);
    }
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
    for (host::Marker marker : markers) {
        marker.name = storedText(marker.name);
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
    const KeyValues &keys = file.value.keys;
    const MarkerLines lines = markerLines(keys);
    QVector<host::Marker> markers;
    int understood = 0;
    for (int number = 1; lines.contains(number); ++number) {
        const OneMarker fields = lines.value(number);
        host::Marker marker;
        marker.name = QString::fromUtf8(fieldOf(keys, fields, "Name"));
        const std::optional<double> depth = base::parseNumber(fieldOf(keys, fields, "Depth along hole"));
        marker.depth = static_cast<float>(depth.value_or(host::undefinedValue));
        marker.color = parseColor(fieldOf(keys, fields, "Color"));
        if (marker.name.isEmpty())
            break; // numbering ends at the first entry without a name
        ++understood;
        if (!isMarkerDepth(marker.depth))
            report->append(QStringLiteral("the marker \"%1\" has no depth and is left out").arg(marker.name));
        else if (marker.depth < top || marker.depth > bottom)
            report->append(QStringLiteral("the marker \"%1\" at %2 lies outside the well's track and is left out")
                               .arg(marker.name, QString::fromLatin1(base::formatPlain(marker.depth))));
        else
            markers.append(marker);
    }
    if (!lines.isEmpty() && lines.lastKey() > understood)
        report->append(
            QStringLiteral("its markers are read up to number %1, the next one has no name").arg(understood));
    const QByteArray rubbish = strangeLine(keys);
    if (!rubbish.isEmpty())
        report->append(QStringLiteral("it holds a line that is not understood (\"%1\")")
                           .arg(QString::fromUtf8(rubbish.left(80))));
    return {sortedUnique(markers, report), {}};
}

QByteArray markerFileBytes(const QVector<host::Marker> &markers, const QByteArray &depthUnit,
                           const QByteArray &oldBytes)
{
    const host::Outcome<OdFile> old = parseOdFile(oldBytes, markerType);
    KeyValues keys;
    const KeyValues &oldKeys = old.value.keys;
    QHash<QString, OneMarker> oldByName;
    if (old.ok()) {
        keys = oldKeys;
        const MarkerLines lines = markerLines(oldKeys);
        for (const OneMarker &fields : lines) {
            const QString name = QString::fromUtf8(fieldOf(oldKeys, fields, "Name"));
            if (!oldByName.contains(name)) // as in reading, the first of two counts
                oldByName.insert(name, fields);
        }
        keys.removeIf([](const QByteArray &key) { return splitKey(key).number > 0; });
    }
    if (!keys.contains("Depth-Unit"))
        keys.set("Depth-Unit", depthUnit);

    QByteArray bytes = odFileHeader(markerType) + keys.toBytes();
    QVector<host::Marker> usable;
    for (const host::Marker &marker : markers)
        if (isMarkerDepth(marker.depth) && !storedText(marker.name).isEmpty())
            usable.append(marker);
    int number = 0;
    for (const host::Marker &marker : sortedUnique(usable, nullptr)) {
        const OneMarker fields = oldByName.value(marker.name);
        const QByteArray prefix = QByteArray::number(++number) + '.';
        QByteArray stratLevel = fieldOf(oldKeys, fields, "Strat Level");
        if (stratLevel.isEmpty())
            stratLevel = "-1";
        QByteArray name = marker.name.toUtf8();
        name.replace('\n', "#-NL-#");
        bytes += prefix + "Name: " + name + '\n';
        bytes += prefix + "Depth along hole: " + base::formatPlain(marker.depth) + '\n';
        bytes += prefix + "Strat Level: " + stratLevel + '\n';
        bytes += prefix + "Color: " + colorText(marker.color, fieldOf(oldKeys, fields, "Color")) + '\n';
        for (const MarkerLine &line : fields) {
            const auto isThis = [&](const char *field) { return isField(oldKeys, line, field); };
            const QByteArray raw = oldKeys.lineAt(line.index);
            if (std::none_of(std::begin(writtenFields), std::end(writtenFields), isThis))
                bytes += prefix + raw.mid(raw.indexOf('.') + 1) + '\n';
        }
    }
    return bytes;
}

} // namespace workbench
