#include "base/safename.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationzonestable.h"
#include "datastore/perforationfile.h"
#include "datastore/textfields.h"
#include "las/wellimportdialog.h"
#include "logview/markersaving.h"
#include "logview/paper/displaysheet.h"
#include "logview/picturesaving.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "mainwin/reportwriter.h"
#include "mainwin/sheetsaving.h"
#include "mainwin/truescaledialog.h"
#include "nameuses.h"
#include "operations.h"
#include "support/files.h"
#include "support/modaldialog.h"
#include "survey/odfile.h"
#include "tests/survey/surveyfixture.h"
#include "welldata/celledit.h"
#include "welldata/definewellperforation.h"
#include "welldata/markerdatawidget.h"
#include "welldata/welldatatable.h"
#include "workbench/newwellsdialog.h"
#include "workbench/newwellsmodel.h"
#include "workbench/reportdialog.h"
#include "workbench/wellcontents.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGraphicsView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace campaign {

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

// Of a file, or of a cell: what is around it does not count.
QString trimmed(const QString &name)
{
    return name.trimmed();
}

QString oneForm(const QString &)
{
    return text("A");
}

QString markerForm(const QString &name)
{
    return survey::storedText(name.trimmed());
}

QString zoneForm(const QString &name)
{
    return textfields::fieldName(name.trimmed());
}

QString refusalUnless(bool isDone, const Place &place)
{
    return isDone ? QString() : text("refused: ") + place.said().join(QLatin1Char(' '));
}

void typeNumber(const WellDataTable &table, int row, int column, int number)
{
    auto *line = qobject_cast<CellEdit *>(table.cellWidget(row, column));
    if (!line)
        qFatal("no line in the table");
    line->setText(QString::number(number));
    emit line->editingFinished();
}

// The row that was added last is typed into.
template<class Editor>
bool typeRow(Place &place, Editor *editor, const char *well, const QString &name, int number)
{
    editor->resize(800, 400);
    editor->show();
    editor->setWell(text("A"), text(well));
    editor->addRow();
    const int row = editor->table()->rowCount() - 1;
    editor->table()->scrollToItem(editor->table()->item(row, 0));
    editor->table()->item(row, 0)->setText(name);
    typeNumber(*editor->table(), row, 1, number);
    place.asker.texts.clear();
    editor->updateBtnClicked();
    return !editor->isModified();
}

int findMarker(Place &place, const QString &name)
{
    for (const host::Marker &marker : place.wells().markers(Place::firstWell).value)
        if (marker.name == survey::storedText(name.trimmed()))
            return static_cast<int>(marker.depth) - 10;
    return -1;
}

QString typeMarker(Place &place, const QString &name, int number)
{
    if (findMarker(place, name) >= 0)
        return text("it is there");
    MarkerDataWidget editor(place.data);
    const bool isStored = typeRow(place, &editor, Place::firstWell, name, 10 + number);
    return refusalUnless(isStored && (place.asker.texts.isEmpty() || findMarker(place, name) >= 0), place);
}

QString pickMarker(Place &place, const QString &name, int number)
{
    const QString given = savePickedMarker(place.data, text("A"), {name, static_cast<float>(10 + number), Qt::red});
    return refusalUnless(!given.isNull(), place);
}

// A name that is taken gets a number.
int findPickedMarker(Place &place, const QString &name)
{
    for (const host::Marker &marker : place.wells().markers(Place::firstWell).value)
        if (marker.name.startsWith(survey::storedText(name.trimmed())))
            return 0;
    return -1;
}

QString typeZone(Place &place, const QString &name, int number)
{
    DefineWellPerforation editor(place.data);
    return refusalUnless(typeRow(place, &editor, Place::firstWell, name, number), place);
}

int findZone(Place &place, const QString &name)
{
    const PerforationRecord record = readPerforation(place.project(), text("A"));
    const int index = record.names.lastIndexOf(zoneForm(name));
    return index < 0 ? -1 : static_cast<int>(record.tops.at(index));
}

QString typeCorrelationZone(Place &place, const QString &name, int)
{
    CorrelationPropertiesDialog dialog(place.data, text("Zoned"));
    if (!dialog.isStored())
        dialog.addWellClicked();
    dialog.zoneAddClicked();
    auto *zones = dialog.findChild<CorrelationZonesTable *>(text("zonesTable"));
    const int row = zones->rowCount() - 1;
    zones->item(row, 0)->setText(name);
    for (const int column : {1, 2})
        qobject_cast<QComboBox *>(zones->cellWidget(row, column))->setEditText(text("10"));
    return refusalUnless(dialog.save(), place);
}

