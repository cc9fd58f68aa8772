#pragma once

#include "datastore/wellrecord.h"
#include "logview/geometry/depthaxis.h"

#include <QGraphicsScene>
#include <QPointer>
#include <QVector>

class MarkerItem;
class TrackItem;
class WellLogsScenePropertyWidget;
class WellNameItem;

/// The drawing surface of one well's log display: its tracks from left to right and its markers over them, all on one
/// depth range. It keeps the items consistent when the range, the depth type, the unit, the scale or a width changes.
class WellLogsScene : public QGraphicsScene
{
    Q_OBJECT

public:
    enum class Mode { None, PickMarker, SavePickedMarker, DeleteTrackOrCurve, DeleteMarker };
    static constexpr int headerSceneHeight = 720;

    /// \a headerScene takes the headers. It is not owned and must outlive this scene.
    WellLogsScene(QObject *parent, QGraphicsScene *headerScene);
    ~WellLogsScene() override;

    /// Building a display: empties both scenes for the well, takes the tracks from left to right, and then gives the
    /// scenes their size and the banner. The depth range is 0 to the total depth at 1:1000, in measured depth and
    /// metres.
    void beginDisplay(const WellRecord &well);
    void addTrack(TrackItem *track);
    void endDisplay();

    WellLogsScenePropertyWidget *panel() const;
    const WellRecord &well() const { return m_well; }
    const QVector<TrackItem *> &tracks() const { return m_tracks; }
    const QVector<MarkerItem *> &markers() const { return m_markers; }
    Mode mode() const { return m_mode; }
    void setMode(Mode mode) { m_mode = mode; }
    /// Number of the last clicked track; negative when none was.
    int currentTrackIndex() const { return m_currentTrackIndex; }
    int sceneWidth() const { return m_sceneWidth; }
    int trackHeight() const { return m_trackHeight; }

    float totalDepth() const { return m_totalDepth; } ///< metres
    void setTotalDepth(float depthM) { m_totalDepth = depthM; }
    float startDepth() const { return m_startDepth; } ///< display unit
    void setStartDepth(float depth) { m_startDepth = depth; }
    float endDepth() const { return m_endDepth; }
    void setEndDepth(float depth) { m_endDepth = depth; }
    int depthType() const { return m_depthType; } ///< logview::DepthType
    void setDepthType(int depthType) { m_depthType = depthType; }
    int depthUnit() const { return m_depthUnit; } ///< logview::DepthUnit
    void setDepthUnit(int unit) { m_depthUnit = unit; }

    /// Lays the range of the depth type and unit over all items.
    void applyDepthTypeAndUnit();
    /// Lays the depth range over all items as it stands.
    void applyDepthRange();
    /// N of 1:N.
    void applyScale(float scale);
    /// Places the tracks and their headers side by side.
    void relayoutTracks();
    /// Takes a track out of the display and destroys it; those on its right move up and are numbered anew.
    void removeTrack(int trackNumber);

    /// Takes the item, whose depth is set. False when the depth is out of the range: the item is destroyed.
    bool addMarker(MarkerItem *marker);
    /// Destroys the first marker of that name.
    void deleteMarker(const QString &markerName);
    MarkerItem *findMarker(const QString &markerName) const;
    /// The same among those that are no picked markers waiting to be saved.
    MarkerItem *findStoredMarker(const QString &markerName) const;
    /// The marker that was added last; null when there is none or it is gone.
    MarkerItem *currentPickedMarker() const { return m_pickedMarker; }
    /// Picked markers that are not saved in the well, oldest first.
    const QVector<MarkerItem *> &unsavedMarkers() const { return m_unsavedMarkers; }
    void setSaved(MarkerItem *marker) { m_unsavedMarkers.removeOne(marker); }
    /// Moves a picked marker to a position of the tracks, and gives it the measured depth that is shown there.
    void movePickedMarker(MarkerItem *marker, double sceneY);
    void destroyMarker(MarkerItem *marker);

    /// Selects this item alone, as a click on it would.
    void selectOnly(QGraphicsItem *item);
    /// Shows the panels of what is selected; the scene's own when nothing is.
    void showPanelOfSelection();
    void showOwnPanel();
    /// The panel that was announced last, as long as it exists.
    QWidget *shownPanel() const { return m_shownPanel; }

signals:
    void propertyWidgetChanged(QWidget *prtyWidget);
    void sendDeleteTrack(int trackNumber);
    /// Tracks, headers or the sizes of the two scenes changed.
    void laidOut();

public slots:
    void pickedMarkerClicked();
    void savePickedMarkerClicked();
    void deleteTrack();
    void deleteCurve();
    void deleteMarker();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private:
    void clearDisplay();
    void showPanel(QWidget *panel);
    void leavePanelOf(QGraphicsItem *item);
    int placeTrack(TrackItem *track, int x);
    void updateSceneRects();
    double displayDepth(const MarkerItem &marker) const;
    logview::DepthReference depthReference() const;
    void placeMarker(MarkerItem *marker, double displayDepth);
    template<class DepthOf>
    void placeMarkers(const DepthOf &depthOf);
    logview::DepthAxis markerAxis() const;
    void clickedInHeader(QGraphicsItem *item);
    void selectHeadersAsTheirItems();

    QGraphicsScene *m_headerScene;
    QPointer<WellLogsScenePropertyWidget> m_panel; ///< ours, also while a dock is its parent
    QPointer<QWidget> m_shownPanel;
    QVector<TrackItem *> m_tracks;
    QVector<MarkerItem *> m_markers;
    WellNameItem *m_wellNameItem = nullptr; ///< in the header scene
    MarkerItem *m_pickedMarker = nullptr;
    QVector<MarkerItem *> m_unsavedMarkers;
    WellRecord m_well;
    Mode m_mode = Mode::None;
    int m_newMarkerCounter = 0;
    int m_currentTrackIndex = -1;
    int m_sceneWidth = 0;
    int m_trackHeight = 0;
    float m_totalDepth = 1000.0F;
    float m_startDepth = 0;
    float m_endDepth = 1.0F;
    int m_depthType = logview::MeasuredDepth;
    int m_depthUnit = logview::Metre;
};
