#include "survey/odfile.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/regularfile.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>

#include <cerrno>
#include <ctime>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace survey {

namespace {

constexpr char lineEndInValue[] = "#-NL-#";

// The separator is the first ":" that no backslash escapes.
int separatorOf(const QByteArray &line)
{
    for (int i = 1; i < line.size(); ++i)
        if (line.at(i) == ':' && line.at(i - 1) != '\\')
            return i;
    return -1;
}

// The survey whose file it is: files lie in it or in its folder of wells.
QString surveyOf(const QString &path)
{
    QString folder = path.left(qMax(0, path.lastIndexOf(QLatin1Char('/'))));
    const QLatin1String ofWells("/WellInfo");
    if (folder.endsWith(ofWells))
        folder.chop(ofWells.size());
    return folder;
}

// Takes the line that begins at *offset and moves past its end. False at the end of the bytes.
bool takeLine(const QByteArray &bytes, int *offset, QByteArray *line)
{
    if (*offset >= bytes.size())
        return false;
    int end = bytes.indexOf('\n', *offset);
    if (end < 0)
        end = bytes.size();
    int length = end - *offset;
    if (length > 0 && bytes.at(end - 1) == '\r')
        --length;
    *line = bytes.mid(*offset, length);
    *offset = qMin(end + 1, static_cast<int>(bytes.size()));
    return true;
}

} // namespace

QByteArray escapedKey(const QByteArray &key)
{
    QByteArray result = key;
    return result.replace(':', "\\:");
}

QString storedText(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    return QString::fromUtf8(bytes.replace('\r', "").replace('\0', ' ').trimmed());
}

QString shownText(const QByteArray &bytes)
{
    if (bytes.size() <= maximumShownBytes)
        return QString::fromUtf8(bytes);
    int keep = maximumShownBytes;
    while (keep > 0 && (bytes.at(keep) & 0xC0) == 0x80)
        --keep;
    return QString::fromUtf8(bytes.constData(), keep) + QStringLiteral("…");
}

int KeyValues::indexOf(const QByteArray &key) const
{
    for (int i = 0; i < m_lines.size(); ++i)
        if (m_lines.at(i).key == key)
            return i;
    return -1;
}

QByteArray KeyValues::value(const QByteArray &key) const
{
    const int i = indexOf(key);
    return i < 0 ? QByteArray() : m_lines.at(i).value;
}

bool KeyValues::contains(const QByteArray &key) const
{
    return indexOf(key) >= 0;
}

void KeyValues::set(const QByteArray &key, const QByteArray &value)
{
    QByteArray oneLine = value;
    oneLine.replace('\r', "").replace('\0', ' '); // a null would end the value for its readers
    oneLine = oneLine.trimmed();
    const QByteArray readBack = oneLine.isNull() ? QByteArray("") : oneLine;
    oneLine.replace('\n', lineEndInValue);
    const Line line{key, readBack, escapedKey(key) + ": " + oneLine};
    const int i = indexOf(key);
    if (i < 0)
        m_lines.append(line);
    else if (m_lines.at(i).value != line.value)
        m_lines[i] = line;
}

void KeyValues::remove(const QByteArray &key)
{
    removeIf([&key](const QByteArray &other) { return other == key; });
}

void KeyValues::appendLine(const QByteArray &line)
{
    const int separator = separatorOf(line);
    if (separator < 0) {
        m_lines.append({QByteArray(), QByteArray(), line});
        return;
    }
    QByteArray key = line.left(separator).trimmed();
    key.replace("\\:", ":");
    QByteArray value = line.mid(separator + 1).trimmed();
    value.replace(lineEndInValue, "\n");
    if (value.isNull())
        value = QByteArray("");
    m_lines.append({key, value, line});
}

QByteArray KeyValues::toBytes() const
{
    QByteArray bytes;
    for (const Line &line : m_lines)
        bytes += line.raw + '\n';
    return bytes;
}

