#include "workbench/newwellsmodel.h"

#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"

#include <QApplication>

namespace workbench {

namespace {

bool isField(int column)
{
    return column >= NewWellsModel::NameColumn && column <= NewWellsModel::TotalDepthColumn;
}

survey::WellField fieldOf(int column)
{
    return survey::wellFields[static_cast<size_t>(column - NewWellsModel::NameColumn)];
}

// Why the well cannot be made comes first.
QStringList notesOf(const survey::NewWell &well, const QString &problem)
{
    if (well.state == survey::NewWell::State::Created)
        return {QStringLiteral("created")};
    QStringList notes = well.allNotes();
    if (!problem.isEmpty())
        notes.prepend(problem);
    else if (well.state == survey::NewWell::State::Exists)
        notes.prepend(QStringLiteral("exists already"));
    return notes;
}

QString logsText(const survey::NewWell &well)
{
    if (well.state == survey::NewWell::State::Unreadable)
        return {};
    return QString::number(well.state == survey::NewWell::State::Created ? well.createdLogs : well.logs.size());
}

QVariant foreground(const survey::NewWell &well)
{
    const QPalette palette = QApplication::palette();
    if (well.state == survey::NewWell::State::Unreadable || !well.failure.isEmpty())
        return problemText(palette);
    return well.isChosen ? QVariant() : quietText(palette);
}

QVector<ProposalColumn> columnsIn(survey::DepthUnit unit)
{
    const QString unitName = survey::pluralName(unit);
    return {
        {QString(), QStringLiteral("Wells to create")},
        {QStringLiteral("File"), QStringLiteral("LAS files of the well")},
        {QStringLiteral("Name"), QStringLiteral("Name of the new well")},
        {QStringLiteral("X"), QStringLiteral("Surface position, survey coordinates"), true},
        {QStringLiteral("Y"), QStringLiteral("Surface position, survey coordinates"), true},
        {survey::titleWithUnit(QStringLiteral("KB"), unit),
         QStringLiteral("Elevation of the kelly bushing, %1 above datum").arg(unitName), true},
        {survey::titleWithUnit(QStringLiteral("Ground"), unit),
         QStringLiteral("Elevation of the ground, %1 above datum; empty when unknown").arg(unitName), true},
        {survey::titleWithUnit(QStringLiteral("TD"), unit),
         QStringLiteral("Total depth, %1 along hole").arg(unitName), true},
        {QStringLiteral("Logs"), QStringLiteral("How many logs the headers name"), true},
        {QStringLiteral("Notes"), QStringLiteral("What is wrong, what the headers lack and what was converted")},
    };
}

} // namespace

NewWellsModel::NewWellsModel(const survey::WellNames &existing, survey::DepthUnit unit, QObject *parent)
    : ProposalModel(columnsIn(unit), parent)
    , m_wells(existing, unit)
{
}

// The table sees the rows when all are there: events may be handled meanwhile.
void NewWellsModel::addFiles(const QStringList &paths, const Progress &progress)
{
    survey::NewWells wells = m_wells;
    for (int i = 0; i < paths.size(); ++i) {
        wells.addFile(paths.at(i));
        if (progress && !progress(i + 1))
            break;
    }
    resetBy([this, &wells] { m_wells = wells; });
}

void NewWellsModel::setNameSource(survey::NameSource source)
{
    resetBy([this, source] { m_wells.setNameSource(source); });
}

void NewWellsModel::setNameSource(const QVector<int> &rows, survey::NameSource source)
{
    resetBy([this, &rows, source] { m_wells.setNameSource(rows, source); });
}

void NewWellsModel::setCodec(const QByteArray &codec)
{
    resetBy([this, &codec] { m_wells.setCodec(codec); });
}

void NewWellsModel::uncheckProblems()
{
    m_wells.uncheckProblems();
    announce();
}

void NewWellsModel::setMade(const QVector<int> &rows, const QVector<survey::MadeWell> &made)
{
    m_wells.setMade(rows, made);
    announce();
}

QVariant NewWellsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {}; // a view that has no current cell asks too, when it is to copy it
    const int column = index.column();
    const survey::NewWell &well = m_wells.wells().at(index.row());
    const QString problem = isField(column) ? m_wells.problem(index.row(), fieldOf(column)) : QString();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (isField(column))
            return well.texts[fieldOf(column)];
        if (column == FileColumn)
            return survey::fileNames(well);
        if (column == LogsColumn)
            return logsText(well);
        return column == NotesColumn ? notesOf(well, m_wells.rowProblem(index.row())).join(QStringLiteral("  "))
                                     : QVariant();
    case Qt::CheckStateRole:
        if (column != ChosenColumn || !m_wells.isEditable(index.row()))
            return {};
        return well.isChosen ? Qt::Checked : Qt::Unchecked;
    case Qt::ToolTipRole:
        if (!problem.isEmpty())
            return toolTipText(problem);
        if (column == FileColumn)
            return toolTipText(well.files.join(QLatin1Char('\n')));
        if (column == NotesColumn)
            return toolTipText(notesOf(well, m_wells.rowProblem(index.row())).join(QLatin1Char('\n')));
        if (column == LogsColumn)
            return toolTipText(well.logs.join(QStringLiteral(", ")));
        return {};
    case Qt::BackgroundRole:
        return problem.isEmpty() ? QVariant() : problemBackground(QApplication::palette());
    case Qt::ForegroundRole:
        return foreground(well);
    case Qt::TextAlignmentRole:
        return alignmentOf(column);
    default:
        return {};
    }
}

bool NewWellsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
        return false;
    if (role == Qt::CheckStateRole && index.column() == ChosenColumn)
        m_wells.setChosen(index.row(), value.toInt() == Qt::Checked);
    else if (role == Qt::EditRole && isField(index.column()))
        m_wells.setText(index.row(), fieldOf(index.column()), value.toString());
    else
        return false;
    announce();
    return true;
}

Qt::ItemFlags NewWellsModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!index.isValid() || !m_wells.isEditable(index.row()))
        return flags;
    if (index.column() == ChosenColumn)
        flags |= Qt::ItemIsUserCheckable;
    if (isField(index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace workbench
