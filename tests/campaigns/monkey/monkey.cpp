#include "monkey.h"

#include "watchdog.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <cstdio>
#include <ctime>

namespace {

constexpr int tickMs = 1;
constexpr int nestedAfterMs = 50; ///< what has not returned by then runs a loop of events of its own
constexpr double slowestAllowedS = 2;
constexpr double longestWaitS = 60; ///< without work of its own: a wait for something that does not come
constexpr int rememberedDeeds = 12;
constexpr int longestEnding = 2000;
constexpr int rowStep = 8; // pixels
constexpr int inCheckBox = 10;

const QVector<Qt::Key> plainKeys{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,    Qt::Key_Backtab,  Qt::Key_Up,
                                 Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Home,     Qt::Key_End,
                                 Qt::Key_PageUp, Qt::Key_Delete, Qt::Key_Space,  Qt::Key_PageDown, Qt::Key_Backspace,
                                 Qt::Key_F2,     Qt::Key_F5,     Qt::Key_Insert, Qt::Key_Menu,     Qt::Key_F10};
const QVector<Qt::Key> controlKeys{Qt::Key_A,   Qt::Key_C,        Qt::Key_V,    Qt::Key_X,    Qt::Key_Z,
                                   Qt::Key_0,   Qt::Key_W,        Qt::Key_P,    Qt::Key_I,    Qt::Key_E,
                                   Qt::Key_N,   Qt::Key_O,        Qt::Key_S,    Qt::Key_F,    Qt::Key_Home,
                                   Qt::Key_End, Qt::Key_PageDown, Qt::Key_Plus, Qt::Key_Minus};
// Without "/": a path that is typed stays in the current folder.
const QString typedCharacters = QStringLiteral("0123456789.,-+eEabcXYZ |:#%&<>()_\u00e4\u03b3\u0627");

double threadCpuSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

QString nameOf(const QWidget *widget)
{
    if (!widget)
        return QStringLiteral("nothing");
    QString name = QString::fromLatin1(widget->metaObject()->className());
    if (!widget->objectName().isEmpty())
        name += QLatin1Char(' ') + widget->objectName();
    return name;
}

// A window may go between press and release.
void pressAndRelease(const QPointer<QWindow> &window, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                     const QPoint &place)
{
    if (window)
        QTest::mousePress(window, button, modifiers, place);
    if (window)
        QTest::mouseRelease(window, button, modifiers, place);
}

// Not by QTest's function for keys with modifiers: it gives several events to a window that the first may end.
void pressAndRelease(const QPointer<QWindow> &window, Qt::Key key, Qt::KeyboardModifiers modifiers,
                     const QString &text = {})
{
    const char character = text.isEmpty() ? QTest::keyToAscii(key) : '\0';
    const QString typed = character != '\0' ? QString(QLatin1Char(character)) : text;
    for (const bool isPress : {true, false})
        if (window)
            QTest::simulateEvent(window.data(), isPress, key, modifiers, typed, false);
}

template<class Item>
const Item &oneOf(const QVector<Item> &items, QRandomGenerator &random)
{
    return items.at(static_cast<int>(random.bounded(items.size())));
}

} // namespace

Monkey::Monkey(const Options &options, QObject *parent)
    : QObject(parent)
    , m_random(options.seed)
    , m_options(options)
{
    qApp->installEventFilter(this);
}

void Monkey::addHappening(const QString &name, int rarity, bool isInDialogs, const std::function<void()> &happening)
{
    m_happenings.append({name, rarity, isInDialogs, happening});
}

void Monkey::run()
{
    m_sinceTick.start();
    m_cpuS = threadCpuSeconds();
    schedule();
}

bool Monkey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close && watched == m_keptOpen) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void Monkey::addFinding(const QString &text)
{
    m_findings.append(text + QStringLiteral("\n    after: ") + m_done.join(QStringLiteral("\n           ")));
}

void Monkey::note(const QString &what)
{
    const QString line = QStringLiteral("%1: %2").arg(m_given).arg(what);
    m_done.append(line);
    if (m_done.size() > rememberedDeeds)
        m_done.removeFirst();
    watchdog::remember(line);
    if (m_options.isTalking)
        std::printf("%s\n", qUtf8Printable(line));
}

