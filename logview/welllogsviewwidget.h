#pragma once

#include "logview/picturepage.h"

#include <QPointer>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <optional>

QT_BEGIN_NAMESPACE
class QDockWidget;
class QLabel;
class QPainter;
class QTabWidget;
class QTreeWidget;
QT_END_NAMESPACE

class WellDisplayWidget;
struct ProjectData;
struct TemplateId;

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

    /// Closes the current display, as its tab's button does; nothing without one.
    void closeCurrent();

    /// Takes the markers out of all displays that the catalogue does not name any more.
    void removeGoneMarkers();

    /// What was stored of a well shows in its display: its markers, its zones and points, its default logs.
    void refreshMarkers(const QString &wellName);
    void reloadSideFiles(const QString &wellName);
    void reloadDefaultLogs(const QString &wellName);
    /// Logs of a well came or changed: its display reads them anew.
    void reloadLogs(const QString &wellName);

    /// After the catalogue was read anew: the display of a renamed well is built again under its new name, that of a
    /// well that is gone is closed.
    void synchronise();

    /// Gives the dock the panel of the current display, when this work area is the one in front.
    void showCurrentPanel();

    /// Saves the picture of the current display, and gives what a printed page shows of it: nothing when the user
    /// cancelled, an empty one without a display.
    std::optional<PicturePage> saveCurrentPicture();
    /// Draws the current display over the painter's viewport; nothing without one.
    void renderCurrent(QPainter &painter);

signals:
    /// A display shows a new marker of its well that nobody asked it to show.
    void markerSaved(QString wellName, QString markerName);
    /// Markers of the well are not shown any more, though nobody asked to remove them: a new depth range, depth type
    /// or unit has no place for them, or the user deleted them in the display.
    void markersDropped(QString wellName, QStringList markerNames);
    /// A display was built again and shows no markers yet.
    void displayRebuilt(QString wellName);
    /// The display of a well that is still there was closed, since its name now stands for another well.
    void displayClosed(QString wellKey);

public slots:
    void addWellDisWidget(QString wellName, QString disTempName);
    void removeWellDisWidget(QString wellName);
    void addMarkerInScene(QString wellName, QString markerName);
    void removeMarkerFromScene(QString wellName, QString markerName);
    void tabClose(int tabIdx);
    void setCurrentTab(int tabIdx);
    /// Brings the display of the well to the front; nothing where there is none.
    void showWell(const QString &wellName);
    /// A template was written: displays that show it, or the one whose place it takes, show it as it is now.
    void applyTemplate(const TemplateId &now, const TemplateId &was);
    /// Around the markers of one click: they are read from the well at most once.
    void beginMarkers(const QString &wellName);
    void endMarkers(const QString &wellName);

private:
    struct Display
    {
        QString wellKey;
        QString templateName;
    };

    WellDisplayWidget *insertDisplay(int place, const QString &wellName, const QString &templateName);
    void removeTab(int tabIdx);
    QString hintText() const;
    void uncheckWell(const QString &wellName);

    ProjectData &m_data;
    QPointer<QDockWidget> m_dock;
    QPointer<QTreeWidget> m_projectTree;
    QTabWidget *m_tabs;
    QLabel *m_hint = nullptr; ///< what to do while there is no tab
    QStringList m_wells;
    QVector<Display> m_displays; ///< parallel to m_wells
};
