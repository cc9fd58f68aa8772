#include "logview/curveitempropertywidget.h"

#include "base/colorchoice.h"
#include "base/linestylebox.h"
#include "logview/curveitem.h"

#include <QLabel>
#include <QLineEdit>

CurveItemPropertyWidget::CurveItemPropertyWidget(CurveItem *curve)
    : PropertyPanel(QStringLiteral("CurveItemPropertyWidget"), QStringLiteral("Curve Property"))
    , m_curve(curve)
    , m_curveName(new QLineEdit(curve->curveName()))
    , m_lineColor(new ColorButton(curve->pen().color()))
    , m_lineStyle(new base::LineStyleBox)
    , m_lineWidth(new base::LineWidthBox)
    , m_fillColor(new ColorButton(curve->fillStyle().color))
{
    m_lineStyle->setCurrentIndex(m_lineStyle->findData(static_cast<int>(curve->pen().style())));
    m_lineWidth->setCurrentIndex(m_lineWidth->findData(curve->pen().width()));
    m_fillColor->setEnabled(curve->fillStyle().isOn);
    m_fillColor->setToolTip(QStringLiteral("Fills with one colour, also in place of a colour bar"));
    addRow(QStringLiteral("Well Name"), new QLabel(curve->wellName()), QStringLiteral("wellNameLabel"));
    addRow(QStringLiteral("Curve Name"), m_curveName, QStringLiteral("curveNameEdit"));
    addRow(QStringLiteral("Group Name"), new QLabel(curve->groupName()), QStringLiteral("groupNameLabel"));
    addRow(QStringLiteral("Unit"), new QLabel(curve->unit()), QStringLiteral("unitLabel"));
    addRow(QStringLiteral("Line Color"), m_lineColor, QStringLiteral("lineColorButton"));
    addRow(QStringLiteral("Line Style"), m_lineStyle, QStringLiteral("lineStyleBox"));
    addRow(QStringLiteral("Line Width"), m_lineWidth, QStringLiteral("lineWidthBox"));
    addRow(QStringLiteral("Fill Color"), m_fillColor, QStringLiteral("fillColorButton"));

    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_curveName, &QLineEdit::editingFinished, this, &CurveItemPropertyWidget::curveNameChanged);
    connect(m_lineColor, &QPushButton::clicked, this, &CurveItemPropertyWidget::lineColorChanged);
    connect(m_lineStyle, indexChanged, this, &CurveItemPropertyWidget::lineStyleChanged);
    connect(m_lineWidth, indexChanged, this, &CurveItemPropertyWidget::lineWidthChanged);
    connect(m_fillColor, &QPushButton::clicked, this, &CurveItemPropertyWidget::fillColorChanged);
}

void CurveItemPropertyWidget::curveNameChanged()
{
    m_curve->setCurveName(m_curveName->text());
}

void CurveItemPropertyWidget::lineColorChanged()
{
    const QColor color = base::chooseColor(this, m_curve->pen().color());
    if (!color.isValid())
        return;
    m_lineColor->showColor(color);
    m_curve->setLineColor(color);
}

void CurveItemPropertyWidget::fillColorChanged()
{
    const QColor color = base::chooseColor(this, m_curve->fillStyle().color);
    if (!color.isValid())
        return;
    m_fillColor->showColor(color);
    m_curve->setFillColor(color);
}

void CurveItemPropertyWidget::lineStyleChanged(int index)
{
    if (index >= 0)
        m_curve->setLineStyle(static_cast<Qt::PenStyle>(m_lineStyle->itemData(index).toInt()));
}

void CurveItemPropertyWidget::lineWidthChanged(int index)
{
    if (index >= 0)
        m_curve->setLineWidth(m_lineWidth->itemData(index).toInt());
}
