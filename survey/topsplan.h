#pragma once

#include "survey/markeredit.h"
#include "survey/surveystore.h"
#include "survey/topsfile.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <functional>

/// Tops of many wells on their way from tables into the wells of a survey.
namespace survey {

/// How a plan reads the survey's wells. It asks for each at most once, and only for those that it needs.
struct TopsSource
{
    std::function<host::Outcome<WellHead>(const QString &key)> head;
    std::function<host::Outcome<QVector<host::Marker>>(const QString &key, const WellHead &head)> markers;
};

/// \a store must live as long as what reads by it.
TopsSource topsSource(SurveyStore &store);

/// One well of the files, or a file that names none, and what its tops make of a well of the survey.
struct TopsRow
{
    enum class Match {
        None, ///< no well of the survey is called so
        Several, ///< more than one may be meant
        Exact,
        Alike, ///< but for letter case, blanks and punctuation
        Uwi, ///< by the well's unique identifier
        User, ///< the user chose it
    };

    QStringList names; ///< as the files write the well, the first one first; of a file without wells its own name
    QStringList files; ///< paths
    bool isWholeFile = false; ///< a file without a column of wells
    QVector<TopsLine> tops;
    int unreadableLines = 0;
    Match match = Match::None;
    QStringList candidates; ///< the wells that may be meant, where they are several
    int well = -1; ///< index in TopsPlan::wells() of the one that gets the tops; -1 where they are left out
    TopsMerge merge; ///< of a row that is not left out
    QString error; ///< why the well could not be read or written, a sentence
    QString problem; ///< what the user has to decide, a sentence
    bool isWritten = false;

    /// How many tops are not taken.
    int leftOut() const { return merge.outside.size() + unreadableLines; }
    /// Whether there is something to write. An error of writing does not keep it from being tried again.
    bool changesAnything() const { return well >= 0 && !isWritten && merge.changesAnything(); }
};

/// A file as it was read.
struct TopsInput
{
    QString path;
    TopsFile file; ///< with a problem where it could not be read
};
TopsInput readTops(const QString &path);

/// What a file holds that is no top, for the user.
struct TopsRemark
{
    QString file; ///< path
    int line = 0; ///< from 1; 0 where it is the whole file
    QString problem; ///< of a line no sentence
    QString text; ///< the line
};

/// What the tops of some files come to in a survey: which well of the files goes into which of the survey, and what that
/// adds and moves. Nothing is written. Names are looked up, so that it costs what files and wells hold.
class TopsPlan
{
public:
    /// \a unit is that of the survey, and of depths of which a file does not tell it.
    TopsPlan(const QVector<host::WellEntry> &wells, DepthUnit unit, const TopsSource &source);

    /// Adds the tops of files; one that was added before is passed over. A well of several files has one row.
    void add(const QVector<TopsInput> &files);

    const QVector<host::WellEntry> &wells() const { return m_wells; }
    const QVector<TopsRow> &rows() const { return m_rows; }
    /// In the order of files and lines.
    const QVector<TopsRemark> &remarks() const { return m_remarks; }
    DepthUnit surveyUnit() const { return m_surveyUnit; }

    /// Whether a file does not tell the unit of its depths, and the unit that these are taken in.
    bool isUnitOpen() const { return m_isUnitOpen; }
    DepthUnit unit() const { return m_unit; }
    void setUnit(DepthUnit unit);

    /// Sends the tops of a row into a well, -1 for none.
    void setWell(int row, int well);
    /// What came of writing the row; empty for success.
    void setWritten(int row, const QString &error);

    /// What keeps the plan from being carried out, a sentence; empty when nothing does.
    QString firstProblem() const;
    /// The rows to be written.
    QVector<int> rowsToWrite() const;

private:
    struct Target
    {
        host::Outcome<WellHead> head;
        bool hasMarkers = false;
        host::Outcome<QVector<host::Marker>> markers;
    };
    struct Found
    {
        TopsRow::Match match = TopsRow::Match::None;
        int well = -1;
        QStringList candidates;
    };

    void readUwis();
    Target &target(int well);
    Found wellCalled(const QString &name);
    Found only(const QVector<int> &wells, TopsRow::Match match) const;
    Found wellOfFile(const QString &baseName);
    int rowOf(const QString &name);
    void addRow(const QString &name, const Found &found);
    /// Gives the rows that the file has tops for.
    QSet<int> addFile(const TopsInput &input);
    void merge(TopsRow *row);
    void findProblems();

    QVector<host::WellEntry> m_wells;
    TopsSource m_source;
    DepthUnit m_surveyUnit;
    DepthUnit m_unit;
    bool m_isUnitOpen = false;
    bool m_hasUwis = false;
    QVector<TopsRow> m_rows;
    QVector<TopsRemark> m_remarks;
    QSet<QString> m_paths;
    QHash<QString, QVector<int>> m_wellsOfName;
    QHash<QString, QVector<int>> m_wellsOfLetters; ///< by comparableName()
    QHash<QString, QVector<int>> m_wellsOfUwi;
    QHash<int, Target> m_targets; ///< what was read, by index of the well
    QHash<QString, int> m_rowOfName; ///< by names as the files write them
    QHash<QString, int> m_rowOfLetters; ///< of rows without a well
    QHash<int, int> m_rowOfWell; ///< that was found, not chosen
};

/// Writes the markers of a row into its well, all of them or none, and notes in the plan what came of it.
host::Status writeTops(SurveyStore &store, TopsPlan *plan, int row);

/// The file's line, number and what is wrong with it, for a list: "tops.csv, line 7, no depth: A-1;Sand;".
QString remarkText(const TopsRemark &remark);

} // namespace survey
