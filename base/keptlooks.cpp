#include "base/keptlooks.h"

#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QHeaderView>
#include <QScreen>
#include <QStyle>

#include <functional>

namespace base {

namespace {

constexpr int frameWidth = 4; // of most window managers, or more than theirs

// Calls back when a widget comes into sight and when it goes. A child of the widget.
class SightWatch : public QObject
{
public:
    SightWatch(QWidget *widget, std::function<void()> shown, std::function<void()> hidden)
        : QObject(widget)
        , m_shown(std::move(shown))
        , m_hidden(std::move(hidden))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->spontaneous()) // minimized, or on another desktop
            return false;
        if (event->type() == QEvent::Show && m_shown)
            m_shown();
        else if (event->type() == QEvent::Hide)
            m_hidden();
        return false;
    }

private:
    std::function<void()> m_shown;
    std::function<void()> m_hidden;
};

} // namespace

QSize roomOnScreen(const QWidget &window)
{
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return window.screen()->availableSize() - QSize(2 * frameWidth, title + 2 * frameWidth);
}

void keepSize(QDialog *dialog, const QString &name, const UserSettings &settings)
{
    const QString key = QStringLiteral("sizes/") + name;
    const QSize kept = settings.value(key).toSize();
    const QSize size = kept.isValid() && !kept.isEmpty() ? kept : dialog->size();
    dialog->resize(size.boundedTo(roomOnScreen(*dialog)));
    new SightWatch(dialog, {}, [dialog, key, settings] {
        const bool isUsual = !(dialog->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
        settings.setValue(key, isUsual ? dialog->size() : dialog->normalGeometry().size());
    });
}

void keepColumns(QHeaderView *header, const QString &name)
{
    const QString key = QStringLiteral("columns/") + name;
    const auto restore = [header, key] {
        const QVariantList widths = pluginSettings().value(key).toList();
        for (int column = 0; widths.size() == header->count() && column < widths.size(); ++column)
            if (widths.at(column).toInt() > 0)
                header->resizeSection(column, widths.at(column).toInt());
    };
    new SightWatch(header, restore, [header, key] {
        QVariantList widths;
        for (int column = 0; column < header->count(); ++column)
            widths.append(header->sectionSize(column));
        pluginSettings().setValue(key, widths);
    });
}

QString lastFolder(const QString &purpose)
{
    const QString folder = pluginSettings().value(QStringLiteral("folders/") + purpose).toString();
    return folder.isEmpty() ? QDir::homePath() : folder;
}

void keepLastFolder(const QString &purpose, const QString &folder)
{
    pluginSettings().setValue(QStringLiteral("folders/") + purpose, folder);
}

} // namespace base
