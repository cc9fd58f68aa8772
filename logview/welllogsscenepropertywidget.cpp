#include "logview/welllogsscenepropertywidget.h"

#include "base/numberfield.h"
#include "logview/welllogsscene.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>

#include <cmath>

namespace {

QString numberText(float value)
{
    return QString::number(static_cast<double>(value), 'g', 6);
}

void showNumber(base::NumberField *field, float value)
{
    field->showText(numberText(value));
}

} // namespace

WellLogsScenePropertyWidget::WellLogsScenePropertyWidget(WellLogsScene *scene)
    : PropertyPanel(QStringLiteral("WellLogsScenePropertyWidget"))
    , m_scene(scene)
    , m_wellName(new QLabel)
    , m_scale(new base::NumberField)
    , m_startDepth(new base::NumberField)
    , m_endDepth(new base::NumberField)
    , m_depthType(new QComboBox)
    , m_depthUnit(new QComboBox)
{
    m_depthType->addItems({QStringLiteral("MD"), QStringLiteral("TVDSS")});
    m_depthUnit->addItems({QStringLiteral("METER"), QStringLiteral("FEET")});
    showNumber(m_scale, m_scaleValue);
    showNumber(m_startDepth, scene->startDepth());
    showNumber(m_endDepth, scene->endDepth());
    addRow(QStringLiteral("Wellname"), m_wellName, QStringLiteral("wellNameLabel"));
    addRow(QStringLiteral("Scale - 1"), m_scale, QStringLiteral("scaleEdit"));
    addRow(QStringLiteral("Start Depth"), m_startDepth, QStringLiteral("startDepthEdit"));
    addRow(QStringLiteral("End Depth"), m_endDepth, QStringLiteral("endDepthEdit"));
    addRow(QStringLiteral("Depth Type"), m_depthType, QStringLiteral("depthTypeBox"));
    addRow(QStringLiteral("Depth Unit"), m_depthUnit, QStringLiteral("depthUnitBox"));

    using Panel = WellLogsScenePropertyWidget;
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_scale, &base::NumberField::edited, this, &Panel::scaleChanged);
    connect(m_startDepth, &base::NumberField::edited, this, &Panel::startDepthChanged);
    connect(m_endDepth, &base::NumberField::edited, this, &Panel::endDepthChanged);
    connect(m_depthType, indexChanged, this, &Panel::depthTypeChanged);
    connect(m_depthUnit, indexChanged, this, &Panel::depthUnitTypeChanged);
}

void WellLogsScenePropertyWidget::setWellName(const QString &wellName)
{
    m_wellName->setText(wellName);
}

void WellLogsScenePropertyWidget::setTotalDepth(float depthM)
{
    m_scene->setTotalDepth(depthM);
}

void WellLogsScenePropertyWidget::setScale(float scale)
{
    m_scaleValue = scale;
    showNumber(m_scale, scale);
}

void WellLogsScenePropertyWidget::enterScale(float scale)
{
    m_scale->enterText(numberText(scale));
}

void WellLogsScenePropertyWidget::setStartDepth(float depth)
{
    showNumber(m_startDepth, depth);
    m_scene->setStartDepth(depth);
}

void WellLogsScenePropertyWidget::setEndDepth(float depth)
{
    showNumber(m_endDepth, depth);
    m_scene->setEndDepth(depth);
}

// The box offers no TVDKB and has no third item: TVDKB shows as "MD", and TVDSS set from here as nothing chosen.
void WellLogsScenePropertyWidget::setDepthType(int depthType)
{
    const QSignalBlocker blocker(m_depthType);
    if (depthType == logview::TvdKb)
        m_depthType->setCurrentIndex(1);
    m_depthType->setCurrentIndex(depthType == logview::TvdSubsea ? 2 : 0);
    m_scene->setDepthType(depthType);
}

void WellLogsScenePropertyWidget::setDepthUnit(int unit)
{
    const QSignalBlocker blocker(m_depthUnit);
    m_depthUnit->setCurrentIndex(unit);
    m_scene->setDepthUnit(unit);
}

void WellLogsScenePropertyWidget::enterAllOf(const WellLogsScenePropertyWidget &other)
{
    enterScale(other.m_scaleValue);
    m_depthType->setCurrentIndex(other.m_depthType->currentIndex());
    m_depthUnit->setCurrentIndex(other.m_depthUnit->currentIndex());
    const WellRecord &well = m_scene->well();
    const WellRecord &otherWell = other.m_scene->well();
    if (well.totalDepth != otherWell.totalDepth || well.kbElevation != otherWell.kbElevation)
        return;
    setStartDepth(other.m_scene->startDepth());
    setEndDepth(other.m_scene->endDepth());
    m_scene->applyDepthRange();
}

// A scale that is none is put back.
void WellLogsScenePropertyWidget::scaleChanged()
{
    const float scale = m_scale->text().toFloat();
    if (!(scale > 0) || !std::isfinite(scale)) {
        showNumber(m_scale, m_scaleValue);
        return;
    }
    m_scaleValue = scale;
    m_scene->applyScale(scale);
}

void WellLogsScenePropertyWidget::startDepthChanged()
{
    m_scene->setStartDepth(m_startDepth->text().toFloat());
    m_scene->applyDepthRange();
}

void WellLogsScenePropertyWidget::endDepthChanged()
{
    m_scene->setEndDepth(m_endDepth->text().toFloat());
    m_scene->applyDepthRange();
}

void WellLogsScenePropertyWidget::depthTypeChanged()
{
    m_scene->setDepthType(logview::depthTypeOfText(m_depthType->currentText(), m_scene->depthType()));
    m_scene->applyDepthTypeAndUnit();
}

void WellLogsScenePropertyWidget::depthUnitTypeChanged()
{
    m_scene->setDepthUnit(m_depthUnit->currentText() == QLatin1String("FEET") ? logview::Feet : logview::Metre);
    m_scene->applyDepthTypeAndUnit();
}
