#include "templates/curverows.h"

#include "base/numbers.h"
#include "templates/filllimit.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int shownDecimals = 2;
constexpr double largestFixed = 1e15; // beyond it a double has no decimals, and fixed notation only zeros

QString depthGroup()
{
    return QStringLiteral("Depth");
}

QString defaultCurve()
{
    return QStringLiteral("Default");
}

QColor validOr(const QColor &color, Qt::GlobalColor other)
{
    return color.isValid() ? color : QColor(other);
}

// Calls change(limit, its boundary) for both fills of each row.
template<class Change>
void forEachLimit(QVector<CurveRow> *rows, const Change &change)
{
    for (CurveRow &row : *rows) {
        change(&row.leftUpTo, filllimit::leftBoundary());
        change(&row.rightUpTo, filllimit::rightBoundary());
    }
}

// What the lines of all tracks say: which curve, between which values.
void takeCurve(const TemplateCurveInfo &curve, CurveRow *row)
{
    row->group = curve.group;
    row->curve = curve.curve;
    row->minimum = writtenValue(curve.minimum);
    row->maximum = writtenValue(curve.maximum);
    row->shownMinimum = shownValue(curve.minimum);
    row->shownMaximum = shownValue(curve.maximum);
    row->hasOwnValues = true;
}

// What the line of a depth track says beside these means nothing; where the track becomes another, its rows are like
// new ones.
CurveRow depthRow(const TemplateCurveInfo &curve)
{
    CurveRow row = CurveRow::added(DepthTrack);
    takeCurve(curve, &row);
    return row;
}

QString valueProblem(const QString &value)
{
    if (base::parseNumber(value))
        return {};
    return value.trimmed().isEmpty() ? QStringLiteral("is empty") : QStringLiteral("is no number: \"%1\"").arg(value);
}

} // namespace

QString writtenValue(double value)
{
    const QByteArray fixed = std::abs(value) < largestFixed ? base::formatFixed(value, shownDecimals) : QByteArray();
    const bool isExact = base::parseNumber(fixed) == value;
    return QString::fromLatin1(isExact ? fixed : base::formatWritten(value));
}

QString shownValue(double value)
{
    return std::abs(value) < largestFixed ? QString::number(value, 'f', shownDecimals) : writtenValue(value);
}

CurveRow CurveRow::added(int trackType)
{
    CurveRow row;
    row.group = trackType == DepthTrack ? depthGroup() : QStringLiteral("None");
    row.curve = defaultCurve();
    row.color = Qt::black;
    row.pointShape = QStringLiteral("Rectangle"); // the first of the choices
    return row;
}

// What no editor could show becomes what a display draws for it.
CurveRow CurveRow::of(const TemplateCurveInfo &curve)
{
    CurveRow row;
    takeCurve(curve, &row);
    row.color = validOr(curve.color, Qt::black);
    row.leftFillIndex = curve.leftFillIndex;
    row.leftFillColor = validOr(curve.leftFillColor, Qt::white);
    row.rightFillIndex = curve.rightFillIndex;
    row.rightFillColor = validOr(curve.rightFillColor, Qt::white);
    row.leftUpTo = curve.leftUpTo;
    row.rightUpTo = curve.rightUpTo;
    row.lineTypeIndex = curve.penStyle - 1;
    row.lineWidthIndex = curve.penWidth - 1;
    row.isCalibrationShown = curve.isCalibrationShown;
    row.pointColor = validOr(curve.pointColor, Qt::black);
    row.pointSize = std::clamp(curve.pointSize, 1, largestPointSize);
    row.pointShape = curve.pointShape == 1 ? QStringLiteral("Circle") : QStringLiteral("Rectangle");
    return row;
}

CurveRows::CurveRows(const TrackInfo &track)
    : m_type(track.type)
{
    m_rows.reserve(track.curves.size());
    for (const TemplateCurveInfo &curve : track.curves)
        m_rows.append(isDepth() ? depthRow(curve) : CurveRow::of(curve));
}

void CurveRows::setType(int type)
{
    const bool wasDepth = isDepth();
    m_type = type;
    if (isDepth() == wasDepth)
        return;
    for (CurveRow &row : m_rows) {
        if (isDepth() && row.group != depthGroup()) {
            row.groupBeforeDepth = row.group;
            row.curveBeforeDepth = row.curve;
            row.group = depthGroup();
            row.curve = defaultCurve();
        } else if (!isDepth() && !row.groupBeforeDepth.isNull()) {
            row.group = row.groupBeforeDepth;
            row.curve = row.curveBeforeDepth;
            row.groupBeforeDepth = row.curveBeforeDepth = QString();
        }
    }
}

void CurveRows::remove(int row)
{
    const int count = m_rows.size();
    m_rows.remove(row);
    forEachLimit(&m_rows, [count](QString *limit, const QString &boundary) {
        if (filllimit::index(*limit, boundary, count) == filllimit::firstCurve + count - 1)
            *limit = filllimit::text(filllimit::none, boundary);
    });
}

void CurveRows::move(int from, int to)
{
    const int count = m_rows.size();
    m_rows.move(from, to);
    const auto moved = [from, to](int curve) {
        if (curve == from)
            return to;
        if (from < curve && curve <= to)
            return curve - 1;
        return to <= curve && curve < from ? curve + 1 : curve;
    };
    forEachLimit(&m_rows, [&](QString *limit, const QString &boundary) {
        const int index = filllimit::index(*limit, boundary, count);
        if (index >= filllimit::firstCurve)
            *limit = filllimit::text(filllimit::firstCurve + moved(index - filllimit::firstCurve), boundary);
    });
}

std::optional<CurveRowProblem> CurveRows::problem() const
{
    for (int row = 0; row < m_rows.size() && !isDepth(); ++row) {
        for (const bool isMaximum : {false, true}) {
            const QString what = valueProblem(isMaximum ? m_rows.at(row).maximum : m_rows.at(row).minimum);
            if (!what.isEmpty())
                return CurveRowProblem{row, isMaximum,
                                       QStringLiteral("row %1: the %2 value %3.")
                                           .arg(QString::number(row + 1),
                                                isMaximum ? QStringLiteral("right") : QStringLiteral("left"), what)};
        }
    }
    return std::nullopt;
}

QByteArray CurveRows::bytes() const
{
    QVector<TemplateCurveRow> rows;
    rows.reserve(m_rows.size());
    for (const CurveRow &row : m_rows)
        rows.append(row);
    return ::trackBytes(trackTypeText(m_type), rows);
}