int findCorrelationZone(Place &place, const QString &name)
{
    const auto read = correlation::load(place.data.project, text("Zoned"), correlation::knownNames(place.data));
    for (const CorrelationZone &zone : read ? read->zones : QVector<CorrelationZone>())
        if (zone.name.trimmed() == textfields::fieldName(name).trimmed())
            return 0;
    return -1;
}

QByteArray lasText(const QString &wellName, int number)
{
    return "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nSTRT.M 100:\nSTOP.M 102:\nSTEP.M 1:\nNULL. -999.25:\nUWI. A:\nWELL. "
        + wellName.toUtf8() + ":\n~C\nDEPT.M :\nGR.GAPI :\n~A\n100 1\n101 1\n102 " + QByteArray::number(number)
        + '\n';
}

bool importFile(Place &place, const QString &path, const QString &logName)
{
    WellImportDialog dialog(place.data);
    dialog.chooseFiles = [&path](auto &&...) { return QStringList(path); };
    dialog.selectLasFilesClicked();
    auto *table = dialog.findChild<QTableWidget *>(text("curveTable"));
    if (!table)
        return false;
    for (int row = 0; row < table->rowCount(); ++row)
        table->item(row, 2)->setCheckState(row == 1 ? Qt::Checked : Qt::Unchecked);
    table->item(1, 3)->setText(logName);
    place.asker.texts.clear();
    dialog.importSelectedClicked();
    return place.wells().logs(Place::firstWell).ok();
}

int findLog(Place &place, const QString &name)
{
    const int index = indexOfLog(place, Place::firstWell, name);
    return index < 0 ? -1 : static_cast<int>(place.wells().log(Place::firstWell, index).value.values.value(2));
}

QString typeImportedLog(Place &place, const QString &name, int number)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(text("import.las"));
    files::write(path, lasText(text("A"), number));
    (void)importFile(place, path, name);
    return refusalUnless(findLog(place, name) == number, place);
}

// A file of that name, where there can be one.
QString nameImportedFile(Place &place, const QString &name, int number)
{
    const QTemporaryDir folder;
    const QString path = folder.path() + QLatin1Char('/') + name;
    if (!base::isPathComponent(name) || name.contains(QChar(0)))
        return text("no name of a file");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(lasText(text("A"), number)) < 0)
        return text("no name of a file");
    file.close();
    const QString log = text("FILE") + QString::number(number);
    return refusalUnless(importFile(place, path, log) && findLog(place, log) == number, place);
}

int findImportedFile(Place &place, const QString &)
{
    for (const host::LogInfo &log : place.wells().logs(Place::firstWell).value)
        if (log.name.startsWith(QLatin1String("FILE")))
            return 0;
    return -1;
}

QTreeWidgetItem *contentOf(const workbench::WellContents &contents, int group)
{
    return contents.findChild<QTreeWidget *>(text("contentsTree"))->topLevelItem(group)->child(0);
}

QString retypeContent(Place &place, const QString &name, int group)
{
    workbench::FileChooser chooser;
    workbench::WellContents contents(place.wells(), place.asker, chooser);
    contents.showWell({text("B"), text(Place::secondWell)});
    QTreeWidgetItem *item = contentOf(contents, group);
    if (!item)
        return text("nothing is left");
    item->setText(0, name);
    QCoreApplication::processEvents(); // it is written when the editor has gone
    return refusalUnless(place.asker.texts.isEmpty(), place);
}

QString retypeLog(Place &place, const QString &name, int)
{
    return retypeContent(place, name, 0);
}

int findRetypedLog(Place &place, const QString &name)
{
    for (const host::LogInfo &log : place.wells().logs(Place::secondWell).value)
        if (log.name == survey::storedText(name))
            return 0;
    return -1;
}

QString retypeMarker(Place &place, const QString &name, int)
{
    return retypeContent(place, name, 1);
}

int findRetypedMarker(Place &place, const QString &name)
{
    const QVector<host::Marker> markers = place.wells().markers(Place::secondWell).value;
    return markers.size() == 1 && markers.first().name == survey::storedText(name.trimmed()) ? 0 : -1;
}

