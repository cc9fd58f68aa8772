#include "las/rundialog.h"

#include "base/asker.h"
#include "base/nestedevents.h"

#include <QCloseEvent>

RunDialog::RunDialog(QWidget *parent)
    : QDialog(parent)
{
}

void RunDialog::beginRun()
{
    m_isCancelled = false;
    m_closesAfterRun = false;
    m_focused = focusWidget();
    m_isRunning = true;
    setInputsEnabled(false);
}

void RunDialog::endRun()
{
    m_isRunning = false;
    setInputsEnabled(true);
    if (m_focused)
        m_focused->setFocus();
    if (m_closesAfterRun)
        close();
}

RunDialog::End RunDialog::handleEvents()
{
    const QPointer<RunDialog> self(this);
    base::handleEvents();
    if (!self)
        return End::Deleted;
    return m_isCancelled ? End::Cancelled : End::Finished;
}

RunDialog::End RunDialog::stop(base::Asker &asker, const QString &title, const QString &text)
{
    const QPointer<RunDialog> self(this);
    asker.warn(title, text);
    return self ? End::Stopped : End::Deleted;
}

void RunDialog::closeEvent(QCloseEvent *event)
{
    if (!m_isRunning) {
        QDialog::closeEvent(event);
        return;
    }
    reject();
    event->ignore();
}

void RunDialog::reject()
{
    if (!m_isRunning) {
        QDialog::reject();
        return;
    }
    m_isCancelled = true;
    m_closesAfterRun = true;
    hide();
}
