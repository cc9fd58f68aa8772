#pragma once

#include "logview/paper/dotlines.h"

#include <QByteArray>

namespace logview {

/// The long lines of a PDF file: nearly all of its bytes. Qt's writer takes most of its time to write their numbers and to
/// compress them at a level that cannot be chosen. So it gets a mark in place of each, and its finished pages the lines.
class PdfLines
{
public:
    /// Whether all numbers are below a hundred million.
    static bool canHold(const DotLines &lines);
    /// Takes such lines, counted from the origin. Gives what a painter strokes in their place, with the same pen.
    QPainterPath markFor(const DotLines &lines, const QPointF &origin = {});
    bool isEmpty() const { return m_lines.isEmpty(); }
    /// The file that Qt's writer made, with the lines in place of their marks. Empty when it has not each mark once.
    QByteArray writtenInto(const QByteArray &pdf) const;

private:
    QVector<QByteArray> m_lines; // as operators of a page
};

} // namespace logview
