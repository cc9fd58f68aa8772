#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

namespace base {
class NumberField;
}
class TrackItem;

/// The property panel of one track.
class TrackItemPropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a track must outlive the panel.
    explicit TrackItemPropertyWidget(TrackItem *track);

signals:
    /// What the mouse hovers over on the track.
    void sendStatusLabel(QString label);

public slots:
    void trackWidthEditChanged();
    void trackTypeChanged(QString trackType);

private:
    void showTrack();

    TrackItem *m_track;
    base::NumberField *m_width;
    QComboBox *m_trackType;
};
