#pragma once

#include <QString>

/// Texts of files and wells on their way into labels, cells and tool tips: they may be very long or look like markup.
namespace las {

constexpr int longestShownText = 200;

/// The text, or its first characters and "…" where it is longer than what is shown.
QString shortened(const QString &text);
/// The shortened text as a tool tip that shows it to the letter.
QString toolTip(const QString &text);

} // namespace las
