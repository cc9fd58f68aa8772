#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace base {

/// The wait cursor for as long as it lives; nothing in a program that has no windows.
class WaitCursor
{
public:
    WaitCursor()
    {
        if (m_isShown)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
    ~WaitCursor()
    {
        if (m_isShown)
            QGuiApplication::restoreOverrideCursor();
    }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    const bool m_isShown = qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
};

} // namespace base
