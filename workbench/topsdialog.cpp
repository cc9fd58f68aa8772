#include "workbench/topsdialog.h"

#include "base/asker.h"
#include "base/progressbox.h"
#include "base/waitcursor.h"
#include "las/lasheader.h"
#include "survey/reportlines.h"
#include "survey/topsreport.h"
#include "survey/wellnames.h"
#include "workbench/choicedelegate.h"
#include "workbench/proposaltable.h"
#include "workbench/reportdialog.h"
#include "workbench/topsmodel.h"
#include "workbench/windowsettings.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench {

namespace {

const QLatin1String topsFolder("tops");
constexpr const char *tableEndings[] = {"csv", "txt", "tsv", "asc", "dat"};
constexpr int narrowestWellColumn = 140;
constexpr int remarkLines = 5;
constexpr int mostRemarks = 1000;
constexpr int remarksInABox = 10;

QString title()
{
    return QStringLiteral("Import tops");
}

// As the window lists them.
QVector<host::WellEntry> naturallySorted(QVector<host::WellEntry> wells)
{
    std::stable_sort(wells.begin(), wells.end(), [](const host::WellEntry &a, const host::WellEntry &b) {
        return survey::isNaturallyBefore(a.name, b.name);
    });
    return wells;
}

QStringList wellChoices(const QVector<host::WellEntry> &wells)
{
    QStringList choices{leaveOutText()};
    for (const host::WellEntry &well : wells)
        choices.append(well.name);
    return choices;
}

QString stateText(const survey::TopsPlan &plan)
{
    int leftOut = 0;
    int added = 0;
    int moved = 0;
    for (const survey::TopsRow &row : plan.rows()) {
        leftOut += row.well < 0 ? 1 : 0;
        added += row.changesAnything() ? row.merge.added : 0;
        moved += row.changesAnything() ? row.merge.moved : 0;
    }
    const int wells = plan.rowsToWrite().size();
    QString text = wells == 0
        ? QStringLiteral("There is nothing to change")
        : QStringLiteral("%1 to change: %2, %3")
              .arg(survey::counted(wells, "well", "wells"), survey::counted(added, "new marker", "new markers"),
                   survey::counted(moved, "moved one", "moved ones"));
    if (leftOut > 0)
        text += QStringLiteral("; left out: %1").arg(survey::counted(leftOut, "row", "rows"));
    return text + QLatin1Char('.');
}

} // namespace

TopsDialog::TopsDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser, QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("topsDialog"));
    setWindowTitle(title());
    buildWidgets();
    resize(1160, 600);
    settings::keepSize(this);
    showState();
}

QPushButton *TopsDialog::addButton(const char *objectName, const QString &text, void (TopsDialog::*clicked)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false); // Enter imports, whatever was clicked before
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QLayout *TopsDialog::buildUnit()
{
    m_unit = new QComboBox(this);
    m_unit->setObjectName(QStringLiteral("unitBox"));
    for (const survey::DepthUnit unit : {survey::DepthUnit::Metre, survey::DepthUnit::Foot})
        m_unit->addItem(survey::pluralName(unit), static_cast<int>(unit));
    m_unit->setCurrentIndex(m_unit->findData(static_cast<int>(m_model->plan().unit())));
    m_unit->setToolTip(QStringLiteral("The unit of depths of which the titles of a file do not tell it"));
    m_unitLabel = new QLabel(QStringLiteral("&Depths without a unit are in:"), this);
    m_unitLabel->setObjectName(QStringLiteral("unitLabel"));
    m_unitLabel->setBuddy(m_unit);
    connect(m_unit, QOverload<int>::of(&QComboBox::activated), this,
            [this] { m_model->setUnit(static_cast<survey::DepthUnit>(m_unit->currentData().toInt())); });
    auto *row = new QHBoxLayout;
    row->addWidget(m_unitLabel);
    row->addWidget(m_unit);
    row->addStretch();
    return row;
}

