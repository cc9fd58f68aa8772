#include "las/lengthunit.h"

#include "las/feet.h"

#include <QStringList>

namespace las {

namespace {

QString plainUnit(const QString &unit)
{
    QString text = unit.trimmed().toUpper();
    if (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

std::optional<double> metresPerImperial(const QString &plain)
{
    static const QStringList feet{QStringLiteral("FOOT"), QStringLiteral("USFT"), QStringLiteral("FTUS")};
    if (plain == QLatin1String("0.1IN"))
        return metresPerFeetUnit(QStringLiteral(".1IN"));
    return metresPerFeetUnit(feet.contains(plain) ? QStringLiteral("FT") : plain);
}

} // namespace

std::optional<double> metresPerUnit(const QString &unit)
{
    static const QStringList metres{QStringLiteral("M"),     QStringLiteral("METER"),  QStringLiteral("METERS"),
                                    QStringLiteral("METRE"), QStringLiteral("METRES"), QStringLiteral("MTR"),
                                    QString(QChar(0x041C))}; // the Cyrillic letter
    const QString plain = plainUnit(unit);
    return metres.contains(plain) ? std::optional<double>(1) : metresPerImperial(plain);
}

bool isImperial(const QString &unit)
{
    return metresPerImperial(plainUnit(unit)).has_value();
}

} // namespace las
