#include "survey/wellinput.h"

#include "base/numbers.h"
#include "survey/wellnames.h"

#include <cmath>

namespace survey {

namespace {

// Far beyond every survey and every well, in metres as in feet: what lies outside is a slip of the keyboard.
constexpr double farthestCoordinate = 1e8;
constexpr double highestElevation = 100000;
constexpr double deepestWell = 100000;

QString label(WellField field)
{
    switch (field) {
    case WellField::Name:
        return QStringLiteral("The name");
    case WellField::X:
        return QStringLiteral("X");
    case WellField::Y:
        return QStringLiteral("Y");
    case WellField::KbElevation:
        return QStringLiteral("The KB elevation");
    case WellField::GroundElevation:
        return QStringLiteral("The ground elevation");
    case WellField::TotalDepth:
        break;
    }
    return QStringLiteral("The total depth");
}

// Elevations are single precision in the store: as many digits as that holds, not its noise.
QString elevationText(double elevation)
{
    const auto stored = static_cast<float>(elevation);
    return host::isUndefined(stored) ? QString() : QString::fromLatin1(base::formatWritten(stored));
}

} // namespace

double typedNumber(const QString &label, const QString &text, double lowest, double highest, QString *problem)
{
    const std::optional<double> number = base::parseNumber(text);
    if (text.trimmed().isEmpty())
        *problem = QStringLiteral("%1 is missing.").arg(label);
    else if (!number && text.contains(QLatin1Char(',')))
        *problem = QStringLiteral("%1 is written with a comma; please write a decimal point.").arg(label);
    else if (!number)
        *problem = QStringLiteral("%1 is not a number.").arg(label);
    else if (*number < lowest || *number > highest)
        *problem = QStringLiteral("%1 must lie between %2 and %3.")
                       .arg(label, QString::fromLatin1(base::formatFixed(lowest, 0)),
                            QString::fromLatin1(base::formatFixed(highest, 0)));
    else
        problem->clear();
    return number.value_or(0);
}

QString wellFieldProblem(WellField field, const QString &text)
{
    QString problem;
    switch (field) {
    case WellField::Name:
        return storedNameProblem(text.trimmed());
    case WellField::X:
    case WellField::Y:
        typedNumber(label(field), text, -farthestCoordinate, farthestCoordinate, &problem);
        break;
    case WellField::KbElevation:
        typedNumber(label(field), text, -highestElevation, highestElevation, &problem);
        break;
    case WellField::GroundElevation:
        if (!text.trimmed().isEmpty())
            typedNumber(label(field), text, -highestElevation, highestElevation, &problem);
        break;
    case WellField::TotalDepth:
        if (typedNumber(label(field), text, -deepestWell, deepestWell, &problem) <= 0 && problem.isEmpty())
            problem = QStringLiteral("The total depth must be greater than 0.");
        break;
    }
    return problem;
}

WellTexts wellTexts(const WellProperties &properties)
{
    WellTexts texts;
    texts[WellField::Name] = properties.name;
    texts[WellField::X] = QString::fromLatin1(base::formatWritten(properties.x));
    texts[WellField::Y] = QString::fromLatin1(base::formatWritten(properties.y));
    texts[WellField::KbElevation] = elevationText(properties.kbElevation);
    texts[WellField::GroundElevation] = elevationText(properties.groundElevation);
    texts[WellField::TotalDepth] = QString::fromLatin1(base::formatWritten(properties.totalDepth));
    return texts;
}

WellProperties wellProperties(const WellTexts &texts, const WellProperties &before)
{
    const WellTexts old = wellTexts(before);
    const auto number = [&texts, &old](WellField field, double unchanged, double ifEmpty) {
        return texts[field] == old[field] ? unchanged : base::parseNumber(texts[field]).value_or(ifEmpty);
    };
    WellProperties properties = before;
    if (texts[WellField::Name] != before.name)
        properties.name = texts[WellField::Name].trimmed();
    properties.x = number(WellField::X, before.x, 0);
    properties.y = number(WellField::Y, before.y, 0);
    properties.kbElevation = number(WellField::KbElevation, before.kbElevation, 0);
    properties.groundElevation =
        number(WellField::GroundElevation, before.groundElevation, static_cast<double>(host::undefinedValue));
    properties.totalDepth = number(WellField::TotalDepth, before.totalDepth, 0);
    return properties;
}

WellNames::WellNames(const QVector<host::WellEntry> &wells)
{
    m_names.reserve(wells.size());
    for (const host::WellEntry &well : wells)
        insert(well.name);
}

QString WellNames::comparable(const QString &name)
{
    return name.trimmed().toCaseFolded();
}

QString nameTakenProblem(const QString &name)
{
    return QStringLiteral("A well named \"%1\" exists already.").arg(name.trimmed());
}

QString wellNameProblem(const QString &name, const QVector<host::WellEntry> &wells, const QString &ownKey)
{
    const QString problem = storedNameProblem(name.trimmed());
    if (!problem.isEmpty())
        return problem;
    WellNames others;
    for (const host::WellEntry &well : wells) {
        if (well.key != ownKey)
            others.insert(well.name);
        else if (well.name == name)
            return {}; // unchanged, even if a survey has it twice
    }
    return others.contains(name) ? nameTakenProblem(name) : QString();
}

} // namespace survey
