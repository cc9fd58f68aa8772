#include "logview/paper/sheetpainter.h"

#include "logview/geometry/displaystyle.h"
#include "logview/headerpane.h"

#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>

namespace logview {

namespace {

constexpr double outline = 1; // of tracks and headers, beside them
constexpr int footerPoints = 8;

} // namespace

SheetPainter::SheetPainter(QGraphicsScene &headerScene, QGraphicsScene &logScene, const Sheet &sheet)
    : m_headerScene(headerScene)
    , m_logScene(logScene)
    , m_sheet(sheet)
{
}

void SheetPainter::paint(QPainter &painter, int page) const
{
    const SheetPage &shown = m_sheet.pages.at(page);
    const auto render = [&](QGraphicsScene &scene, const QRectF &source, const QPointF &place) {
        scene.render(&painter, QRectF(place, source.size()), source, Qt::IgnoreAspectRatio);
    };
    const QRectF header = m_sheet.headerArea(shown);
    const QRectF headerItems = headerArea(m_headerScene);
    render(m_headerScene,
           QRectF(shown.left - outline, headerItems.top(), header.width() + 2 * outline, header.height()),
           header.topLeft() - QPointF(outline, 0));
    const QRectF tracks = m_sheet.trackArea(shown);
    const double above = m_sheet.bleedAbove(shown);
    const double height = above + tracks.height() + m_sheet.bleedBelow(shown);
    const double top = m_sheet.contents.top + shown.top - above;
    const auto renderTracks = [&](double left, double right) {
        render(m_logScene, QRectF(left, top, right - left, height),
               tracks.topLeft() + QPointF(left - shown.left, -above));
    };
    renderTracks(shown.left - outline, shown.right + outline);
    // Names of markers stand left of the first track, whatever tracks this part has.
    const double names = m_sheet.contents.leftMargin;
    if (shown.hasNames && names > 0)
        render(m_logScene, QRectF(-names, top, names - outline, height), tracks.topLeft() - QPointF(names, above));
    if (m_sheet.contents.hasOneWell) {
        // Where the page cuts the tracks, as at their own ends.
        painter.setPen(QPen(Qt::black, 1));
        for (const double y : {tracks.top() - above, tracks.top() - above + height})
            painter.drawLine(QPointF(tracks.left(), y), QPointF(tracks.right(), y));
    }
    paintFooter(painter, page);
}

void SheetPainter::paintFooter(QPainter &painter, int page) const
{
    const QRectF area = m_sheet.footerArea();
    painter.save();
    QFont font = timesFont();
    font.setPointSize(footerPoints);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QStringList texts = footerTexts(m_sheet, page);
    const QFontMetricsF metrics(font, painter.device());
    // What stands in the middle is read most: the name on its left gives way to it.
    const double middle = metrics.horizontalAdvance(texts.at(1));
    const double right = metrics.horizontalAdvance(texts.at(2));
    const double gap = metrics.averageCharWidth() * 2;
    const double middleLeft =
        std::max(area.left(), std::min(area.center().x() - middle / 2, area.right() - right - gap - middle));
    const QString title = metrics.elidedText(texts.at(0), Qt::ElideRight, middleLeft - gap - area.left());
    painter.drawText(area, Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine, title);
    painter.drawText(QRectF(middleLeft, area.top(), middle + 1, area.height()),
                     Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine | Qt::TextDontClip, texts.at(1));
    painter.drawText(area, Qt::AlignRight | Qt::AlignBottom | Qt::TextSingleLine, texts.at(2));
    painter.restore();
}

} // namespace logview
