#pragma once

#include <QDialog>
#include <QPointer>

namespace base {
class Asker;
}

/// A dialog whose work handles events meanwhile and is cancelled by closing it. One that still works goes out of sight,
/// the work ends at its next step, and only then is it closed for good (and deleted, where its owner asked for that).
///
/// Boxes and events may delete it (its owner goes, another survey is opened): after each of them nothing of it is touched
/// before it is known to be there.
class RunDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RunDialog(QWidget *parent = nullptr);
    void reject() override;

protected:
    enum class End { Finished, Stopped, Cancelled, Deleted };

    bool isRunning() const { return m_isRunning; }
    bool isCancelled() const { return m_isCancelled; }
    void cancel() { m_isCancelled = true; }

    /// Disables the inputs.
    void beginRun();
    /// Enables them, gives the focus back and closes the dialog where that was asked for. It may be deleted then.
    void endRun();
    /// Handles events: Finished when the run may go on.
    End handleEvents();
    /// Shows a warning: Stopped, or Deleted.
    End stop(base::Asker &asker, const QString &title, const QString &text);

    virtual void setInputsEnabled(bool isEnabled) = 0;
    void closeEvent(QCloseEvent *event) override;

private:
    bool m_isCancelled = false;
    bool m_isRunning = false;
    bool m_closesAfterRun = false;
    QPointer<QWidget> m_focused; ///< before the run
};
