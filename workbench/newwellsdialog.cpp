#include "workbench/newwellsdialog.h"

#include "base/asker.h"
#include "base/nestedevents.h"
#include "las/lastext.h"
#include "survey/lasfiles.h"
#include "survey/reportlines.h"
#include "workbench/droppedfiles.h"
#include "workbench/newwellsmodel.h"
#include "workbench/proposaltable.h"
#include "workbench/reportdialog.h"
#include "workbench/windowsettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace workbench {

namespace {

const QLatin1String lasFolder("las");
constexpr int filesReadAtOnce = 20; // so few need no progress bar
constexpr qint64 msBetweenEvents = 50;

QString stateText(const survey::NewWells &wells)
{
    int existing = 0;
    int unreadable = 0;
    for (const survey::NewWell &well : wells.wells()) {
        existing += well.state == survey::NewWell::State::Exists ? 1 : 0;
        unreadable += well.state == survey::NewWell::State::Unreadable ? 1 : 0;
    }
    QStringList parts{survey::counted(wells.chosenCount(), "well to create", "wells to create")};
    if (existing > 0)
        parts.append(survey::counted(existing, "exists already", "exist already"));
    if (unreadable > 0)
        parts.append(survey::counted(unreadable, "file cannot be read", "files cannot be read"));
    return parts.join(QStringLiteral(", ")) + QLatin1Char('.');
}

struct SourceName
{
    survey::NameSource source;
    const char *label;
};

constexpr SourceName sourceNames[] = {
    {survey::NameSource::Well, "WELL (well name)"},
    {survey::NameSource::Uwi, "UWI (unique well id)"},
    {survey::NameSource::File, "File name"},
};

} // namespace

NewWellsDialog::NewWellsDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                               QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("newWellsDialog"));
    setWindowTitle(QStringLiteral("New wells from LAS files"));
    setAcceptDrops(true);
    buildWidgets(survey::WellNames(store.list().value));
    resize(1240, 600);
    settings::keepSize(this);
    showState();
}

QPushButton *NewWellsDialog::addButton(const char *objectName, const QString &text, void (NewWellsDialog::*clicked)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false); // Enter makes the wells, whatever was clicked before
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QLayout *NewWellsDialog::buildChoices()
{
    m_names = new QComboBox(this);
    m_names->setObjectName(QStringLiteral("namesBox"));
    for (const SourceName &name : sourceNames)
        m_names->addItem(QString::fromLatin1(name.label), static_cast<int>(name.source));
    m_names->setToolTip(QStringLiteral("What the wells are named after; single rows by their context menu"));
    auto *namesLabel = new QLabel(QStringLiteral("&Names from:"), this);
    namesLabel->setBuddy(m_names);
    connect(m_names, QOverload<int>::of(&QComboBox::activated), this, [this] {
        m_model->setNameSource(static_cast<survey::NameSource>(m_names->currentData().toInt()));
        fitColumns();
    });

    m_codec = new QComboBox(this);
    m_codec->setObjectName(QStringLiteral("codecBox"));
    for (const las::TextCodec &codec : las::textCodecs())
        m_codec->addItem(QString::fromLatin1(codec.label), QByteArray(codec.name));
    m_codec->setToolTip(QStringLiteral("Some headers are no Unicode: how their letters are encoded"));
    m_codecLabel = new QLabel(QStringLiteral("Te&xt of headers:"), this);
    m_codecLabel->setBuddy(m_codec);
    connect(m_codec, QOverload<int>::of(&QComboBox::activated), this, [this] {
        m_model->setCodec(m_codec->currentData().toByteArray());
        fitColumns();
    });

    m_withLogs = new QCheckBox(QStringLiteral("With their &logs"), this);
    m_withLogs->setObjectName(QStringLiteral("withLogsBox"));
    m_withLogs->setChecked(true);
    m_withLogs->setToolTip(QStringLiteral("Writes the curves of the files into the new wells, with depths in the "
                                          "survey's unit"));
    m_idleOnly << m_names << m_codec << m_withLogs;
    auto *row = new QHBoxLayout;
    row->addWidget(namesLabel);
    row->addWidget(m_names);
    row->addSpacing(12);
    row->addWidget(m_codecLabel);
    row->addWidget(m_codec);
    row->addSpacing(12);
    row->addWidget(m_withLogs);
    row->addStretch();
    return row;
}

QWidget *NewWellsDialog::buildTable()
{
    m_table = newProposalTable("newWellsTable", m_model, this);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QTableView::customContextMenuRequested, this, &NewWellsDialog::showRowMenu);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &NewWellsDialog::showNotes);
    m_idleOnly.append(m_table);
    return m_table;
}

QLayout *NewWellsDialog::buildState()
{
    m_state = newStateLabel(this);
    m_nextProblem = addButton("nextProblemButton", QStringLiteral("Next &problem"), &NewWellsDialog::goToNextProblem);
    m_uncheck =
        addButton("uncheckProblemsButton", QStringLiteral("&Uncheck wrong rows"), &NewWellsDialog::uncheckProblems);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("progressBar"));
    m_progress->hide();
    auto *row = new QHBoxLayout;
    row->addWidget(m_state, 1);
    row->addWidget(m_progress, 1);
    row->addWidget(m_nextProblem);
    row->addWidget(m_uncheck);
    return row;
}

