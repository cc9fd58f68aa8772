#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QGraphicsItem;
class QLineEdit;
QT_END_NAMESPACE

class TrackItem;

/// The property panel of one track, and the track's voice: graphics items have no signals of their own.
class TrackItemPropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a track owns the panel.
    explicit TrackItemPropertyWidget(TrackItem *track);

    /// Loads all fields from the track.
    void showTrack();

signals:
    /// What the mouse hovers over.
    void sendStatusLabel(QString label);
    /// The track has another width; those on its right have to move.
    void trackResized();
    /// The user clicked the header of the track, or of a curve of it.
    void headerClicked(QGraphicsItem *item);

public slots:
    void trackWidthEditChanged();
    void trackTypeChanged(QString trackType);

private:
    TrackItem *m_track;
    QLineEdit *m_width;
    QComboBox *m_trackType;
};
