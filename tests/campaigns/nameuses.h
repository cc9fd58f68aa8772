#pragma once

#include "place.h"

#include <functional>
#include <vector>

namespace campaign {

/// One use of a name in a survey or project: something is stored under it, found, and taken away again.
struct NameUse
{
    const char *name;
    /// What below the place may change: names that begin so.
    QStringList allowed;
    /// Stores a number under the name. Null when that was done, else why it was refused; nothing has changed then.
    std::function<QString(Place &place, const QString &name, int number)> store;
    /// The number that is found under the name; nothing below 0.
    std::function<int(Place &place, const QString &name)> find;
    /// False when it could not be taken away. Null where nothing takes it away.
    std::function<bool(Place &place, const QString &name)> remove;
    /// The form of the name that is kept: names with the same form are one. Null where it is kept as it is.
    std::function<QString(const QString &name)> form;
};

/// The form in which a log's name is kept.
QString logForm(const QString &name);
/// Where the log of that name stands in a well; -1 when it has none.
int indexOfLog(Place &place, const QString &wellKey, const QString &name);

/// Stores and readers.
std::vector<NameUse> nameUses();
/// Dialogs in which the name is typed.
std::vector<NameUse> typedNameUses();
/// Names that are typed in tables, stand in files or are titles.
std::vector<NameUse> tableNameUses();
/// Names that the batch tool is given.
std::vector<NameUse> batchNameUses();

} // namespace campaign
