#pragma once

#include <QApplication>
#include <QDialog>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

/// Runs a script on the next modal dialog of a name, as soon as it is up and \a isReady; also inside a dialog of another
/// script.
inline void onNextDialog(const QString &name, const std::function<void(QDialog *)> &script,
                         const std::function<bool(QDialog *)> &isReady = {})
{
    auto *timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, name, script, isReady] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog->objectName() != name || (isReady && !isReady(dialog)))
            return;
        timer->stop();
        timer->deleteLater();
        script(dialog);
    });
    timer->start(1);
}

/// Shows the window and makes it the active one, so that shortcuts, mnemonics and the focus work.
inline bool showActive(QWidget *window)
{
    window->show();
    window->activateWindow();
    return QTest::qWaitForWindowActive(window);
}

/// Presses Alt and a letter, and waits for the button that is pressed by it: it clicks a moment later.
inline void pressMnemonic(QWidget *window, Qt::Key key)
{
    constexpr int clickDelayMs = 150;
    QTest::keyClick(window, key, Qt::AltModifier);
    QTest::qWait(clickDelayMs);
}

/// Settings in a folder that goes with the test program; make one before the first use of settings.
class IsolatedSettings
{
public:
    IsolatedSettings() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path()); }
    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};
