#pragma once

#include "logview/paper/vectordevice.h"

#include <QByteArray>

#include <memory>

namespace logview {

/// Writes what is painted as an SVG picture of true size: paths, texts as their outlines, pictures within it. Its units
/// are dots, its fonts those of 96 dots an inch.
class SvgDevice : public VectorDevice
{
public:
    /// \a sizePx in pixels of the display, 96 an inch.
    SvgDevice(const QSizeF &sizePx, double dotsPerInch);
    ~SvgDevice() override;

    QPaintEngine *paintEngine() const override;
    /// The whole file, once no painter is active.
    QByteArray bytes() const;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
};

} // namespace logview
