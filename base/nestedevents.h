#pragma once

#include <QEventLoop>
#include <QObject>

#include <functional>

namespace base {

/// Stands on the stack wherever our code handles events before it returns: while a box or a dialog is up, at a step of
/// a long work, in a call of the host that may do the same. Whatever that code still works with must not be deleted
/// before it has returned; who wants to delete it waits with whenDone(). Interface thread only.
class NestedEvents
{
public:
    NestedEvents();
    ~NestedEvents();
    NestedEvents(const NestedEvents &) = delete;
    NestedEvents &operator=(const NestedEvents &) = delete;

    /// True while one stands.
    static bool areHandled();
    /// Calls \a call: at once when none stands, else when all have gone and the code in which they stood has returned
    /// to the event loop. It is never called once \a context has been deleted.
    static void whenDone(QObject *context, const std::function<void()> &call);
};

/// Handles the events that are due, within NestedEvents: a step of a long work.
void handleEvents(QEventLoop::ProcessEventsFlags flags = QEventLoop::AllEvents);

} // namespace base
