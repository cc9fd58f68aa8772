#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QProgressBar;
QT_END_NAMESPACE

/// Writes down what a user sees of a launch: the state of the windows whenever the launch handles events, each state
/// once, and every value of the progress bar.
class LaunchRecorder : public QObject
{
    Q_OBJECT

public:
    /// \a describe tells the state of the launch as one line.
    explicit LaunchRecorder(const std::function<QString()> &describe);

    QStringList states;
    QVector<int> progress;
    int launcherShows = 0;
    int mainWindowShows = 0; ///< how often a main window came up
    /// Called after a state was written down, with its number, from 1.
    std::function<void(int number)> onState;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void look();

    std::function<QString()> m_describe;
};
