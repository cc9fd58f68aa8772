#include "survey/surveyinput.h"

#include "base/numbers.h"
#include "survey/wellinput.h"

#include <QDir>
#include <QFileInfo>

namespace survey {

namespace {

constexpr double farthestCoordinate = 1e8;
constexpr double widestExtent = 5e6; // a survey is no continent
constexpr double greatestDepth = 100000;
constexpr int longestFolderName = 200; // bytes

QString rootProblem(const QString &text)
{
    const QString root = text.trimmed();
    if (root.isEmpty())
        return QStringLiteral("The data root folder is missing.");
    if (QDir::isRelativePath(root))
        return QStringLiteral("The data root must be a full path.");
    if (QFileInfo::exists(root) && !QFileInfo(root).isDir())
        return QStringLiteral("%1 is not a folder.").arg(root);
    if (isSurveyFolder(root))
        return QStringLiteral("%1 is a survey itself; choose the folder above it.").arg(root);
    return {};
}

QString nameProblem(const SurveyTexts &texts)
{
    if (texts[SurveyField::Name].trimmed().isEmpty())
        return QStringLiteral("A survey needs a name.");
    const QString path = surveyPath(texts);
    if (!path.isEmpty() && QFileInfo::exists(path))
        return QStringLiteral("%1 exists already.").arg(path);
    return {};
}

QString numberProblem(const QString &label, const QString &text, double lowest, double highest)
{
    QString problem;
    typedNumber(label, text, lowest, highest, &problem);
    return problem;
}

QString maximumProblem(const QString &axis, const QString &minimumText, const QString &maximumText)
{
    const QString problem = numberProblem(QStringLiteral("The largest %1").arg(axis), maximumText,
                                          -farthestCoordinate, farthestCoordinate);
    const std::optional<double> minimum = base::parseNumber(minimumText);
    const std::optional<double> maximum = base::parseNumber(maximumText);
    if (!problem.isEmpty() || !minimum || !maximum)
        return problem;
    if (*maximum <= *minimum)
        return QStringLiteral("The largest %1 must be greater than the smallest.").arg(axis);
    if (*maximum - *minimum > widestExtent)
        return QStringLiteral("The survey would be wider than 5000 km.");
    return {};
}

} // namespace

SurveyTexts defaultSurveyTexts()
{
    const NewSurvey survey;
    SurveyTexts texts;
    texts[SurveyField::XMinimum] = QString::fromLatin1(base::formatFixed(survey.xMinimum, 0));
    texts[SurveyField::XMaximum] = QString::fromLatin1(base::formatFixed(survey.xMaximum, 0));
    texts[SurveyField::YMinimum] = QString::fromLatin1(base::formatFixed(survey.yMinimum, 0));
    texts[SurveyField::YMaximum] = QString::fromLatin1(base::formatFixed(survey.yMaximum, 0));
    texts[SurveyField::MaximumDepth] = defaultMaximumDepth(survey.depthUnit);
    return texts;
}

QString surveyFolderName(const QString &name)
{
    QString folder;
    for (QChar c : name.trimmed()) {
        const bool isKept =
            c.isLetterOrNumber() || c.isSurrogate() || c.isMark() || QStringLiteral("-_+.()").contains(c);
        folder += isKept ? c : QChar(QLatin1Char('_'));
    }
    if (folder.startsWith(QLatin1Char('.')))
        folder.prepend(QLatin1Char('_'));
    while (folder.toUtf8().size() > longestFolderName)
        folder.chop(folder.at(folder.size() - 1).isLowSurrogate() ? 2 : 1);
    return folder;
}

QString surveyPath(const SurveyTexts &texts)
{
    const QString root = texts[SurveyField::DataRoot].trimmed();
    const QString folder = surveyFolderName(texts[SurveyField::Name]);
    return root.isEmpty() || folder.isEmpty() ? QString() : QDir::cleanPath(root + QLatin1Char('/') + folder);
}

QString surveyFieldProblem(SurveyField field, const SurveyTexts &texts)
{
    switch (field) {
    case SurveyField::DataRoot:
        return rootProblem(texts[field]);
    case SurveyField::Name:
        return nameProblem(texts);
    case SurveyField::XMinimum:
        return numberProblem(QStringLiteral("The smallest X"), texts[field], -farthestCoordinate, farthestCoordinate);
    case SurveyField::XMaximum:
        return maximumProblem(QStringLiteral("X"), texts[SurveyField::XMinimum], texts[field]);
    case SurveyField::YMinimum:
        return numberProblem(QStringLiteral("The smallest Y"), texts[field], -farthestCoordinate, farthestCoordinate);
    case SurveyField::YMaximum:
        return maximumProblem(QStringLiteral("Y"), texts[SurveyField::YMinimum], texts[field]);
    case SurveyField::MaximumDepth:
        break;
    }
    return numberProblem(QStringLiteral("The maximum depth"), texts[SurveyField::MaximumDepth], 1, greatestDepth);
}

QString defaultMaximumDepth(DepthUnit unit)
{
    return unit == DepthUnit::Foot ? QStringLiteral("13000")
                                   : QString::fromLatin1(base::formatWritten(NewSurvey().maximumDepth));
}

NewSurvey newSurvey(const SurveyTexts &texts, DepthUnit unit)
{
    const auto number = [&texts](SurveyField field) { return base::parseNumber(texts[field]).value_or(0); };
    NewSurvey survey;
    survey.name = texts[SurveyField::Name].trimmed();
    survey.xMinimum = number(SurveyField::XMinimum);
    survey.xMaximum = number(SurveyField::XMaximum);
    survey.yMinimum = number(SurveyField::YMinimum);
    survey.yMaximum = number(SurveyField::YMaximum);
    survey.depthUnit = unit;
    survey.maximumDepth = number(SurveyField::MaximumDepth);
    return survey;
}

} // namespace survey
