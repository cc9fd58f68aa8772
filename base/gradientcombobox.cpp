#include "base/gradientcombobox.h"

#include "base/colorbar.h"

#include <QPainter>
#include <QPixmap>
#include <QStandardItemModel>

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

QStandardItem *makeItem(const QIcon &icon, const QString &text, int number)
{
    auto *item = new QStandardItem(icon, text);
    item->setData(number, Qt::UserRole);
    item->setSizeHint(QSize(barIconSize.width(), itemHeight));
    return item;
}

} // namespace

QAbstractItemModel *GradientComboBox::makeBars(const QString &setupDataFolder, QObject *parent)
{
    auto *bars = new QStandardItemModel(parent);
    bars->appendRow(makeItem(QIcon(whiteSwatch()), QString(), 0));
    for (const int number : base::colorBarNumbers(setupDataFolder)) {
        const QImage bar = base::loadColorBar(setupDataFolder, number).image;
        bars->appendRow(
            makeItem(bar.isNull() ? QIcon() : QIcon(QPixmap::fromImage(bar.scaled(barIconSize))), QString(), number));
    }
    return bars;
}

GradientComboBox::GradientComboBox(const QString &setupDataFolder, QWidget *parent)
    : GradientComboBox(makeBars(setupDataFolder, nullptr), parent)
{
    model()->setParent(this);
}

GradientComboBox::GradientComboBox(QAbstractItemModel *bars, QWidget *parent)
    : QComboBox(parent)
{
    setMinimumWidth(smallestWidth);
    setIconSize(barIconSize);
    setModel(bars);
    setCurrentIndex(0);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &GradientComboBox::itemIsActivated);
}

void GradientComboBox::setBarNumber(int number)
{
    if (findData(number) < 0)
        if (auto *bars = qobject_cast<QStandardItemModel *>(model()))
            bars->appendRow(makeItem(QIcon(), QStringLiteral("cb_%1").arg(number), number));
    setCurrentIndex(findData(number));
}
