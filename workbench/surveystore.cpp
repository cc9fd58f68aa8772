#include "workbench/surveystore.h"

#include "base/atomicfile.h"
#include "base/numbers.h"
#include "workbench/markerfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <sys/stat.h>

namespace workbench {

namespace {

constexpr char wellGroup[] = "Well";
constexpr char wellFolderKey[] = "100050";
constexpr int headerBlockSize = 4096;
constexpr int maximumHeaderSize = 16 << 20;
constexpr int maximumStemBytes = 200; // leaves room for "^1234.wll" within a file name

QString cannotWrite(const QString &path, const QString &reason)
{
    return QStringLiteral("Cannot write the file %1: %2. What was there is unchanged.").arg(path, reason);
}

// The host compares upper-cased bytes, ASCII letters only.
QByteArray sortKey(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    for (char &c : bytes)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return bytes;
}

int numberOfKey(const QString &key)
{
    const QStringList parts = key.split(QLatin1Char('.'));
    if (parts.size() != 2 || parts.first() != QLatin1String(wellFolderKey))
        return 0;
    return base::parseInteger(parts.last().toLatin1()).value_or(0);
}

QString keyOf(int number)
{
    return QLatin1String(wellFolderKey) + QLatin1Char('.') + QString::number(number);
}

QString stemOf(const QString &fileName)
{
    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? fileName.left(dot) : fileName;
}

bool isWell(const ObjectEntry &entry)
{
    return !entry.isFolder && entry.number > 1 && entry.group() == wellGroup;
}

// A name as the stem of file names: letters and digits of any script stay, what may trouble a file system does not.
QString cleanedStem(const QString &name)
{
    QString stem;
    for (QChar c : name) {
        const bool isKept = c.isLetterOrNumber() || c.isSurrogate() || c.isMark()
            || QStringLiteral("-_+.()").contains(c);
        stem += isKept ? c : QChar(QLatin1Char('_'));
    }
    if (stem.isEmpty() || stem.startsWith(QLatin1Char('.')))
        stem.prepend(QLatin1Char('_'));
    while (stem.toUtf8().size() > maximumStemBytes)
        stem.chop(stem.at(stem.size() - 1).isLowSurrogate() ? 2 : 1);
    return stem;
}

QString nameProblem(const QString &name)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("A well needs a name.");
    for (QChar c : name)
        if (c.category() == QChar::Other_Control)
            return QStringLiteral("The well name \"%1\" holds a control character.").arg(name);
    // The host's lists cannot hold these: they begin a folder entry, end a section or begin a comment.
    if (name.startsWith(QLatin1Char('@')) || name.startsWith(QLatin1Char('!'))
        || name.startsWith(QLatin1String("--")) || name.startsWith(QLatin1Char(':')))
        return QStringLiteral("A well name cannot begin like \"%1\".").arg(name);
    return {};
}

QString logPath(const QString &stem, int number)
{
    return stem + QLatin1Char('^') + QString::number(number) + QStringLiteral(".wll");
}

} // namespace

SurveyStore::SurveyStore(const QString &surveyDirectory)
    : m_surveyDirectory(surveyDirectory)
{
}

void SurveyStore::setSurveyDirectory(const QString &path)
{
    m_surveyDirectory = path;
    m_listSignature = {};
    m_problems.clear();
}

QString SurveyStore::wellFolder() const
{
    return m_surveyDirectory + QStringLiteral("/WellInfo");
}

void SurveyStore::report(const QString &path, const QString &problem)
{
    const QString sentence = QStringLiteral("%1: %2.").arg(path, problem);
    if (!m_problems.contains(sentence) && m_problems.size() < 1000)
        m_problems.append(sentence);
}

QStringList SurveyStore::takeProblems()
{
    QStringList problems;
    problems.swap(m_problems);
    return problems;
}

