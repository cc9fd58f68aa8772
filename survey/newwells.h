#pragma once

#include "survey/laswellproposal.h"
#include "survey/wellinput.h"
#include "survey/wellmaker.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace survey {

/// One well that may be made from one or more LAS files.
struct NewWell
{
    enum class State { Proposed, Exists, Unreadable, Created };

    State state = State::Proposed;
    bool isChosen = false;
    QStringList files; ///< paths
    NameSource source = NameSource::Well; ///< of its name
    WellTexts texts; ///< as proposed or corrected by the user
    QSet<int> corrected; ///< the fields that the user corrected
    QStringList logs; ///< mnemonics that the headers promise, of all files
    QStringList notes; ///< sentences that hold for every file
    QStringList differences; ///< sentences on files that contradict the first one
    QString failure; ///< why it could not be made when that was tried
    int createdLogs = 0;

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
    void addFile(const QString &path);
    void addProposal(const WellProposal &proposal);
    void addUnreadable(const QString &path, const QString &reason);

    /// What wells are named after: all of them, and those of files to come. What the user corrected stays with the
    /// wells whose files are the same as before, but for their names.
    void setNameSource(NameSource source);
    NameSource nameSource() const { return m_source; }
    /// The same for the files of some rows only.
    void setNameSource(const QVector<int> &rows, NameSource source);

    /// Whether a file's header is no Unicode, so that a user may have to choose how it is encoded.
    bool hasForeignText() const;
    /// How such files are encoded (see las::prepareText()); their headers are read again.
    void setCodec(const QByteArray &codec);
    QByteArray codec() const { return m_codec; }

    const QVector<NewWell> &wells() const { return m_wells; }
    /// An unreadable file and a well that was made can neither be chosen nor edited.
    bool isEditable(int row) const;
    void setChosen(int row, bool isChosen);
    void setText(int row, WellField field, const QString &text);
    /// Keeps what became of the rows that were to be made.
    void setMade(const QVector<int> &rows, const QVector<MadeWell> &made);
    void setCreated(const QVector<int> &rows);

    /// What is wrong with one text, as a sentence: only rows that are chosen have problems.
    QString problem(int row, WellField field) const;
    /// The first problem of the row, its failure included; empty when there is none.
    QString rowProblem(int row) const;
    /// The first row behind \a row with a wrong text, from the top again at the end; -1 when there is none.
    int nextProblemRow(int row) const;
    /// The field of a row that is wrong first; -1 when none is.
    int problemField(int row) const;
    /// Leaves out all rows with a wrong text.
    void uncheckProblems();
    /// The first problem of all with the well's name; empty when the chosen wells can be made.
    QString firstProblem() const;
    int chosenCount() const;

private:
    struct File
    {
        WellProposal proposal;
        NameSource source = NameSource::Well;
        QString error; ///< why it cannot be read
        bool isUnicode = true;
    };
    static File readFile(const QString &path, const QByteArray &codec, DepthUnit unit);
    void append(const File &file);
    void addToRows(const File &file);
    void rebuild();
    void index();

    WellNames m_existing;
    DepthUnit m_unit;
    NameSource m_source = NameSource::Well;
    QByteArray m_codec;
    QVector<File> m_files; ///< in the order in which they came
    QVector<NewWell> m_wells;
    QSet<QString> m_paths;
    QHash<QString, int> m_rowOfName; ///< comparable name to the first editable row
    QHash<QString, int> m_chosenOfName; ///< comparable name to the number of chosen rows
};

/// The names of the files without their folders, separated by commas.
QString fileNames(const NewWell &well);

} // namespace survey
