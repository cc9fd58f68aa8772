#include "programs/unattended.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>

#include <cstdio>

namespace unattended {

namespace {

void print(const QString &title, const QString &text)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(title), qUtf8Printable(text));
}

} // namespace

base::BoxButton PrintingAsker::show(const base::Box &box)
{
    print(box.title, box.text);
    return box.buttons.isEmpty() ? base::BoxButton::Ok : box.buttons.first();
}

BoxCloser::BoxCloser()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool BoxCloser::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (!box)
        return false;
    print(box->windowTitle(), box->text());
    // Queued: the box waits for an answer only after it is shown. Without a button it can only be closed.
    const QList<QAbstractButton *> buttons = box->buttons();
    if (buttons.isEmpty())
        QMetaObject::invokeMethod(box, &QWidget::close, Qt::QueuedConnection);
    else
        QMetaObject::invokeMethod(buttons.first(), &QAbstractButton::click, Qt::QueuedConnection);
    return false;
}

FilePicker::FilePicker(const QStringList &files)
    : m_files(files)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FilePicker::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = event->type() == QEvent::Show ? qobject_cast<QFileDialog *>(watched) : nullptr;
    if (!dialog)
        return false;
    // Queued: the dialog waits for an answer only after it is shown.
    QMetaObject::invokeMethod(
        dialog,
        [dialog, files = m_files] {
            auto *names = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            if (!names || files.isEmpty()) {
                dialog->reject();
                return;
            }
            dialog->setDirectory(QFileInfo(files.first()).path());
            QStringList quoted;
            for (const QString &file : files)
                quoted.append(QLatin1Char('"') + QFileInfo(file).fileName() + QLatin1Char('"'));
            names->setText(quoted.join(QLatin1Char(' ')));
            QMetaObject::invokeMethod(dialog, "accept");
        },
        Qt::QueuedConnection);
    return false;
}

} // namespace unattended
