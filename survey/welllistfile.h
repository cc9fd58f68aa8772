#pragma once

#include "base/atomicfile.h"
#include "survey/objectlist.h"
#include "survey/odfile.h"

#include <QHash>
#include <QStringList>

#include <functional>

namespace survey {

/// The group of a well's entry in the list.
constexpr char wellGroup[] = "Well";

bool isWell(const ObjectEntry &entry);
/// The key of the well with a number, and the other way round; 0 for what is no key of a well.
QString wellKey(int number);
int wellNumber(const QString &key);

/// The list of a survey's wells on disk. Every call on the survey looks a well up in it, and parsing it each time would
/// make work on all wells quadratic: it is held as it was last parsed, as long as the file is unchanged.
class WellListFile
{
public:
    using Report = std::function<void(const QString &path, const QString &problem)>;

    explicit WellListFile(const QString &surveyDirectory);

    void setSurveyDirectory(const QString &path);
    QString path() const;

    /// What had to be passed over in the list is reported at each call.
    host::Outcome<ObjectList> read(const Report &report);
    /// The same for a list that is to be changed and written: a list that is cut off is refused.
    host::Outcome<ObjectList> readToChange(const Report &report);
    host::Status write(const ObjectList &list) const;
    /// The two steps of write(): the new list beside the old one, and its taking the old one's place. Between them its
    /// content can be flushed together with other files, so neither step flushes.
    host::Status prepare(const ObjectList &list, base::AtomicFileWriter *writer) const;
    host::Status putInPlace(base::AtomicFileWriter *writer) const;

    /// The well in the list last read; nullptr when it has none of this key. Valid until the next read.
    const ObjectEntry *well(const QString &key) const;

private:
    QString m_surveyDirectory;
    FileState m_state; ///< of the file when it was parsed
    QByteArray m_bytes; ///< null when none was parsed
    ObjectList m_list;
    QStringList m_problems; ///< what had to be passed over in it
    QHash<int, int> m_index; ///< object number to entry index
};

} // namespace survey
