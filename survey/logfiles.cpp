#include "survey/logfiles.h"

#include "base/atomicfile.h"
#include "base/folderlinks.h"

#include <QHash>

#include <cerrno>

namespace survey {

namespace {

constexpr int headerBlockSize = 4096;
constexpr int maximumTries = 1000;

// The host's own name for a log that has none.
QString standInName(int number)
{
    return QStringLiteral("[%1]").arg(number);
}

QString noSuchLog(const QString &stem, int index)
{
    return QStringLiteral("The well %1 has no log number %2.").arg(stem, QString::number(index));
}

QString folderOf(const QString &stem)
{
    return stem.left(stem.lastIndexOf(QLatin1Char('/')));
}

// A well's logs end at the first missing number; that one of them is missing shows by the next one. Further ones are not
// looked for: each would be a call for each well.
void reportGap(const QString &stem, int missing, const LogFiles::Report &report)
{
    if (base::isThere(LogFiles::path(stem, missing + 1)))
        report(LogFiles::path(stem, missing), QStringLiteral("it is missing, and the logs behind it are not shown"));
}

enum class HeaderRead { Done, Unusable, NoFile };

HeaderRead readHeader(const QString &path, LogFileHeader *header, FileState *state, const LogFiles::Report &report)
{
    FileRead read = readFile(path, headerBlockSize);
    if (read.errorCode == ENOENT || (read.errorCode != 0 && !base::isThere(path)))
        return HeaderRead::NoFile;
    if (read.errorCode != 0) {
        report(path, unreadableText(read.errorCode));
        return HeaderRead::Unusable;
    }
    bool isCut = false;
    host::Outcome<LogFileHeader> parsed = parseLogHeader(read.bytes, &isCut);
    for (int size = 2 * headerBlockSize; isCut && !parsed.ok() && size <= maximumLogHeaderSize; size *= 2) {
        const int before = read.bytes.size();
        read = readFile(path, size);
        if (read.bytes.size() == before)
            break;
        parsed = parseLogHeader(read.bytes, &isCut);
    }
    if (!parsed.ok()) {
        report(path, parsed.error);
        return HeaderRead::Unusable;
    }
    *header = parsed.value;
    *state = read.state;
    return HeaderRead::Done;
}

} // namespace

QString LogFiles::path(const QString &stem, int number)
{
    return stem + QLatin1Char('^') + QString::number(number) + QStringLiteral(".wll");
}

void LogFiles::forget()
{
    *this = {};
}

void LogFiles::readHeaders(const QString &stem, const Report &report)
{
    QHash<int, Entry> known;
    if (m_stem == stem)
        for (const Entry &entry : qAsConst(m_entries))
            known.insert(entry.number, entry);
    m_entries.clear();
    m_indexes.clear();
    m_fileCount = 0;
    m_isWritten = false;
    m_stem = stem;
    for (int number = 1;; ++number) {
        const QString file = path(stem, number);
        Entry entry = known.value(number);
        if (entry.number == 0 || !fileState(file).isSame(entry.state)) {
            const HeaderRead result = readHeader(file, &entry.header, &entry.state, report);
            if (result == HeaderRead::NoFile) {
                reportGap(stem, number, report);
                return;
            }
            entry.number = result == HeaderRead::Done ? number : 0;
        }
        m_fileCount = number;
        if (entry.number == 0)
            continue;
        if (entry.header.name.isEmpty()) {
            entry.header.name = standInName(number);
            report(file, QStringLiteral("its header gives the log no name; it is called %1").arg(entry.header.name));
        }
        if (m_indexes.contains(entry.header.name)) {
            report(file, QStringLiteral("a second log named \"%1\" is left out").arg(entry.header.name));
            continue;
        }
        const QString problem = sampleSizeProblem(entry.header, entry.state.size);
        if (!problem.isEmpty())
            report(file, problem);
        append(entry);
    }
}

void LogFiles::append(const Entry &entry)
{
    m_indexes.insert(entry.header.name, m_entries.size());
    m_entries.append(entry);
}

const LogFiles::Entry *LogFiles::entryNamed(const QString &name) const
{
    const int index = m_indexes.value(name, -1);
    return index < 0 ? nullptr : &m_entries.at(index);
}

QVector<host::LogInfo> LogFiles::infos(const QString &stem, const Report &report)
{
    readHeaders(stem, report);
    QVector<host::LogInfo> infos;
    infos.reserve(m_entries.size());
    m_given.clear();
    m_givenStem = stem;
    for (const Entry &entry : qAsConst(m_entries)) {
        infos.append({entry.header.name, entry.header.unit});
        m_given.insert(entry.header.name, entry.state);
    }
    return infos;
}

QString LogFiles::file(const QString &stem, int index) const
{
    return m_stem == stem && index >= 0 && index < m_entries.size() ? path(stem, m_entries.at(index).number)
                                                                    : QString();
}

// The log at an index of the headers last read, as long as its file still holds that log.
host::Outcome<host::LogData> LogFiles::readListed(const QString &stem, int index, const Report &report) const
{
    if (m_stem != stem || index < 0 || index >= m_entries.size())
        return {{}, noSuchLog(stem, index)};
    const Entry &entry = m_entries.at(index);
    const QString file = path(stem, entry.number);
    LogFileHeader header;
    QString problem;
    host::Outcome<host::LogData> log = readLogFile(file, &header, &problem);
    if (!log.ok())
        return log;
    if (log.value.name.isEmpty())
        log.value.name = standInName(entry.number);
    if (log.value.name != entry.header.name)
        return {{}, QStringLiteral("The file %1 changed while it was read.").arg(file)};
    if (!problem.isEmpty())
        report(file, problem);
    return log;
}

host::Outcome<host::LogData> LogFiles::read(const QString &stem, int index, const Report &report)
{
    const host::Outcome<host::LogData> listed = readListed(stem, index, report);
    if (listed.ok())
        return listed;
    readHeaders(stem, report);
    return readListed(stem, index, report);
}

// Whether the entries are still what is on the disk, after a write and before that of the log \a name. A log that came
// or went in the same step of the file system's clock as our write, which the folder does not show, has the next
// number or was the last one.
bool LogFiles::isAsWritten(const QString &stem, const QString &name) const
{
    if (!m_isWritten || m_stem != stem || !fileState(folderOf(stem)).hasSameStamp(m_writtenFolder)
        || !fileState(path(stem, m_fileCount)).hasSameStamp(m_writtenLast))
        return false;
    const Entry *old = entryNamed(name);
    return !old || fileState(path(stem, old->number)).hasSameStamp(old->state);
}

host::Status LogFiles::write(const QString &stem, const host::LogData &log, const QByteArray &depthUnit,
                             const Report &report)
{
    if (!isAsWritten(stem, storedText(log.name)))
        readHeaders(stem, report);
    bool isTaken = false;
    host::Status status = writeListed(stem, log, depthUnit, &isTaken);
    for (int tries = 1; isTaken && tries < maximumTries; ++tries) {
        readHeaders(stem, report); // another program's log came meanwhile, perhaps the same one
        status = writeListed(stem, log, depthUnit, &isTaken);
    }
    return status;
}

host::Status LogFiles::writeListed(const QString &stem, const host::LogData &log, const QByteArray &depthUnit,
                                   bool *isTaken)
{
    *isTaken = false;
    const QString name = storedText(log.name); // " GR" comes back as "GR", so that is the log it replaces
    const Entry *old = entryNamed(name);
    const host::Outcome<QByteArray> bytes = logFileBytes(log, depthUnit, old ? &old->header : nullptr);
    if (!bytes.ok())
        return {QStringLiteral("Cannot write the log \"%1\" of %2: %3.").arg(log.name, stem, bytes.error)};
    // Whoever replaces a log has seen it, and not what another program made of it since.
    const FileState given = m_given.value(name);
    const bool isKnown = m_given.contains(name) && old && given.hasSameStamp(old->state);
    if (m_givenStem == stem && old && !isKnown) {
        m_givenStem.clear();
        return {QStringLiteral("Another program wrote the log \"%1\" of %2 meanwhile. It was not written over.")
                    .arg(log.name, stem)};
    }
    const int number = old ? old->number : m_fileCount + 1;
    m_isWritten = false;
    const base::WriteResult result = old ? base::writeFileAtomically(path(stem, number), bytes.value)
                                         : base::writeNewFileAtomically(path(stem, number), bytes.value, isTaken);
    if (!result.ok())
        return {writeErrorText(path(stem, number), result.error)};
    noteWritten(stem, number, bytes.value);
    if (m_givenStem == stem)
        m_given.insert(name, fileState(path(stem, number)));
    return {};
}

// Makes the entries what readHeaders() would find. Where that is not sure, the next write reads.
void LogFiles::noteWritten(const QString &stem, int number, const QByteArray &bytes)
{
    const Entry entry{number, parseLogHeader(bytes).value, fileState(path(stem, number))};
    const int index = m_indexes.value(entry.header.name, -1);
    const bool isReplaced = index >= 0 && m_entries.at(index).number == number;
    if (isReplaced)
        m_entries.replace(index, entry);
    else if (index < 0 && number > m_fileCount)
        append(entry);
    else
        return; // a name too long to be told from another one
    m_fileCount = qMax(m_fileCount, number);
    m_isWritten = true;
    m_writtenFolder = fileState(folderOf(stem));
    m_writtenLast = fileState(path(stem, m_fileCount));
}

host::Status LogFiles::remove(const QString &stem, int index, const Report &report)
{
    const QString meant =
        m_stem == stem && index >= 0 && index < m_entries.size() ? m_entries.at(index).header.name : QString();
    readHeaders(stem, report);
    if (index < 0 || index >= m_entries.size())
        return {noSuchLog(stem, index)};
    if (!meant.isNull() && meant != m_entries.at(index).header.name)
        return {QStringLiteral("Another program changed the logs of %1 meanwhile. Nothing was deleted.").arg(stem)};
    m_givenStem.clear();
    const QString file = path(stem, m_entries.at(index).number);
    const QString last = path(stem, m_fileCount);
    // One rename, so that no crash can leave a gap that hides the logs behind it.
    const bool isRemoved = file == last ? removeFile(file) : moveInPlace(last, file);
    return {isRemoved ? QString() : QStringLiteral("Cannot delete the log file %1. Nothing is changed.").arg(file)};
}

host::Status LogFiles::rename(const QString &stem, const QString &oldName, const QString &newName,
                              const Report &report)
{
    const QString name = storedText(newName);
    if (name.isEmpty())
        return {QStringLiteral("A log needs a name.")};
    readHeaders(stem, report);
    const Entry *entry = entryNamed(oldName);
    if (!entry)
        return {QStringLiteral("The well has no log \"%1\" any more.").arg(oldName)};
    if (name == oldName)
        return {};
    if (entryNamed(name))
        return {QStringLiteral("The well has a log \"%1\" already.").arg(name)};
    const QString file = path(stem, entry->number);
    const host::Outcome<QByteArray> bytes = readFileBytes(file);
    if (!bytes.ok())
        return {bytes.error};
    const host::Outcome<QByteArray> renamed = renamedLogFile(bytes.value, name);
    if (!renamed.ok())
        return {QStringLiteral("Cannot read the file %1: %2.").arg(file, renamed.error)};
    const base::WriteResult result = base::writeFileAtomically(file, renamed.value);
    forget();
    return {result.ok() ? QString() : writeErrorText(file, result.error)};
}

} // namespace survey
