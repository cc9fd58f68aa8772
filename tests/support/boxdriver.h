#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <functional>

/// Answers the modal message boxes that come up while it lives, and records what they showed.
class BoxDriver : public QObject
{
    Q_OBJECT

public:
    struct Seen
    {
        QString title;
        QString text;
        QMessageBox::Icon icon;
        QStringList buttons; ///< texts without "&", in the order in which they were added
    };

    BoxDriver();

    /// The buttons to press, first box first; "" presses Escape. A box beyond the list gets its default or only
    /// button.
    QStringList answers;
    QVector<Seen> seen;
    /// Called when a message box has come up, before it is answered.
    std::function<void()> onBox;
    /// Called for every modal widget that is no message box; null leaves it alone.
    std::function<void(QWidget *)> onDialog;

private:
    void look();
    void answer(QMessageBox *box);

    QTimer m_timer;
    bool m_isBusy = false;
};
