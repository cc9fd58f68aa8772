#include "programs/workbenchpictures.h"

#include "programs/picturefolder.h"
#include "survey/surveyfolder.h"
#include "workbench/newwellsdialog.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/workbenchhost.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace programs {

void drawManagedWells(workbench::WorkbenchHost &host, base::Asker &asker, PictureFolder *pictures)
{
    const QVector<host::WellEntry> wells = host.store().list().value;
    if (wells.isEmpty())
        return;
    workbench::WellManagerDialog dialog(host.store(), asker);
    dialog.resize(860, 820); // the markers stand behind the logs
    dialog.show();
    dialog.selectWell(wells.at(wells.size() / 2).key);
    QCoreApplication::processEvents();
    pictures->save(&dialog, QStringLiteral("workbench-wells"));
}

void drawNewWells(const QString &survey, base::Asker &asker, PictureFolder *pictures)
{
    const QDir inputs(survey + QStringLiteral("/Import"));
    QStringList files;
    for (const QString &name : inputs.entryList({QStringLiteral("*.las")}, QDir::Files))
        files.append(inputs.filePath(name));
    const QTemporaryDir folder;
    const QString empty = folder.filePath(QStringLiteral("survey"));
    if (files.isEmpty() || !survey::createSurvey(empty, {}).ok())
        return;
    survey::SurveyStore store(empty);
    workbench::NewWellsDialog dialog(store, asker, {});
    dialog.resize(1160, 460);
    dialog.addFiles(files);
    dialog.show();
    pictures->save(&dialog, QStringLiteral("workbench-las"));
}

} // namespace programs
