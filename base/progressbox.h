#pragma once

#include <QPointer>
#include <QString>

QT_BEGIN_NAMESPACE
class QProgressDialog;
class QWidget;
QT_END_NAMESPACE

namespace base {

/// The box that a long work shows over everything else, with a button that cancels it. It appears only when the work takes
/// a while. Interface thread only.
class ProgressBox
{
public:
    /// \a what is done, as a sentence; plain text. The box lies over \a window, which may go before it.
    ProgressBox(const QString &title, const QString &what, QWidget *window);
    ~ProgressBox();
    ProgressBox(const ProgressBox &) = delete;
    ProgressBox &operator=(const ProgressBox &) = delete;

    /// So much is done. Handles events once it is shown; false when the user cancelled.
    bool step(qint64 done, qint64 all);

private:
    QPointer<QProgressDialog> m_box;
};

} // namespace base
