#include "base/colorchoice.h"

#include "base/nestedevents.h"

#include <QColorDialog>
#include <QPointer>

namespace base {

QColor chooseColor(QWidget *parent, const QColor &current)
{
    const NestedEvents events;
    const QPointer<QColorDialog> dialog = new QColorDialog(current, parent);
    dialog->setWindowTitle(QStringLiteral("Select Color"));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    const QColor color = dialog && isChosen ? dialog->selectedColor() : QColor();
    delete dialog;
    return color;
}

} // namespace base
