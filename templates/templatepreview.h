#pragma once

#include "templates/templatetrack.h"

#include <QWidget>

/// Shows a template as it would be drawn, beside the editor's tables. Who can draw it stands above the editors.
class TemplatePreview : public QWidget
{
public:
    using QWidget::QWidget;

    /// Shows these tracks from left to right, and brings the one with the index \a current into sight. Only tracks that
    /// are others than before are drawn anew.
    virtual void showTracks(const QVector<TrackInfo> &tracks, int current) = 0;
};
