#include "programs/workbenchpictures.h"

#include "base/atomicfile.h"
#include "base/numbers.h"
#include "programs/demoinputs.h"
#include "programs/picturefolder.h"
#include "survey/surveyfolder.h"
#include "workbench/newwellsdialog.h"
#include "workbench/topsdialog.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/workbenchhost.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace programs {

namespace {

// As such tables are: names written in other ways, a well of another survey, new and moved tops, and gaps.
QByteArray tableOfTops(survey::SurveyStore &store)
{
    constexpr double movedM = 2.35;
    QByteArray table = "Well;Formation;MD (m)\n";
    const QVector<host::WellEntry> wells = store.list().value;
    for (int i = 0; i < wells.size(); ++i) {
        const QByteArray name = i % 2 == 0 ? wells.at(i).name.toUtf8() : wells.at(i).name.toUpper().toUtf8();
        const QVector<host::Marker> markers = store.markers(wells.at(i).key).value;
        for (int m = 0; m < markers.size(); ++m) {
            const double depth = static_cast<double>(markers.at(m).depth) + (m % 5 == i % 3 ? movedM * (i + 1) : 0);
            table += name + ';' + markers.at(m).name.toUtf8() + ';' + base::formatFixed(depth, 2) + '\n';
        }
        table += name + ";Kestrane Coal;2060.40\n" + (i % 3 == 0 ? name + ";Basement;4250\n" : QByteArray());
    }
    return table + "Dunlow-2;Ostrel Sandstone;902.10\nDunlow-2;Kestrane Upper Sst;2051.77\n"
        + wells.value(0).name.toUtf8() + ";Maldane Evaporites;\n";
}

} // namespace

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
    const QStringList files = demoInputs(survey, QStringLiteral("*.las"));
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

void drawTops(workbench::WorkbenchHost &host, base::Asker &asker, PictureFolder *pictures)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("field_tops.csv"));
    if (!base::writeFileAtomically(file, tableOfTops(host.store())).ok())
        return;
    workbench::TopsDialog dialog(host.store(), asker, {});
    dialog.resize(1080, 510);
    dialog.addFiles({file});
    dialog.show();
    pictures->save(&dialog, QStringLiteral("workbench-tops"));
}

} // namespace programs
