#include "las/showntext.h"

#include <QTextDocument>

namespace las {

QString shortened(const QString &text)
{
    if (text.size() <= longestShownText)
        return text;
    // The two halves of a character outside the basic plane stay together.
    const int size = longestShownText - (text.at(longestShownText - 1).isHighSurrogate() ? 1 : 0);
    return text.left(size) + QStringLiteral("…");
}

QString toolTip(const QString &text)
{
    const QString shown = shortened(text);
    return Qt::mightBeRichText(shown) ? Qt::convertFromPlainText(shown) : shown;
}

} // namespace las
