#pragma once

#include "base/asker.h"

#include <QObject>

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

} // namespace unattended
