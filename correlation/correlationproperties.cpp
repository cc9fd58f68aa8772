#include "correlation/correlationproperties.h"

#include "base/numbers.h"
#include "base/textbytes.h"
#include "datastore/textfields.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace correlation {

const char zoneWithoutColor[] = "#c0c0c0";

namespace {

const QString markerKey = QStringLiteral("Marker:");
const QString perforationKey = QStringLiteral("Perforation Flag:");
const QString zonesKey = QStringLiteral("Zones:");
constexpr int wellsBegin = 4; // line of the first well

QByteArray number(double value, double otherwise)
{
    return base::formatGeneral(std::isfinite(value) ? value : otherwise);
}

QByteArray flag(bool isSet)
{
    return isSet ? "1" : "0";
}

bool isColor(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A#[0-9a-fA-F]{6}\\z"));
    return pattern.match(text).hasMatch();
}

QByteArray zoneLine(const CorrelationZone &zone)
{
    const QByteArrayList fields{textfields::oneField(zone.name),
                                textfields::oneField(zone.start),
                                textfields::oneField(zone.end),
                                isColor(zone.color) ? zone.color.toLatin1() : QByteArray(zoneWithoutColor),
                                flag(zone.isVisible),
                                flag(zone.isStartUserDepth),
                                flag(zone.isEndUserDepth)};
    return fields.join('|');
}

CorrelationZone zoneOfLine(const QString &line)
{
    const QStringList fields = line.split(QLatin1Char('|'));
    CorrelationZone zone;
    zone.name = fields.value(0);
    zone.start = fields.value(1);
    zone.end = fields.value(2);
    zone.color = isColor(fields.value(3)) ? fields.value(3) : QLatin1String(zoneWithoutColor);
    zone.isVisible = fields.value(4) == QLatin1String("1");
    zone.isStartUserDepth = fields.value(5) == QLatin1String("1");
    zone.isEndUserDepth = fields.value(6) == QLatin1String("1");
    return zone;
}

/// The lines of the file and how far they were read.
class Lines
{
public:
    explicit Lines(const QVector<QString> &lines)
        : m_lines(lines)
    {
    }

    bool isWhole() const { return m_isWhole; }

    /// What stands behind the key of a line of the head.
    QString headValue(int line)
    {
        const QStringList parts = m_lines.value(line).split(QLatin1Char(':'), Qt::SkipEmptyParts);
        if (parts.size() < 2)
            m_isWhole = false;
        return parts.value(1);
    }

    double headNumber(int line, double otherwise)
    {
        const auto value = base::parseNumber(headValue(line));
        if (!value)
            m_isWhole = false;
        return value.value_or(otherwise);
    }

    /// Passes the key line and gives its number; 0 without that line.
    int passKey(const QString &key)
    {
        if (m_position >= m_lines.size() || !m_lines.at(m_position).startsWith(key)) {
            m_isWhole = false;
            return 0;
        }
        return count(m_lines.at(m_position++).mid(key.size()));
    }

    int count(const QString &text)
    {
        const auto value = base::parseInteger(text.trimmed().toUtf8());
        if (!value || *value < 0)
            m_isWhole = false;
        return value.value_or(0);
    }

    /// The \a claimed lines from here, or those before the line with the key \a nextKey when it stands elsewhere; an
    /// empty key means the end of the file.
    QVector<QString> passList(int claimed, const QString &nextKey)
    {
        const int size = m_lines.size();
        const qint64 expected = m_position + qint64(qMax(claimed, 0));
        qint64 end = qMin<qint64>(expected, size);
        if (!nextKey.isEmpty() && (end == size || !m_lines.at(int(end)).startsWith(nextKey))) {
            const auto key = std::find_if(m_lines.cbegin() + m_position, m_lines.cend(),
                                          [&nextKey](const QString &line) { return line.startsWith(nextKey); });
            if (key != m_lines.cend())
                end = key - m_lines.cbegin();
        }
        if (end != expected)
            m_isWhole = false;
        const QVector<QString> list = m_lines.mid(m_position, int(end) - m_position);
        m_position = int(end);
        return list;
    }

