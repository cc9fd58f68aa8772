#include "templates/templatetrack.h"

#include "base/numbers.h"
#include "base/textbytes.h"

namespace {

constexpr int fewestFields = 11; ///< a line without the calibration point fields
constexpr char depthTail[] = "0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0";

double toNumber(const QStringRef &text)
{
    return base::parseNumber(text.toUtf8()).value_or(0);
}

int toInteger(const QStringRef &text)
{
    return base::parseInteger(text.toUtf8()).value_or(0);
}

QColor toColor(const QStringRef &text)
{
    QColor color;
    color.setNamedColor(text);
    return color;
}

// "index,#rrggbb"; index 0 is no fill, its colour is kept all the same.
void readFill(const QStringRef &text, bool *isOn, int *index, QColor *color)
{
    const QVector<QStringRef> parts = text.split(QLatin1Char(','));
    *index = toInteger(parts.value(0));
    *isOn = *index != 0;
    *color = toColor(parts.value(1).trimmed());
}

void readPen(TemplateCurveInfo *curve)
{
    if (curve->lineTypeIndex >= 0 && curve->lineTypeIndex <= 4)
        curve->penStyle = curve->lineTypeIndex + 1;
    if (curve->lineWidthIndex >= 0 && curve->lineWidthIndex <= 4)
        curve->penWidth = curve->lineWidthIndex + 1;
}

void readCalibration(const QVector<QStringRef> &fields, TemplateCurveInfo *curve)
{
    if (fields.size() > 11)
        curve->isCalibrationShown = fields.at(11) != QLatin1String("0");
    if (fields.size() > 12)
        curve->pointColor = toColor(fields.at(12));
    if (fields.size() > 13)
        curve->pointSize = toInteger(fields.at(13));
    if (fields.size() > 14)
        curve->pointShape = fields.at(14) == QLatin1String("Circle") ? 1 : 2;
}

// False for a line that is no curve line.
bool readCurve(const QString &line, TemplateCurveInfo *curve)
{
    QVector<QStringRef> fields = line.splitRef(QLatin1Char('|'), Qt::SkipEmptyParts);
    if (fields.size() < fewestFields)
        return false;
    for (QStringRef &field : fields)
        field = field.trimmed();
    curve->group = fields.at(0).toString();
    curve->curve = fields.at(1).toString();
    curve->minimum = toNumber(fields.at(2));
    curve->maximum = toNumber(fields.at(3));
    curve->color = toColor(fields.at(4));
    readFill(fields.at(5), &curve->isLeftFillOn, &curve->leftFillIndex, &curve->leftFillColor);
    readFill(fields.at(6), &curve->isRightFillOn, &curve->rightFillIndex, &curve->rightFillColor);
    curve->leftUpTo = fields.at(7).toString();
    curve->rightUpTo = fields.at(8).toString();
    curve->lineTypeIndex = toInteger(fields.at(9));
    curve->lineWidthIndex = toInteger(fields.at(10));
    readPen(curve);
    readCalibration(fields, curve);
    return true;
}

int trackType(const QString &firstLine)
{
    const QString text = firstLine.trimmed();
    if (text == QLatin1String("Linear"))
        return LinearTrack;
    return text == QLatin1String("Logrithmic") ? LogarithmicTrack : DepthTrack;
}

QByteArray fillText(int index, const QColor &color)
{
    return QByteArray::number(index) + ',' + color.name().toUtf8();
}

// Most fields are joined by " | ", those around the colours by a bare "|".
QByteArray curveLine(const TemplateCurveRow &row)
{
    const QByteArray separator = " | ";
    QByteArray line = row.group.toUtf8() + separator + row.curve.toUtf8() + separator + row.minimum.toUtf8() + separator
        + row.maximum.toUtf8() + separator + row.color.name().toUtf8();
    line += '|' + fillText(row.leftFillIndex, row.leftFillColor);
    line += '|' + fillText(row.rightFillIndex, row.rightFillColor);
    line += '|' + row.leftUpTo.toUtf8() + separator + row.rightUpTo.toUtf8();
    line += separator + QByteArray::number(row.lineTypeIndex) + separator + QByteArray::number(row.lineWidthIndex);
    line += separator + (row.isCalibrationShown ? "1" : "0") + separator + row.pointColor.name().toUtf8();
    line += separator + QByteArray::number(row.pointSize) + separator + row.pointShape.toUtf8();
    return line + '\n';
}

} // namespace

TrackInfo parseTrack(const QByteArray &bytes, const QString &name)
{
    TrackInfo track;
    track.name = name;
    const QVector<QString> lines = base::splitLines(base::decodeText(bytes));
    track.type = trackType(lines.value(0));
    for (int i = 1; i < lines.size(); ++i) {
        TemplateCurveInfo curve;
        if (readCurve(lines.at(i), &curve))
            track.curves.append(curve);
    }
    return track;
}

QByteArray trackBytes(const QString &typeText, const QVector<TemplateCurveRow> &rows)
{
    QByteArray bytes = typeText.toUtf8() + '\n';
    if (typeText == QLatin1String("Depth")) {
        if (!rows.isEmpty())
            bytes += rows.first().group.toUtf8() + " | " + rows.first().curve.toUtf8() + " | " + depthTail + '\n';
        return bytes;
    }
    for (const TemplateCurveRow &row : rows)
        bytes += curveLine(row);
    return bytes;
}