host::Outcome<ObjectList> SurveyStore::readObjectList()
{
    const QString path = objectListPath();
    struct stat info;
    Signature signature;
    if (::stat(QFile::encodeName(path).constData(), &info) == 0) {
        signature.time = QDateTime::fromMSecsSinceEpoch(info.st_mtim.tv_sec * 1000LL + info.st_mtim.tv_nsec / 1000000);
        signature.size = info.st_size;
        signature.inode = info.st_ino;
    }
    if (signature.size >= 0 && signature == m_listSignature)
        return {m_list, {}};
    m_listSignature = {};
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok())
        return {{}, bytes.error};
    QStringList problems;
    const host::Outcome<ObjectList> list = ObjectList::parse(bytes.value, &problems);
    if (!list.ok())
        return {{}, QStringLiteral("Cannot read the list of wells %1: %2.").arg(path, list.error)};
    for (const QString &problem : problems)
        report(path, problem);
    m_list = list.value;
    m_listIndex.clear();
    for (int i = 0; i < m_list.entries().size(); ++i)
        if (!m_list.entries().at(i).isFolder && !m_listIndex.contains(m_list.entries().at(i).number))
            m_listIndex.insert(m_list.entries().at(i).number, i);
    m_listSignature = signature;
    return {m_list, {}};
}

host::Status SurveyStore::writeObjectList(const ObjectList &list)
{
    const base::WriteResult result = base::writeFileAtomically(objectListPath(), list.toBytes());
    m_listSignature = {};
    return {result.ok() ? QString() : cannotWrite(objectListPath(), result.error)};
}

host::Outcome<QVector<host::WellEntry>> SurveyStore::list()
{
    const host::Outcome<ObjectList> list = readObjectList();
    if (!list.ok())
        return {{}, list.error};
    struct Sortable
    {
        QByteArray key;
        host::WellEntry entry;
    };
    std::vector<Sortable> wells;
    for (const ObjectEntry &entry : list.value.entries())
        if (isWell(entry))
            wells.push_back({sortKey(entry.name), {entry.name, keyOf(entry.number)}});
    std::stable_sort(wells.begin(), wells.end(),
                     [](const Sortable &a, const Sortable &b) { return a.key < b.key; });
    QVector<host::WellEntry> result;
    result.reserve(static_cast<int>(wells.size()));
    for (const Sortable &well : wells)
        result.append(well.entry);
    return {result, {}};
}

// The path of the well's files without their endings.
host::Outcome<QString> SurveyStore::stem(const QString &key)
{
    const host::Outcome<ObjectList> list = readObjectList();
    if (!list.ok())
        return {{}, list.error};
    const int index = m_listIndex.value(numberOfKey(key), -1);
    if (index < 0 || !isWell(m_list.entries().at(index)))
        return {{}, QStringLiteral("The well with the key %1 is not in the list %2.").arg(key, objectListPath())};
    const QString fileName = m_list.entries().at(index).fileName();
    if (fileName.isEmpty() || fileName.contains(QLatin1Char('/')) || fileName.startsWith(QLatin1Char('.')))
        return {{}, QStringLiteral("The list %1 gives the well \"%2\" no file of its folder (\"%3\").")
                        .arg(objectListPath(), m_list.entries().at(index).name, fileName)};
    return {wellFolder() + QLatin1Char('/') + stemOf(fileName), {}};
}

host::Outcome<WellFile> SurveyStore::readWell(const QString &stem)
{
    const QString path = stem + QStringLiteral(".well");
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok())
        return {{}, bytes.error};
    host::Outcome<WellFile> file = parseWellFile(bytes.value);
    const host::Outcome<QByteArray> trackBytes = readFileBytes(stem + QStringLiteral(".track"));
    if (trackBytes.ok()) {
        const QVector<TrackPoint> track = parseTrackFile(trackBytes.value);
        if (track.isEmpty()) {
            report(stem + QStringLiteral(".track"), QStringLiteral("it holds no valid well track"));
        } else if (!file.value.keys.size() && !file.ok()) {
            return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.error)};
        } else {
            file.value.track = track;
            file.error.clear();
        }
    }
    if (!file.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.error)};
    return file;
}

