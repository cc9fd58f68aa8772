#include "las/curvetextwriter.h"

#include "base/madefolders.h"
#include "base/numbers.h"
#include "base/safename.h"
#include "datastore/projectfile.h"

#include <QDir>

namespace las {

QByteArray curveText(const QString &wellName, const LogCurveData &log)
{
    QByteArray text = wellName.toUtf8() + '\t' + log.logName.toUtf8() + "\nDepth\tValue\n";
    const int count = qMin(log.depths.size(), log.values.size());
    for (int i = 0; i < count; ++i) {
        text += base::formatGeneral(log.depths.at(i)) + '\t' + base::formatGeneral(log.values.at(i));
        if (i + 1 < count)
            text += '\n';
    }
    return text;
}

base::WriteResult writeCurveText(const QString &projectFolder, const QString &wellName, const LogCurveData &log)
{
    const QString folder = projectFolder + QStringLiteral("/Wells/") + base::fileNameFor(wellName);
    base::MadeFolders made(folder);
    if (!isLinkedAway(projectFolder, folder))
        QDir().mkpath(folder); // the write says what went wrong
    const QString suffix = QStringLiteral(".txt");
    const QString path = folder + QLatin1Char('/') + base::fileNameFor(log.logName, suffix.size()) + suffix;
    const base::WriteResult result = writeProjectFile(projectFolder, path, curveText(wellName, log));
    if (result.ok())
        made.keep();
    return result;
}

} // namespace las