// A timer of its own each time: one that is just being served would not fire in a loop of events inside.
void Monkey::schedule()
{
    QTimer::singleShot(tickMs, this, &Monkey::tick);
}

void Monkey::measure()
{
    const double cpuS = threadCpuSeconds();
    const double workS = cpuS - m_cpuS;
    const double waitS = static_cast<double>(m_sinceTick.restart()) / 1000;
    m_cpuS = cpuS;
    m_slowestS = qMax(m_slowestS, workS);
    if (workS > slowestAllowedS)
        addFinding(QStringLiteral("%1 s of work without an event").arg(workS));
    else if (waitS > longestWaitS)
        addFinding(QStringLiteral("%1 s without an event").arg(waitS));
}

void Monkey::tick()
{
    watchdog::touch();
    measure();
    if (m_given >= m_options.events) {
        end();
        return;
    }
    schedule();
    if (m_isActing && m_sinceAct.elapsed() < nestedAfterMs)
        return;
    m_isActing = true;
    m_sinceAct.start();
    ++m_given;
    act();
    m_isActing = false;
}

// Leaves all loops of events, from the innermost on.
void Monkey::end()
{
    if (++m_endingTicks > longestEnding) {
        addFinding(QStringLiteral("%1 does not close").arg(nameOf(QApplication::activeModalWidget())));
        watchdog::giveUp(m_findings.last());
    }
    QWidget *popup = QApplication::activePopupWidget();
    QWidget *modal = QApplication::activeModalWidget();
    if (!popup && !modal && !m_isActing) {
        QCoreApplication::quit();
        return;
    }
    schedule();
    if (popup)
        popup->close();
    else if (auto *box = qobject_cast<QMessageBox *>(modal))
        box->buttons().constLast()->click();
    else if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->reject();
    else if (modal)
        modal->close();
}

bool Monkey::actBeside()
{
    const bool isInDialog = QApplication::activeModalWidget() || QApplication::activePopupWidget();
    for (const Happening &happening : qAsConst(m_happenings)) {
        if (!oneIn(happening.rarity) || (isInDialog && !happening.isInDialogs))
            continue;
        note(happening.name);
        happening.happen();
        return true;
    }
    return false;
}

void Monkey::act()
{
    if (actBeside())
        return;
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        useMenu(menu);
        return;
    }
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *files = qobject_cast<QFileDialog *>(modal))
        chooseFile(files);
    else if (modal && (qobject_cast<QMessageBox *>(modal) || oneIn(12)))
        answer(modal);
    else if (QWidget *window = chooseWindow())
        useWindow(window);
}

void Monkey::answer(QWidget *dialog)
{
    if (oneIn(4)) {
        note(QStringLiteral("Escape in ") + nameOf(dialog));
        QTest::keyPress(dialog, Qt::Key_Escape);
        return;
    }
    QVector<QPushButton *> buttons;
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        if (button->isVisible() && button->isEnabled())
            buttons.append(button);
    if (buttons.isEmpty())
        return;
    QPushButton *button = oneOf(buttons, m_random);
    note(QStringLiteral("%1 \"%2\": button \"%3\"").arg(nameOf(dialog), dialog->windowTitle(), button->text()));
    button->click();
}

void Monkey::chooseFile(QFileDialog *dialog)
{
    if (oneIn(3)) {
        note(QStringLiteral("no file in ") + dialog->windowTitle());
        static_cast<QDialog *>(dialog)->reject();
        return;
    }
    const QDir scratch(m_options.scratch);
    const bool isFolder = dialog->fileMode() == QFileDialog::Directory;
    QStringList names = scratch.entryList((isFolder ? QDir::Dirs : QDir::Files) | QDir::NoDotAndDotDot, QDir::Name);
    if (dialog->acceptMode() == QFileDialog::AcceptSave)
        names = QStringList{QStringLiteral("saved.txt")};
    if (names.isEmpty())
        names.append(QString());
    const QString name = names.at(below(names.size()));
    note(QStringLiteral("\"%1\" in %2").arg(name, dialog->windowTitle()));
    dialog->setDirectory(scratch.path());
    dialog->selectFile(scratch.filePath(name));
    static_cast<QDialog *>(dialog)->accept();
    if (dialog->isVisible())
        static_cast<QDialog *>(dialog)->reject();
}

