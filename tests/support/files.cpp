#include "support/files.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QtGlobal>

namespace files {

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Test cannot read %s", qUtf8Printable(path));
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("Test cannot write %s", qUtf8Printable(path));
}

QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> result;
    const QDir base(folder);
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QFileInfo info = entries.fileInfo();
        const QString name = base.relativeFilePath(path);
        if (info.fileName() == QLatin1String(".lorva.lock")
            || info.fileName().startsWith(QLatin1String(".lorva.open."))) // who has the survey open
            continue;
        if (info.isSymLink())
            result.insert(name, "-> " + info.symLinkTarget().toUtf8());
        else if (info.isDir())
            result.insert(name + QLatin1Char('/'), {});
        else
            result.insert(name, read(path));
    }
    return result;
}

void copyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    const QMap<QString, QByteArray> content = snapshot(from);
    for (auto entry = content.begin(); entry != content.end(); ++entry) {
        const QString target = to + QLatin1Char('/') + entry.key();
        if (entry.key().endsWith(QLatin1Char('/')))
            QDir().mkpath(target);
        else
            write(target, entry.value());
    }
}

QString sharedFolder(const QString &name)
{
    const QString path = QStringLiteral(LORVA_SHARED_DIR "/") + name;
    return QFileInfo::exists(path) ? path : QString();
}

} // namespace files
