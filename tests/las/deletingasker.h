#pragma once

#include "base/asker.h"

#include <QStringList>

#include <functional>

/// Deletes a dialog while the box with a certain text stands, as its owner does when the survey changes.
class DeletingAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        texts.append(box.text);
        if (box.text.contains(trigger))
            deleteDialog();
        return box.buttons.contains(base::BoxButton::No) ? base::BoxButton::No : base::BoxButton::Ok;
    }

    QString trigger;
    std::function<void()> deleteDialog;
    QStringList texts;
};
