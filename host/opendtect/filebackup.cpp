#include "host/opendtect/filebackup.h"

#include "base/atomicfile.h"
#include "base/filesystemcalls.h"

#include <QFile>
#include <QFileInfo>

namespace opendtect {

namespace {

// Hidden, and no name that a user gives to a copy of his own.
QString backupPath(const QString &path)
{
    const QFileInfo file(path);
    return file.path() + QStringLiteral("/.lorva-") + file.fileName();
}

// Copies the file, if there is one, to \a copy; gives the reason why it could not.
QString copyFile(const QString &path, const QString &copy)
{
    const base::WriteResult writable = base::checkWritable(path);
    QFile file(path);
    if (!writable.ok() || !file.exists())
        return writable.error;
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const QByteArray bytes = file.readAll();
    if (!isOpen || file.error() != QFileDevice::NoError)
        return file.errorString();
    return base::writeFileAtomically(copy, bytes).error;
}

} // namespace

FileBackup::FileBackup(const QString &path)
    : m_path(QFile::exists(path) ? QFileInfo(path).canonicalFilePath() : path)
    , m_copy(backupPath(m_path))
    , m_isNew(!QFile::exists(path))
{
    if (QFile::exists(m_copy)) {
        // A write that did not end may have left the only whole copy.
        m_error = QStringLiteral(
                      "An earlier write of the file %1 did not end. %2 is what it was before: put it in place of "
                      "the file, or delete it. Nothing was changed.")
                      .arg(m_path, m_copy);
        m_copy.clear();
        return;
    }
    const QString reason = copyFile(m_path, m_copy);
    if (!reason.isEmpty())
        m_error = QStringLiteral("Cannot write the file %1: %2. Nothing was changed.").arg(m_path, reason);
}

FileBackup::~FileBackup()
{
    if (!m_copy.isEmpty())
        QFile::remove(m_copy);
}

QString FileBackup::putBack()
{
    if (m_isNew) {
        QFile::remove(m_path);
        return {};
    }
    if (base::fileSystemCalls().rename(QFile::encodeName(m_copy).constData(), QFile::encodeName(m_path).constData())
        == 0)
        return {};
    const QString kept = m_copy;
    m_copy.clear();
    return QStringLiteral("The file %1 could not be put back; what it was lies in %2.").arg(m_path, kept);
}

} // namespace opendtect
