#pragma once

#include "displaywidgetfixture.h"
#include "logview/paper/displaysheet.h"
#include "logview/paper/sheetfile.h"
#include "logview/paper/sheetpainter.h"

#include <QGraphicsView>

/// A display and the sheets that are made of it.
struct SheetFixture : DisplayFixture
{
    QGraphicsScene &headers() { return *display->headerView()->scene(); }
    logview::Sheet sheet(logview::Paper paper)
    {
        return logview::layOutSheet(logview::sheetContents(headers(), *scene()), paper, logview::pdfLimits());
    }
    QByteArray pdf(logview::Paper paper)
    {
        return logview::pdfBytes(logview::SheetPainter(headers(), *scene(), sheet(paper)));
    }
};

/// One curve of few samples in a linear track, a depth track and a marker at 300 m, at 1:1000.
struct PaperFixture : SheetFixture
{
    PaperFixture()
    {
        addLog(QStringLiteral("GR"), {0, 100, 500, 1000, 1500}, {75, 30, 150, 0, 75});
        addTrack(1, linearTrack);
        addTrack(2, depthTrack);
        addMarker(QStringLiteral("Top"), 300);
        show();
        panel()->enterScale(1000);
    }
};

constexpr double dotMm = 25.4 / logview::paperDotsPerInch;
