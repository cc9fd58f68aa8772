#include "survey/orphans.h"

#include "base/safename.h"
#include "survey/logfiles.h"
#include "survey/welllistfile.h"
#include "survey/wellnames.h"

#include <QDir>
#include <QRegularExpression>
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
    static const QRegularExpression log(QStringLiteral("^(.+)\\^(\\d{1,6})\\.wll$"));
    static const QRegularExpression other(QStringLiteral("^(.+)\\.(well|track|wlm|wlt|csmdl|disp)$"));
    const QRegularExpressionMatch ofLog = log.match(fileName);
    if (ofLog.hasMatch())
        return {ofLog.captured(1), ofLog.captured(2).toInt()};
    return {other.match(fileName).captured(1), 0};
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
    QVector<OrphanedFile> orphans;
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        const WellFileName file = parsed(name);
        if (base::isReservedName(name) && name != QLatin1String(".lorva.lock"))
            orphans.append({path, OrphanedFile::Kind::Unfinished});
        else if (!file.stem.isEmpty() && !stems.contains(file.stem))
            orphans.append({path, OrphanedFile::Kind::NoWell});
        else if (file.logNumber > 1
                 && !present.contains(QFileInfo(LogFiles::path(file.stem, file.logNumber - 1)).fileName()))
            orphans.append({path, OrphanedFile::Kind::HiddenLog});
    }
    return orphans;
}

} // namespace survey
