#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLineEdit;
QT_END_NAMESPACE

class CurveItem;

/// The property panel of one curve.
class CurveItemPropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a curve owns the panel.
    explicit CurveItemPropertyWidget(CurveItem *curve);

public slots:
    void curveNameChanged();
    void lineColorChanged();
    void fillColorChanged();
    void lineStyleChanged(int index);
    void lineWidthChanged(int index);

private:
    CurveItem *m_curve;
    QLineEdit *m_curveName;
    ColorButton *m_lineColor;
    QComboBox *m_lineStyle;
    QComboBox *m_lineWidth;
    ColorButton *m_fillColor;
};
