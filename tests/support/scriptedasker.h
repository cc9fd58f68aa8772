#pragma once

#include "base/asker.h"

/// Records every box and answers from a list; a box without a listed answer gets its last button.
class ScriptedAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override;

    QVector<base::Box> boxes;
    QVector<base::BoxButton> answers; ///< taken from the front
};
