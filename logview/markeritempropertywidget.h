#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

namespace base {
class NumberField;
}
class MarkerItem;

/// The property panel of one marker.
class MarkerItemPropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a marker must outlive the panel.
    explicit MarkerItemPropertyWidget(MarkerItem *marker);

public slots:
    void markerNameChanged();
    void markerDepthChanged();
    void lineColorChanged();
    void lineThicknessChanged(int index);

private:
    void showMarker();

    MarkerItem *m_marker;
    QLabel *m_wellName;
    QLineEdit *m_markerName;
    base::NumberField *m_depth;
    ColorButton *m_lineColor;
    QComboBox *m_lineThickness;
};