host::Outcome<host::WellHeader> SurveyStore::header(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<WellFile> file = readWell(wellStem.value);
    if (!file.ok())
        return {{}, file.error};
    return {file.value.header(m_list.entries().at(m_listIndex.value(numberOfKey(key))).name), {}};
}

host::Outcome<WellProperties> SurveyStore::properties(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<WellFile> file = readWell(wellStem.value);
    if (!file.ok())
        return {{}, file.error};
    return {file.value.properties(m_list.entries().at(m_listIndex.value(numberOfKey(key))).name), {}};
}

// Reads the headers of "^1", "^2", … up to the first number that is missing.
host::Outcome<QVector<SurveyStore::LogFile>> SurveyStore::readLogHeaders(const QString &stem)
{
    QVector<LogFile> logs;
    QSet<QString> names;
    for (int number = 1;; ++number) {
        const QString path = logPath(stem, number);
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            if (!QFileInfo::exists(path))
                return {logs, {}};
            report(path, QStringLiteral("it cannot be read (%1)").arg(file.errorString()));
            continue;
        }
        LogFile log;
        log.number = number;
        QByteArray bytes = file.read(headerBlockSize);
        bool isCut = false;
        host::Outcome<LogFileHeader> header = parseLogHeader(bytes, &isCut);
        while (isCut && !header.ok() && !file.atEnd() && bytes.size() < maximumHeaderSize) {
            bytes += file.read(qMax(headerBlockSize, bytes.size()));
            header = parseLogHeader(bytes, &isCut);
        }
        if (!header.ok()) {
            report(path, header.error);
            continue;
        }
        log.header = header.value;
        if (log.header.name.isEmpty()) {
            log.header.name = QStringLiteral("[%1]").arg(number); // the host's own stand-in
            report(path, QStringLiteral("its header gives the log no name; it is called %1").arg(log.header.name));
        }
        if (names.contains(log.header.name)) {
            report(path, QStringLiteral("a second log named \"%1\" is left out").arg(log.header.name));
            continue;
        }
        names.insert(log.header.name);
        logs.append(log);
    }
}

host::Outcome<QVector<host::LogInfo>> SurveyStore::logs(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<QVector<LogFile>> files = readLogHeaders(wellStem.value);
    QVector<host::LogInfo> infos;
    infos.reserve(files.value.size());
    for (const LogFile &file : files.value)
        infos.append({file.header.name, file.header.unit});
    return {infos, files.error};
}

host::Outcome<host::LogData> SurveyStore::log(const QString &key, int index)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<QVector<LogFile>> files = readLogHeaders(wellStem.value);
    if (index < 0 || index >= files.value.size())
        return {{}, QStringLiteral("The well %1 has no log number %2.").arg(wellStem.value).arg(index)};
    const LogFile &file = files.value.at(index);
    const QString path = logPath(wellStem.value, file.number);
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok())
        return {{}, bytes.error};
    QString problem;
    host::LogData data = parseLogSamples(file.header, bytes.value, &problem);
    if (!problem.isEmpty())
        report(path, problem);
    return {data, {}};
}

host::Outcome<QVector<host::Marker>> SurveyStore::markers(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const QString path = wellStem.value + QStringLiteral(".wlm");
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok()) {
        if (!QFileInfo::exists(path))
            return {};
        report(path, QStringLiteral("it cannot be read"));
        return {{}, bytes.error};
    }
    const host::Outcome<WellFile> well = readWell(wellStem.value);
    if (!well.ok())
        return {{}, well.error};
    const auto top = static_cast<float>(well.value.track.first().md);
    const auto bottom = static_cast<float>(well.value.track.last().md);
    QStringList problems;
    host::Outcome<QVector<host::Marker>> markers = parseMarkerFile(bytes.value, top, bottom, &problems);
    for (const QString &problem : problems)
        report(path, problem);
    if (!markers.ok()) {
        report(path, markers.error);
        markers.error = QStringLiteral("Cannot read the file %1: %2.").arg(path, markers.error);
    }
    return markers;
}

