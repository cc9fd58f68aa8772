#include "support/scriptedasker.h"

base::BoxButton ScriptedAsker::show(const base::Box &box)
{
    boxes.append(box);
    return answers.isEmpty() ? box.buttons.last() : answers.takeFirst();
}
