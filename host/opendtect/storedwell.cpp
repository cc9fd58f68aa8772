#include "host/opendtect/storedwell.h"

#include "host/opendtect/filebuffer.h"
#include "host/opendtect/odtext.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <istream>
#include <memory>

#include <ioobj.h>
#include <od_istream.h>
#include <undefval.h>
#include <welldata.h>
#include <wellio.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellman.h>
#include <wellmarker.h>
#include <wellodreader.h>
#include <wellreader.h>
#include <welltrack.h>

namespace opendtect {

namespace {

QVector<float> samples(const float *first, int count)
{
    QVector<float> copy(count);
    std::copy_n(first, count, copy.begin());
    return copy;
}

// A log of which only the header is known has two undefined samples at the ends of its range.
std::unique_ptr<Well::Log> headerOf(const Well::Log &log)
{
    auto header = std::make_unique<Well::Log>(log.name());
    header->setUnitMeasLabel(log.unitMeasLabel());
    header->setMnemLabel(log.mnemLabel());
    header->pars() = log.pars();
    for (const int end : {0, log.size() - 1})
        header->addValue(log.dah(end), mUdf(float));
    return header;
}

void put(Well::LogSet &logs, std::unique_ptr<Well::Log> log, int place)
{
    logs.add(log.release());
    for (int i = logs.size() - 1; i > place; --i)
        logs.swap(i, i - 1);
}

} // namespace

QString fileStem(const IOObj &entry)
{
    const QFileInfo main(toQString(Well::odIO::getMainFileName(entry)));
    return main.path() + QLatin1Char('/') + main.completeBaseName();
}

StoredWell::StoredWell(const IOObj &entry)
    : m_name(toQString(entry.name().buf()))
    , m_stem(fileStem(entry))
    , m_data(new Well::Data)
    , m_entry(entry.clone())
{
    m_main = base::fileState(file(Well::odIO::sExtWell()));
    m_track = base::fileState(file(Well::odIO::sExtTrack()));
    m_folderPath = QFileInfo(m_stem).path();
    m_data->setMultiID(m_entry->key());
    const Well::Reader reader(*m_entry, *m_data);
    if (!reader.getInfo() || !reader.getTrack())
        m_error = withReason(QStringLiteral("Cannot read the well %1").arg(m_name), toQString(reader.errMsg()));
}

StoredWell::~StoredWell()
{
    // The library deletes a well with its last reference only where the manager knows it.
    Well::MGR().wells() += m_data.ptr();
    m_data = nullptr;
}

QString StoredWell::file(const char *ending, int number) const
{
    return toQString(Well::odIO::mkFileName(m_stem.toUtf8().constData(), ending, number));
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

// Reads logs into the data, behind those that are there. What lies deeper than the track does not make it longer.
class StoredWell::LogReader
{
public:
    explicit LogReader(StoredWell &well)
        : m_data(*well.m_data)
        , m_track(m_data.track())
        , m_reader(*well.m_entry, m_data, m_reason)
    {
    }
    ~LogReader() { m_data.track() = m_track; }
    LogReader(const LogReader &) = delete;
    LogReader &operator=(const LogReader &) = delete;

    bool add(const QString &path, bool isHeaderOnly)
    {
        const QByteArray name = path.toUtf8();
        if (!m_file.open(name.constData()))
            return false;
        m_stream.clear();
        od_istream stream(m_stream);
        stream.setFileName(name.constData()); // for the host's messages
        const int before = m_data.logs().size();
        return m_reader.addLog(stream, isHeaderOnly) && m_data.logs().size() > before;
    }
    /// Of the file that was added, or could not be; of no size where there is none.
    base::FileState stateOf(const QString &path) const
    {
        return m_file.state().size < 0 ? base::fileState(path) : m_file.state();
    }

private:
    FileBuffer m_file;
    std::istream m_stream{&m_file};
    Well::Data &m_data;
    Well::Track m_track;
    uiString m_reason;
    Well::odReader m_reader;
};

void StoredWell::readLogHeaders()
{
    m_data->logs().setEmpty();
    m_logs.clear();
    m_logFileOf.clear();
    m_logFiles.clear();
    LogReader reader(*this);
    for (;;) {
        const QString path = logFile(logFileCount());
        const bool isRead = reader.add(path, true);
        const base::FileState state = reader.stateOf(path);
        if (state.size < 0)
            break;
        m_logFiles.push_back({state, false});
        if (!isRead)
            continue;
        const Well::Log &log = m_data->logs().getLog(m_data->logs().size() - 1);
        m_logs.append({toQString(log.name().buf()), toQString(log.unitMeasLabel())});
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
        return {{}, QStringLiteral("The well %1 has no log with the index %2.").arg(m_name).arg(index)};
    const host::LogInfo &info = m_logs.at(index);
    Well::LogSet &set = m_data->logs();
    std::unique_ptr<Well::Log> header(set.remove(index));
    const bool isRead = LogReader(*this).add(logFile(m_logFileOf.at(index)), false);
    const std::unique_ptr<Well::Log> log(isRead ? set.remove(set.size() - 1) : nullptr);
    put(set, std::move(header), index);
    if (!log || !log->isLoaded())
        return {{}, QStringLiteral("Cannot read the log \"%1\" of the well %2.").arg(info.name, m_name)};
    host::LogData read;
    read.name = info.name;
    read.unit = toQString(log->unitMeasLabel());
    read.depths = samples(log->dahArr(), log->size());
    read.values = samples(log->valArr(), log->size());
    return {read, {}};
}

host::Outcome<StoredWell::LogPlace> StoredWell::placeOfLog(const char *name)
{
    readLogHeadersIfNeeded(m_data->logs().indexOf(name));
    if (m_logs.size() != logFileCount())
        return {{},
                QStringLiteral("One of the logs of the well %1 is unreadable or has the name of another; the host "
                               "would write over the wrong log. Nothing was changed.")
                    .arg(m_name)};
    const int index = m_data->logs().indexOf(name);
    if (index < 0)
        return {{logFile(logFileCount()), nullptr}, {}};
    return {{logFile(m_logFileOf.at(index)), &m_data->logs().getLog(index)}, {}};
}

void StoredWell::logWritten(const Well::Log &log, const QString &path)
{
    Well::LogSet &set = m_data->logs();
    const host::LogInfo info{toQString(log.name().buf()), toQString(log.unitMeasLabel())};
    const ReadFile file{base::fileState(path), true};
    const int index = set.indexOf(log.name());
    if (index >= 0) {
        const std::unique_ptr<Well::Log> before(set.remove(index));
        m_logs[index] = info;
        m_logFiles[m_logFileOf.at(index)] = file;
    } else {
        m_logs.append(info);
        m_logFileOf.append(logFileCount());
        m_logFiles.push_back(file);
    }
    put(set, headerOf(log), index >= 0 ? index : set.size());
    m_folder = {base::fileState(m_folderPath), true};
}

Well::MarkerSet &StoredWell::markers()
{
    return m_data->markers();
}

host::Status StoredWell::readMarkers()
{
    m_data->markers().erase();
    if (!QFile::exists(markerFile()))
        return {};
    const Well::Reader reader(*m_entry, *m_data);
    if (reader.getMarkers())
        return {};
    return {
        withReason(QStringLiteral("Cannot read the markers of the well %1").arg(m_name), toQString(reader.errMsg()))};
}

} // namespace opendtect
