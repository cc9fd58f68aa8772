#pragma once

#include "support/grabbed.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QGraphicsView>
#include <QGroupBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPalette>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStringList>
#include <QTabBar>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <cmath>

/// Whether the texts of a window can be read, judged by its picture alone: the best contrast of any pixel of a text's place
/// against the colour that most of the place has, by the usual formula (1 for equal colours, 21 for black on white).
namespace legible {

/// As dark desktops have it.
inline QPalette darkPalette()
{
    QPalette palette;
    const QColor text(224, 224, 224);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
                            QPalette::ToolTipText, QPalette::PlaceholderText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Window, QColor(43, 43, 43));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 38));
    palette.setColor(QPalette::Button, QColor(60, 60, 60));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 60));
    palette.setColor(QPalette::Highlight, QColor(42, 96, 160));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(120, 170, 255));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(120, 120, 120));
    return palette;
}

inline double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

inline double contrast(QRgb a, QRgb b)
{
    const double lighter = std::max(luminance(a), luminance(b)) + 0.05;
    const double darker = std::min(luminance(a), luminance(b)) + 0.05;
    return lighter / darker;
}

inline double bestContrast(const QImage &image, const QRect &place)
{
    const QRect inside = place & image.rect();
    QHash<QRgb, int> counts;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++counts[image.pixel(x, y)];
    QRgb paper = 0;
    int most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > most) {
            paper = it.key();
            most = it.value();
        }
    double best = 1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        best = std::max(best, contrast(it.key(), paper));
    return best;
}

/// The texts of a window that cannot be read, each with its widget and contrast. Disabled ones may be fainter. Views that
/// draw on paper are left out. \a count gets the number of texts that were judged.
inline QStringList illegibleTexts(QWidget *window, int *count)
{
    constexpr double needed = 3;
    constexpr double neededWhenDisabled = 1.5;
    const QImage image = grabbed(window);
    QStringList found;
    const auto judge = [&](const QWidget *widget, const QRect &rect, const QString &text, bool isEnabled) {
        const QRect shown = rect & widget->visibleRegion().boundingRect();
        if (text.trimmed().isEmpty() || shown.width() < 8 || shown.height() < 8)
            return;
        ++*count;
        const double best = bestContrast(image, QRect(widget->mapTo(window, shown.topLeft()), shown.size()));
        if (best < (isEnabled ? needed : neededWhenDisabled))
            found.append(QStringLiteral("%1 %2 \"%3\": %4")
                             .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(), text)
                             .arg(best, 0, 'f', 2));
    };
    if (const auto *menu = qobject_cast<const QMenu *>(window))
        for (QAction *action : menu->actions())
            judge(menu, menu->actionGeometry(action).adjusted(24, 1, -2, -1), action->text(), action->isEnabled());
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != window || qobject_cast<const QGraphicsView *>(widget))
            continue;
        const QRect all = widget->rect();
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            judge(widget, all, label->text(), widget->isEnabled());
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            judge(widget, all.adjusted(3, 3, -3, -3), button->text(), widget->isEnabled());
        else if (const auto *line = qobject_cast<const QLineEdit *>(widget))
            judge(widget, all.adjusted(3, 3, -3, -3), line->text(), widget->isEnabled());
        else if (const auto *box = qobject_cast<const QComboBox *>(widget))
            judge(widget, all.adjusted(3, 3, -20, -3), box->currentText(), widget->isEnabled());
        else if (const auto *text = qobject_cast<const QPlainTextEdit *>(widget))
            judge(text->viewport(), text->viewport()->rect(), text->toPlainText(), widget->isEnabled());
        else if (const auto *edit = qobject_cast<const QTextEdit *>(widget))
            judge(edit->viewport(), edit->viewport()->rect(), edit->toPlainText(), widget->isEnabled());
        else if (const auto *group = qobject_cast<const QGroupBox *>(widget))
            judge(widget, QRect(0, 0, all.width(), group->fontMetrics().height()), group->title(),
                  widget->isEnabled());
        else if (const auto *progress = qobject_cast<const QProgressBar *>(widget))
            judge(widget, all.adjusted(3, 3, -3, -3), progress->text(), widget->isEnabled());
        else if (const auto *bar = qobject_cast<const QTabBar *>(widget))
            for (int tab = 0; tab < bar->count(); ++tab)
                judge(bar, bar->tabRect(tab).adjusted(3, 3, -3, -3), bar->tabText(tab), bar->isEnabled());
        else if (const auto *view = qobject_cast<const QAbstractItemView *>(widget))
            for (int y = 2; y < view->viewport()->height(); y += 4)
                for (int x = 2; x < view->viewport()->width(); x += 40) {
                    const QModelIndex index = view->indexAt(QPoint(x, y));
                    const QRect cell = view->visualRect(index);
                    const bool isSeen = !index.isValid() || y - cell.top() >= 4 || x - cell.left() >= 40;
                    if (!isSeen && !view->indexWidget(index))
                        judge(view->viewport(), cell.adjusted(1, 1, -1, -1), index.data().toString(),
                              view->isEnabled() && index.flags().testFlag(Qt::ItemIsEnabled));
                }
    }
    return found;
}

} // namespace legible
