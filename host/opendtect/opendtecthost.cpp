#include "host/opendtect/opendtecthost.h"

#include <QGuiApplication>
#include <QWindow>

namespace opendtect {

OpendTectHost::OpendTectHost(uiMainWin *window, uiMenu *menu)
    : m_survey(
        [this] {
            m_wells.forget();
            m_listeners.tell([](host::Listener &listener) { listener.surveyChanged(); });
        },
        [this] {
            m_listeners.tell([](host::Listener &listener) { listener.hostClosing(); });
            m_wells.forget();
        })
    , m_shell(window, menu)
    , m_wells([this](const QString &key) {
        m_listeners.tell([&key](host::Listener &listener) { listener.markersChanged(key); });
    })
{
    m_wells.watchLoadedWells();
    // The host loads a well before it opens a window on it, in which its markers may be edited.
    if (const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        QObject::connect(application, &QGuiApplication::focusWindowChanged, &m_connections,
                         [this] { m_wells.watchLoadedWells(); });
}

} // namespace opendtect
