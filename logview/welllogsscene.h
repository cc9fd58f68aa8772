#pragma once

#include "datastore/wellrecord.h"
#include "logview/displaymarkers.h"
#include "logview/displayselection.h"
#include "logview/geometry/depthaxis.h"
#include "logview/trackheaders.h"

#include <QGraphicsScene>
#include <QPointer>
#include <QVector>

#include <optional>

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
    /// Shows other tracks, and only these. Depth range, depth type, unit, scale and markers stay as they are.
    void replaceTracks(const QVector<TrackItem *> &tracks);
    /// The well may have other elevations or another total depth now: then the depth range is that of the well.
    void followWell(const WellRecord &well);

    WellLogsScenePropertyWidget *panel() const;
    const WellRecord &well() const { return m_well; }
    const QVector<TrackItem *> &tracks() const { return m_tracks; }
    TrackHeaders &headers() { return m_headers; }
    DisplayMarkers &markers() { return m_markers; }
    const DisplayMarkers &markers() const { return m_markers; }
    DisplaySelection &selection() { return *m_selection; }
    const DisplaySelection &selection() const { return *m_selection; }
    Mode mode() const { return m_mode; }
    void setMode(Mode mode) { m_mode = mode; }
    int sceneWidth() const { return m_sceneWidth; }
    int trackHeight() const { return m_trackHeight; }
    /// The depth range over the whole pixels of the track height.
    logview::DepthAxis depthAxis() const;
    logview::DepthReference depthReference() const;

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
    /// Puts a marker at its depth as addMarker() does. False when that is out of the range: it is destroyed.
    bool placeStoredMarker(MarkerItem *marker);
    /// Destroys the first marker of that name.
    void deleteMarker(const QString &markerName);
    /// Moves a picked marker to a position of the tracks, and gives it the measured depth that is shown there.
    void movePickedMarker(MarkerItem *marker, double sceneY);

signals:
    void propertyWidgetChanged(QWidget *prtyWidget);
    void sendDeleteTrack(int trackNumber);
    /// Tracks, headers or the sizes of the two scenes changed.
    void laidOut();
    /// A new range, depth type or unit, or the user, took markers of the well out of the display.
    void markersDropped(const QStringList &markerNames);
    /// Those of them that lie outside of a new range; before markersDropped().
    void markersLeftBehind(const QStringList &markerNames);

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
    void destroyItem(QGraphicsItem *item);
    void applyDepthReference(TrackItem *track);
    int placeTrack(TrackItem *track, int x);
    void updateSceneRects();
    double displayDepth(const MarkerItem &marker) const;
    void placeEditedMarker(MarkerItem *marker);
    void tellDropped(const QStringList &markerNames);
    void tellLeftBehind(const QStringList &markerNames);
    std::optional<double> placeOf(const MarkerItem &marker) const;
    void clickedInHeader(QGraphicsItem *item);

    QGraphicsScene *m_headerScene;
    QPointer<WellLogsScenePropertyWidget> m_panel; ///< ours, also while a dock is its parent
    DisplaySelection *m_selection = nullptr; ///< a child
    TrackHeaders m_headers;
    DisplayMarkers m_markers;
    QVector<TrackItem *> m_tracks;
    WellNameItem *m_wellNameItem = nullptr; ///< in the header scene
    WellRecord m_well;
    Mode m_mode = Mode::None;
    int m_sceneWidth = 0;
    int m_trackHeight = 0;
    float m_totalDepth = 1000.0F;
    float m_startDepth = 0;
    float m_endDepth = 1.0F;
    int m_depthType = logview::MeasuredDepth;
    int m_depthUnit = logview::Metre;
};
