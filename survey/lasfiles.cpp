#include "survey/lasfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace survey {

namespace {

constexpr int mostFiles = 100000;

} // namespace

FoundFiles findLasFiles(const QStringList &paths)
{
    FoundFiles found;
    QSet<QString> seen;
    const auto add = [&](const QString &path, QStringList *list) {
        const QString place = QDir::cleanPath(QDir::current().absoluteFilePath(path));
        if (seen.contains(place) || seen.size() == mostFiles)
            return;
        seen.insert(place);
        list->append(path);
    };
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir()) {
            add(path, &found.files);
            continue;
        }
        QStringList inside;
        QDirIterator entries(path, QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext() && inside.size() < mostFiles)
            inside.append(entries.next());
        std::sort(inside.begin(), inside.end());
        for (const QString &file : qAsConst(inside))
            add(file, file.endsWith(QLatin1String(".las"), Qt::CaseInsensitive) ? &found.files : &found.others);
    }
    return found;
}

} // namespace survey
