#include "workbench/newwellsdialog.h"

#include "base/asker.h"
#include "workbench/newwellsmodel.h"
#include "workbench/statecolors.h"
#include "workbench/windowsettings.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace workbench {

namespace {

const QLatin1String lasFolder("las");
constexpr int widestNameColumn = 180;
constexpr int columnPadding = 6;
constexpr int narrowestNotesColumn = 200;
constexpr int rowPadding = 9; // room for an editor
constexpr int failuresShown = 10;
constexpr int notesLines = 2;

QString plural(int count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString stateText(const survey::NewWells &wells)
{
    int existing = 0;
    int unreadable = 0;
    for (const survey::NewWell &well : wells.wells()) {
        existing += well.state == survey::NewWell::State::Exists ? 1 : 0;
        unreadable += well.state == survey::NewWell::State::Unreadable ? 1 : 0;
    }
    QStringList parts{plural(wells.chosenCount(), "well to create", "wells to create")};
    if (existing > 0)
        parts.append(plural(existing, "exists already", "exist already"));
    if (unreadable > 0)
        parts.append(plural(unreadable, "file cannot be read", "files cannot be read"));
    return parts.join(QStringLiteral(", ")) + QLatin1Char('.');
}

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
    buildWidgets(survey::WellNames(store.list().value));
    resize(1240, 560);
    showState();
}

void NewWellsDialog::buildWidgets(const survey::WellNames &existing)
{
    m_model = new NewWellsModel(existing, m_store.depthUnit(), this);
    connect(m_model, &NewWellsModel::changed, this, &NewWellsDialog::showState);

    auto *caption =
        new QLabel(QStringLiteral("&Wells proposed from the headers; double-click or F2 to correct a value:"), this);
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("newWellsTable"));
    m_table->setModel(m_model);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + rowPadding);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setAlternatingRowColors(true);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    caption->setBuddy(m_table);

    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &NewWellsDialog::showNotes);

    m_notes = new QLabel(this);
    m_notes->setObjectName(QStringLiteral("notesLabel"));
    m_notes->setTextFormat(Qt::PlainText);
    m_notes->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_notes->setWordWrap(true);
    m_notes->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_notes->setMinimumHeight(notesLines * fontMetrics().lineSpacing());
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("stateLabel"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    auto *hint =
        new QLabel(QStringLiteral("The wells get a name, a position, elevations and a total depth. Their logs "
                                  "come in later, with the LAS import of a plug-in in the menu Utilities."),
                   this);
    hint->setObjectName(QStringLiteral("hintLabel"));
    hint->setWordWrap(true);
    QPalette quiet = hint->palette();
    quiet.setColor(QPalette::WindowText, quietText(quiet));
    hint->setPalette(quiet);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    QPushButton *add = buttons->addButton(QStringLiteral("&Add files…"), QDialogButtonBox::ActionRole);
    add->setObjectName(QStringLiteral("addFilesButton"));
    m_create = buttons->addButton(QStringLiteral("C&reate wells"), QDialogButtonBox::ActionRole);
    m_create->setObjectName(QStringLiteral("createWellsButton"));
    m_create->setDefault(true);
    connect(add, &QPushButton::clicked, this, &NewWellsDialog::chooseFiles);
    connect(m_create, &QPushButton::clicked, this, &NewWellsDialog::createWells);
    connect(buttons, &QDialogButtonBox::rejected, this, &NewWellsDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(caption);
    column->addWidget(m_table, 1);
    column->addWidget(m_notes);
    column->addWidget(m_state);
    column->addWidget(hint);
    column->addWidget(buttons);
}

void NewWellsDialog::addFiles(const QStringList &paths)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_model->addFiles(paths);
    QApplication::restoreOverrideCursor();
    m_table->resizeColumnsToContents();
    for (int column = NewWellsModel::FileColumn; column < NewWellsModel::NotesColumn; ++column)
        m_table->setColumnWidth(column, qMin(m_table->columnWidth(column) + columnPadding, widestNameColumn));
    m_table->setColumnWidth(NewWellsModel::NotesColumn, narrowestNotesColumn); // and stretched from there
    if (!m_table->currentIndex().isValid())
        m_table->setCurrentIndex(m_model->index(0, NewWellsModel::NameColumn));
    showNotes();
}

bool NewWellsDialog::chooseFiles()
{
    const QStringList files =
        m_chooser.chooseFiles(this, QStringLiteral("Choose LAS files"), settings::lastFolder(lasFolder),
                              QStringLiteral("LAS files (*.las *.LAS *.Las);;All files (*)"));
    if (files.isEmpty())
        return false;
    settings::setLastFolder(lasFolder, QFileInfo(files.first()).path());
    addFiles(files);
    return true;
}

void NewWellsDialog::showState()
{
    const survey::NewWells &wells = m_model->newWells();
    const QString problem = wells.firstProblem();
    QPalette colours = palette();
    if (!problem.isEmpty())
        colours.setColor(QPalette::WindowText, problemText(palette()));
    m_state->setPalette(colours);
    if (wells.wells().isEmpty())
        m_state->setText(QStringLiteral("No files yet."));
    else
        m_state->setText(problem.isEmpty() ? stateText(wells) : problem);
    m_create->setEnabled(problem.isEmpty() && wells.chosenCount() > 0);
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
    const QStringList notes = wells.at(row).allNotes();
    m_notes->setText(survey::fileNames(wells.at(row)) + (notes.isEmpty() ? QString() : QStringLiteral(": "))
                     + notes.join(QLatin1Char(' ')));
}

void NewWellsDialog::createWells()
{
    const survey::NewWells &wells = m_model->newWells();
    if (!wells.firstProblem().isEmpty())
        return;
    QVector<int> created;
    QStringList failures;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (int row = 0; row < wells.wells().size(); ++row) {
        if (!wells.wells().at(row).isChosen)
            continue;
        const survey::WellProperties properties = survey::wellProperties(wells.wells().at(row).texts);
        const host::Outcome<QString> added = m_store.addWell(properties);
        if (added.ok())
            created.append(row);
        else
            failures.append(properties.name + QStringLiteral(": ") + added.error);
    }
    QApplication::restoreOverrideCursor();
    m_model->setCreated(created);
    m_createdCount += created.size();
    const QString report = plural(created.size(), "well was created.", "wells were created.");
    if (failures.isEmpty()) {
        m_asker.inform(windowTitle(), report);
        accept();
        return;
    }
    QString text = report + QStringLiteral("\n%1 failed:").arg(failures.size());
    for (const QString &failure : failures.mid(0, failuresShown))
        text += QLatin1Char('\n') + failure;
    if (failures.size() > failuresShown)
        text += QStringLiteral("\nand %1 more").arg(failures.size() - failuresShown);
    m_asker.warn(windowTitle(), text);
}

} // namespace workbench
