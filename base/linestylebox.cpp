#include "base/linestylebox.h"

#include <QPainter>
#include <QPen>
#include <QPixmap>

namespace base {

namespace {

constexpr int choices = 5;
constexpr int iconWidth = 60;
constexpr int iconHeight = 14;

QIcon lineIcon(const QPen &pen)
{
    QPixmap picture(iconWidth, iconHeight);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setPen(pen);
    painter.drawLine(0, iconHeight / 2, iconWidth, iconHeight / 2);
    return QIcon(picture);
}

void addChoices(QComboBox *box, QPen (*penOf)(int))
{
    box->setIconSize(QSize(iconWidth, iconHeight));
    for (int number = 1; number <= choices; ++number)
        box->addItem(lineIcon(penOf(number)), QString(), number);
}

QPen styledPen(int style)
{
    return QPen(QBrush(Qt::black), 1, static_cast<Qt::PenStyle>(style));
}

QPen widePen(int width)
{
    return QPen(QBrush(Qt::black), width);
}

} // namespace

LineStyleBox::LineStyleBox(QWidget *parent)
    : QComboBox(parent)
{
    setToolTip(QStringLiteral("Line style"));
    addChoices(this, styledPen);
}

LineWidthBox::LineWidthBox(QWidget *parent)
    : QComboBox(parent)
{
    setToolTip(QStringLiteral("Line width"));
    addChoices(this, widePen);
}

} // namespace base
