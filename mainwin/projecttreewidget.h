#pragma once

#include "mainwin/projecttreeitems.h"

#include <QElapsedTimer>
#include <QTreeWidget>

class ProjectFolders;
class TemplateDialog;
struct ProjectData;
struct TemplateId;

/// The tree of the dock "Project Data": wells with their logs, markers and templates, global templates, and saved
/// correlations. Checking items chooses what the log view displays; requests go out as signals.
class ProjectTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /// Fills itself from the catalogue, the project folder and the saved correlations. \a projectData must outlive
    /// it.
    explicit ProjectTreeWidget(ProjectData &projectData, QWidget *parent = nullptr);

    /// Reads the names of templates and correlations anew and brings all branches up to date with them and with the
    /// catalogue. What still exists keeps its check states and its expansion. Branches whose folder cannot be read
    /// stay as they are; a box names these folders.
    void synchronise();
    /// The same for the logs, or the markers, of one well of the catalogue.
    void synchroniseLogs(int well);
    void synchroniseMarkers(int well);

    /// Adds an item to the first well of that name; a log that is there already is not added again.
    void addLog(const QString &wellName, const QString &logName);
    void addMarker(const QString &wellName, const QString &markerName);
    /// Checks the marker of a displayed well that the display shows already; nothing is sent.
    void checkShownMarker(const QString &wellName, const QString &markerName);
    /// Checks new markers of a well of the catalogue that is displayed, and sends them to its display.
    void showNewMarkers(int well, const QStringList &markerNames);
    /// Unchecks markers that the display of their well does not show any more; nothing is sent.
    void uncheckDroppedMarkers(const QString &wellName, const QStringList &markerNames);
    /// Sends all markers of a well to its display, as they are checked.
    void sendMarkersOf(const QString &wellName);
    QStringList correlationNames() const;
    /// The correlation is stored under another name now; a name that is missing is added.
    void renameCorrelation(const QString &oldName, const QString &newName);
    /// Unchecks a well whose display was closed; nothing is sent.
    void uncheckWell(const QString &wellKey);
    void addTemplate(const QString &wellName, const QString &templateName);

    /// Finds a well by its typed name, in a closed branch too, before it looks at other items.
    void keyboardSearch(const QString &search) override;
    QSize sizeHint() const override;

    QTreeWidgetItem *wellsItem() const { return m_wells; }
    QTreeWidgetItem *correlationsItem() const { return m_correlations; }

signals:
    void sendWellDisplayProperties(QString wellName, QString wellDisTempName);
    void sendCorrelation(QTreeWidgetItem *correlationItem);
    void correlationDeleted(QString name);
    /// A template editor wrote a template: displays of it, and of the one whose place it takes, are out of date.
    void templateApplied(const TemplateId &now, const TemplateId &was);
    void removeWellDisplay(QString wellName);
    void displayMarker(QString wellName, QString markerName);
    void removeMarker(QString wellName, QString markerName);
    /// A displayed well, or its checked template, was clicked and stayed as it was.
    void wellClicked(QString wellName);
    /// Around the markers that one click sends.
    void markersBegin(QString wellName);
    void markersEnd(QString wellName);

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
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fill(ProjectFolders *folders);
    void fillWell(QTreeWidgetItem *wellItem, int well, ProjectFolders *folders);
    void tellUnreadable(const ProjectFolders &folders);
    bool isSearching() const;
    bool continuesSearch(const QKeyEvent *event) const;
    QTreeWidgetItem *findWell(const QString &wellName) const;
    QTreeWidgetItem *findWellByKey(const QString &key) const;

    void wellToggled(QTreeWidgetItem *well);
    void templateChosen(QTreeWidgetItem *item);
    void markersToggled(QTreeWidgetItem *markers);
    void markerToggled(QTreeWidgetItem *marker);
    void refreshMarkers(QTreeWidgetItem *well);
    void followMarkers(QTreeWidgetItem *branch);
    void setMarkerChecked(const QString &wellName, const QString &markerName, Qt::CheckState state);
    void openEditor(TemplateDialog *dialog);
    void notePress(const QPoint &position);

    ProjectData &m_data;
    ProjectTreeIcons m_icons;
    QTreeWidgetItem *m_wells = nullptr; ///< owned by the tree, like all items
    QTreeWidgetItem *m_correlations = nullptr;
    const QTreeWidgetItem *m_pressed = nullptr; ///< with the mouse, until its click; only compared
    Qt::CheckState m_stateWhenPressed = Qt::Unchecked;
    QString m_typed; ///< of the keyboard search
    QElapsedTimer m_sinceTyped;
};
