#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>
#include <QVector>

namespace programs {

/// A place in a PDF file to which a reader can jump.
struct PdfPlace
{
    int page = 0; ///< from 0
    double top = 0; ///< points from the page's upper edge
};

/// A line of the outline beside the pages.
struct PdfBookmark
{
    QString title;
    int level = 1; ///< one that is deeper than the one before it belongs to that one
    PdfPlace place;
};

/// An area that leads elsewhere.
struct PdfLink
{
    int page = 0; ///< from 0
    QRectF area; ///< points from the page's upper left corner
    PdfPlace place;
};

/// A file of Qt's writer, which knows neither, with an outline and links. Empty where the file has another form, or has no
/// such page.
QByteArray withBookmarks(const QByteArray &pdf, const QVector<PdfBookmark> &bookmarks, const QVector<PdfLink> &links);

} // namespace programs
