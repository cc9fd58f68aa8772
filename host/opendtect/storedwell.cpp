#include "host/opendtect/storedwell.h"

#include "host/opendtect/inputfile.h"
#include "host/opendtect/odtext.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>

#include <ioobj.h>
#include <undefval.h>
#include <welldata.h>
#include <wellio.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellmarker.h>
#include <wellodreader.h>
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

StoredWell::StoredWell(const IOObj &entry, Well::Data &data)
    : m_name(toQString(entry.name().buf()))
    , m_stem(fileStem(entry))
    , m_data(data)
    , m_reader(std::make_unique<Well::odReader>(entry, data, m_reason))
{
    m_track = base::fileState(file(Well::odIO::sExtTrack()));
    m_folderPath = QFileInfo(m_stem).path();
    if (!readMain())
        m_error = withReason(QStringLiteral("Cannot read the well %1").arg(m_name), toQString(m_reason));
}

StoredWell::~StoredWell() = default;

bool StoredWell::readMain()
{
    InputFile main(mainFile());
    m_main = main.state();
    // The library's own opening of what cannot be opened gives its reason.
    const bool isRead = main.isOpen() ? m_reader->getInfo(main.stream()) : m_reader->getInfo();
    if (!isRead || !m_reader->getTrack())
        return false;
    m_data.track().updateDahRange();
    return true;
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

// What lies deeper than the track would make it longer when the library reads it.
class StoredWell::KeptTrack
{
public:
    explicit KeptTrack(Well::Data &data)
        : m_data(data)
        , m_track(data.track())
    {
    }
    ~KeptTrack() { m_data.track() = m_track; }
    KeptTrack(const KeptTrack &) = delete;
    KeptTrack &operator=(const KeptTrack &) = delete;

private:
    Well::Data &m_data;
    const Well::Track m_track;
};

// Behind the logs that are there.
bool StoredWell::addLog(InputFile &file, bool isHeaderOnly)
{
    const int before = m_data.logs().size();
    return file.isOpen() && m_reader->addLog(file.stream(), isHeaderOnly) && m_data.logs().size() > before;
}

void StoredWell::readLogHeaders()
{
    m_data.logs().setEmpty();
    m_logs.clear();
    m_logFileOf.clear();
    m_logFiles.clear();
    const KeptTrack track(m_data);
    for (;;) {
        InputFile file(logFile(logFileCount()));
        if (file.state().size < 0)
            break;
        m_logFiles.push_back({file.state(), false});
        if (!addLog(file, true))
            continue;
        const Well::Log &log = m_data.logs().getLog(m_data.logs().size() - 1);
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
        return {{}, QStringLiteral("The well %1 has no log with the index %2.").arg(m_name, QString::number(index))};
    const host::LogInfo &info = m_logs.at(index);
    Well::LogSet &set = m_data.logs();
    std::unique_ptr<Well::Log> header(set.remove(index));
    InputFile file(logFile(m_logFileOf.at(index)));
    const KeptTrack track(m_data);
    const bool isRead = addLog(file, false);
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
    readLogHeadersIfNeeded(m_data.logs().indexOf(name));
    if (m_logs.size() != logFileCount())
        return {{},
                QStringLiteral("One of the logs of the well %1 is unreadable or has the name of another; the host "
                               "would write over the wrong log. Nothing was changed.")
                    .arg(m_name)};
    const int index = m_data.logs().indexOf(name);
    if (index < 0)
        return {{logFile(logFileCount()), nullptr}, {}};
    return {{logFile(m_logFileOf.at(index)), &m_data.logs().getLog(index)}, {}};
}

void StoredWell::logWritten(const Well::Log &log, const QString &path)
{
    Well::LogSet &set = m_data.logs();
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
    return m_data.markers();
}

host::Status StoredWell::readMarkers()
{
    m_data.markers().erase();
    if (!QFile::exists(markerFile()))
        return {};
    InputFile file(markerFile());
    if (file.isOpen() ? m_reader->getMarkers(file.stream()) : m_reader->getMarkers())
        return {};
    return {withReason(QStringLiteral("Cannot read the markers of the well %1").arg(m_name), toQString(m_reason))};
}

} // namespace opendtect
