#pragma once

#include "datastore/perforationfile.h"
#include "logview/geometry/trackgeometry.h"
#include "templates/templatetrack.h"

#include <QGraphicsObject>
#include <QVector>

#include <memory>

class CurveItem;
class WellDisplayData;

/// One vertical column of a log display: its grid or depth scale, with its curves as children. Headers and panels
/// watch it (TrackHeaderItem, TrackItemPropertyWidget); whoever lays the tracks out makes and places them.
class TrackItem : public QGraphicsObject
{
    Q_OBJECT

public:
    enum { Type = UserType + 1 };

    /// Makes the curves of the definition, whose "Default" curves are resolved already; one that could not be makes
    /// none. The depth range begins as 0 to \a totalDepthM at the scale 1:1000.
    TrackItem(const TrackInfo &definition, const std::shared_ptr<WellDisplayData> &well, float totalDepthM);
    ~TrackItem() override;

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    /// Left to right on the track: in the order of the definition. Owned by the track as its children.
    const QVector<CurveItem *> &curves() const { return m_curves; }
    /// Destroys one of its curves.
    void removeCurve(CurveItem *curve);
    const TrackInfo &definition() const { return m_definition; }
    WellDisplayData &well() const { return *m_well; }
    QString wellName() const;

    /// Place from the left, 0 first.
    void setTrackNumber(int number) { m_number = number; }
    int trackNumber() const { return m_number; }

    /// LinearTrack, LogarithmicTrack or DepthTrack.
    void setTrackType(int trackType);
    int trackType() const { return m_definition.type; }

    /// Display units. Each changes the height.
    void setStartDepth(float depth);
    void setEndDepth(float depth);
    void setDepthRange(float start, float end);
    /// N of 1:N.
    void setScale(float scale);
    float scale() const { return m_scale; }
    const logview::DepthAxis &axis() const { return m_axis; }

    /// More than 0, at 96 pixels an inch. Announced by resized().
    void setWidthInches(float inches);
    /// What width() is then.
    static float widthOf(float inches);
    float width() const { return m_width; }
    float height() const { return m_axis.height; }

    void setMdFlag();
    void setTvdssFlag();
    void setDepthType(logview::DepthType depthType);
    QString depthTypeText() const;
    void setDepthUnit(logview::DepthUnit unit);
    /// Whether a foot is as long as a ruler has it, as on paper. Without, as on the screen, it is as long as a metre.
    void setFeetTrue(bool areTrue);
    const logview::DepthReference &depthReference() const { return m_reference; }
    logview::TrackGeometry geometry() const { return {m_axis, m_reference, m_width, m_definition.type}; }
    /// Whether a depth track draws the perforation zones of the well.
    void setPerforationsShown(bool areShown);
    bool arePerforationsShown() const { return m_arePerforationsShown; }
    /// Draws zones and calibration points as the shared data of the well gives them now.
    void reloadSideFiles();
    /// Pixels that are taken off every grid line's y.
    void setVerticalOffset(float offsetPx);

    /// What hovering at a position tells.
    QString readout(const QPointF &scenePosition) const;

signals:
    /// Geometry, type, depth reference or selection changed: what shows them has to be drawn anew.
    void changed();
    /// The track has another width; those on its right have to move.
    void resized();
    /// A curve was removed.
    void curvesChanged();
    /// The user chose a type, be it the one that the track had.
    void typeChosen();
    /// The mouse hovers over the track.
    void hovered(const QString &readout);

protected:
    // Nothing is drawn differently under the mouse; QGraphicsItem's own would paint the track anew.
    void hoverEnterEvent(QGraphicsSceneHoverEvent *) override { }
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *) override { }
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    void changeGeometry();
    float lengthScale() const;
    void paintGrid(QPainter *painter, const QRect &visible) const;
    void paintDepths(QPainter *painter, const QRect &visible) const;
    /// A depth as it is written on a depth track.
    struct DepthLabel
    {
        QString text;
        QPoint place; ///< left end of the baseline
        QRectF box; ///< what it takes of the track
    };
    /// Those that reach into some rows, with the painter's font.
    QVector<DepthLabel> depthLabels(const QPainter &painter, double topY, double bottomY) const;
    void paintPerforations(QPainter *painter, const QRect &visible) const;

    TrackInfo m_definition;
    std::shared_ptr<WellDisplayData> m_well;
    QVector<CurveItem *> m_curves;
    logview::DepthAxis m_axis;
    logview::DepthReference m_reference;
    float m_scale = logview::defaultDepthScale; ///< as it is told
    bool m_areFeetTrue = false;
    float m_width = 0;
    float m_verticalOffset = 0;
    int m_number = 0;
    PerforationRecord m_perforations; ///< empty unless shown
    bool m_arePerforationsShown = false;
};
