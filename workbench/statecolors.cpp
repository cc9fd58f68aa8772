#include "workbench/statecolors.h"

namespace workbench {

namespace {

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

} // namespace

QColor problemText(const QPalette &palette)
{
    return isDark(palette) ? QColor(255, 138, 128) : QColor(179, 38, 30);
}

QColor problemBackground(const QPalette &palette)
{
    return mixed(QColor(220, 74, 61), palette.color(QPalette::Base), 0.3);
}

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto channel = [share](double a, double b) { return share * a + (1 - share) * b; };
    return QColor::fromRgbF(channel(first.redF(), second.redF()), channel(first.greenF(), second.greenF()),
                            channel(first.blueF(), second.blueF()));
}

QColor quietText(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.62);
}

} // namespace workbench
