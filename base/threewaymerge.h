#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace base {

/// What two changes of one set of named records come to.
template<class Record>
struct Merged
{
    QVector<Record> records;
    QStringList conflicts; ///< names that both changed, each in another way; then the records are of no use
};

/// Merges the change from \a before to \a mine with the change from \a before to \a theirs. Names are unique in each;
/// \a isSame compares two records of one name.
template<class Record, class IsSame>
Merged<Record> threeWayMerge(const QVector<Record> &before, const QVector<Record> &theirs,
                             const QVector<Record> &mine, IsSame isSame)
{
    const auto byName = [](const QVector<Record> &records) {
        QHash<QString, const Record *> result;
        for (const Record &record : records)
            result.insert(record.name, &record);
        return result;
    };
    const QHash<QString, const Record *> old = byName(before);
    const QHash<QString, const Record *> other = byName(theirs);
    const QHash<QString, const Record *> own = byName(mine);
    const auto areSame = [&isSame](const Record *a, const Record *b) { return a && b ? isSame(*a, *b) : a == b; };
    Merged<Record> result;
    const auto settle = [&](const QString &name) {
        const Record *was = old.value(name);
        const Record *their = other.value(name);
        const Record *my = own.value(name);
        if (!areSame(was, their) && !areSame(was, my) && !areSame(their, my))
            result.conflicts.append(name);
        else if (const Record *chosen = areSame(was, my) ? their : my)
            result.records.append(*chosen);
    };
    for (const Record &record : mine)
        settle(record.name);
    for (const Record &record : theirs)
        if (!own.contains(record.name))
            settle(record.name);
    return result;
}

} // namespace base
