#include "logview/welllogsscenepropertywidget.h"

#include "logview/welllogsscene.h"

#include <QComboBox>
#include <QDoubleValidator>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <cmath>

namespace {

QString numberText(float value)
{
    return QString::number(static_cast<double>(value), 'g', 6);
}

void showNumber(QLineEdit *field, float value)
{
    const QSignalBlocker blocker(field);
    field->setText(numberText(value));
}

} // namespace

WellLogsScenePropertyWidget::WellLogsScenePropertyWidget(WellLogsScene *scene)
    : PropertyPanel(QStringLiteral("WellLogsScenePropertyWidget"))
    , m_scene(scene)
    , m_wellName(new QLabel)
    , m_scale(new QLineEdit(QStringLiteral("1000")))
    , m_startDepth(new QLineEdit)
    , m_endDepth(new QLineEdit)
    , m_depthType(new QComboBox)
    , m_depthUnit(new QComboBox)
{
    QDoubleValidator *validator = numberValidator();
    for (QLineEdit *field : {m_scale, m_startDepth, m_endDepth})
        field->setValidator(validator);
    m_depthType->addItems({QStringLiteral("MD"), QStringLiteral("TVDSS")});
    m_depthUnit->addItems({QStringLiteral("METER"), QStringLiteral("FEET")});
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
    connect(m_scale, &QLineEdit::editingFinished, this, &Panel::scaleChanged);
    connect(m_startDepth, &QLineEdit::editingFinished, this, &Panel::startDepthChanged);
    connect(m_endDepth, &QLineEdit::editingFinished, this, &Panel::endDepthChanged);
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

// A scale that is none is put back. A field that is left as it was says "finished" too: it must not move markers.
void WellLogsScenePropertyWidget::scaleChanged()
{
    if (m_scale->text() == numberText(m_scaleValue))
        return;
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
    if (m_startDepth->text() == numberText(m_scene->startDepth()))
        return;
    m_scene->setStartDepth(m_startDepth->text().toFloat());
    m_scene->applyDepthRange();
}

void WellLogsScenePropertyWidget::endDepthChanged()
{
    if (m_endDepth->text() == numberText(m_scene->endDepth()))
        return;
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
