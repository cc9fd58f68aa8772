#include "workbench/topsmodel.h"

#include "base/numbers.h"
#include "survey/topsreport.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"

#include <QApplication>

namespace workbench {

namespace {

bool isNumber(int column)
{
    return column >= TopsModel::AddedColumn && column <= TopsModel::LeftOutColumn;
}

Qt::Alignment alignment(int column)
{
    return (isNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

// Names may be longer than a cell.
QString namesOf(const survey::TopsRow &row)
{
    return (row.names + row.files).join(QLatin1Char('\n'));
}

} // namespace

QString leaveOutText()
{
    return QStringLiteral("(leave out)");
}

TopsModel::TopsModel(const survey::TopsPlan &plan, QObject *parent)
    : QAbstractTableModel(parent)
    , m_plan(plan)
{
}

void TopsModel::add(const QVector<survey::TopsInput> &files)
{
    beginResetModel();
    m_plan.add(files);
    endResetModel();
    emit changed();
}

void TopsModel::setUnit(survey::DepthUnit unit)
{
    m_plan.setUnit(unit);
    announce();
}

void TopsModel::write(survey::SurveyStore &store, int row)
{
    (void)survey::writeTops(store, &m_plan, row); // the row tells
    announce();
}

// The choice of one row may be wrong for another.
void TopsModel::announce()
{
    emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    emit changed();
}

int TopsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_plan.rows().size();
}

int TopsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString TopsModel::wellText(const survey::TopsRow &row) const
{
    return row.well < 0 ? leaveOutText() : m_plan.wells().at(row.well).name;
}

// Of a row that is left out it is only known how many tops it has.
QString TopsModel::numberText(const survey::TopsRow &row, int column) const
{
    if (row.well < 0)
        return column == LeftOutColumn ? QString::number(row.tops.size() + row.unreadableLines) : QString();
    switch (column) {
    case AddedColumn:
        return QString::number(row.merge.added);
    case MovedColumn:
        return QString::number(row.merge.moved);
    case FurthestColumn:
        return row.merge.moved == 0
            ? QString()
            : QString::fromLatin1(base::formatFixed(survey::fromMetres(row.merge.furthestM, m_plan.surveyUnit()), 2));
    case UnchangedColumn:
        return QString::number(row.merge.unchanged);
    default:
        return QString::number(row.leftOut());
    }
}

QVariant TopsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {}; // a view that has no current cell asks too, when it is to copy it
    const int column = index.column();
    const survey::TopsRow &row = m_plan.rows().at(index.row());
    const QPalette palette = QApplication::palette();
    switch (role) {
    case Qt::EditRole:
        if (column == WellColumn)
            return row.well;
        Q_FALLTHROUGH();
    case Qt::DisplayRole:
        if (column == NameColumn)
            return row.names.first();
        if (column == WellColumn)
            return wellText(row);
        return column == NotesColumn ? survey::topsNotes(row).join(QStringLiteral("  ")) : numberText(row, column);
    case Qt::ToolTipRole:
        if (column == NameColumn)
            return toolTipText(namesOf(row));
        if (column == WellColumn)
            return toolTipText(wellText(row));
        return column == NotesColumn ? toolTipText(survey::topsNotes(row).join(QLatin1Char('\n'))) : QVariant();
    case Qt::BackgroundRole:
        return column == WellColumn && !row.problem.isEmpty() ? problemBackground(palette) : QVariant();
    case Qt::ForegroundRole:
        if (flags(index) & Qt::ItemIsEditable)
            return {}; // what can be chosen is as black as any chooser
        if (!row.error.isEmpty())
            return problemText(palette);
        return row.changesAnything() ? QVariant() : quietText(palette);
    case Qt::TextAlignmentRole:
        return static_cast<int>(alignment(column));
    default:
        return {};
    }
}

QVariant TopsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const survey::DepthUnit unit = m_plan.surveyUnit();
    const QStringList titles{
        QStringLiteral("In the file"),
        QStringLiteral("Well"),
        QStringLiteral("New"),
        QStringLiteral("Moved"),
        survey::titleWithUnit(QStringLiteral("At most"), unit),
        QStringLiteral("Same"),
        QStringLiteral("Left out"),
        QStringLiteral("Notes"),
    };
    const QStringList explanations{
        QStringLiteral("The well as the file writes it; a file that names no well stands there itself"),
        QStringLiteral("The well of the survey that gets the tops"),
        QStringLiteral("How many tops the well does not have yet"),
        QStringLiteral("How many markers of the well get another depth"),
        QStringLiteral("The longest way of a marker, %1 along hole").arg(survey::pluralName(unit)),
        QStringLiteral("How many markers stand at the depth of the file"),
        QStringLiteral("How many lines of the file are not taken"),
        QStringLiteral("How the well was found, and what is left out"),
    };
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return titles.at(section);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(alignment(section));
    return role == Qt::ToolTipRole ? QVariant(explanations.at(section)) : QVariant();
}

bool TopsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    m_plan.setWell(index.row(), value.toInt());
    announce();
    return true;
}

Qt::ItemFlags TopsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const bool isChoice = index.isValid() && index.column() == WellColumn && !m_plan.rows().at(index.row()).isWritten;
    return isChoice ? flags | Qt::ItemIsEditable : flags;
}

} // namespace workbench
