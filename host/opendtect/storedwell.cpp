#include "host/opendtect/storedwell.h"

#include "host/opendtect/inputfile.h"
#include "host/opendtect/libraryreader.h"
#include "host/opendtect/odrecords.h"
#include "host/opendtect/odtext.h"
#include "host/opendtect/scratchwell.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <ioobj.h>
#include <welldata.h>
#include <wellio.h>
#include <welllog.h>
#include <wellmarker.h>

namespace opendtect {

namespace {

constexpr int logHeadSize = 2048;
constexpr int largestPlainFile = 256 << 10;

// A file that is read as a whole, where it is small enough for that.
QByteArray wholeOf(InputFile &file)
{
    return file.isOpen() && file.state().size <= largestPlainFile ? file.head(largestPlainFile) : QByteArray();
}

} // namespace

QString fileStem(const IOObj &entry)
{
    const QFileInfo main(toQString(Well::odIO::getMainFileName(entry)));
    return main.path() + QLatin1Char('/') + main.completeBaseName();
}

StoredWell::StoredWell(const IOObj &entry, ScratchWell &scratch)
    : m_entry(entry.clone())
    , m_name(toQString(entry.name().buf()))
    , m_stem(fileStem(entry))
    , m_scratch(scratch)
    , m_folderPath(QFileInfo(m_stem).path())
{
    m_track = base::fileState(file(Well::odIO::sExtTrack()));
    InputFile main(mainFile());
    m_main = main.state();
    const std::optional<PlainWell> plain = m_track.size < 0 ? plainWell(wholeOf(main)) : std::nullopt;
    if (plain)
        m_well = *plain;
    else if (library())
        m_well = {headerOf(m_library->data()), 0, 0}; // its markers are left to the library as well
    m_well.header.name = m_name;
}

StoredWell::~StoredWell() = default;

LibraryReader *StoredWell::library()
{
    if (m_library)
        return m_library.get();
    auto reader = std::make_unique<LibraryReader>(*m_entry, m_scratch.emptied());
    InputFile main(mainFile());
    if (reader->readMain(main))
        m_library = std::move(reader);
    else
        m_error = withReason(QStringLiteral("Cannot read the well %1").arg(m_name), reader->reason());
    return m_library.get();
}

const Well::Data *StoredWell::data()
{
    const LibraryReader *reader = library();
    return reader ? &reader->data() : nullptr;
}

QString StoredWell::file(const char *ending, int number) const
{
    return toQString(Well::odIO::mkFileName(m_stem.toUtf8().constData(), ending, number));
}

QString StoredWell::mainFile() const
{
    return file(Well::odIO::sExtWell());
}

QString StoredWell::markerFile() const
{
    return file(Well::odIO::sExtMarkers());
}

QString StoredWell::logFile(int index) const
{
    return file(Well::odIO::sExtLog(), index + 1);
}

bool StoredWell::ReadFile::isUnchanged(const QString &path) const
{
    const base::FileState now = base::fileState(path);
    return isOurs ? now.hasSameStamp(state) : now.isSame(state);
}

bool StoredWell::isOf(const IOObj &entry) const
{
    return fileStem(entry) == m_stem && toQString(entry.name().buf()) == m_name;
}

bool StoredWell::isUnchanged() const
{
    const auto isSame = [this](const char *ending, const base::FileState &before) {
        const base::FileState now = base::fileState(file(ending));
        return now.isSame(before) || (now.size < 0 && before.size < 0);
    };
    return isSame(Well::odIO::sExtWell(), m_main) && isSame(Well::odIO::sExtTrack(), m_track);
}

bool StoredWell::areLogsUnchanged() const
{
    if (!m_hasReadLogs)
        return false;
    for (int i = 0; i < logFileCount(); ++i)
        if (!m_logFiles[i].isUnchanged(logFile(i)))
            return false;
    return !QFile::exists(logFile(logFileCount()));
}

std::optional<StoredWell::LogHeader> StoredWell::readLogHeader(InputFile &file)
{
    if (const auto plain = plainLogInfo(file.head(logHeadSize)))
        return LogHeader{*plain, plain->name.toUtf8()};
    LibraryReader *reader = library();
    const std::unique_ptr<Well::Log> log = reader ? reader->readLog(file, true) : nullptr;
    return log ? std::optional<LogHeader>({infoOf(*log), log->name().buf()}) : std::nullopt;
}

void StoredWell::readLogHeaders()
{
    m_logs.clear();
    m_logFileOf.clear();
    m_logFiles.clear();
    QSet<QByteArray> names;
    for (;;) {
        InputFile file(logFile(logFileCount()));
        if (file.state().size < 0)
            break;
        m_logFiles.push_back({file.state(), false});
        const std::optional<LogHeader> header = readLogHeader(file);
        if (!header || names.contains(header->name)) // the host does not find a second log of a name
            continue;
        names.insert(header->name);
        m_logs.append(header->info);
        m_logFileOf.append(logFileCount() - 1);
    }
    m_hasReadLogs = true;
}

const QVector<host::LogInfo> &StoredWell::logs()
{
    m_folder = {base::fileState(m_folderPath), false};
    if (!areLogsUnchanged())
        readLogHeaders();
    return m_logs;
}

// Asking for the files of all logs at each one of them would make work on many logs quadratic.
void StoredWell::readLogHeadersIfNeeded(int log)
{
    const bool isSame = m_hasReadLogs && m_folder.isUnchanged(m_folderPath);
    const int file = m_logFileOf.value(log, -1);
    if (!isSame || (file >= 0 && !m_logFiles[file].isUnchanged(logFile(file))))
        logs();
}

host::Outcome<host::LogData> StoredWell::log(int index)
{
    readLogHeadersIfNeeded(index);
    if (index < 0 || index >= m_logs.size())
        return {{}, QStringLiteral("The well %1 has no log with the index %2.").arg(m_name, QString::number(index))};
    LibraryReader *reader = library();
    if (!reader)
        return {{}, m_error};
    InputFile file(logFile(m_logFileOf.at(index)));
    const std::unique_ptr<Well::Log> log = reader->readLog(file, false);
    if (!log || !log->isLoaded())
        return {{}, QStringLiteral("Cannot read the log \"%1\" of the well %2.").arg(m_logs.at(index).name, m_name)};
    host::LogData read = dataOf(*log);
    read.name = m_logs.at(index).name;
    return {read, {}};
}

int StoredWell::indexOfLog(const QString &name) const
{
    for (int i = 0; i < m_logs.size(); ++i)
        if (m_logs.at(i).name == name)
            return i;
    return -1;
}

host::Outcome<StoredWell::LogPlace> StoredWell::placeOfLog(const QString &name)
{
    readLogHeadersIfNeeded(indexOfLog(name));
    if (m_logs.size() != logFileCount())
        return {{},
                QStringLiteral("One of the logs of the well %1 is unreadable or has the name of another; the host "
                               "would write over the wrong log. Nothing was changed.")
                    .arg(m_name)};
    LibraryReader *reader = library();
    if (!reader)
        return {{}, m_error};
    const int index = indexOfLog(name);
    if (index < 0)
        return {{logFile(logFileCount()), nullptr}, {}};
    const QString path = logFile(m_logFileOf.at(index));
    InputFile file(path);
    std::shared_ptr<const Well::Log> header = reader->readLog(file, true);
    if (!header)
        return {{}, QStringLiteral("Cannot read the log \"%1\" of the well %2.").arg(name, m_name)};
    return {{path, header}, {}};
}

void StoredWell::logWritten(const Well::Log &log, const QString &path)
{
    const host::LogInfo info = infoOf(log);
    const ReadFile file{base::fileState(path), true};
    const int index = indexOfLog(info.name);
    if (index >= 0) {
        m_logs[index] = info;
        m_logFiles[m_logFileOf.at(index)] = file;
    } else {
        m_logs.append(info);
        m_logFileOf.append(logFileCount());
        m_logFiles.push_back(file);
    }
    m_folder = {base::fileState(m_folderPath), true};
}

host::Outcome<QVector<host::Marker>> StoredWell::markers()
{
    InputFile file(markerFile());
    if (file.state().size < 0)
        return {};
    if (const auto plain = plainMarkers(wholeOf(file), m_well))
        return {*plain, {}};
    const auto read = markersToChange();
    if (!read.ok())
        return {{}, read.error};
    return {markersOf(*read.value), {}};
}

host::Outcome<Well::MarkerSet *> StoredWell::markersToChange()
{
    LibraryReader *reader = library();
    if (!reader)
        return {nullptr, m_error};
    Well::MarkerSet &markers = reader->data().markers();
    markers.erase();
    InputFile file(markerFile());
    if (file.state().size < 0 || reader->readMarkers(file))
        return {&markers, {}};
    return {nullptr,
            withReason(QStringLiteral("Cannot read the markers of the well %1").arg(m_name), reader->reason())};
}

} // namespace opendtect