QString typeNewWell(Place &place, const QString &name, int number)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(text("new.las"));
    files::write(path, lasText(text("New"), number));
    workbench::FileChooser chooser;
    workbench::NewWellsDialog dialog(place.wells(), place.asker, chooser);
    dialog.addFiles({path});
    QAbstractItemModel *model = dialog.findChild<QTableView *>()->model();
    model->setData(model->index(0, workbench::NewWellsModel::NameColumn), name, Qt::EditRole);
    auto *create = dialog.findChild<QPushButton *>(text("createWellsButton"));
    if (!create->isEnabled())
        return text("refused");
    whenModal<workbench::ReportDialog>(&dialog, [](QDialog *summary) { summary->reject(); });
    create->click();
    return refusalUnless(dialog.createdCount() == 1, place);
}

// Its log has the number.
int findNewWell(Place &place, const QString &name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == name.trimmed() && well.key != QLatin1String(Place::firstWell))
            return static_cast<int>(place.wells().log(well.key, 0).value.values.value(2));
    return -1;
}

QString reportWell(Place &place, const QString &name, int number)
{
    MemoryHost host;
    host::WellHeader well;
    well.name = name;
    well.totalDepth = 1000;
    const QString key = host.addWell(well);
    host.find(key)->logs.append(logOfState("GR", number));
    ProjectData data(host, place.asker);
    data.project = place.data.project;
    data.catalogue.build();
    return refusalUnless(writeLogsReport(data), place);
}

int findReport(Place &place, const QString &name)
{
    const QString path = logsReportPath(place.data, name);
    return QFileInfo::exists(path) && files::read(path).contains("GR") ? 0 : -1;
}

QString picturePath(Place &place, const QString &title)
{
    return place.project() + QLatin1Char('/') + base::fileNameFor(title, 5) + text(".tiff");
}

QString titleOfPicture(Place &place, const QString &name, int)
{
    WellDisplayWidget display(place.data, text("A"), text("Simple"), nullptr);
    display.scene()->panel()->enterScale(20000);
    const logview::SavedPicture saved = logview::saveDisplayPicture(
        *display.headerView()->scene(), *display.scene(), place.data.project, name, PictureFormat::Tiff, &display);
    return refusalUnless(saved.status.startsWith(QLatin1String("Saved as ")), place);
}

int findPicture(Place &place, const QString &name)
{
    return QFileInfo::exists(picturePath(place, name)) ? 0 : -1;
}

// The file is the one that is proposed.
QString titleOfSheet(Place &place, const QString &name, int)
{
    WellDisplayWidget display(place.data, text("A"), text("Simple"), nullptr);
    display.scene()->panel()->enterScale(20000);
    sheetsaving::Display shown{display.headerView()->scene(), display.scene(),
                               logview::sheetContents(*display.headerView()->scene(), *display.scene())};
    shown.contents.title = name;
    whenModal<TrueScaleDialog>(&display, [](QDialog *paper) { paper->accept(); });
    const QString outcome = sheetsaving::saveSheet(
        place.data, shown, &display, [](QWidget *, const QString &, const QString &proposed) { return proposed; });
    return refusalUnless(outcome.startsWith(QLatin1String("Saved as ")), place);
}

int findSheet(Place &place, const QString &name)
{
    const QString path = place.project() + QLatin1Char('/') + base::fileNameFor(name, 4) + text(".pdf");
    return QFileInfo::exists(path) ? 0 : -1;
}

} // namespace

std::vector<NameUse> tableNameUses()
{
    const QStringList wells{text("survey/WellInfo/")};
    const QStringList project{text("survey/WLC/")};
    const QStringList import = wells + QStringList{text("survey/WLC/CurveGroups/")};
    return {
        {"marker typed in a table", wells, typeMarker, findMarker, {}, markerForm},
        {"picked marker", wells, pickMarker, findPickedMarker, {}, {}},
        {"zone typed in a table", project, typeZone, findZone, {}, zoneForm},
        {"typed zone of a correlation",
         {text("survey/WLC/Correlations/Zoned/")},
         typeCorrelationZone,
         findCorrelationZone,
         {},
         {}},
        {"typed name of an imported log", import, typeImportedLog, findLog, {}, logForm},
        {"name of an imported file", import, nameImportedFile, findImportedFile, {}, oneForm},
        {"typed new name of a log", wells, retypeLog, findRetypedLog, {}, oneForm},
        {"typed new name of a marker", wells, retypeMarker, findRetypedMarker, {}, oneForm},
        {"typed name of a well of a LAS file", wells, typeNewWell, findNewWell, {}, trimmed},
        {"well with a report", {text("survey/WLC/")}, reportWell, findReport, {}, {}},
        {"title of a picture", project, titleOfPicture, findPicture, {}, {}},
        {"title of a PDF file", project, titleOfSheet, findSheet, {}, {}},
    };
}

} // namespace campaign
