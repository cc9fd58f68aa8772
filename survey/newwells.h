#pragma once

#include "survey/laswellproposal.h"
#include "survey/wellinput.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace survey {

/// One well that may be made from the headers of one or more LAS files.
struct NewWell
{
    enum class State { Proposed, Exists, Unreadable, Created };

    State state = State::Proposed;
    bool isChosen = false;
    QStringList files; ///< paths
    WellTexts texts; ///< as proposed or corrected by the user
    QStringList notes; ///< sentences that hold for every file
    QStringList differences; ///< sentences on files that contradict the first one

    QStringList allNotes() const { return notes + differences; }
};

/// The wells proposed for a choice of LAS files, one per well name, as a user corrects them before they are made.
class NewWells
{
public:
    /// \a existing are the names that the survey has, \a unit is that of its depths.
    explicit NewWells(const WellNames &existing = {}, DepthUnit unit = DepthUnit::Metre)
        : m_existing(existing)
        , m_unit(unit)
    {
    }

    /// Depths and elevations in the texts are in this unit.
    DepthUnit depthUnit() const { return m_unit; }

    /// Reads the headers of the files and adds their wells; files met before are passed over. A further file of a
    /// well adds what is missing and the largest total depth. A file that cannot be read gets a row of its own.
    void addFiles(const QStringList &paths);
    void addProposal(const WellProposal &proposal);
    void addUnreadable(const QString &path, const QString &reason);

    const QVector<NewWell> &wells() const { return m_wells; }
    /// An unreadable file and a well that was made can neither be chosen nor edited.
    bool isEditable(int row) const;
    void setChosen(int row, bool isChosen);
    void setText(int row, WellField field, const QString &text);
    void setCreated(const QVector<int> &rows);

    /// What is wrong with one text, as a sentence: only rows that are chosen have problems.
    QString problem(int row, WellField field) const;
    /// The first problem of all with the well's name; empty when the chosen wells can be made.
    QString firstProblem() const;
    int chosenCount() const;

private:
    void index();

    WellNames m_existing;
    DepthUnit m_unit;
    QVector<NewWell> m_wells;
    QSet<QString> m_paths;
    QHash<QString, int> m_rowOfName; ///< comparable name to the first editable row
    QHash<QString, int> m_chosenOfName; ///< comparable name to the number of chosen rows
};

/// The names of the files without their folders, separated by commas.
QString fileNames(const NewWell &well);

} // namespace survey