QWidget *TopsDialog::buildTable()
{
    m_table = newProposalTable("topsTable", m_model, this);
    m_table->setItemDelegateForColumn(TopsModel::WellColumn,
                                      new ChoiceDelegate(wellChoices(m_model->plan().wells()), -1, this));
    m_table->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &TopsDialog::showNotes);
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex &cell) {
        if (cell.flags() & Qt::ItemIsEditable)
            openChoices(cell);
    });
    return m_table;
}

QLayout *TopsDialog::buildButtons()
{
    QPushButton *files = addButton("addFilesButton", QStringLiteral("&Add files…"), &TopsDialog::chooseMore);
    m_import = addButton("importButton", QStringLiteral("&Import"), &TopsDialog::importTops);
    m_import->setDefault(true);
    m_close = addButton("closeButton", QStringLiteral("Cancel"), &TopsDialog::reject);
    auto *row = new QHBoxLayout;
    row->addWidget(files);
    row->addStretch();
    row->addWidget(m_import);
    row->addWidget(m_close);
    return row;
}

void TopsDialog::buildWidgets()
{
    const survey::TopsPlan plan(naturallySorted(m_store.list().value), m_store.depthUnit(),
                                survey::topsSource(m_store));
    m_model = new TopsModel(plan, this);
    connect(m_model, &TopsModel::changed, this, &TopsDialog::showState);
    auto *column = new QVBoxLayout(this);
    column->addLayout(buildUnit());
    auto *caption = new QLabel(
        QStringLiteral(
            "What the &wells would get; click a well, or press F2, to choose another. Other markers stay:"),
        this);
    column->addWidget(caption);
    column->addWidget(buildTable(), 1);
    m_notes = newNotesLabel(this);
    column->addWidget(m_notes);
    m_remarksLabel = new QLabel(this);
    m_remarksLabel->setObjectName(QStringLiteral("remarksLabel"));
    m_remarks = new QPlainTextEdit(this);
    m_remarks->setObjectName(QStringLiteral("remarksText"));
    m_remarks->setReadOnly(true);
    m_remarks->setTabChangesFocus(true);
    m_remarks->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_state = newStateLabel(this);
    column->addWidget(m_remarksLabel);
    column->addWidget(m_remarks);
    column->addWidget(m_state);
    column->addLayout(buildButtons());
    m_remarksLabel->setBuddy(m_remarks);
    caption->setBuddy(m_table);
}

void TopsDialog::openChoices(const QModelIndex &cell)
{
    m_table->edit(cell);
    if (auto *box = m_table->viewport()->findChild<QComboBox *>())
        box->showPopup();
}

void TopsDialog::fitColumns()
{
    fitProposalColumns(m_table, TopsModel::NameColumn);
    m_table->setColumnWidth(TopsModel::WellColumn,
                            qMax(m_table->columnWidth(TopsModel::WellColumn), narrowestWellColumn));
    if (!m_table->currentIndex().isValid()) {
        m_table->setCurrentIndex(m_model->index(0, TopsModel::WellColumn));
        m_table->setFocus(Qt::OtherFocusReason); // the arrows walk the rows, and change no choice for all of them
    }
}

void TopsDialog::addFiles(const QStringList &paths)
{
    const base::WaitCursor reading;
    QVector<survey::TopsInput> files;
    for (const QString &path : paths)
        files.append(survey::readTops(path));
    m_model->add(files);
    showRemarks();
    fitColumns();
}

bool TopsDialog::hasRows() const
{
    return !m_model->plan().rows().isEmpty();
}

QStringList TopsDialog::remarks() const
{
    const QVector<survey::TopsRemark> &all = m_model->plan().remarks();
    QStringList lines;
    for (const survey::TopsRemark &remark : all.mid(0, mostRemarks))
        lines.append(survey::remarkText(remark));
    if (all.size() > mostRemarks)
        lines.append(QStringLiteral("and %1 more").arg(all.size() - mostRemarks));
    return lines;
}

