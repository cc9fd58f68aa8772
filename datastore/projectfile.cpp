#include "datastore/projectfile.h"

#include <QFile>
#include <QFileInfo>

ProjectFile readProjectFile(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        if (file.error() == QFile::NoError)
            return {ProjectFile::State::Read, bytes};
        return {ProjectFile::State::Unreadable, {}};
    }
    // A link to nothing is no missing file: what it stands for may only be out of reach for now.
    const QFileInfo info(path);
    const bool isThere = info.isSymLink() || info.exists();
    return {isThere ? ProjectFile::State::Unreadable : ProjectFile::State::Missing, {}};
}
