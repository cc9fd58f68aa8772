#include "workbench/topsmodel.h"

#include "base/numbers.h"
#include "survey/topsreport.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"

#include <QApplication>

namespace workbench {

namespace {

QVector<ProposalColumn> columnsIn(survey::DepthUnit unit)
{
    return {
        {QStringLiteral("In the file"),
         QStringLiteral("The well as the file writes it; a file that names no well stands there itself")},
        {QStringLiteral("Well"), QStringLiteral("The well of the survey that gets the tops")},
        {QStringLiteral("New"), QStringLiteral("How many tops the well does not have yet"), true},
        {QStringLiteral("Moved"), QStringLiteral("How many markers of the well get another depth"), true},
        {survey::titleWithUnit(QStringLiteral("At most"), unit),
         QStringLiteral("The longest way of a marker, %1 along hole").arg(survey::pluralName(unit)), true},
        {QStringLiteral("Same"), QStringLiteral("How many markers stand at the depth of the file"), true},
        {QStringLiteral("Left out"), QStringLiteral("How many lines of the file are not taken"), true},
        {QStringLiteral("Notes"), QStringLiteral("How the well was found, and what is left out")},
    };
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
    : ProposalModel(columnsIn(plan.surveyUnit()), parent)
    , m_plan(plan)
{
}

void TopsModel::add(const QVector<survey::TopsInput> &files)
{
    resetBy([this, &files] { m_plan.add(files); });
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
        return alignmentOf(column);
    default:
        return {};
    }
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
