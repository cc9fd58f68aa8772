#include "survey/markerfile.h"

#include "base/numbers.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace survey {

namespace {

constexpr char markerType[] = "Well Markers";
constexpr const char *writtenFields[] = {"Name", "Depth along hole", "Strat Level", "Color"};

// The number 12 of a key "12.Name" and where "Name" begins; no number above 0 for keys of another form.
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
    return {number.value_or(0), dot + 1};
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

// As the platform reads it: a zero in front makes an octal number of it.
int colorNumber(const QByteArray &text)
{
    const QByteArray number = text.trimmed();
    if (number.size() > 1 && number.startsWith('0'))
        return number.toInt(nullptr, 8);
    return base::parseInteger(number).value_or(0);
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
        rgb[i] = qBound(0, colorNumber(parts.at(i)), 255);
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

void sortByDepth(QVector<host::Marker> *markers)
{
    std::stable_sort(markers->begin(), markers->end(),
                     [](const host::Marker &a, const host::Marker &b) { return a.depth < b.depth; });
}

// Those that a file can hold, with their names as they come back, each name once.
QVector<host::Marker> writableMarkers(const QVector<host::Marker> &markers)
{
    QVector<host::Marker> result;
    QSet<QString> names;
    for (host::Marker marker : markers) {
        marker.name = storedText(marker.name);
        if (!isMarkerDepth(marker.depth) || marker.name.isEmpty() || names.contains(marker.name))
            continue;
        names.insert(marker.name);
        result.append(marker);
    }
    sortByDepth(&result);
    return result;
}

QString secondOfName(const QString &name)
{
    return QStringLiteral("a second marker named \"%1\" is left out").arg(name);
}

// What becomes of a marker of a file.
enum class Fate {
    Given,
    Filtered, // passed over, those behind it are not
    Hidden, // the host does not come so far, or it has the name of another
};

struct StoredMarker
{
    int number = 0;
    OneMarker fields;
    host::Marker marker;
    Fate fate = Fate::Hidden;
};

host::Marker markerOf(const KeyValues &keys, const OneMarker &fields)
{
    const std::optional<double> depth = base::parseNumber(fieldOf(keys, fields, "Depth along hole"));
    return {storedText(shownText(fieldOf(keys, fields, "Name"))),
            static_cast<float>(depth.value_or(host::undefinedValue)), parseColor(fieldOf(keys, fields, "Color"))};
}

// All markers of a file by their numbers; \a problems gets a sentence for each that is not given out.
QVector<StoredMarker> storedMarkers(const KeyValues &keys, const DepthRange &track, QStringList *problems)
{
    QVector<StoredMarker> result;
    QSet<QString> names;
    const MarkerLines lines = markerLines(keys);
    int understood = 0;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        StoredMarker stored{line.key(), line.value(), markerOf(keys, line.value()), Fate::Hidden};
        const host::Marker &marker = stored.marker;
        // Numbering ends at the first missing number and at the first entry without a name.
        if (line.key() == understood + 1 && !marker.name.isEmpty()) {
            ++understood;
            if (!isMarkerDepth(marker.depth)) {
                problems->append(QStringLiteral("the marker \"%1\" has no depth and is left out").arg(marker.name));
                stored.fate = Fate::Filtered;
            } else if (!track.contains(marker.depth)) {
                problems->append(
                    QStringLiteral("the marker \"%1\" at %2 lies outside the well's track and is left out")
                        .arg(marker.name, QString::fromLatin1(base::formatPlain(marker.depth))));
                stored.fate = Fate::Filtered;
            } else if (names.contains(marker.name)) {
                problems->append(secondOfName(marker.name));
            } else {
                names.insert(marker.name);
                stored.fate = Fate::Given;
            }
        }
        result.append(stored);
    }
    if (!lines.isEmpty() && lines.lastKey() > understood)
        problems->append(
            QStringLiteral("its markers are read up to number %1, the next one has no name").arg(understood));
    return result;
}

// The lines of a marker under another number.
QByteArray renumbered(const KeyValues &keys, const StoredMarker &marker, int number)
{
    QByteArray bytes;
    for (const MarkerLine &line : marker.fields) {
        const QByteArray raw = keys.lineAt(line.index);
        bytes += QByteArray::number(number) + raw.mid(raw.indexOf('.')) + '\n';
    }
    return bytes;
}

// The markers that were not given out, behind \a count written ones. A missing number keeps those hidden that were:
// a marker that nobody saw must not appear because another one was saved.
QByteArray carriedOver(const KeyValues &keys, const QVector<StoredMarker> &stored, const QSet<QString> &written,
                       int count)
{
    QByteArray filtered;
    QVector<StoredMarker> hidden;
    for (const StoredMarker &marker : stored) {
        if (marker.fate == Fate::Given || written.contains(marker.marker.name))
            continue;
        if (marker.fate == Fate::Filtered)
            filtered += renumbered(keys, marker, ++count);
        else
            hidden.append(marker);
    }
    ++count;
    for (const StoredMarker &marker : qAsConst(hidden))
        filtered += renumbered(keys, marker, ++count);
    return filtered;
}

} // namespace

