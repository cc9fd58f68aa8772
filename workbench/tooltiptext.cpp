#include "workbench/tooltiptext.h"

#include <QTextDocument>

namespace workbench {

QString toolTipText(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace workbench
