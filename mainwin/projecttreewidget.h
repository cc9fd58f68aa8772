#pragma once

#include "mainwin/projecttreeitems.h"

#include <QTreeWidget>

struct ProjectData;

/// The tree of the dock "Project Data": wells with their logs, markers and templates, global templates, and saved
/// correlations. Checking items chooses what the log view displays; requests go out as signals.
class ProjectTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /// Fills itself from the catalogue, the project folder and the saved correlations. \a projectData must outlive it.
    explicit ProjectTreeWidget(ProjectData &projectData, QWidget *parent = nullptr);

    /// Brings all branches up to date with catalogue and project folder. What still exists keeps its check states and
    /// its expansion.
    void synchronise();
    /// The same for the logs, or the markers, of one well of the catalogue.
    void synchroniseLogs(int well);
    void synchroniseMarkers(int well);

    /// Adds an item to the first well of that name; a log that is there already is not added again.
    void addLog(const QString &wellName, const QString &logName);
    void addMarker(const QString &wellName, const QString &markerName);
    void addTemplate(const QString &wellName, const QString &templateName);

    QTreeWidgetItem *wellsItem() const { return m_wells; }
    QTreeWidgetItem *correlationsItem() const { return m_correlations; }

signals:
    void sendWellDisplayProperties(QString wellName, QString wellDisTempName);
    void sendCorrelation(QTreeWidgetItem *correlationItem);
    void removeWellDisplay(QString wellName);
    void displayMarker(QString wellName, QString markerName);
    void removeMarker(QString wellName, QString markerName);

public slots:
    void itemSelected(QTreeWidgetItem *item, int columnNo);
    void itemDoubleClick(QTreeWidgetItem *item, int columnNo);
    void createNewTemplate();
    void editWellTemplate();
    void editGlobalTemplate();
    void deleteWellTemplate();
    void deleteGlobalTemplate();
    void addNewCorrelationDialog();
    void deleteCorrelationFromData();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fillWell(QTreeWidgetItem *wellItem, int well);
    QTreeWidgetItem *findWell(const QString &wellName) const;
    QTreeWidgetItem *findWellByKey(const QString &key) const;

    void wellToggled(QTreeWidgetItem *well);
    void templateChosen(QTreeWidgetItem *item);
    void markersToggled(QTreeWidgetItem *markers);
    void markerToggled(QTreeWidgetItem *marker);
    void refreshMarkers(QTreeWidgetItem *well);
    void sendMarker(const QTreeWidgetItem *well, const QTreeWidgetItem *marker);
    bool removeProjectFolder(const QString &fragment, const QString &name);

    ProjectData &m_data;
    ProjectTreeIcons m_icons;
    QTreeWidgetItem *m_wells = nullptr; ///< owned by the tree, like all items
    QTreeWidgetItem *m_correlations = nullptr;
};