host::Outcome<OdFile> parseOdFile(const QByteArray &bytes, const QByteArray &type)
{
    OdFile file;
    int offset = 0;
    QByteArray line;
    file.isCut = bytes.isEmpty();
    if (!takeLine(bytes, &offset, &file.version))
        return {file, QStringLiteral("it is empty")};
    if (!file.version.startsWith("dTect V"))
        return {file, QStringLiteral("it is no survey file (the first line is not \"dTect V…\")")};
    file.isCut = true;
    if (!takeLine(bytes, &offset, &file.type))
        return {file, QStringLiteral("it is cut off within its header")};
    file.isCut = offset >= bytes.size();
    if (file.type.trimmed().compare(type, Qt::CaseInsensitive) != 0)
        return {file,
                QStringLiteral("its type is \"%1\" and not \"%2\"")
                    .arg(QString::fromUtf8(file.type), QString::fromUtf8(type))};
    file.isCut = true;
    bool hasHeaderEnd = false;
    while (!hasHeaderEnd && takeLine(bytes, &offset, &line))
        hasHeaderEnd = line.startsWith('!');
    if (!hasHeaderEnd)
        return {file, QStringLiteral("it is cut off within its header")};
    file.bodyOffset = offset;
    while (takeLine(bytes, &offset, &line)) {
        file.bodyOffset = offset;
        if (line.startsWith('!')) {
            // The line feed belongs to the mark: binary samples begin right behind it.
            file.isCut = bytes.at(offset - 1) != '\n';
            break;
        }
        file.keys.appendLine(line);
    }
    return {file, {}};
}

QByteArray odFileDate()
{
    return QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("ddd dd MMM yyyy, HH:mm:ss")).toUtf8();
}

QByteArray odFileHeader(const QByteArray &type)
{
    return "dTect V6.6\n" + type + '\n' + odFileDate() + "\n!\n";
}

QString readErrorText(const QString &path, int errorCode)
{
    return QStringLiteral("Cannot read the file %1: %2.").arg(path, base::systemErrorText(errorCode));
}

QString writeErrorText(const QString &path, const QString &reason)
{
    return QStringLiteral("Cannot write the file %1: %2. What was there is unchanged.").arg(path, reason);
}

QString unreadableText(int errorCode)
{
    return QStringLiteral("it cannot be read (%1)").arg(base::systemErrorText(errorCode));
}

// Plain system calls: a survey of thousands of wells has a hundred thousand small files, and a file object costs
// several times what they do.
InputFile::InputFile(const QString &path)
{
    struct stat info
    { };
    m_file = base::openRegularFile(path, surveyOf(path), &m_errorCode, &info);
    if (m_file >= 0)
        m_state = base::stateOf(info);
}

InputFile::~InputFile()
{
    if (m_file >= 0)
        ::close(m_file);
}

QByteArray InputFile::read(int size)
{
    const auto room = static_cast<int>(qMin<qint64>(size, this->size() - m_done));
    QByteArray bytes(m_errorCode == 0 ? room : 0, Qt::Uninitialized);
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::read(m_file, bytes.data() + done, static_cast<size_t>(bytes.size() - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            m_errorCode = errno;
        if (got <= 0)
            break;
        done += static_cast<int>(got);
    }
    bytes.truncate(m_errorCode == 0 ? done : 0);
    m_done += bytes.size();
    return bytes;
}

FileRead readFile(const QString &path, int maximumSize)
{
    InputFile file(path);
    if (file.errorCode() != 0)
        return {{}, file.errorCode(), {}};
    if (maximumSize < 0 && file.size() > std::numeric_limits<int>::max() - (1 << 20))
        return {{}, EFBIG, {}};
    const qint64 size = maximumSize < 0 ? file.size() : qMin<qint64>(file.size(), maximumSize);
    const QByteArray bytes = file.read(static_cast<int>(size));
    return {bytes, file.errorCode(), file.state()};
}

bool removeFile(const QString &path)
{
    return base::fileSystemCalls().unlink(QFile::encodeName(path).constData()) == 0;
}

bool moveInPlace(const QString &from, const QString &to)
{
    return base::fileSystemCalls().rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData())
        == 0;
}

host::Outcome<QByteArray> readFileBytes(const QString &path)
{
    const FileRead read = readFile(path);
    if (read.errorCode != 0)
        return {{}, readErrorText(path, read.errorCode)};
    return {read.bytes, {}};
}

} // namespace survey