host::Status SurveyStore::writeLog(const QString &key, const host::LogData &log)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    const host::Outcome<WellFile> well = readWell(wellStem.value);
    if (!well.ok())
        return {well.error};
    const host::Outcome<QVector<LogFile>> files = readLogHeaders(wellStem.value);
    const LogFile *old = nullptr;
    for (const LogFile &file : files.value)
        if (file.header.name == log.name)
            old = &file;
    QByteArray depthUnit = well.value.keys.value("Depth-Unit");
    if (depthUnit.isEmpty())
        depthUnit = "Meter";
    const host::Outcome<QByteArray> bytes = logFileBytes(log, depthUnit, old ? &old->header : nullptr);
    if (!bytes.ok())
        return {QStringLiteral("Cannot write the log \"%1\" of %2: %3.").arg(log.name, wellStem.value, bytes.error)};
    const QString path = logPath(wellStem.value, old ? old->number : logFileCount(wellStem.value) + 1);
    const base::WriteResult result = base::writeFileAtomically(path, bytes.value);
    return {result.ok() ? QString() : cannotWrite(path, result.error)};
}

int SurveyStore::logFileCount(const QString &stem) const
{
    int count = 0;
    while (QFileInfo::exists(logPath(stem, count + 1)))
        ++count;
    return count;
}

host::Status SurveyStore::writeMarkers(const QString &key, const QVector<host::Marker> &markers)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    const host::Outcome<WellFile> well = readWell(wellStem.value);
    if (!well.ok())
        return {well.error};
    const QString path = wellStem.value + QStringLiteral(".wlm");
    QByteArray depthUnit = well.value.keys.value("Depth-Unit");
    if (depthUnit.isEmpty())
        depthUnit = "Meter";
    const QByteArray old = QFileInfo::exists(path) ? readFileBytes(path).value : QByteArray();
    const base::WriteResult result = base::writeFileAtomically(path, markerFileBytes(markers, depthUnit, old));
    if (!result.ok())
        return {cannotWrite(path, result.error)};
    if (m_markersChanged)
        m_markersChanged(key);
    return {};
}

void SurveyStore::reload(const QString &)
{
    // Nothing is held in memory: every read sees the files as they are.
}

QString SurveyStore::newStem(const QString &name, const ObjectList &list) const
{
    QSet<QString> taken;
    for (const ObjectEntry &entry : list.entries())
        taken.insert(stemOf(entry.fileName()).toLower());
    const QString cleaned = cleanedStem(name);
    QString stem = cleaned;
    for (int n = 2; taken.contains(stem.toLower()) || QFileInfo::exists(wellFolder() + QLatin1Char('/') + stem + QStringLiteral(".well"))
         || QFileInfo::exists(logPath(wellFolder() + QLatin1Char('/') + stem, 1));
         ++n)
        stem = cleaned + QLatin1Char('_') + QString::number(n);
    return stem;
}

host::Outcome<QString> SurveyStore::addWell(const WellProperties &properties)
{
    const QString problem = nameProblem(properties.name);
    if (!problem.isEmpty())
        return {{}, problem};
    const host::Outcome<ObjectList> read = readObjectList();
    if (!read.ok())
        return {{}, read.error};
    ObjectList list = read.value;
    const QString wellStem = newStem(properties.name, list);
    const QString path = wellFolder() + QLatin1Char('/') + wellStem + QStringLiteral(".well");
    const base::WriteResult result
        = base::writeFileAtomically(path, wellFileBytes(makeWellFile(properties)));
    if (!result.ok())
        return {{}, cannotWrite(path, result.error)};
    // The list comes last: a crash before it leaves a file that nothing names, never an entry without its file.
    const int number = list.append(properties.name, wellGroup, wellStem + QStringLiteral(".well"));
    const host::Status status = writeObjectList(list);
    if (!status.ok()) {
        QFile::remove(path);
        return {{}, status.error};
    }
    return {keyOf(number), {}};
}

