#include "logview/markeritempropertywidget.h"

#include "logview/markeritem.h"
#include "logview/welllogsscene.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

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
    , m_depth(new QLineEdit)
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

    connect(m_markerName, &QLineEdit::editingFinished, this, &MarkerItemPropertyWidget::markerNameChanged);
    connect(m_depth, &QLineEdit::editingFinished, this, &MarkerItemPropertyWidget::markerDepthChanged);
    connect(m_lineColor, &QPushButton::clicked, this, &MarkerItemPropertyWidget::lineColorChanged);
    connect(m_lineThickness, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MarkerItemPropertyWidget::lineThicknessChanged);
}

void MarkerItemPropertyWidget::showMarker()
{
    const QSignalBlocker blockName(m_markerName);
    const QSignalBlocker blockDepth(m_depth);
    const QSignalBlocker blockThickness(m_lineThickness);
    m_wellName->setText(m_marker->wellName());
    m_markerName->setText(m_marker->markerName());
    m_depth->setText(depthText(m_marker->depth()));
    m_lineColor->showColor(m_marker->lineColor());
    m_lineThickness->setCurrentIndex(m_marker->lineThickness() - 1);
}

void MarkerItemPropertyWidget::markerNameChanged()
{
    m_marker->setMarkerName(m_markerName->text());
}

// The placement takes the depth as part of the well's total depth; start depth, depth type and unit of the display do
// not count here.
void MarkerItemPropertyWidget::markerDepthChanged()
{
    if (m_depth->text() == depthText(m_marker->depth()))
        return; // a field that is left as it was says "finished" too
    const float depth = m_depth->text().toFloat();
    m_marker->setDepth(depth);
    const WellLogsScene *scene = m_marker->logsScene();
    const double totalDepth = scene ? static_cast<double>(scene->totalDepth()) : 0;
    if (totalDepth > 0)
        m_marker->setPos(0, scene->trackHeight() * static_cast<double>(depth) / totalDepth);
}

void MarkerItemPropertyWidget::lineColorChanged()
{
    const QColor color = chooseColor(Qt::black);
    if (color.isValid())
        m_marker->setLineColor(color);
}

void MarkerItemPropertyWidget::lineThicknessChanged(int index)
{
    m_marker->setLineThickness(index + 1);
}
