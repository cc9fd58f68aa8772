#include "templates/filllimit.h"

#include "base/numbers.h"

namespace {

constexpr char curvePrefix[] = "Curve_";

} // namespace

namespace filllimit {

QString leftBoundary()
{
    return QStringLiteral("Left Boundary");
}

QString rightBoundary()
{
    return QStringLiteral("Right Boundary");
}

QString text(int index, const QString &boundary)
{
    if (index == none)
        return QStringLiteral("None");
    return index < firstCurve ? boundary : QLatin1String(curvePrefix) + QString::number(index - firstCurve + 1);
}

int index(const QString &text, const QString &boundary, int curveCount)
{
    if (text == QLatin1String("None"))
        return none;
    if (text == boundary)
        return firstCurve - 1;
    if (!text.startsWith(QLatin1String(curvePrefix)))
        return -1;
    const int number = base::parseInteger(text.mid(static_cast<int>(qstrlen(curvePrefix))).toUtf8()).value_or(0);
    return number >= 1 && number <= curveCount ? firstCurve + number - 1 : -1;
}

} // namespace filllimit
