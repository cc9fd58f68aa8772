#include "host/opendtect/plainfiles.h"

#include "base/numbers.h"

#include <QSet>

#include <algorithm>

namespace opendtect {

namespace {

constexpr int maximumTextSize = 200;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Nothing that one of the two readers might give a meaning to; the host's takes a byte of 0xff for an end.
bool isPlainText(const QByteArray &text)
{
    const auto isOrdinary = [](char c) { return (c >= ' ' || c < 0) && c != '\\' && c != '\x7f'; };
    const auto isAscii = [](char c) { return c >= 0; };
    return text.size() <= maximumTextSize && !text.startsWith(' ') && !text.endsWith(' ')
        && std::all_of(text.begin(), text.end(), isOrdinary)
        && (std::all_of(text.begin(), text.end(), isAscii) || QString::fromUtf8(text).toUtf8() == text);
}

// As the host writes numbers: a minus, digits and a point among them.
bool isPlainNumber(const QByteArray &text)
{
    int points = 0;
    for (int i = text.startsWith('-') ? 1 : 0; i < text.size(); ++i) {
        if (text.at(i) == '.' && i > 0 && isDigit(text.at(i - 1)))
            ++points;
        else if (!isDigit(text.at(i)))
            return false;
    }
    return points <= 1 && text.size() < 20 && !text.isEmpty() && isDigit(text.at(text.size() - 1));
}

// Of a release that writes the files as this one does.
bool isPlainVersion(const QByteArray &line)
{
    return line.size() == 10 && line.startsWith("dTect V") && line.at(7) >= '4' && line.at(7) <= '6'
        && line.at(8) == '.' && isDigit(line.at(9));
}

// Three lines, the mark behind them, and the section that follows.
std::optional<survey::OdFile> plainFile(const QByteArray &bytes, const QByteArray &type)
{
    const int typeAt = bytes.indexOf('\n') + 1;
    const int dateAt = bytes.indexOf('\n', typeAt) + 1;
    const int dateEnd = bytes.indexOf('\n', dateAt);
    if (typeAt <= 0 || dateAt <= 0 || dateEnd < 0 || bytes.mid(dateEnd, 3) != "\n!\n")
        return {};
    if (!isPlainVersion(bytes.left(typeAt - 1)) || bytes.mid(typeAt, dateAt - 1 - typeAt) != type
        || !isPlainText(bytes.mid(dateAt, dateEnd - dateAt)))
        return {};
    const host::Outcome<survey::OdFile> file = survey::parseOdFile(bytes, type);
    return file.ok() ? std::optional<survey::OdFile>(file.value) : std::nullopt;
}

bool isPlainLine(const survey::KeyValues &keys, int i)
{
    return isPlainText(keys.valueAt(i)) && keys.lineAt(i) == keys.keyAt(i) + ": " + keys.valueAt(i);
}

// Each key one of these and there once.
bool arePlain(const survey::KeyValues &keys, const QVector<QByteArray> &known)
{
    QVector<QByteArray> seen;
    for (int i = 0; i < keys.size(); ++i) {
        const QByteArray key = keys.keyAt(i);
        if (!known.contains(key) || seen.contains(key) || !isPlainLine(keys, i))
            return false;
        seen.append(key);
    }
    return true;
}

bool isPlainCoordinate(const QByteArray &text)
{
    const int comma = text.indexOf(',');
    return text.startsWith('(') && text.endsWith(')') && isPlainNumber(text.mid(1, comma - 1))
        && isPlainNumber(text.mid(comma + 1, text.size() - comma - 2));
}

bool isPlainRow(const QByteArray &row)
{
    const QList<QByteArray> numbers = row.split('\t');
    return numbers.size() == 4 && std::all_of(numbers.begin(), numbers.end(), isPlainNumber);
}

bool arePlainRows(const QByteArray &bytes, int offset)
{
    while (offset < bytes.size()) {
        const int end = bytes.indexOf('\n', offset);
        if (end < 0 || !isPlainRow(bytes.mid(offset, end - offset)))
            return false;
        offset = end + 1;
    }
    return true;
}

bool isAscending(const QVector<survey::TrackPoint> &track)
{
    for (int i = 1; i < track.size(); ++i)
        if (!(static_cast<float>(track.at(i).md) > static_cast<float>(track.at(i - 1).md)))
            return false;
    return track.size() > 1;
}

// "r`g`b"; nothing for transparent colours.
std::optional<QColor> plainColor(const QByteArray &text)
{
    const QList<QByteArray> parts = text.split('`');
    if (parts.size() != 3)
        return {};
    int rgb[3];
    for (int i = 0; i < 3; ++i) {
        rgb[i] = parts.at(i).toInt();
        // The host takes a 0 in front for the sign of an octal number.
        if (parts.at(i) != QByteArray::number(rgb[i]) || rgb[i] < 0 || rgb[i] > 255)
            return {};
    }
    return QColor(rgb[0], rgb[1], rgb[2]);
}

std::optional<host::Marker> plainMarker(const survey::KeyValues &keys, int first, int number)
{
    static const QByteArray fields[] = {"Name", "Depth along hole", "Strat Level", "Color"};
    const QByteArray prefix = QByteArray::number(number) + '.';
    for (int i = 0; i < 4; ++i)
        if (keys.keyAt(first + i) != prefix + fields[i] || !isPlainLine(keys, first + i))
            return {};
    const QByteArray depth = keys.valueAt(first + 1);
    const std::optional<QColor> color = plainColor(keys.valueAt(first + 3));
    // A level lends its colour to its markers.
    if (keys.valueAt(first).isEmpty() || !isPlainNumber(depth) || keys.valueAt(first + 2) != "-1" || !color)
        return {};
    return host::Marker{QString::fromUtf8(keys.valueAt(first)), static_cast<float>(*base::parseNumber(depth)),
                        *color};
}

} // namespace

std::optional<host::LogInfo> plainLogInfo(const QByteArray &head)
{
    static const QVector<QByteArray> known{"Depth-Unit",  "Name",         "Mnemonic",  "Unit of Measure",
                                           "Header info", "Storage type", "Dah range", "Log range"};
    const auto file = plainFile(head, "Well Log");
    if (!file || file->isCut || !arePlain(file->keys, known))
        return {};
    const survey::KeyValues &keys = file->keys;
    if (keys.value("Name").isEmpty() || keys.value("Header info") != "No" || keys.value("Storage type") != "Binary"
        || keys.value("Dah range").isEmpty())
        return {};
    return host::LogInfo{QString::fromUtf8(keys.value("Name")), QString::fromUtf8(keys.value("Unit of Measure"))};
}

std::optional<PlainWell> plainWell(const QByteArray &bytes)
{
    static const QByteArray coordinate = "Surface coordinate";
    static const QByteArray ground = "Ground Level elevation [GL]";
    static const QVector<QByteArray> known{"Depth-Unit",
                                           "Unique Well ID",
                                           "Operator",
                                           "State",
                                           "County",
                                           coordinate,
                                           "Replacement velocity [from KB to SRD]",
                                           ground,
                                           "Well type"};
    const auto file = plainFile(bytes, "Well");
    if (!file || file->isCut || !arePlain(file->keys, known) || !arePlainRows(bytes, file->bodyOffset))
        return {};
    const survey::KeyValues &keys = file->keys;
    if (!isPlainCoordinate(keys.value(coordinate)) || (keys.contains(ground) && !isPlainNumber(keys.value(ground))))
        return {};
    const host::Outcome<survey::WellFile> well = survey::parseWellFile(bytes);
    if (!well.ok() || !isAscending(well.value.track))
        return {};
    PlainWell result;
    result.header = well.value.header({});
    result.top = static_cast<float>(well.value.track.first().md);
    result.bottom = static_cast<float>(well.value.track.last().md);
    result.header.totalDepth = static_cast<double>(result.bottom);
    result.header.typeCode = host::NoWellType; // the host does not store it
    return result;
}

std::optional<QVector<host::Marker>> plainMarkers(const QByteArray &bytes, const PlainWell &well)
{
    const auto file = plainFile(bytes, "Well Markers");
    if (!file || !file->isCut || !bytes.endsWith('\n')) // no mark ends the section
        return {};
    const survey::KeyValues &keys = file->keys;
    const int first = keys.size() > 0 && keys.keyAt(0) == "Depth-Unit" && isPlainLine(keys, 0) ? 1 : 0;
    QVector<host::Marker> markers;
    QSet<QString> names;
    for (int i = first; i < keys.size(); i += 4) {
        const auto marker = i + 4 <= keys.size() ? plainMarker(keys, i, (i - first) / 4 + 1) : std::nullopt;
        if (!marker || names.contains(marker->name.toCaseFolded()))
            return {};
        if (!(marker->depth > well.top) || !(marker->depth < well.bottom)
            || (!markers.isEmpty() && !(marker->depth > markers.last().depth)))
            return {};
        names.insert(marker->name.toCaseFolded());
        markers.append(*marker);
    }
    return markers;
}

} // namespace opendtect