QLayout *NewWellsDialog::buildButtons()
{
    QPushButton *files = addButton("addFilesButton", QStringLiteral("&Add files…"), &NewWellsDialog::chooseMore);
    QPushButton *folder = addButton("addFolderButton", QStringLiteral("Add &folder…"), &NewWellsDialog::chooseFolder);
    m_create = addButton("createWellsButton", QStringLiteral("C&reate wells"), &NewWellsDialog::createWells);
    m_create->setDefault(true);
    m_close = addButton("closeButton", QStringLiteral("Close"), &NewWellsDialog::reject);
    m_idleOnly << files << folder;
    auto *row = new QHBoxLayout;
    row->addWidget(files);
    row->addWidget(folder);
    row->addStretch();
    row->addWidget(m_create);
    row->addWidget(m_close);
    return row;
}

void NewWellsDialog::buildWidgets(const survey::WellNames &existing)
{
    m_model = new NewWellsModel(existing, m_store.depthUnit(), this);
    connect(m_model, &NewWellsModel::changed, this, &NewWellsDialog::showState);
    auto *caption =
        new QLabel(QStringLiteral("&Wells proposed from the headers; double-click or F2 to correct a value:"), this);

    m_notes = newNotesLabel(this);
    auto *column = new QVBoxLayout(this);
    column->addLayout(buildChoices());
    column->addWidget(caption);
    column->addWidget(buildTable(), 1);
    column->addWidget(m_notes);
    column->addLayout(buildState());
    column->addLayout(buildButtons());
    caption->setBuddy(m_table);
}

void NewWellsDialog::fitColumns()
{
    fitProposalColumns(m_table, NewWellsModel::FileColumn);
    if (!m_table->currentIndex().isValid()) {
        m_table->setCurrentIndex(m_model->index(0, NewWellsModel::NameColumn));
        m_table->setFocus(Qt::OtherFocusReason); // the arrows walk the rows, and change no choice for all of them
    }
    showNotes();
}

void NewWellsDialog::addFiles(const QStringList &paths)
{
    const survey::FoundFiles found = survey::findLasFiles(paths);
    m_otherFiles += found.others;
    beginWork(found.files.size(), QStringLiteral("Reading headers: %v of %m"));
    m_model->addFiles(found.files, [this](int done) { return step(done); });
    endWork();
    fitColumns();
}

QStringList NewWellsDialog::chosenFiles(const FileChooser &chooser, QWidget *parent)
{
    const QStringList files =
        chooser.chooseFiles(parent, QStringLiteral("Choose LAS files"), settings::lastFolder(lasFolder),
                            QStringLiteral("LAS files (*.las *.LAS *.Las);;All files (*)"));
    if (!files.isEmpty())
        settings::setLastFolder(lasFolder, QFileInfo(files.first()).path());
    return files;
}

bool NewWellsDialog::chooseFiles()
{
    const QStringList files = chosenFiles(m_chooser, this);
    if (!files.isEmpty())
        addFiles(files);
    return !files.isEmpty();
}

void NewWellsDialog::chooseFolder()
{
    const QString folder =
        m_chooser.chooseFolder(this, QStringLiteral("Folder with LAS files"), settings::lastFolder(lasFolder));
    if (folder.isEmpty())
        return;
    settings::setLastFolder(lasFolder, folder);
    addFiles({folder});
}

void NewWellsDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && !m_isWorking)
        event->acceptProposedAction();
}

void NewWellsDialog::dropEvent(QDropEvent *event)
{
    const QStringList paths = localPaths(event->mimeData());
    event->acceptProposedAction();
    // Queued: the program from which they come waits until the drop has been answered.
    QMetaObject::invokeMethod(
        this,
        [this, paths] {
            if (!m_isWorking)
                addFiles(paths);
        },
        Qt::QueuedConnection);
}

void NewWellsDialog::showState()
{
    const survey::NewWells &wells = m_model->newWells();
    const QString problem = wells.firstProblem();
    const bool isEmpty = wells.wells().isEmpty();
    workbench::showState(m_state, problem,
                         isEmpty ? QStringLiteral("No files yet. Files and folders may also be dropped here.")
                                 : stateText(wells));
    m_create->setEnabled(problem.isEmpty() && wells.chosenCount() > 0 && !m_isWorking);
    for (QPushButton *button : {m_nextProblem, m_uncheck})
        button->setVisible(!problem.isEmpty() && !m_isWorking);
    for (QWidget *widget : {static_cast<QWidget *>(m_codecLabel), static_cast<QWidget *>(m_codec)})
        widget->setVisible(wells.hasForeignText());
    showNotes();
}

