#include "templates/templatetrack.h"

#include "base/numbers.h"
#include "datastore/textfields.h"

#include <algorithm>
#include <tuple>

namespace {

using textfields::Field;

constexpr size_t fewestFields = 11; ///< a line without the calibration point fields
constexpr size_t mostFields = 15;
constexpr size_t longestColorName = 100;
constexpr char depthTail[] = "0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0";

double toNumber(Field field)
{
    return base::parseNumber(field.data(), field.data() + field.size()).value_or(0);
}

int toInteger(Field field)
{
    return base::parseInteger(QByteArray::fromRawData(field.data(), static_cast<int>(field.size()))).value_or(0);
}

// The four bits of a hexadecimal digit; more than 15 for anything else.
unsigned hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a' + 10) : 16;
}

QColor toColor(Field field)
{
    if (field.size() == 7 && field[0] == '#') {
        unsigned rgb = 0;
        unsigned worst = 0;
        for (char c : field.substr(1)) {
            worst = std::max(worst, hexDigit(c));
            rgb = rgb << 4 | hexDigit(c);
        }
        return worst < 16 ? QColor(rgb) : QColor();
    }
    QColor color;
    if (field.size() <= longestColorName)
        color.setNamedColor(textfields::toString(field));
    return color;
}

// "index,#rrggbb"; index 0 is no fill, its colour is kept all the same.
void readFill(Field field, bool *isOn, int *index, QColor *color)
{
    const size_t comma = std::min(field.find(','), field.size());
    *index = toInteger(field.substr(0, comma));
    *isOn = *index != 0;
    const Field rest = field.substr(std::min(comma + 1, field.size()));
    *color = toColor(textfields::trimmed(rest.substr(0, rest.find(','))));
}

void readPen(TemplateCurveInfo *curve)
{
    if (curve->lineTypeIndex >= 0 && curve->lineTypeIndex <= 4)
        curve->penStyle = curve->lineTypeIndex + 1;
    if (curve->lineWidthIndex >= 0 && curve->lineWidthIndex <= 4)
        curve->penWidth = curve->lineWidthIndex + 1;
}

void readCalibration(const std::vector<Field> &fields, TemplateCurveInfo *curve)
{
    if (fields.size() > 11)
        curve->isCalibrationShown = fields[11] != "0";
    if (fields.size() > 12)
        curve->pointColor = toColor(fields[12]);
    if (fields.size() > 13)
        curve->pointSize = toInteger(fields[13]);
    if (fields.size() > 14)
        curve->pointShape = fields[14] == "Circle" ? 1 : 2;
}

TemplateCurveInfo readCurve(const std::vector<Field> &fields)
{
    TemplateCurveInfo curve;
    curve.group = textfields::toString(fields[0]);
    curve.curve = textfields::toString(fields[1]);
    curve.minimum = toNumber(fields[2]);
    curve.maximum = toNumber(fields[3]);
    curve.color = toColor(fields[4]);
    readFill(fields[5], &curve.isLeftFillOn, &curve.leftFillIndex, &curve.leftFillColor);
    readFill(fields[6], &curve.isRightFillOn, &curve.rightFillIndex, &curve.rightFillColor);
    curve.leftUpTo = textfields::toString(fields[7]);
    curve.rightUpTo = textfields::toString(fields[8]);
    curve.lineTypeIndex = toInteger(fields[9]);
    curve.lineWidthIndex = toInteger(fields[10]);
    readPen(&curve);
    readCalibration(fields, &curve);
    return curve;
}

int trackType(Field typeText)
{
    if (typeText == "Linear")
        return LinearTrack;
    return typeText == "Logrithmic" ? LogarithmicTrack : DepthTrack;
}

QByteArray fillText(int index, const QColor &color)
{
    return QByteArray::number(index) + ',' + color.name().toUtf8();
}

// Most fields are joined by " | ", those around the colours by a bare "|".
QByteArray curveLine(const TemplateCurveRow &row)
{
    const QByteArray separator = " | ";
    using textfields::oneField;
    QByteArray line = oneField(row.group) + separator + oneField(row.curve) + separator + oneField(row.minimum)
        + separator + oneField(row.maximum) + separator + row.color.name().toUtf8();
    line += '|' + fillText(row.leftFillIndex, row.leftFillColor);
    line += '|' + fillText(row.rightFillIndex, row.rightFillColor);
    line += '|' + oneField(row.leftUpTo) + separator + oneField(row.rightUpTo);
    line += separator + QByteArray::number(row.lineTypeIndex) + separator + QByteArray::number(row.lineWidthIndex);
    line += separator + (row.isCalibrationShown ? "1" : "0") + separator + row.pointColor.name().toUtf8();
    line += separator + QByteArray::number(row.pointSize) + separator + oneField(row.pointShape);
    return line + '\n';
}

} // namespace

bool operator==(const TemplateCurveInfo &a, const TemplateCurveInfo &b)
{
    const auto texts = [](const TemplateCurveInfo &c) { return std::tie(c.group, c.curve, c.leftUpTo, c.rightUpTo); };
    const auto colors = [](const TemplateCurveInfo &c) {
        return std::tie(c.color, c.leftFillColor, c.rightFillColor, c.pointColor);
    };
    const auto numbers = [](const TemplateCurveInfo &c) {
        return std::tie(c.minimum, c.maximum, c.isLeftFillOn, c.isRightFillOn, c.leftFillIndex, c.rightFillIndex,
                        c.lineTypeIndex, c.lineWidthIndex, c.penStyle, c.penWidth, c.isCalibrationShown, c.pointSize,
                        c.pointShape);
    };
    return texts(a) == texts(b) && colors(a) == colors(b) && numbers(a) == numbers(b);
}

bool operator==(const TrackInfo &a, const TrackInfo &b)
{
    return a.type == b.type && a.curves == b.curves;
}

QString trackTypeText(int type)
{
    if (type == LinearTrack)
        return QStringLiteral("Linear");
    return type == LogarithmicTrack ? QStringLiteral("Logrithmic") : QStringLiteral("Depth");
}

TrackInfo parseTrack(const QByteArray &bytes, const QString &name)
{
    TrackInfo track;
    track.name = name;
    std::vector<Field> fields;
    bool isFirst = true;
    textfields::forEachLine(textfields::utf8Text(bytes), [&](Field line) {
        if (isFirst) {
            track.type = trackType(textfields::trimmed(line));
            isFirst = false;
            return;
        }
        textfields::splitSkippingEmpty(line, '|', mostFields, &fields);
        if (fields.size() < fewestFields)
            return;
        for (Field &field : fields)
            field = textfields::trimmed(field);
        track.curves.append(readCurve(fields));
    });
    return track;
}

QByteArray trackBytes(const QString &typeText, const QVector<TemplateCurveRow> &rows)
{
    QByteArray bytes = textfields::oneLine(typeText) + '\n';
    if (typeText == QLatin1String("Depth")) {
        if (!rows.isEmpty())
            bytes += textfields::oneField(rows.first().group) + " | " + textfields::oneField(rows.first().curve)
                + " | " + depthTail + '\n';
        return bytes;
    }
    for (const TemplateCurveRow &row : rows)
        bytes += curveLine(row);
    return bytes;
}