    void moveTo(int line) { m_position = qMin(line, m_lines.size()); }

private:
    QVector<QString> m_lines;
    int m_position = 0;
    bool m_isWhole = true;
};

} // namespace

QByteArray propertiesBytes(const CorrelationProperties &properties)
{
    const CorrelationProperties defaults;
    QByteArray bytes = "Correlation:" + textfields::oneLine(properties.name) + '\n';
    bytes += "TrackWidth:" + number(properties.trackWidth, defaults.trackWidth) + '\n';
    bytes += "Scale:" + number(properties.scale, defaults.scale) + '\n';
    bytes += "Number Of Wells:" + QByteArray::number(properties.wells.size()) + '\n';
    for (const CorrelationWell &well : properties.wells)
        bytes += textfields::oneLine(well.wellName) + ':' + textfields::oneLine(well.templateName) + '\n';
    bytes += markerKey.toLatin1() + QByteArray::number(properties.markers.size()) + '\n';
    for (const QString &marker : properties.markers)
        bytes += textfields::trimmedLine(marker).toUtf8() + '\n';
    bytes += perforationKey.toLatin1() + flag(properties.showsPerforations) + '\n';
    bytes += zonesKey.toLatin1() + QByteArray::number(properties.zones.size()) + '\n';
    for (const CorrelationZone &zone : properties.zones)
        bytes += zoneLine(zone) + '\n';
    return bytes;
}

CorrelationWell splitWellLine(const QString &line, const KnownNames &known)
{
    QVector<CorrelationWell> ways;
    for (int colon = line.indexOf(QLatin1Char(':')); colon >= 0; colon = line.indexOf(QLatin1Char(':'), colon + 1))
        ways.append({line.left(colon), line.mid(colon + 1)});
    const auto isWell = [&known](const CorrelationWell &way) { return known.isWell && known.isWell(way.wellName); };
    const auto isTemplate = [&known](const CorrelationWell &way) {
        return known.isTemplate && known.isTemplate(way.wellName, way.templateName);
    };
    const auto isBoth = [&](const CorrelationWell &way) { return isWell(way) && isTemplate(way); };
    auto found = std::find_if(ways.cbegin(), ways.cend(), isBoth);
    if (found == ways.cend() && !ways.isEmpty() && !isWell(ways.first())) {
        found = std::find_if(ways.cbegin(), ways.cend(), isWell);
        if (found == ways.cend())
            found = std::find_if(ways.cbegin(), ways.cend(), isTemplate);
    }
    if (found != ways.cend())
        return *found;
    const QStringList parts = line.split(QLatin1Char(':'));
    return {parts.value(0), parts.value(1)};
}

CorrelationProperties parseProperties(const QByteArray &bytes, const KnownNames &known, bool *isWhole)
{
    Lines lines(base::splitLines(base::decodeText(bytes)));
    CorrelationProperties properties;
    properties.name = lines.headValue(0);
    properties.trackWidth = lines.headNumber(1, properties.trackWidth);
    properties.scale = lines.headNumber(2, properties.scale);

    const int wells = lines.count(lines.headValue(3));
    lines.moveTo(wellsBegin);
    for (const QString &line : lines.passList(wells, markerKey))
        properties.wells.append(splitWellLine(line, known));

    const int markers = lines.passKey(markerKey);
    for (const QString &line : lines.passList(markers, perforationKey))
        properties.markers.append(textfields::trimmedLine(line)); // as it is written

    properties.showsPerforations = lines.passKey(perforationKey) != 0;
    const int zones = lines.passKey(zonesKey);
    for (const QString &line : lines.passList(zones, QString()))
        properties.zones.append(zoneOfLine(line));

    if (isWhole)
        *isWhole = lines.isWhole();
    return properties;
}

} // namespace correlation
