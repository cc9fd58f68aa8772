#pragma once

#include "host/host.h"

#include <QVector>

namespace opendtect {

/// The listeners in the order in which they were added, each once. One that is taken out while the others are told
/// is told nothing more.
class ListenerList
{
public:
    void add(host::Listener *listener)
    {
        if (!m_listeners.contains(listener))
            m_listeners.append(listener);
    }
    void remove(host::Listener *listener) { m_listeners.removeAll(listener); }

    template<class Call>
    void tell(const Call &call) const
    {
        const QVector<host::Listener *> listeners = m_listeners;
        for (host::Listener *listener : listeners)
            if (m_listeners.contains(listener))
                call(*listener);
    }

private:
    QVector<host::Listener *> m_listeners;
};

} // namespace opendtect
