#include "logview/markeritempropertywidget.h"

#include "base/colorchoice.h"
#include "base/numberfield.h"
#include "logview/markeritem.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <cmath>

namespace {

QString depthText(float depth)
{
    return QString::number(static_cast<double>(depth), 'f', 2);
}

} // namespace

MarkerItemPropertyWidget::MarkerItemPropertyWidget(MarkerItem *marker)
    : PropertyPanel(QStringLiteral("MarkerItemPropertyWidget"), QStringLiteral("Marker Property"))
    , m_marker(marker)
    , m_wellName(new QLabel)
    , m_markerName(new QLineEdit)
    , m_depth(new base::NumberField)
    , m_lineColor(new ColorButton(marker->lineColor()))
    , m_lineThickness(new QComboBox)
{
    for (int thickness = 1; thickness <= MarkerItem::maximumThickness; ++thickness)
        m_lineThickness->addItem(QString::number(thickness));
    addRow(QStringLiteral("Well Name"), m_wellName, QStringLiteral("wellNameLabel"));
    addRow(QStringLiteral("Marker Name"), m_markerName, QStringLiteral("markerNameEdit"));
    addRow(QStringLiteral("Depth"), m_depth, QStringLiteral("depthEdit"));
    addRow(QStringLiteral("Line Color"), m_lineColor, QStringLiteral("lineColorButton"));
    addRow(QStringLiteral("Line Thickness"), m_lineThickness, QStringLiteral("lineThicknessBox"));
    showMarker();

    connect(m_markerName, &QLineEdit::editingFinished, this, &MarkerItemPropertyWidget::markerNameChanged);
    connect(marker, &MarkerItem::changed, this, &MarkerItemPropertyWidget::showMarker);
    connect(m_depth, &base::NumberField::edited, this, &MarkerItemPropertyWidget::markerDepthChanged);
    connect(m_lineColor, &QPushButton::clicked, this, &MarkerItemPropertyWidget::lineColorChanged);
    connect(m_lineThickness, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MarkerItemPropertyWidget::lineThicknessChanged);
}

void MarkerItemPropertyWidget::showMarker()
{
    const QSignalBlocker blockName(m_markerName);
    const QSignalBlocker blockThickness(m_lineThickness);
    m_wellName->setText(m_marker->wellName());
    m_markerName->setText(m_marker->markerName());
    m_depth->showText(depthText(m_marker->depth()));
    m_lineColor->showColor(m_marker->lineColor());
    m_lineThickness->setCurrentIndex(m_marker->lineThickness() - 1);
}

void MarkerItemPropertyWidget::markerNameChanged()
{
    m_marker->editMarkerName(m_markerName->text());
}

void MarkerItemPropertyWidget::markerDepthChanged()
{
    bool isNumber = false;
    const float depth = m_depth->text().toFloat(&isNumber);
    if (isNumber && std::isfinite(depth))
        m_marker->editDepth(depth);
    else
        showMarker();
}

void MarkerItemPropertyWidget::lineColorChanged()
{
    const QColor color = base::chooseColor(this, Qt::black);
    if (color.isValid())
        m_marker->setLineColor(color);
}

void MarkerItemPropertyWidget::lineThicknessChanged(int index)
{
    m_marker->setLineThickness(index + 1);
}