bool Monkey::isLeftAlone(const QAction *action) const
{
    return action->isSeparator() || !action->isEnabled() || !action->isVisible();
}

void Monkey::useMenu(QMenu *menu)
{
    QVector<QAction *> actions;
    for (QAction *action : menu->actions())
        if (!isLeftAlone(action))
            actions.append(action);
    if (actions.isEmpty() || oneIn(6)) {
        note(QStringLiteral("menu closed"));
        QTest::keyPress(menu, Qt::Key_Escape);
        return;
    }
    QAction *action = oneOf(actions, m_random);
    note(QStringLiteral("menu entry \"%1\"").arg(action->text()));
    const QPoint place = menu->actionGeometry(action).center();
    const QPointer<QWindow> window = menu->windowHandle();
    QTest::mouseMove(window, place);
    pressAndRelease(window, Qt::LeftButton, {}, place);
}

void Monkey::openMenu(QWidget *window)
{
    QVector<QPair<QMenuBar *, QAction *>> menus;
    for (QMenuBar *bar : window->findChildren<QMenuBar *>())
        if (bar->isVisible() && bar->window() == window)
            for (QAction *action : bar->actions())
                if (!isLeftAlone(action))
                    menus.append({bar, action});
    if (menus.isEmpty())
        return;
    const auto menu = oneOf(menus, m_random);
    note(QStringLiteral("menu \"%1\"").arg(menu.second->text()));
    const QPoint place = menu.first->mapTo(window, menu.first->actionGeometry(menu.second).center());
    pressAndRelease(window->windowHandle(), Qt::LeftButton, {}, place);
}

QWidget *Monkey::chooseWindow()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup;
    QWidget *modal = QApplication::activeModalWidget();
    if (modal && !oneIn(20))
        return modal;
    QVector<QWidget *> windows;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowHandle()
            && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)
            && (window != m_keptOpen || oneIn(8))) // the program's own window is used least
            windows.append(window);
    return windows.isEmpty() ? m_keptOpen : oneOf(windows, m_random);
}

QWidget *Monkey::chooseWidget(QWidget *window)
{
    QVector<QWidget *> widgets{window};
    QVector<QWidget *> rewarding; // lists, trees, tables, displays
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != window || widget->visibleRegion().isEmpty())
            continue;
        widgets.append(widget);
        if (qobject_cast<QAbstractScrollArea *>(widget->parentWidget()) && !qobject_cast<QScrollBar *>(widget))
            rewarding.append(widget);
    }
    return !rewarding.isEmpty() && oneIn(3) ? oneOf(rewarding, m_random) : oneOf(widgets, m_random);
}

// In a list, tree or table often on an item: at its check box or in its middle.
QPoint Monkey::placeIn(QWidget *widget)
{
    auto *items = qobject_cast<QAbstractItemView *>(widget->parentWidget());
    if (items && widget == items->viewport() && !oneIn(5)) {
        QVector<QModelIndex> rows;
        const int x = below(widget->width());
        for (int y = 0; y < widget->height(); y += rowStep)
            if (const QModelIndex index = items->indexAt(QPoint(x, y)); index.isValid())
                rows.append(index);
        const QRect place = rows.isEmpty() ? QRect() : items->visualRect(oneOf(rows, m_random)) & widget->rect();
        if (!place.isEmpty())
            return widget->mapTo(widget->window(),
                                 oneIn(2) ? place.center() : QPoint(place.left() + inCheckBox, place.center().y()));
    }
    const QRect shown = widget->visibleRegion().boundingRect();
    const QPoint place =
        shown.isEmpty() ? QPoint() : QPoint(shown.left() + below(shown.width()), shown.top() + below(shown.height()));
    return widget->mapTo(widget->window(), place);
}

void Monkey::useWindow(QWidget *window)
{
    if (!window || !window->windowHandle())
        return;
    window->activateWindow();
    const int kind = below(100);
    if (kind < 48)
        click(window);
    else if (kind < 58)
        drag(window);
    else if (kind < 82)
        type(window);
    else if (kind < 91)
        wheel(window);
    else if (kind < 93)
        resize(window);
    else
        openMenu(window);
}

