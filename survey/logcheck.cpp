#include "survey/logcheck.h"

#include "base/folderlinks.h"
#include "survey/welllistfile.h"
#include "survey/wellnames.h"

#include <QFileInfo>

namespace survey {

QHash<QString, QString> wellStems(const QString &surveyDirectory)
{
    WellListFile list(surveyDirectory);
    const host::Outcome<ObjectList> read = list.read([](const QString &, const QString &) {});
    const QString folder = QFileInfo(list.path()).path() + QLatin1Char('/');
    QHash<QString, QString> stems;
    for (const ObjectEntry &entry : read.value.entries())
        if (isWell(entry) && isPlainFileName(entry.fileName()))
            stems.insert(wellKey(entry.number), folder + stemOf(entry.fileName()));
    return stems;
}

QStringList checkLogs(const QString &stem, const LogFiles::Report &report)
{
    QStringList names;
    for (int number = 1;; ++number) {
        const QString path = LogFiles::path(stem, number);
        QString problem;
        const host::Outcome<LogFileHeader> log = checkLogFile(path, &problem);
        if (!log.ok() && !base::isThere(path))
            return names;
        if (!log.ok() || !problem.isEmpty())
            report(path, log.ok() ? problem : log.error);
        if (!log.ok())
            continue;
        if (log.value.name.isEmpty())
            report(path, QStringLiteral("its header gives the log no name"));
        else if (names.contains(log.value.name))
            report(path, QStringLiteral("a second log named \"%1\" is left out").arg(log.value.name));
        else
            names.append(log.value.name);
    }
}

} // namespace survey
