#pragma once

#include "host/hostrecords.h"
#include "welldata/markerrows.h"
#include "welldata/welltableeditor.h"

QT_BEGIN_NAMESPACE
class QTableWidgetItem;
QT_END_NAMESPACE

/// The tab "Marker(s)": the markers of the selected well.
class MarkerDataWidget : public WellTableEditor
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget.
    explicit MarkerDataWidget(ProjectData &projectData, QWidget *parent = nullptr);

    /// The well's markers changed in the host: they are shown, or, where the table holds what is not saved, told of.
    void markersChanged(int well);

    /// Stores the markers of an imported file as those of the well, and shows what the host holds when it shows that
    /// well. False when nothing was stored; the user knows why.
    bool importMarkers(const welldata::WellChoice &to, const welldata::ColumnFile &file, const QString &title);

signals:
    /// The markers of a well of the catalogue were written; nobody announced it yet.
    void markersWritten(int well);
    /// They were written and announced, and these are new.
    void markersAdded(int well, const QStringList &names);

public slots:
    void updateBtnClicked() override;
    /// A depth was edited in its line, the sender.
    void tableItemChanged();
    void tableDoubleClicked(QTableWidgetItem *item);

protected:
    void load() override;
    bool save() override;
    ColumnImportDialog *makeImport() override;

private:
    StoreResult store(const welldata::WellChoice &to, const QVector<welldata::TableRow> &rows, const QString &title,
                      const QStringList &otherLosses);
    void computeDepths(int row);
    bool readMarkers();

    welldata::MarkerElevations m_elevations;
    QVector<host::Marker> m_stored; ///< as the table was filled with
    bool m_isStoring = false;
    bool m_wasAnnounced = false; ///< by the host, since it was stored
};