void Monkey::click(QWidget *window)
{
    QWidget *widget = chooseWidget(window);
    const QPoint place = placeIn(widget);
    static const QVector<Qt::KeyboardModifiers> modifiers{{}, {}, {}, {}, Qt::ControlModifier, Qt::ShiftModifier};
    const Qt::KeyboardModifiers modifier = oneOf(modifiers, m_random);
    const int kind = below(10);
    const Qt::MouseButton button = kind < 7 ? Qt::LeftButton : kind < 9 ? Qt::RightButton : Qt::MiddleButton;
    const bool isDouble = button == Qt::LeftButton && oneIn(4);
    note(QStringLiteral("%1 %2 at %3,%4 of %5, on %6")
             .arg(isDouble ? QStringLiteral("double click") : QStringLiteral("click"))
             .arg(int(button))
             .arg(place.x())
             .arg(place.y())
             .arg(nameOf(window), nameOf(widget)));
    QPointer<QWindow> handle = window->windowHandle();
    QTest::mouseMove(handle, place);
    if (handle && isDouble)
        QTest::mouseDClick(handle, button, modifier, place);
    else
        pressAndRelease(handle, button, modifier, place);
}

void Monkey::drag(QWidget *window)
{
    const QPoint from = placeIn(chooseWidget(window));
    const QPoint to(below(window->width()), below(window->height()));
    const Qt::KeyboardModifiers modifier = oneIn(3) ? Qt::ControlModifier : Qt::NoModifier;
    const Qt::MouseButton button = oneIn(6) ? Qt::MiddleButton : Qt::LeftButton;
    note(QStringLiteral("drag %1,%2 to %3,%4 of %5")
             .arg(from.x())
             .arg(from.y())
             .arg(to.x())
             .arg(to.y())
             .arg(nameOf(window)));
    QPointer<QWindow> handle = window->windowHandle();
    QTest::mousePress(handle, button, modifier, from);
    for (int step = 1; step <= 4 && handle; ++step)
        QTest::mouseMove(handle, from + (to - from) * step / 4);
    if (handle)
        QTest::mouseRelease(handle, button, modifier, to);
}

void Monkey::type(QWidget *window)
{
    const QWidget *focus = QApplication::focusWidget();
    const auto *edit = qobject_cast<const QLineEdit *>(focus);
    if (edit && QDir::isAbsolutePath(edit->text()))
        return; // no path is changed into one that leads elsewhere
    QPointer<QWindow> handle = window->windowHandle();
    const int kind = below(10);
    if (kind < 5) {
        const QChar character = typedCharacters.at(below(typedCharacters.size()));
        note(QStringLiteral("types \"%1\" in %2").arg(character).arg(nameOf(focus)));
        pressAndRelease(handle, Qt::Key_unknown, Qt::NoModifier, QString(character));
        return;
    }
    const bool hasControl = kind == 9;
    const Qt::Key key = oneOf(hasControl ? controlKeys : plainKeys, m_random);
    const Qt::KeyboardModifiers modifiers = hasControl ? Qt::ControlModifier
        : oneIn(6)                                     ? Qt::ShiftModifier
                                                       : Qt::NoModifier;
    note(QStringLiteral("key %1%2 in %3")
             .arg(hasControl ? QStringLiteral("Ctrl+") : QString())
             .arg(key, 0, 16)
             .arg(nameOf(focus)));
    pressAndRelease(handle, key, modifiers);
}

void Monkey::wheel(QWidget *window)
{
    QWidget *widget = chooseWidget(window);
    const QPoint place = widget->mapFrom(window, placeIn(widget));
    const int turn = (below(5) - 2) * 120;
    const Qt::KeyboardModifiers modifiers = oneIn(3) ? Qt::ControlModifier : Qt::NoModifier;
    note(QStringLiteral("wheel %1 over %2").arg(turn).arg(nameOf(widget)));
    QWheelEvent event(place, widget->mapToGlobal(place), {}, oneIn(5) ? QPoint(turn, 0) : QPoint(0, turn),
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

void Monkey::resize(QWidget *window)
{
    const QSize size(200 + below(1400), 150 + below(900));
    note(QStringLiteral("%1 becomes %2 x %3").arg(nameOf(window)).arg(size.width()).arg(size.height()));
    window->showNormal();
    window->resize(size);
}
