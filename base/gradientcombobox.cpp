#include "base/gradientcombobox.h"

#include "base/colorbar.h"

#include <QPainter>
#include <QPixmap>

namespace {

constexpr int itemHeight = 20;
constexpr int smallestWidth = 60;
constexpr QSize barIconSize(50, 20);
constexpr QSize swatchSize(100, 20);

QPixmap whiteSwatch()
{
    QPixmap picture(swatchSize);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setPen(Qt::black);
    painter.drawRect(0, 0, swatchSize.width() - 1, swatchSize.height() - 1);
    return picture;
}

} // namespace

GradientComboBox::GradientComboBox(const QString &setupDataFolder, QWidget *parent)
    : QComboBox(parent)
{
    setMinimumWidth(smallestWidth);
    setIconSize(barIconSize);
    addItem(QIcon(whiteSwatch()), QString(), 0);
    for (const int number : base::colorBarNumbers(setupDataFolder)) {
        const QImage bar = base::loadColorBar(setupDataFolder, number).image;
        addItem(bar.isNull() ? QIcon() : QIcon(QPixmap::fromImage(bar.scaled(barIconSize))), QString(), number);
    }
    for (int i = 0; i < count(); ++i)
        setItemData(i, QSize(barIconSize.width(), itemHeight), Qt::SizeHintRole);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &GradientComboBox::itemIsActivated);
}
