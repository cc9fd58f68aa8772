#include "welldata/definewellperforation.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "welldata/siderows.h"
#include "welldata/welldatatable.h"
#include "welldata/wellperforationascii.h"

#include <QPointer>
#include <QPushButton>

DefineWellPerforation::DefineWellPerforation(ProjectData &projectData, QWidget *parent)
    : WellTableEditor(projectData, QStringLiteral("Perforation Zone(s)"), QStringLiteral("perforation zones"),
                      welldata::zoneColumns(), parent)
{
    setObjectName(QStringLiteral("DefineWellPerforation"));
}

void DefineWellPerforation::load()
{
    const QString &folder = data().project.projectFolder;
    const ProjectFile file = readProjectFile(folder, perforationPath(folder, wellName()));
    if (file.state != ProjectFile::State::Read) {
        showRows({});
        updateButton()->setEnabled(false);
        if (file.state == ProjectFile::State::Missing)
            setPassingStatus(QStringLiteral("Perforation Zone data doesn't exist !"));
        else
            data().asker.warn(windowTitle(),
                              QStringLiteral("Unable to read file please check file read/write permission."));
        return;
    }
    QVector<welldata::TableRow> rows = welldata::zoneRows(parsePerforation(file.bytes, wellName()));
    const QVector<int> unknown = replaceUnknownTypes(&rows);
    showRows(rows);
    updateButton()->setEnabled(true);
    setStatus(unknown.isEmpty() ? QString()
                                : QStringLiteral("The zone type of %1 is none of the list and shows as \"%2\".")
                                      .arg(welldata::rowList(unknown), data().project.zoneTypes.value(0)));
}

bool DefineWellPerforation::save()
{
    table()->finishEditing();
    const QPointer<DefineWellPerforation> self = this;
    const QString name = wellName();
    const StoreResult result = storeZones(data(), name, table()->rows(), windowTitle());
    if (!self || result.isDeclined())
        return false;
    if (!result) {
        setStatus(QStringLiteral("Error in updating/saving Perforation zone data !"));
        return false;
    }
    setSaved();
    setPassingStatus(QStringLiteral("Successfully updated !"));
    emit zonesWritten(name);
    return true;
}

void DefineWellPerforation::updateBtnClicked()
{
    if (hasWell())
        save();
}

bool DefineWellPerforation::importZones(const welldata::WellChoice &to, const welldata::ColumnFile &file,
                                        const QString &title)
{
    const QPointer<DefineWellPerforation> self = this;
    const QVector<welldata::TableRow> rows = welldata::zoneRows(file);
    if (!storeZones(data(), to.name, rows, title) || !self)
        return false;
    if (to.name == wellName()) {
        load();
        if (!self)
            return true;
        const QVector<int> without = rowsWithoutNumber(rows);
        if (!without.isEmpty())
            addStatus(QStringLiteral("No number in %1: read as 0.").arg(welldata::rowList(without)));
    }
    emit zonesWritten(to.name);
    return true;
}

ColumnImportDialog *DefineWellPerforation::makeImport()
{
    return new WellPerforationASCII(*this, data(), well());
}
