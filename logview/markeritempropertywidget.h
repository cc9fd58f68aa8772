#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

class MarkerItem;

/// The property panel of one marker.
class MarkerItemPropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a marker owns the panel.
    explicit MarkerItemPropertyWidget(MarkerItem *marker);

    /// Loads all fields from the marker.
    void showMarker();

public slots:
    void markerNameChanged();
    void markerDepthChanged();
    void lineColorChanged();
    void lineThicknessChanged(int index);

private:
    MarkerItem *m_marker;
    QLabel *m_wellName;
    QLineEdit *m_markerName;
    QLineEdit *m_depth;
    ColorButton *m_lineColor;
    QComboBox *m_lineThickness;
};
