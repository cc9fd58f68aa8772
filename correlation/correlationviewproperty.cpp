#include "correlation/correlationviewproperty.h"

#include "base/numbers.h"
#include "base/popupwidth.h"
#include "correlation/correlationview.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

QString scaleText(double value)
{
    return QString::fromLatin1(base::formatGeneral(value));
}

} // namespace

CorrelationViewProperty::CorrelationViewProperty(CorrelationView *view)
    : PropertyPanel(QStringLiteral("CorrelationViewProperty"))
    , m_view(view)
    , m_shownScale(static_cast<double>(logview::defaultDepthScale))
    , m_name(new QLabel)
    , m_scale(new QLineEdit(scaleText(m_shownScale)))
    , m_depthType(new QComboBox)
    , m_depthUnit(new QComboBox)
    , m_flatAt(new QComboBox)
    , m_wellDistance(new QLineEdit(QString::number(CorrelationView::defaultWellDistance)))
{
    m_depthType->addItems({QStringLiteral("MD"), QStringLiteral("TVDSS")});
    m_depthUnit->addItems({QStringLiteral("METER"), QStringLiteral("FEET")});
    m_flatAt->addItem(QStringLiteral("None"));
    m_flatAt->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addRow(QStringLiteral("Correlation Name"), m_name, QStringLiteral("correlationName"));
    addRow(QStringLiteral("Scale - 1"), m_scale, QStringLiteral("scaleEdit"));
    addRow(QStringLiteral("Depth Type"), m_depthType, QStringLiteral("depthTypeBox"));
    addRow(QStringLiteral("Depth Unit"), m_depthUnit, QStringLiteral("depthUnitBox"));
    addRow(QStringLiteral("Flat At Marker"), m_flatAt, QStringLiteral("flatAtBox"));
    addRow(QStringLiteral("Well Distance - 1"), m_wellDistance, QStringLiteral("wellDistanceEdit"));
    m_wellDistance->setToolTip(QStringLiteral("Wells stand 80 pixels apart whatever is entered here."));

    connect(m_scale, &QLineEdit::editingFinished, this, &CorrelationViewProperty::scaleChanged);
    connect(m_depthType, &QComboBox::currentTextChanged, this, &CorrelationViewProperty::depthTypeChanged);
    connect(m_depthUnit, &QComboBox::currentTextChanged, this, &CorrelationViewProperty::depthUnitTypeChanged);
    connect(m_flatAt, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { flatAtMarkerChanged(m_flatAt->itemText(index)); });
    connect(m_wellDistance, &QLineEdit::editingFinished, this, &CorrelationViewProperty::wellsDisChanged);
}

void CorrelationViewProperty::setCorrelationName(const QString &name)
{
    m_name->setText(name);
}

void CorrelationViewProperty::setScale(double scale)
{
    m_shownScale = scale;
    m_scale->setText(scaleText(scale));
}

void CorrelationViewProperty::setMarkers(const QStringList &names)
{
    const QString chosen = flatMarker();
    const QSignalBlocker blocker(m_flatAt);
    m_flatAt->clear();
    m_flatAt->addItem(QStringLiteral("None"));
    m_flatAt->addItems(names);
    m_flatAt->setCurrentIndex(chosen.isEmpty() ? 0 : names.indexOf(chosen) + 1);
    base::fitPopup(*m_flatAt);
}

void CorrelationViewProperty::setFlatMarker(const QString &name)
{
    const QSignalBlocker blocker(m_flatAt);
    m_flatAt->setCurrentIndex(0);
    for (int i = 1; i < m_flatAt->count() && !name.isEmpty(); ++i)
        if (m_flatAt->itemText(i) == name)
            m_flatAt->setCurrentIndex(i);
}

QString CorrelationViewProperty::flatMarker() const
{
    return m_flatAt->currentIndex() > 0 ? m_flatAt->currentText() : QString();
}

void CorrelationViewProperty::enterScale(double scale)
{
    m_scale->setText(scaleText(scale));
    scaleChanged();
}

// A text that is no number is put back; a field that was only visited changes nothing.
void CorrelationViewProperty::scaleChanged()
{
    const auto scale = base::parseNumber(m_scale->text());
    if (!scale || *scale < 0) {
        setScale(m_shownScale);
        return;
    }
    if (scaleText(*scale) == scaleText(m_shownScale))
        return;
    m_shownScale = *scale;
    m_view->setScaleFactor(static_cast<float>(*scale));
}

void CorrelationViewProperty::depthTypeChanged(const QString &text)
{
    m_view->setDepthType(logview::depthTypeOfText(text, m_view->depthType()));
}

void CorrelationViewProperty::depthUnitTypeChanged()
{
    m_view->setDepthUnit(m_depthUnit->currentText() == QLatin1String("FEET") ? logview::Feet : logview::Metre);
}

void CorrelationViewProperty::flatAtMarkerChanged(const QString &)
{
    m_view->setFlatMarker(flatMarker());
}

void CorrelationViewProperty::wellsDisChanged()
{
    const auto distance = base::parseNumber(m_wellDistance->text());
    if (distance)
        m_view->setWellDistance(logview::toInt(*distance));
    m_wellDistance->setText(QString::number(m_view->wellDistance()));
}
