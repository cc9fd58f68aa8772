#pragma once

#include "logview/paper/vectordevice.h"

#include <QPointF>
#include <QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace logview {

class PdfLines;

/// A paint device that hands on what is painted to a painter of vectors, on the dots of a printer: corners go to whole
/// dots, points that no dot tells apart go, lines without scaled width get the width that they have at 96 dots an inch.
/// So a curve takes as much of a file as its paper shows. Its units are dots, its fonts those of 96 dots an inch: who
/// paints pixels of the display scales its painter by dotsPerPixel().
class DotDevice : public VectorDevice
{
public:
    /// \a target is active, outlives the device, and has the same units and fonts. \a sizePx is the size of a page in
    /// pixels of the display. Long lines go to \a longLines, which outlives the device, where that is given.
    DotDevice(QPainter *target, double dotsPerInch, const QSizeF &sizePx, PdfLines *longLines = nullptr);
    ~DotDevice() override;

    QPaintEngine *paintEngine() const override;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
};

} // namespace logview
