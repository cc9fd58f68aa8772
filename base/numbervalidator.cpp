#include "base/numbervalidator.h"

#include <QLocale>

namespace base {

NumberValidator::NumberValidator(QObject *parent)
    : QDoubleValidator(parent)
{
    setLocale(QLocale::c());
}

QValidator::State NumberValidator::validate(QString &input, int &position) const
{
    input.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleValidator::validate(input, position);
}

} // namespace base
