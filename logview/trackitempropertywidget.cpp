#include "logview/trackitempropertywidget.h"

#include "base/numberfield.h"
#include "logview/geometry/displaystyle.h"
#include "logview/trackitem.h"

#include <QComboBox>
#include <QGraphicsScene>
#include <QLabel>
#include <QSignalBlocker>

namespace {

struct TypeName
{
    const char *text;
    int type;
};
constexpr TypeName typeNames[] = {{"Normal", LinearTrack}, {"Logrithmic", LogarithmicTrack}, {"Depth", DepthTrack}};

} // namespace

TrackItemPropertyWidget::TrackItemPropertyWidget(TrackItem *track)
    : PropertyPanel(QStringLiteral("TrackItemPropertyWidget"), QStringLiteral("Track Property"))
    , m_track(track)
    , m_width(new base::NumberField)
    , m_trackType(new QComboBox)
{
    for (const TypeName &name : typeNames)
        m_trackType->addItem(QString::fromLatin1(name.text), name.type);
    addRow(QStringLiteral("Width"), m_width, QStringLiteral("widthEdit"));
    addRow(QStringLiteral("Well Name"), new QLabel(track->wellName()), QStringLiteral("wellNameLabel"));
    addRow(QStringLiteral("Track Type"), m_trackType, QStringLiteral("trackTypeBox"));
    showTrack();

    connect(m_width, &base::NumberField::edited, this, &TrackItemPropertyWidget::trackWidthEditChanged);
    connect(track, &TrackItem::hovered, this, &TrackItemPropertyWidget::sendStatusLabel);
    connect(m_trackType, &QComboBox::currentTextChanged, this, &TrackItemPropertyWidget::trackTypeChanged);
}

void TrackItemPropertyWidget::showTrack()
{
    const QSignalBlocker blockType(m_trackType);
    m_width->showText(QString::number(static_cast<double>(m_track->width()) / logview::widthPixelsPerInch));
    m_trackType->setCurrentIndex(m_trackType->findData(m_track->trackType()));
}

// A width that is no track's width is put back: nothing could be drawn or clicked in it.
void TrackItemPropertyWidget::trackWidthEditChanged()
{
    const float inches = m_width->text().toFloat();
    if (inches > 0)
        m_track->setWidthInches(inches);
    showTrack();
}

void TrackItemPropertyWidget::trackTypeChanged(QString trackType)
{
    for (const TypeName &name : typeNames) {
        if (trackType != QLatin1String(name.text))
            continue;
        m_track->setTrackType(name.type);
        showTrack();
        if (m_track->scene())
            m_track->scene()->update();
    }
}
