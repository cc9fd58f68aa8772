#include "base/colorbar.h"

#include <QDir>
#include <QImageReader>

#include <algorithm>

namespace base {

namespace {

// A bar is a strip of some hundred pixels; what is larger than this is no bar.
constexpr int maximumSide = 8192;

QString fileName(int number)
{
    return QStringLiteral("cb_%1.png").arg(number);
}

} // namespace

QString colorBarFolder(const QString &setupFolder)
{
    const QString folder = setupFolder + QStringLiteral("/ColorBars");
    const QString other = setupFolder + QStringLiteral("/Colorbars");
    return !QFileInfo(folder).isDir() && QFileInfo(other).isDir() ? other : folder;
}

ColorBar loadColorBar(const QString &setupFolder, int number)
{
    ColorBar bar;
    QImageReader reader(QDir(colorBarFolder(setupFolder)).filePath(fileName(number)));
    const QSize size = reader.size();
    if (number < 1 || size.width() > maximumSide || size.height() > maximumSide)
        return bar;
    const QImage image = reader.read();
    if (image.isNull())
        return bar;
    bar.number = number;
    bar.image = image;
    bar.colors.reserve(image.width());
    for (int x = 0; x < image.width(); ++x)
        bar.colors.append(image.pixel(x, image.height() / 2));
    return bar;
}

QVector<int> colorBarNumbers(const QString &setupFolder)
{
    QVector<int> numbers;
    const QStringList names =
        QDir(colorBarFolder(setupFolder)).entryList({QStringLiteral("cb_*.png")}, QDir::Files, QDir::NoSort);
    for (const QString &name : names) {
        const int number = name.mid(3, name.size() - 7).toInt();
        if (number > 0 && name == fileName(number))
            numbers.append(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace base
