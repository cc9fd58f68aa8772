#include "support/boxdriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTest>

namespace {

// A copy of its own: the text may be a literal inside a plug-in that is unloaded while the record is still read.
QString detached(const QString &text)
{
    return QString(text.constData(), text.size());
}

} // namespace

BoxDriver::BoxDriver()
{
    connect(&m_timer, &QTimer::timeout, this, &BoxDriver::look);
    m_timer.start(1);
}

void BoxDriver::look()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || m_isBusy)
        return;
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        answer(box);
    } else if (onDialog) {
        m_isBusy = true;
        onDialog(modal);
        m_isBusy = false;
    }
}

void BoxDriver::answer(QMessageBox *box)
{
    Seen record{detached(box->windowTitle()), detached(box->text()), box->icon(), {}};
    for (QAbstractButton *button : box->buttons())
        record.buttons.append(detached(button->text().remove(QLatin1Char('&'))));
    seen.append(record);
    if (onBox) {
        const QPointer<QMessageBox> standing = box;
        m_isBusy = true;
        onBox();
        m_isBusy = false;
        if (!standing)
            return;
    }
    if (!answers.isEmpty()) {
        const QString wanted = answers.takeFirst();
        if (wanted.isEmpty()) {
            QTest::keyClick(box, Qt::Key_Escape);
            return;
        }
        for (QAbstractButton *button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == wanted) {
                button->click();
                return;
            }
        }
        qWarning("The box \"%s\" has no button \"%s\"", qUtf8Printable(record.title), qUtf8Printable(wanted));
    }
    box->buttons().first()->click();
}
