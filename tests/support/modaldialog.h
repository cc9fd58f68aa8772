#pragma once

#include <QApplication>
#include <QTimer>

#include <memory>

/// Calls \a work for the modal dialog of a class when that has come up and stays: on a slow machine a progress box may stand
/// over it, or be shown before it, whose loop of events is not the dialog's own. \a context must live so long.
template<class Dialog, class Work>
void whenModal(QObject *context, const Work &work)
{
    constexpr int looks = 3;
    constexpr int lookMs = 5;
    auto *timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [timer, work, seen = std::make_shared<int>(0)] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        *seen = dialog ? *seen + 1 : 0;
        if (*seen < looks)
            return;
        timer->stop();
        timer->deleteLater();
        work(dialog);
    });
    timer->start(lookMs);
}
