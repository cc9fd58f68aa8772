#pragma once

#include <QComboBox>

namespace base {

/// Chooses a pen style: five lines drawn solid, dash, dot, dash-dot, dash-dot-dot. An item's data is the number of
/// its Qt pen style, 1 to 5.
class LineStyleBox : public QComboBox
{
    Q_OBJECT

public:
    explicit LineStyleBox(QWidget *parent = nullptr);
};

/// Chooses a pen width: five solid lines. An item's data is its width in pixels, 1 to 5.
class LineWidthBox : public QComboBox
{
    Q_OBJECT

public:
    explicit LineWidthBox(QWidget *parent = nullptr);
};

} // namespace base
