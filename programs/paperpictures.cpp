#include "programs/paperpictures.h"

#include "datastore/curvegroups.h"
#include "datastore/project.h"
#include "datastore/projectdata.h"
#include "logview/paper/displaysheet.h"
#include "logview/paper/sheetpainter.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "programs/picturefolder.h"

#include <QGraphicsView>
#include <QPainter>

namespace programs {

namespace {

constexpr float topM = 1970;
constexpr float baseM = 2200;
constexpr float scale = 500;
constexpr int pagesShown = 2;
constexpr int gapPx = 24;
constexpr double shownSize = 0.7; // of that on paper at 96 pixels an inch
const QColor desk(205, 208, 212);

/// The pages side by side on a desk.
QPixmap pictureOf(const logview::SheetPainter &sheet, int pages)
{
    const QSize page = sheet.sheet().pageSize.toSize();
    const QSize deskSize(pages * page.width() + (pages + 1) * gapPx, page.height() + 2 * gapPx);
    QPixmap picture(deskSize * shownSize);
    picture.fill(desk);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(shownSize, shownSize);
    for (int i = 0; i < pages; ++i) {
        painter.save();
        painter.translate(gapPx + i * (page.width() + gapPx), gapPx);
        painter.fillRect(QRect(QPoint(), page), Qt::white);
        painter.setClipRect(QRect(QPoint(), page));
        sheet.paint(painter, i);
        painter.restore();
    }
    return picture;
}

} // namespace

void drawPaper(host::Host &host, base::Asker &asker, PictureFolder *pictures)
{
    ProjectData data(host, asker);
    data.project.groupNames = curveGroupNames();
    openProject(host, &data.project);
    data.project.globalTemplateNames = globalTemplateNames(data.project);
    data.catalogue.build();
    QPixmap picture;
    const QString well = data.catalogue.wellNames().value(0);
    if (!well.isEmpty()) {
        WellDisplayWidget display(data, well, QStringLiteral("Petrophysics"), nullptr);
        WellLogsScene &scene = *display.scene();
        scene.panel()->setStartDepth(topM);
        scene.panel()->setEndDepth(baseM);
        scene.applyDepthRange();
        scene.panel()->setScale(scale);
        scene.applyScale(scale);
        display.beginMarkers();
        for (const QString &marker : data.catalogue.markerNames(0))
            display.addMarker(well, marker);
        display.endMarkers();
        QGraphicsScene &headers = *display.headerView()->scene();
        const logview::Sheet sheet =
            logview::layOutSheet(logview::sheetContents(headers, scene), logview::Paper::A4, logview::pdfLimits());
        if (sheet.ok())
            picture = pictureOf({headers, scene, sheet}, qMin(pagesShown, sheet.pages.size()));
    }
    pictures->save(picture, QStringLiteral("paper"));
}

} // namespace programs
