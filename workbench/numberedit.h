#pragma once

#include <QLineEdit>

namespace workbench {

/// A line for one number with a decimal point, whatever the desktop's language; a typed comma becomes one.
class NumberEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberEdit(QWidget *parent = nullptr);
    QSize sizeHint() const override;
};

} // namespace workbench