QStringList TopsDialog::chosenFiles(const FileChooser &chooser, QWidget *parent)
{
    QStringList patterns;
    for (const char *ending : tableEndings)
        patterns.append(QStringLiteral("*.") + QLatin1String(ending));
    const QStringList files =
        chooser.chooseFiles(parent, title(), settings::lastFolder(topsFolder),
                            QStringLiteral("Tables (%1);;All files (*)").arg(patterns.join(QLatin1Char(' '))));
    if (!files.isEmpty())
        settings::setLastFolder(topsFolder, QFileInfo(files.first()).path());
    return files;
}

void TopsDialog::chooseMore()
{
    addFiles(chosenFiles(m_chooser, this));
}

void TopsDialog::showRemarks()
{
    const int count = m_model->plan().remarks().size();
    m_remarksLabel->setText(QStringLiteral("&Not understood (%1):").arg(count));
    // A scroll bar may stand below the lines.
    m_remarks->setFixedHeight((qMin(count, remarkLines) + 2) * fontMetrics().lineSpacing());
    m_remarks->setPlainText(remarks().join(QLatin1Char('\n')));
    m_remarksLabel->setVisible(count > 0);
    m_remarks->setVisible(count > 0);
    m_unitLabel->setVisible(m_model->plan().isUnitOpen());
    m_unit->setVisible(m_model->plan().isUnitOpen());
}

void TopsDialog::showState()
{
    const survey::TopsPlan &plan = m_model->plan();
    const QString problem = plan.firstProblem();
    workbench::showState(m_state, problem, stateText(plan));
    m_import->setEnabled(problem.isEmpty() && !plan.rowsToWrite().isEmpty());
    showNotes();
}

// Those of the current row in full: a cell has no room for them.
void TopsDialog::showNotes()
{
    const int row = m_table->currentIndex().row();
    m_notes->setText(row < 0 ? QString() : survey::topsNotes(m_model->plan().rows().at(row)).join(QLatin1Char(' ')));
}

void TopsDialog::importTops()
{
    m_import->setFocus(); // what is being chosen is chosen
    if (!m_model->plan().firstProblem().isEmpty())
        return;
    const QVector<int> rows = m_model->plan().rowsToWrite();
    bool isCancelled = false;
    {
        base::ProgressBox progress(title(), QStringLiteral("Writing the markers of the wells."), this);
        (void)progress.step(0, rows.size()); // its time begins
        for (int i = 0; i < rows.size() && !isCancelled; ++i) {
            m_model->write(m_store, rows.at(i));
            m_hasWritten = m_hasWritten || m_model->plan().rows().at(rows.at(i)).isWritten;
            isCancelled = !progress.step(i + 1, rows.size()) && i + 1 < rows.size();
        }
    }
    m_close->setText(QStringLiteral("Close"));
    ReportDialog(windowTitle(), survey::topsSentence(m_model->plan(), isCancelled),
                 survey::topsReport(m_model->plan(), isCancelled, m_store.surveyDirectory()),
                 QStringLiteral("tops.txt"), m_asker, m_chooser, this)
        .exec();
    if (m_model->plan().rowsToWrite().isEmpty())
        accept();
}

bool importTops(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser, const QStringList &paths,
                QWidget *parent)
{
    TopsDialog dialog(store, asker, chooser, parent);
    dialog.addFiles(paths);
    if (dialog.hasRows())
        dialog.exec();
    else
        asker.warn(title(), QStringList(dialog.remarks().mid(0, remarksInABox)).join(QLatin1Char('\n')));
    return dialog.hasWritten();
}

bool areTables(const QStringList &paths)
{
    const auto isTable = [](const QString &path) {
        const QString ending = QFileInfo(path).suffix().toLower();
        const bool isCalledSo = std::any_of(std::begin(tableEndings), std::end(tableEndings),
                                            [&ending](const char *known) { return ending == QLatin1String(known); });
        return isCalledSo && QFileInfo(path).isFile() && !las::readHeader(path).error.isEmpty();
    };
    return !paths.isEmpty() && std::all_of(paths.begin(), paths.end(), isTable);
}

} // namespace workbench
