#include "welldata/markerdatawidget.h"

#include "base/cellproperties.h"
#include "base/colorchoice.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "welldata/celledit.h"
#include "welldata/markerdatawidgetascii.h"
#include "welldata/welldatatable.h"

#include <QPointer>
#include <QSet>

namespace {

constexpr int mdColumn = 1;
constexpr int colorColumn = 4;

QStringList namesOf(const QVector<host::Marker> &markers)
{
    QStringList names;
    for (const host::Marker &marker : markers)
        names.append(marker.name);
    return names;
}

} // namespace

MarkerDataWidget::MarkerDataWidget(ProjectData &projectData, QWidget *parent)
    : WellTableEditor(projectData, QStringLiteral("Marker(s)"), QStringLiteral("markers"), welldata::markerColumns(),
                      parent)
{
    setObjectName(QStringLiteral("MarkerDataWidget"));
    connect(table(), &WellDataTable::cellEditMade, this, [this](CellEdit *edit) {
        if (edit->column() == mdColumn)
            connect(edit, &CellEdit::edited, this, &MarkerDataWidget::tableItemChanged);
    });
    connect(table(), &WellDataTable::numberChanged, this, [this](int row, int column) {
        if (column == mdColumn)
            computeDepths(row);
    });
    connect(table(), &QTableWidget::itemDoubleClicked, this, &MarkerDataWidget::tableDoubleClicked);
}

// The host's own markers are read, not the catalogue's: a set that could not be read must not be replaced.
bool MarkerDataWidget::readMarkers()
{
    const auto record =
        data().catalogue.readWellRecord(data().catalogue.indexOfKey(well().key), WellsCatalogue::OnFailure::BeSilent);
    const host::Outcome<QVector<host::Marker>> markers = data().host.wells().markers(well().key);
    m_elevations = record ? welldata::MarkerElevations(*record) : welldata::MarkerElevations();
    m_stored = markers.value;
    return record && markers.ok();
}

void MarkerDataWidget::load()
{
    if (!readMarkers()) {
        const QString problem = QStringLiteral("Cannot get data for the selected well");
        m_stored.clear();
        showRows({});
        setEditingEnabled(false);
        setStatus(problem);
        data().host.showError(problem);
        return;
    }
    showRows(welldata::markerRows(m_stored, m_elevations));
    setPassingStatus(m_stored.isEmpty() ? QStringLiteral("Marker data doesn't exist !") : QString());
}

void MarkerDataWidget::computeDepths(int row)
{
    if (row < 0 || row >= table()->rows().size())
        return;
    welldata::TableRow edited = table()->rows().at(row);
    computeMarkerDepths(&edited, m_elevations);
    table()->setNumbers(row, edited);
}

void MarkerDataWidget::tableItemChanged()
{
    const QObject *edit = sender();
    if (edit && edit->property(base::columnProperty).toInt() == mdColumn)
        computeDepths(edit->property(base::rowProperty).toInt());
}

void MarkerDataWidget::tableDoubleClicked(QTableWidgetItem *item)
{
    if (!item || item->column() != colorColumn)
        return;
    const int row = item->row();
    const QColor current = item->background().color();
    const QPointer<MarkerDataWidget> self = this;
    const QColor color = base::chooseColor(this, current);
    if (!self)
        return;
    if (color.isValid() && row < table()->rows().size())
        table()->setColor(row, color);
    table()->clearSelection();
}

StoreResult MarkerDataWidget::store(const welldata::WellChoice &to, const QVector<welldata::TableRow> &rows,
                                    const QString &title, const QStringList &otherLosses)
{
    const QPointer<MarkerDataWidget> self = this;
    const QStringList namesBefore = namesOf(data().host.wells().markers(to.key).value);
    const QSet<QString> before(namesBefore.begin(), namesBefore.end());
    m_isStoring = true;
    m_wasAnnounced = false;
    const StoreResult result = storeMarkers(data(), to, rows, title, otherLosses);
    if (!self)
        return StoreResult::Declined;
    m_isStoring = false;
    if (!result)
        return result;
    const int index = data().catalogue.indexOfKey(to.key);
    if (!m_wasAnnounced) {
        data().catalogue.refreshMarkerNames(index);
        emit markersWritten(index);
    }
    QStringList added;
    for (const QString &name : namesOf(data().host.wells().markers(to.key).value))
        if (!before.contains(name))
            added.append(name);
    emit markersAdded(index, added);
    return result;
}

bool MarkerDataWidget::save()
{
    table()->finishEditing();
    const QPointer<MarkerDataWidget> self = this;
    const QVector<welldata::TableRow> rows = table()->rows();
    const host::Outcome<QVector<host::Marker>> now = data().host.wells().markers(well().key);
    // What cannot be read was not deleted; that it cannot be written either is told then.
    const QStringList undone = now.ok() ? welldata::undoneByStoring(m_stored, now.value, rows) : QStringList();
    const StoreResult result = store(well(), rows, windowTitle(), undone);
    if (!self || result.isDeclined())
        return false;
    if (!result) {
        setStatus(QStringLiteral("Error in updating Marker data !"));
        return false;
    }
    setSaved();
    const host::Outcome<QVector<host::Marker>> stored = data().host.wells().markers(well().key);
    if (stored.ok() && stored.value.size() != rows.size())
        load(); // the host left some out, which the user agreed to
    else if (stored.ok())
        m_stored = stored.value;
    setPassingStatus(QStringLiteral("Marker data updated successfully !"));
    return true;
}

bool MarkerDataWidget::importMarkers(const welldata::WellChoice &to, const welldata::ColumnFile &file,
                                     const QString &title)
{
    const QPointer<MarkerDataWidget> self = this;
    const auto record =
        data().catalogue.readWellRecord(data().catalogue.indexOfKey(to.key), WellsCatalogue::OnFailure::BeSilent);
    const welldata::MarkerElevations elevations =
        record ? welldata::MarkerElevations(*record) : welldata::MarkerElevations();
    if (!store(to, welldata::markerRows(file, elevations), title, {}) || !self)
        return false;
    if (to.key == well().key)
        load();
    return true;
}

void MarkerDataWidget::updateBtnClicked()
{
    if (!hasWell())
        return;
    const base::WaitCursor cursor;
    save();
}

void MarkerDataWidget::markersChanged(int changedWell)
{
    if (m_isStoring) {
        m_wasAnnounced = true;
        return;
    }
    if (!hasWell() || data().catalogue.wellKey(changedWell) != well().key)
        return;
    if (!isModified())
        load();
    else
        setStatus(QStringLiteral("The markers of this well changed meanwhile; the table shows what you edited."));
}

ColumnImportDialog *MarkerDataWidget::makeImport()
{
    return new MarkerDataWidgetASCII(*this, data(), well());
}
