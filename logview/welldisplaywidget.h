#pragma once

#include "datastore/wellscatalogue.h"
#include "logview/picturepage.h"

#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QDockWidget;
class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QPainter;
QT_END_NAMESPACE

class MarkerItem;
class TrackItem;
class ViewPair;
class WellDisplayData;
class WellLogsScene;
class WellLogsView;
struct ProjectData;

/// One tab of the log view: a well's log display after one display template, with its headers above and a status line
/// below.
class WellDisplayWidget : public QWidget
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget. \a propertiesDock shows the panels of what is selected; null for none.
    WellDisplayWidget(ProjectData &projectData, const QString &wellName, const QString &templateName,
                      QDockWidget *propertiesDock, QWidget *parent = nullptr);
    ~WellDisplayWidget() override;

    const QString &wellName() const { return m_wellName; }
    WellLogsScene *scene() const { return m_scene.get(); }
    WellLogsView *logView() const { return m_logView; }
    QGraphicsView *headerView() const;

    /// Measured depth in metres in the middle of the log view.
    double depthInView() const;
    /// Opens with this depth in the middle of the view instead of with the first sample at its top.
    void openAtDepth(double depthM);
    /// Takes scale, depth type, unit and, of the same well, the depth range over from another display, and opens at its
    /// depth.
    void openAs(const WellDisplayWidget &other);

    /// Shows the well with a template as it is now; range, scale, depth type, unit and markers stay.
    void applyTemplate(const QString &templateName);
    /// Tells in one box which of its logs could not be read.
    void tellUnread();
    /// Between the two, the well's markers are read at most once.
    void beginMarkers();
    void endMarkers();
    /// Shows a marker of the well. Nothing happens for a marker of another well, one that is shown or one that the
    /// well has not.
    void addMarker(const QString &wellName, const QString &markerName);
    void removeMarker(const QString &wellName, const QString &markerName);
    /// Takes the markers away that the catalogue does not name any more.
    void removeGoneMarkers();
    /// The same, and gives the other markers the depths and colours that have changed in the well.
    void refreshMarkers();
    /// Shows calibration points and perforation zones as their files have them now.
    void reloadSideFiles();
    /// Shows the default logs as they are now, where the template shown has any; depths, scale and markers stay.
    void reloadDefaultLogs(const QString &templateName);
    /// Reads all logs anew; depths, scale and markers stay.
    void reloadLogs(const QString &templateName);
    /// Reads all that is shown of the well anew. What the user changed in the display stays, as far as it can. A box may
    /// come up.
    void synchronise(const QString &templateName);

    /// Saves the display as "<well name>.tiff" in the project folder; the status line tells where, or what failed. Gives
    /// what a printed page shows of it; nothing when the user cancelled.
    std::optional<PicturePage> savePicture();
    /// Draws the display over the painter's viewport.
    void renderTo(QPainter &painter);
    /// What the status line says.
    QString statusText() const;
    void showScenePanel();
    /// The panel of what is selected; the scene's when nothing is.
    void showCurrentPanel();

signals:
    /// A picked marker is a marker of the well now, and shown.
    void markerSaved(QString wellName, QString markerName);
    /// A new depth range, depth type or unit, or the user, took markers of the well out of the display; or they were asked
    /// for and are outside of its depth range.
    void markersDropped(QString wellName, QStringList markerNames);

public slots:
    void setPropertyWidget(QWidget *prtyWidget);
    void deleteTrack(int selectedTrackNo);
    void setStatusLabel(QString label);

private:
    void buildDisplay(const QString &templateName);
    QVector<TrackItem *> makeTracks(const QString &templateName, const std::shared_ptr<WellDisplayData> &well);
    void openAtFirstSample();
    void saveMarker(MarkerItem *marker);
    void readMarkers();
    void tellNotDrawn(const QVector<TrackItem *> &tracks, bool isWithoutLogs);
    void tellOutside();
    void tellEmptyRange();

    ProjectData &m_data;
    QString m_wellName;
    QPointer<QDockWidget> m_dock;
    std::unique_ptr<QGraphicsScene> m_headerScene; ///< outlives the log scene
    std::unique_ptr<WellLogsScene> m_scene;
    WellLogsView *m_logView = nullptr;
    ViewPair *m_views = nullptr;
    QLabel *m_statusLine = nullptr;
    QStringList m_unreadLogs;
    bool m_usesDefaultLogs = false;
    QHash<QString, WellMarker> m_takenMarkers; ///< those that are shown, as they were read
    QHash<QString, WellMarker> m_markersByName; ///< of the click that shows them
    QVector<WellMarker> m_outside; ///< asked for and not shown
    bool m_isTakingMarkers = false;
    bool m_areMarkersRead = false;
};
