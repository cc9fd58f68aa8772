#pragma once

#include <QDoubleValidator>

namespace base {

/// Lets one number be typed with a decimal point, whatever the desktop's language. A comma, typed or pasted, becomes a
/// point at once, so that "25,5" is never read as 255. Digits in groups ("1,234.5") are refused.
class NumberValidator : public QDoubleValidator
{
public:
    explicit NumberValidator(QObject *parent = nullptr);

    State validate(QString &input, int &position) const override;
};

} // namespace base
