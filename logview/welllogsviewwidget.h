#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QDockWidget;
class QPainter;
class QTabWidget;
class QTreeWidget;
QT_END_NAMESPACE

class WellDisplayWidget;
struct ProjectData;

/// The work area "Well Logs View": one tab for each displayed well.
class WellLogsViewWidget : public QWidget
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget. The dock takes property panels; in the tree, the wells are the
    /// children of the first item, checked while they are displayed. Neither is owned.
    WellLogsViewWidget(ProjectData &projectData, QDockWidget *propertiesDock, QTreeWidget *projectTree,
                       QWidget *parent = nullptr);

    /// Names of the displayed wells, in the order of the tabs.
    const QStringList &displayedWells() const { return m_wells; }
    WellDisplayWidget *display(int tabIdx) const;
    /// Null when no well is displayed.
    WellDisplayWidget *currentDisplay() const;

    /// Takes the markers out of all displays that the catalogue does not name any more.
    void removeGoneMarkers();

    /// Saves the picture of the current display; nothing without one.
    void saveCurrentPicture();
    /// Draws the current display over the painter's viewport; nothing without one.
    void renderCurrent(QPainter &painter);

signals:
    /// A display shows a new marker of its well that nobody asked it to show.
    void markerSaved(QString wellName, QString markerName);
    /// Markers of the well are not shown any more, though nobody asked to remove them: a new depth range, depth type
    /// or unit has no place for them, or the user deleted them in the display.
    void markersDropped(QString wellName, QStringList markerNames);

public slots:
    void addWellDisWidget(QString wellName, QString disTempName);
    void removeWellDisWidget(QString wellName);
    void addMarkerInScene(QString wellName, QString markerName);
    void removeMarkerFromScene(QString wellName, QString markerName);
    void tabClose(int tabIdx);
    void setCurrentTab(int tabIdx);

private:
    void showCurrentPanel();
    void removeTab(int tabIdx);
    void uncheckWell(const QString &wellName);

    ProjectData &m_data;
    QPointer<QDockWidget> m_dock;
    QPointer<QTreeWidget> m_projectTree;
    QTabWidget *m_tabs;
    QStringList m_wells;
};
