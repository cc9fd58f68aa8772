#pragma once

#include "logview/geometry/depthaxis.h"
#include "logview/markernames.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

class MarkerItem;

/// The markers of a log display: those of the well that are shown, and those that were picked and wait to be saved.
class DisplayMarkers : public QObject
{
    Q_OBJECT

public:
    /// \a scene owns the items.
    explicit DisplayMarkers(QGraphicsScene *scene, QObject *parent = nullptr);

    const QVector<MarkerItem *> &all() const { return m_markers; }
    /// The first marker of that name.
    MarkerItem *find(const QString &markerName) const;
    /// The same among those that are no picked markers waiting to be saved.
    MarkerItem *findStored(const QString &markerName) const;
    /// The marker that was added last; null when there is none or it is gone.
    MarkerItem *last() const { return m_last; }
    /// Picked markers that are not saved in the well, oldest first.
    const QVector<MarkerItem *> &unsaved() const { return m_unsaved; }
    void setSaved(MarkerItem *marker) { m_unsaved.removeOne(marker); }

    /// The one whose line stands nearest to \a y in the scene, no farther than \a reachPx away; of equally near ones
    /// the one that was added last. Null when there is none.
    MarkerItem *nearest(double y, double reachPx) const;

    /// The item stands where its line is to be.
    void add(MarkerItem *marker);
    /// Puts its line there.
    void place(MarkerItem *marker, double y);
    /// Adds a new one, "New_0", "New_1"…, at depth 0.
    MarkerItem *pick(const QString &wellName);
    /// Destroys a marker.
    void destroy(MarkerItem *marker);
    /// The scene has destroyed them all.
    void forgetAll();

    void setWidth(float widthPx);

    /// Between these names are left where they are, for many changes at once; the last end places them.
    void beginChanges() { ++m_changes; }
    void endChanges();

    using DepthOf = std::function<double(const MarkerItem &)>;
    /// Puts each marker at its place on the axis. What is out of the range is destroyed; the names of those among
    /// them that are markers of the well are returned.
    QStringList placeOrDrop(const logview::DepthAxis &axis, const DepthOf &depthOf);
    /// The same, but what is out of the range stays where it is.
    void placeInside(const logview::DepthAxis &axis, const DepthOf &depthOf);

signals:
    /// The marker is about to be destroyed.
    void leaving(MarkerItem *marker);
    /// The user gave it another depth.
    void depthEdited(MarkerItem *marker);
    /// The user gave a marker of the well another name in the display.
    void storedNameEdited();

private:
    MarkerItem *first(const QString &markerName, bool isStored) const;
    bool takeName(MarkerItem *marker);
    void dropName(MarkerItem *marker);
    void placeNames();

    QGraphicsScene *m_scene;
    QVector<MarkerItem *> m_markers;
    // Looking for each of thousands of names among thousands of items would take seconds.
    QHash<QString, QVector<MarkerItem *>> m_markersByName;
    QHash<MarkerItem *, QString> m_names; ///< under which they are found there
    QVector<MarkerItem *> m_unsaved;
    MarkerItem *m_last = nullptr;
    int m_newCount = 0;
    float m_width = 0;
    MarkerNames m_namePlaces;
    int m_changes = 0; ///< begun and not ended
};
