#pragma once

#include "datastore/textfields.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

/// The rows of the tables of markers, perforation zones and calibration points as plain data: what the tables show and
/// what is stored is made of these.
namespace welldata {

/// A number as it stands in a cell: as the user typed it, or as a value that was read and that keeps all its digits
/// as long as nobody types another text.
class NumberCell
{
public:
    enum class Digits { Six, Shortest };

    NumberCell() = default; ///< an empty cell
    static NumberCell of(double value, Digits digits = Digits::Six);
    /// A field of a file: its value where it is a number, else its text.
    static NumberCell read(textfields::Field field);

    QString text() const;
    /// Takes another text; the one that stands there already changes nothing. A comma counts as a decimal point.
    void setText(const QString &text);

    /// Whether a side file or a marker can hold it: a finite number within single precision.
    bool isNumber() const { return m_isNumber; }
    /// 0 for what is no number.
    double value() const { return m_value; }
    float toFloat() const { return static_cast<float>(m_value); }

private:
    double m_value = 0;
    QString m_typed; ///< null while the value stands as it was read
    bool m_isNumber = false;
    Digits m_digits = Digits::Six;
};

/// One row of any of the three tables.
struct TableRow
{
    static constexpr int numberCount = 3;

    QString name;
    std::array<NumberCell, numberCount> numbers;
    QString choice;
    QColor color = Qt::black;
};

enum class CellKind { Name, Number, Choice, Color };

/// What a column shows of its rows.
struct TableColumn
{
    QString title;
    CellKind kind = CellKind::Name;
    int number = 0; ///< which of the row's numbers
    int widthPx = 110;
    QString toolTip = {};
    QStringList choices = {};
};

/// The row that a user adds: empty, with the first entry of its choices.
TableRow newRow(const QVector<TableColumn> &columns);

/// The text of a cell; of a colour its name ("#rrggbb").
QString cellText(const TableRow &row, const TableColumn &column);
/// Takes a typed or pasted text. False, and nothing changed, for a choice or a colour that is none.
bool setCellText(TableRow *row, const TableColumn &column, const QString &text);

/// Lines of a text for a box: no more than some, and then how many more there are.
QStringList firstOf(const QStringList &lines);

} // namespace welldata
