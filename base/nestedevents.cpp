#include "base/nestedevents.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVector>

#include <utility>

namespace base {

namespace {

struct WaitingCall
{
    QPointer<QObject> context;
    std::function<void()> call;
};

// The stack of the interface thread exists once, and so does this.
int depth = 0;
QVector<WaitingCall> waitingCalls;

} // namespace

NestedEvents::NestedEvents()
{
    ++depth;
}

NestedEvents::~NestedEvents()
{
    if (--depth > 0)
        return;
    const QVector<WaitingCall> calls = std::exchange(waitingCalls, {});
    // What stood here goes on now; the event arrives when it has returned, or in its next nested events, and then
    // waits for their end in its turn.
    for (const WaitingCall &waiting : calls)
        if (waiting.context)
            QMetaObject::invokeMethod(
                waiting.context, [waiting] { whenDone(waiting.context, waiting.call); }, Qt::QueuedConnection);
}

bool NestedEvents::areHandled()
{
    return depth > 0;
}

void NestedEvents::whenDone(QObject *context, const std::function<void()> &call)
{
    if (areHandled())
        waitingCalls.append({context, call});
    else
        call();
}

void handleEvents(QEventLoop::ProcessEventsFlags flags)
{
    const NestedEvents events;
    QCoreApplication::processEvents(flags);
}

} // namespace base
