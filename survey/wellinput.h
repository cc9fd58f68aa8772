#pragma once

#include "host/wells.h"
#include "survey/wellfile.h"

#include <QSet>
#include <QString>

#include <array>

/// A well as a user types it: texts, what is wrong with them, and the properties they stand for.
namespace survey {

enum class WellField { Name, X, Y, KbElevation, GroundElevation, TotalDepth };

constexpr std::array<WellField, 6> wellFields{
    WellField::Name,      WellField::X, WellField::Y, WellField::KbElevation, WellField::GroundElevation,
    WellField::TotalDepth};

class WellTexts
{
public:
    QString &operator[](WellField field) { return m_texts[static_cast<size_t>(field)]; }
    const QString &operator[](WellField field) const { return m_texts[static_cast<size_t>(field)]; }
    bool operator==(const WellTexts &other) const { return m_texts == other.m_texts; }
    bool operator!=(const WellTexts &other) const { return m_texts != other.m_texts; }

private:
    std::array<QString, wellFields.size()> m_texts;
};

/// What is wrong with the text of one field, as a sentence; empty when nothing is.
QString wellFieldProblem(WellField field, const QString &text);

WellTexts wellTexts(const WellProperties &properties);
/// \a texts must be without problems. A field whose text is still that of \a before keeps the value of \a before to
/// the last bit.
WellProperties wellProperties(const WellTexts &texts, const WellProperties &before = {});

/// Well names that are taken. Names that differ in upper and lower case or in blanks around them only are the same.
class WellNames
{
public:
    WellNames() = default;
    explicit WellNames(const QVector<host::WellEntry> &wells);

    static QString comparable(const QString &name);
    bool contains(const QString &name) const { return m_names.contains(comparable(name)); }
    void insert(const QString &name) { m_names.insert(comparable(name)); }

private:
    QSet<QString> m_names;
};

/// The sentence for a name that is taken.
QString nameTakenProblem(const QString &name);
/// What is wrong with a name for the well \a ownKey (empty: a new one) beside the other \a wells; empty when nothing
/// is.
QString wellNameProblem(const QString &name, const QVector<host::WellEntry> &wells, const QString &ownKey);

/// A number that a user typed, with a decimal point. \a label begins the sentence in \a problem.
double typedNumber(const QString &label, const QString &text, double lowest, double highest, QString *problem);

} // namespace survey
