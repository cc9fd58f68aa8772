#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

QT_BEGIN_NAMESPACE
class QGraphicsItem;
class QGraphicsScene;
QT_END_NAMESPACE

class CurveHeaderItem;
class CurveItem;
class TrackHeaderItem;
class TrackItem;

/// The headers of a display's tracks, in the scene above that of the tracks.
class TrackHeaders : public QObject
{
    Q_OBJECT

public:
    /// \a headerScene owns the headers. It may be emptied at any time.
    explicit TrackHeaders(QGraphicsScene *headerScene, QObject *parent = nullptr);

    /// Makes the header of a track. It goes with the track.
    void add(TrackItem *track);
    /// Moves the header of a track below the banner, to the track's x.
    void place(const TrackItem *track);

    /// Null when the scene was emptied.
    TrackHeaderItem *headerOf(const TrackItem *track) const;
    CurveHeaderItem *headerOf(const CurveItem *curve) const;

signals:
    /// The user clicked the header of this track or curve.
    void clicked(QGraphicsItem *item);

private:
    QGraphicsScene *m_scene;
    QVector<QPointer<TrackHeaderItem>> m_headers;
};