host::Outcome<QVector<host::Marker>> parseMarkerFile(const QByteArray &bytes, const DepthRange &track,
                                                     QStringList *problems)
{
    const host::Outcome<OdFile> file = parseOdFile(bytes, markerType);
    if (!file.ok())
        return {{}, file.error};
    QStringList ignored;
    QStringList *report = problems ? problems : &ignored;
    const KeyValues &keys = file.value.keys;
    QVector<host::Marker> markers;
    for (const StoredMarker &stored : storedMarkers(keys, track, report))
        if (stored.fate == Fate::Given)
            markers.append(stored.marker);
    const QByteArray rubbish = strangeLine(keys);
    if (!rubbish.isEmpty())
        report->append(QStringLiteral("it holds a line that is not understood (\"%1\")")
                           .arg(QString::fromUtf8(rubbish.left(80))));
    sortByDepth(&markers);
    return {markers, {}};
}

QByteArray markerFileBytes(const QVector<host::Marker> &markers, const QByteArray &depthUnit,
                           const QByteArray &oldBytes, const DepthRange &track)
{
    const host::Outcome<OdFile> old = parseOdFile(oldBytes, markerType);
    KeyValues keys;
    const KeyValues &oldKeys = old.value.keys;
    QVector<StoredMarker> stored;
    QHash<QString, OneMarker> oldByName;
    if (old.ok()) {
        keys = oldKeys;
        QStringList ignored;
        stored = storedMarkers(oldKeys, track, &ignored);
        for (const StoredMarker &marker : qAsConst(stored))
            if (!oldByName.contains(marker.marker.name)) // as in reading, the first of two counts
                oldByName.insert(marker.marker.name, marker.fields);
        keys.removeIf([](const QByteArray &key) { return splitKey(key).number > 0; });
    }
    if (!keys.contains("Depth-Unit"))
        keys.set("Depth-Unit", depthUnit);

    QByteArray bytes = odFileHeader(markerType) + keys.toBytes();
    int number = 0;
    QSet<QString> written;
    for (const host::Marker &marker : writableMarkers(markers)) {
        written.insert(marker.name);
        const OneMarker fields = oldByName.value(marker.name);
        const QByteArray prefix = QByteArray::number(++number) + '.';
        QByteArray stratLevel = fieldOf(oldKeys, fields, "Strat Level");
        if (stratLevel.isEmpty())
            stratLevel = "-1";
        QByteArray name = fieldOf(oldKeys, fields, "Name"); // whole, also where it is shown cut
        if (name.isEmpty())
            name = marker.name.toUtf8();
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
    return bytes + carriedOver(oldKeys, stored, written, number);
}

} // namespace survey
