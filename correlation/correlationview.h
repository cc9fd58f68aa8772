#pragma once

#include "correlation/correlationgeometry.h"
#include "correlation/correlationwells.h"
#include "logview/markernames.h"
#include "logview/paperview.h"
#include "logview/viewdrag.h"

#include <QPointer>

#include <memory>

class CorrelationViewProperty;
class MarkerItem;
class TrackHeaders;
class TrackItem;

/// Draws the wells of a correlation side by side, joins equal markers of neighbours and shades zones between them.
class CorrelationView : public PaperView
{
    Q_OBJECT

public:
    static constexpr int defaultWellDistance = 10000;

    /// \a headerScene takes the headers; it is not owned and must outlive the view, as \a projectData must.
    CorrelationView(ProjectData &projectData, QGraphicsScene *headerScene, QWidget *parent = nullptr);
    ~CorrelationView() override;

    CorrelationViewProperty *panel() const;
    const CorrelationProperties &properties() const { return m_properties; }

    /// Shows a correlation: reads what it has not read yet and draws. \a flatMarker is chosen in the panel. The first
    /// one opens at the first sample of its curves.
    void load(const CorrelationProperties &properties, const QString &flatMarker);
    /// Reads a well anew, or all with an empty name, and draws.
    void reload(const QString &wellName);
    /// Reads the templates anew and draws.
    void reloadTemplates();

    float scaleFactor() const { return m_scale; }
    void setScaleFactor(float scale);
    int depthType() const { return m_depthType; } ///< logview::DepthType
    void setDepthType(int depthType);
    logview::DepthUnit depthUnit() const { return m_depthUnit; }
    void setDepthUnit(logview::DepthUnit unit);
    /// Empty for none.
    void setFlatMarker(const QString &markerName);
    int wellDistance() const { return m_wellDistance; }
    void setWellDistance(int distance);

    /// Draws everything anew; nothing before a correlation was loaded.
    void redraw();
    /// How often that was done.
    int redrawCount() const { return m_redrawCount; }
    /// What could not be shown as the file says, in one line; empty when all could.
    const QString &notes() const { return m_notes; }
    /// What stands where since the last redraw.
    const QVector<correlation::WellColumn> &columns() const { return m_columns; }
    /// Left to right, of the wells that were near the view since the last redraw: those of the others are made when
    /// they come near.
    const QVector<TrackItem *> &tracks() const { return m_tracks; }
    /// Makes those of all wells: for pictures of the whole panel.
    void makeAllWells();

signals:
    void propertyWidgetChanged(QWidget *propertyWidget);
    void statusChanged(const QString &text);
    /// The scenes have another size.
    void laidOut();

public slots:
    void setStatusLabel(QString statusText);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// What is drawn of a well: the column of the same place tells where.
    struct Drawing
    {
        QString wellName;
        QVector<TrackInfo> tracks;
        bool isMade = false;
        bool isConnected = false; ///< with the next well
    };

    void placeWell(const CorrelationWell &named);
    void makeWells(double left, double right);
    void makeWellsNearView();
    void makeWell(int index);
    void makeTracks(const Drawing &drawing, const correlation::WellColumn &column);
    void drawMarkers(const QString &wellName, const correlation::WellColumn &column);
    void drawConnections(int first, int last);
    void addNote(const QString &note);
    float trackWidthInches() const;
    void redrawKeepingDepth();
    int firstColumnInView() const;
    double firstSampleY() const;
    void placeOpening();
    void showAllDepths();
    void changeScaleKeepingPlace(double scale);

    ProjectData &m_data;
    QGraphicsScene *m_headerScene;
    std::unique_ptr<QGraphicsScene> m_scene;
    std::unique_ptr<TrackHeaders> m_headers;
    QPointer<CorrelationViewProperty> m_panel; ///< a dock that shows it may take it along
    CorrelationWells m_wells;
    CorrelationProperties m_properties;
    QVector<correlation::WellColumn> m_columns; ///< of all wells
    QVector<Drawing> m_drawings;
    QVector<TrackItem *> m_tracks; ///< owned by the scene
    MarkerNames m_names;
    QString m_flatMarker;
    QString m_notes; ///< of this redraw
    ViewDrag m_drag;
    bool m_hasPanned = false; ///< since the drag began
    int m_dotsPerInch;
    float m_scale = logview::defaultDepthScale;
    int m_depthType = logview::MeasuredDepth;
    logview::DepthUnit m_depthUnit = logview::Metre;
    int m_wellDistance = defaultWellDistance;
    int m_redrawCount = 0;
    bool m_isReady = false;
    bool m_isOpening = false; ///< nobody has seen it or scrolled it yet
    double m_openingY = 0;
    bool m_isPlacing = false; ///< what scrolls the view is no user
};
