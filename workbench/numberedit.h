#pragma once

#include <QLineEdit>

namespace workbench {

/// A line for one number with a decimal point, whatever the desktop's language. A typed comma stays visible, so that
/// "25,5" never becomes 255 behind the user's back; wellFieldProblem() and its like then say what is wrong.
class NumberEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberEdit(QWidget *parent = nullptr);
    QSize sizeHint() const override;
};

} // namespace workbench
