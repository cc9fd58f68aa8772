#include "base/usersettings.h"

#include "base/atomicfile.h"
#include "base/filelock.h"
#include "base/leftovers.h"
#include "base/regularfile.h"

#include <QByteArray>
#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSettings>
#include <QUrl>

namespace base {

namespace {

using Values = QMap<QString, QVariant>;

constexpr int patienceMs = 1000;

// Qt keeps what it was given beyond the end of a plug-in, whose literals go with its code.
QString ownCopy(const QString &text)
{
    return QString(text.constData(), text.size());
}

// Where a QSettings would keep them. It does not write them: on a full disk it leaves an empty file, and reports
// success.
QString filePath(const QString &program)
{
    return QSettings(QString::fromLatin1("LORVA"), ownCopy(program)).fileName();
}

QVariant fromText(const QByteArray &text)
{
    QDataStream stream(QByteArray::fromBase64(text));
    stream.setVersion(QDataStream::Qt_5_15);
    QVariant value;
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : QVariant();
}

QByteArray toText(const QVariant &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::Append);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << value;
    return bytes.toBase64(QByteArray::OmitTrailingEquals);
}

// One value a line.
Values readValues(const QString &path)
{
    Values values;
    for (const QByteArray &line : readRegularFile(path, {}).bytes.split('\n')) {
        const int equals = line.indexOf('=');
        const QVariant value = equals > 0 ? fromText(line.mid(equals + 1)) : QVariant();
        if (value.isValid())
            values.insert(QUrl::fromPercentEncoding(line.left(equals)), value);
    }
    return values;
}

QByteArray bytesOf(const Values &values)
{
    QByteArray bytes;
    for (auto entry = values.begin(); entry != values.end(); ++entry)
        bytes += QUrl::toPercentEncoding(entry.key()) + '=' + toText(*entry) + '\n';
    return bytes;
}

} // namespace

void keepSettingsIn(const QString &folder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}

QVariant UserSettings::value(const QString &key) const
{
    return readValues(filePath(m_program)).value(key);
}

void UserSettings::setValue(const QString &key, const QVariant &value) const
{
    const QString path = filePath(m_program);
    const QString folder = QFileInfo(path).path();
    QDir().mkpath(folder);
    const FolderLock lock(folder, patienceMs);
    Values values = readValues(path);
    if (lock.isRefused() || (values.contains(key) && values.value(key) == value))
        return;
    removeLeftovers(folder);
    values.insert(key, value);
    (void)writeFileAtomically(path, bytesOf(values), Flush::Later);
}

} // namespace base
