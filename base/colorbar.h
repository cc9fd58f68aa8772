#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QVector>

/// Colour bars: the pictures "cb_<k>.png" in the folder "ColorBars" of the host's set-up data.
namespace base {

struct ColorBar
{
    int number = 0; ///< k of cb_k.png; 0 where none was loaded
    QImage image; ///< as drawn in curve headers and choosers; null where none was loaded
    QVector<QRgb> colors; ///< one a pixel column, from the middle row; empty where none was loaded
    bool isNull() const { return colors.isEmpty(); }
};

/// The folder of the colour bars below the host's set-up data folder; "ColorBars", else "Colorbars" where only that
/// one exists.
QString colorBarFolder(const QString &setupFolder);

/// The bar \a number of the set-up data folder. Null when the file is missing or no image. Reads the disk: keep the
/// result.
ColorBar loadColorBar(const QString &setupFolder, int number);

/// The numbers of all bars of the set-up data folder, ascending. One directory listing; images are not read.
QVector<int> colorBarNumbers(const QString &setupFolder);

} // namespace base
