#include "survey/orphans.h"

#include "base/safename.h"
#include "survey/logfiles.h"
#include "survey/welllistfile.h"
#include "survey/wellnames.h"

#include <QDir>
#include <QHash>
#include <QSet>

namespace survey {

namespace {

/// "stem" and 3 of "stem^3.wll"; 0 for the other files of a well. Without a stem for files that are no well's.
struct WellFileName
{
    QString stem;
    int logNumber = 0;
};

WellFileName parsed(const QString &fileName)
{
    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    if (dot <= 0)
        return {};
    const QStringRef ending = fileName.midRef(dot);
    if (ending == QLatin1String(".wll")) {
        const int mark = fileName.lastIndexOf(QLatin1Char('^'), dot);
        bool isNumber = false;
        const int number = mark > 0 ? fileName.midRef(mark + 1, dot - mark - 1).toInt(&isNumber) : 0;
        return isNumber && number > 0 ? WellFileName{fileName.left(mark), number} : WellFileName();
    }
    for (const char *own : {".well", ".track", ".wlm", ".wlt", ".csmdl", ".disp"})
        if (ending == QLatin1String(own))
            return {fileName.left(dot), 0};
    return {};
}

} // namespace

QVector<OrphanedFile> orphanedWellFiles(const QString &surveyDirectory)
{
    WellListFile list(surveyDirectory);
    const host::Outcome<ObjectList> read = list.read([](const QString &, const QString &) {});
    if (!read.ok())
        return {};
    QSet<QString> stems;
    for (const ObjectEntry &entry : read.value.entries())
        stems.insert(stemOf(entry.fileName()));
    const QDir folder(QFileInfo(list.path()).path());
    const QStringList names =
        folder.entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    const QSet<QString> present(names.begin(), names.end());
    QHash<QString, int> missing; // the first log number that is not there, by stem
    const auto firstMissing = [&](const QString &stem) {
        int &number = missing[stem];
        if (number == 0)
            for (number = 1; present.contains(LogFiles::path(stem, number));)
                ++number;
        return number;
    };
    QVector<OrphanedFile> orphans;
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        const WellFileName file = parsed(name);
        if (base::isReservedName(name) && name != QLatin1String(".lorva.lock"))
            orphans.append({path, OrphanedFile::Kind::Unfinished});
        else if (!file.stem.isEmpty() && !stems.contains(file.stem))
            orphans.append({path, OrphanedFile::Kind::NoWell});
        else if (file.logNumber > 0 && file.logNumber > firstMissing(file.stem))
            orphans.append({path, OrphanedFile::Kind::HiddenLog,
                            folder.filePath(LogFiles::path(file.stem, firstMissing(file.stem)))});
    }
    return orphans;
}

} // namespace survey