// The notes of the current row in full: the column has room for their beginning only.
void NewWellsDialog::showNotes()
{
    const int row = m_table->currentIndex().row();
    const QVector<survey::NewWell> &wells = m_model->newWells().wells();
    if (row < 0 || row >= wells.size()) {
        m_notes->clear();
        return;
    }
    const QString notes = m_model->index(row, NewWellsModel::NotesColumn).data().toString();
    m_notes->setText(fileNames(wells.at(row)) + (notes.isEmpty() ? QString() : QStringLiteral(": ")) + notes);
}

void NewWellsDialog::goToNextProblem()
{
    const survey::NewWells &wells = m_model->newWells();
    const int row = wells.nextProblemRow(m_table->currentIndex().row());
    if (row < 0)
        return;
    const QModelIndex cell = m_model->index(row, NewWellsModel::NameColumn + wells.problemField(row));
    m_table->setCurrentIndex(cell);
    m_table->scrollTo(cell, QAbstractItemView::EnsureVisible);
    m_table->setFocus();
}

void NewWellsDialog::uncheckProblems()
{
    m_model->uncheckProblems();
}

void NewWellsDialog::showRowMenu(const QPoint &place)
{
    if (!m_table->indexAt(place).isValid())
        return;
    auto *menu = new QMenu(m_table);
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const SourceName &name : sourceNames) {
        const survey::NameSource source = name.source;
        QAction *action = menu->addAction(QStringLiteral("Name from ") + QLatin1String(name.label));
        connect(action, &QAction::triggered, this, [this, source] { nameRows(source); });
    }
    menu->popup(m_table->viewport()->mapToGlobal(place));
}

void NewWellsDialog::nameRows(survey::NameSource source)
{
    QVector<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedIndexes())
        if (!rows.contains(index.row()))
            rows.append(index.row());
    const int current = m_table->currentIndex().row();
    if (rows.isEmpty() && current >= 0)
        rows.append(current);
    m_model->setNameSource(rows, source);
    m_table->setCurrentIndex(m_model->index(qMin(current, m_model->rowCount() - 1), NewWellsModel::NameColumn));
    fitColumns();
}

void NewWellsDialog::beginWork(int steps, const QString &format)
{
    m_isWorking = true;
    m_isCancelled = false;
    m_focusBefore = focusWidget();
    m_progress->setFormat(format);
    m_progress->setRange(0, steps);
    m_progress->setValue(0);
    m_progress->setVisible(steps > filesReadAtOnce || isVisible());
    m_state->setVisible(!m_progress->isVisible());
    m_close->setText(QStringLiteral("Cancel"));
    for (QWidget *widget : qAsConst(m_idleOnly))
        widget->setEnabled(false);
    m_create->setEnabled(false);
    m_sinceEvents.start();
}

bool NewWellsDialog::step(int done)
{
    m_progress->setValue(done);
    if (m_sinceEvents.elapsed() >= msBetweenEvents) {
        base::handleEvents();
        m_sinceEvents.restart();
    }
    return !m_isCancelled;
}

void NewWellsDialog::endWork()
{
    m_isWorking = false;
    m_progress->hide();
    m_state->show();
    m_close->setText(QStringLiteral("Close"));
    for (QWidget *widget : qAsConst(m_idleOnly))
        widget->setEnabled(true);
    if (m_focusBefore)
        m_focusBefore->setFocus();
    showState();
}

void NewWellsDialog::reject()
{
    m_isCancelled = true;
    if (!m_isWorking)
        QDialog::reject();
}

void NewWellsDialog::createWells()
{
    const survey::NewWells wells = m_model->newWells();
    if (!wells.firstProblem().isEmpty() || m_isWorking)
        return;
    QVector<int> rows;
    for (int row = 0; row < wells.wells().size(); ++row)
        if (wells.wells().at(row).isChosen)
            rows.append(row);
    survey::NewWellsOutcome outcome;
    outcome.otherFiles = m_otherFiles;
    beginWork(rows.size(), QStringLiteral("Making wells: %v of %m"));
    for (const int row : qAsConst(rows)) {
        const survey::NewWell &well = wells.wells().at(row);
        survey::WellOrder order;
        order.properties = survey::wellProperties(well.texts);
        order.files = well.files;
        order.withLogs = m_withLogs->isChecked();
        order.codec = wells.codec();
        outcome.wells.append(survey::makeWell(m_store, order));
        m_createdCount += outcome.wells.last().error.isEmpty() ? 1 : 0;
        if (!step(outcome.wells.size()) && outcome.wells.size() < rows.size()) {
            outcome.isCancelled = true;
            break;
        }
    }
    const host::Status flushed = m_store.flush();
    if (!flushed.ok())
        m_asker.warn(windowTitle(), flushed.error);
    rows.resize(outcome.wells.size());
    m_model->setMade(rows, outcome.wells);
    endWork();
    report(outcome);
    if (m_model->newWells().chosenCount() == 0)
        accept();
}

void NewWellsDialog::report(const survey::NewWellsOutcome &outcome)
{
    ReportDialog(windowTitle(), survey::outcomeSentence(outcome),
                 survey::newWellsReport(m_model->newWells(), outcome, m_store.surveyDirectory()),
                 QStringLiteral("new-wells.txt"), m_asker, m_chooser, this)
        .exec();
}

} // namespace workbench