host::Status SurveyStore::changeWell(const QString &key, const WellProperties &properties)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    host::Outcome<WellFile> file = readWell(wellStem.value);
    if (!file.ok())
        return {file.error};
    applyProperties(&file.value, properties);
    const QString path = wellStem.value + QStringLiteral(".well");
    const base::WriteResult result = base::writeFileAtomically(path, wellFileBytes(file.value));
    if (!result.ok())
        return {cannotWrite(path, result.error)};
    // A separate track file would hide the track just written.
    const QString trackPath = wellStem.value + QStringLiteral(".track");
    if (QFileInfo::exists(trackPath) && !QFile::remove(trackPath))
        return {QStringLiteral("Cannot replace the file %1. The well's header is changed, its track is not.").arg(trackPath)};
    return {};
}

host::Status SurveyStore::renameWell(const QString &key, const QString &name)
{
    const QString problem = nameProblem(name);
    if (!problem.isEmpty())
        return {problem};
    host::Outcome<ObjectList> list = readObjectList();
    if (!list.ok())
        return {list.error};
    if (!list.value.rename(numberOfKey(key), name))
        return {QStringLiteral("The well with the key %1 is not in the list %2.").arg(key, objectListPath())};
    return writeObjectList(list.value);
}

host::Status SurveyStore::removeWell(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    host::Outcome<ObjectList> list = readObjectList();
    if (!list.ok())
        return {list.error};
    const ObjectEntry *entry = list.value.entry(numberOfKey(key));
    if (!entry || !isWell(*entry))
        return {QStringLiteral("The well with the key %1 is not in the list %2.").arg(key, objectListPath())};
    const QString fileName = entry->fileName();
    list.value.remove(numberOfKey(key));
    // The list goes first: a crash after it leaves files that nothing names.
    const host::Status status = writeObjectList(list.value);
    if (!status.ok() || !wellStem.ok())
        return status;
    for (const ObjectEntry &other : list.value.entries())
        if (other.fileName() == fileName)
            return {}; // a damaged list: another well still uses the files
    // Exactly this stem: "Probe_2" does not take the files of "Probe_2_A" along.
    const QString prefix = stemOf(fileName);
    const QRegularExpression ownFile(QLatin1Char('^') + QRegularExpression::escape(prefix)
                                     + QStringLiteral("(\\.(well|track|wlm|wlt|csmdl|disp)|\\^[0-9]+\\.wll)$"));
    QStringList kept;
    for (const QString &file : QDir(wellFolder()).entryList(QDir::Files | QDir::Hidden))
        if (ownFile.match(file).hasMatch() && !QFile::remove(wellFolder() + QLatin1Char('/') + file))
            kept.append(file);
    if (!kept.isEmpty())
        return {QStringLiteral("The well is no longer in the list, but these files of it could not be deleted in %1: %2.")
                    .arg(wellFolder(), kept.join(QStringLiteral(", ")))};
    return {};
}

host::Status SurveyStore::removeLog(const QString &key, int index)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    const host::Outcome<QVector<LogFile>> files = readLogHeaders(wellStem.value);
    if (index < 0 || index >= files.value.size())
        return {QStringLiteral("The well %1 has no log number %2.").arg(wellStem.value).arg(index)};
    const QByteArray path = QFile::encodeName(logPath(wellStem.value, files.value.at(index).number));
    const QByteArray last = QFile::encodeName(logPath(wellStem.value, logFileCount(wellStem.value)));
    const bool isRemoved = path == last ? QFile::remove(QFile::decodeName(path))
                                        : std::rename(last.constData(), path.constData()) == 0;
    if (!isRemoved)
        return {QStringLiteral("Cannot delete the log file %1. Nothing is changed.").arg(QFile::decodeName(path))};
    return {};
}

} // namespace workbench
