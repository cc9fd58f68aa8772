#pragma once

#include "base/asker.h"

#include <QObject>
#include <QStringList>

/// What a program does that nobody sits in front of: every box is printed on stderr and answered at once.
namespace unattended {

/// Answers with the first button of the box.
class PrintingAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override;
};

/// Watches the application for the message boxes that others show, a plug-in's for instance, and presses their first
/// button.
class BoxCloser : public QObject
{
public:
    BoxCloser();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// Answers the file dialogs of others with the given files, as long as it lives.
class FilePicker : public QObject
{
public:
    /// All in one folder.
    explicit FilePicker(const QStringList &files);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QStringList m_files;
};

} // namespace unattended
