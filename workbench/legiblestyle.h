#pragma once

#include <QProxyStyle>

namespace workbench {

/// The desktop's style, with boxes to check and crosses of tabs that can be seen on a dark desktop too: some styles draw them
/// darker than the dark that they stand on.
class LegibleStyle : public QProxyStyle
{
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
};

} // namespace workbench
