#pragma once

#include <QPalette>

/// Colours that say something is wrong or unimportant, fit for light and dark palettes.
namespace workbench {

/// Text on the palette's window or base.
QColor problemText(const QPalette &palette);
/// Background of a cell that holds something wrong.
QColor problemBackground(const QPalette &palette);
/// A mixture of two colours; \a share of the first, 0 to 1.
QColor mixed(const QColor &first, const QColor &second, double share);
/// Text of less weight: between text and background.
QColor quietText(const QPalette &palette);

} // namespace workbench
