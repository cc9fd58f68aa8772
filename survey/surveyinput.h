#pragma once

#include "survey/surveyfolder.h"

#include <array>

/// A new survey as a user types it.
namespace survey {

enum class SurveyField { DataRoot, Name, XMinimum, XMaximum, YMinimum, YMaximum, MaximumDepth };

constexpr std::array<SurveyField, 7> surveyFields{
    SurveyField::DataRoot, SurveyField::Name,     SurveyField::XMinimum,    SurveyField::XMaximum,
    SurveyField::YMinimum, SurveyField::YMaximum, SurveyField::MaximumDepth};

class SurveyTexts
{
public:
    QString &operator[](SurveyField field) { return m_texts[static_cast<size_t>(field)]; }
    const QString &operator[](SurveyField field) const { return m_texts[static_cast<size_t>(field)]; }

private:
    std::array<QString, surveyFields.size()> m_texts;
};

/// The texts of a survey with the defaults of NewSurvey, without a name and a folder.
SurveyTexts defaultSurveyTexts();

/// The survey's name as a folder name: blanks and characters unfit for files become "_". Empty for a blank name.
QString surveyFolderName(const QString &name);
/// The folder that the survey will get; empty as long as the data root or the name is missing.
QString surveyPath(const SurveyTexts &texts);

/// What is wrong with one field, as a sentence; empty when nothing is. Looks at the disk for the folders.
QString surveyFieldProblem(SurveyField field, const SurveyTexts &texts);

/// What the maximum depth is proposed to be in a unit.
QString defaultMaximumDepth(DepthUnit unit);

/// \a texts must be without problems; their depth is in \a unit, which becomes that of the survey.
NewSurvey newSurvey(const SurveyTexts &texts, DepthUnit unit = DepthUnit::Metre);

} // namespace survey
