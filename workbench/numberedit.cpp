#include "workbench/numberedit.h"

#include <QDoubleValidator>

namespace workbench {

namespace {

class NumberValidator : public QDoubleValidator
{
public:
    explicit NumberValidator(QObject *parent)
        : QDoubleValidator(parent)
    {
        setLocale(QLocale::c());
        setNotation(QDoubleValidator::ScientificNotation);
    }

    State validate(QString &input, int &position) const override
    {
        QString withPoint = input;
        withPoint.replace(QLatin1Char(','), QLatin1Char('.'));
        const State state = QDoubleValidator::validate(withPoint, position);
        return input.contains(QLatin1Char(',')) && state == Acceptable ? Intermediate : state;
    }
};

} // namespace

NumberEdit::NumberEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setValidator(new NumberValidator(this));
    setLocale(QLocale::c());
}

QSize NumberEdit::sizeHint() const
{
    QSize size = QLineEdit::sizeHint();
    size.setWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000.00000")));
    return size;
}

} // namespace workbench
