#include "workbench/odfile.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>

#include <algorithm>

namespace workbench {

namespace {

// The separator is the first ":" that no backslash escapes.
int separatorOf(const QByteArray &line)
{
    for (int i = 1; i < line.size(); ++i)
        if (line.at(i) == ':' && line.at(i - 1) != '\\')
            return i;
    return -1;
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
    oneLine.replace('\r', "").replace('\n', "#-NL-#");
    const Line line {key, oneLine.trimmed(), escapedKey(key) + ": " + oneLine};
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
    value.replace("#-NL-#", "\n");
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
    if (!takeLine(bytes, &offset, &file.version) || !file.version.startsWith("dTect V"))
        return {file, QStringLiteral("it is no survey file (the first line is not \"dTect V…\")")};
    takeLine(bytes, &offset, &file.type);
    if (file.type.trimmed().compare(type, Qt::CaseInsensitive) != 0)
        return {file, QStringLiteral("its type is \"%1\" and not \"%2\"")
                          .arg(QString::fromUtf8(file.type), QString::fromUtf8(type))};
    bool hasHeaderEnd = false;
    while (!hasHeaderEnd && takeLine(bytes, &offset, &line))
        hasHeaderEnd = line.startsWith('!');
    if (!hasHeaderEnd)
        return {file, QStringLiteral("it is cut off within its header")};
    file.bodyOffset = offset;
    while (takeLine(bytes, &offset, &line)) {
        file.bodyOffset = offset;
        if (line.startsWith('!'))
            break;
        file.keys.appendLine(line);
    }
    return {file, {}};
}

QByteArray odFileDate()
{
    return QLocale::c()
        .toString(QDateTime::currentDateTime(), QStringLiteral("ddd dd MMM yyyy, HH:mm:ss"))
        .toUtf8();
}

QByteArray odFileHeader(const QByteArray &type)
{
    return "dTect V6.6\n" + type + '\n' + odFileDate() + "\n!\n";
}

host::Outcome<QByteArray> readFileBytes(const QString &path, qint64 maximumSize)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.errorString())};
    QByteArray bytes = maximumSize < 0 ? file.readAll() : file.read(maximumSize);
    if (file.error() != QFileDevice::NoError)
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.errorString())};
    return {bytes, {}};
}

} // namespace workbench
