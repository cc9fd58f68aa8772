#include "welldata/columnimportdialog.h"

#include "base/asker.h"
#include "base/keptlooks.h"
#include "base/nestedevents.h"
#include "base/numbers.h"
#include "base/usersettings.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "welldata/columnpreview.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace {

constexpr int numberWidthPx = 80;

// One for all three imports: such files lie together.
QString folderKey()
{
    return QStringLiteral("folders/wellData");
}

int integerOf(const QLineEdit *edit)
{
    return base::parseInteger(edit->text().trimmed().toUtf8()).value_or(0);
}

} // namespace

ColumnImportDialog::ColumnImportDialog(ProjectData &projectData, const ColumnImportTexts &texts, QWidget *parent)
    : QDialog(parent)
    , m_data(projectData)
    , m_texts(texts)
{
    setObjectName(texts.objectName);
    setWindowTitle(texts.windowTitle);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    chooseFile = [](QWidget *window, const QString &title, const QString &folder, const QString &filter) {
        const base::NestedEvents events;
        return QFileDialog::getOpenFileName(window, title, folder, filter);
    };
    build();
    resize(820, 560);
    base::keepSize(this, objectName());
}

// The base's destructor hides the window: the path's line then loses the focus and tells that it was edited.
ColumnImportDialog::~ColumnImportDialog()
{
    m_path->disconnect(this);
}

void ColumnImportDialog::build()
{
    auto *grid = new QGridLayout(this);
    m_path = new QLineEdit;
    m_path->setObjectName(QStringLiteral("fileEdit"));
    auto *fileLabel = new QLabel(m_texts.fileLabel);
    fileLabel->setBuddy(m_path);
    auto *browse = new QPushButton(QStringLiteral("Browse"));
    browse->setObjectName(QStringLiteral("browseButton"));
    grid->addWidget(fileLabel, 0, 0);
    grid->addWidget(m_path, 0, 1, 1, 2);
    grid->addWidget(browse, 0, 3);
    m_preview = new ColumnPreview;
    grid->addWidget(m_preview, 1, 0, 1, 4);

    int row = 2;
    const auto addNumber = [&](const QString &label, const QString &text, const QString &name) {
        auto *edit = new QLineEdit(text);
        edit->setObjectName(name);
        edit->setValidator(new QIntValidator(edit));
        edit->setAlignment(Qt::AlignRight);
        edit->setFixedWidth(numberWidthPx);
        auto *caption = new QLabel(label);
        caption->setBuddy(edit);
        grid->addWidget(caption, row, 0);
        grid->addWidget(edit, row++, 1);
        connect(edit, &QLineEdit::textChanged, this, &ColumnImportDialog::showChoice);
        return edit;
    };
    m_headerLines = addNumber(QStringLiteral("Number of Header line to skip"), QStringLiteral("0"),
                              QStringLiteral("headerLinesEdit"));
    m_headerLines->setToolTip(QStringLiteral("So many lines at the top of the file hold no data"));
    for (const ColumnImportTexts::Column &column : qAsConst(m_texts.columns)) {
        m_columns.append(addNumber(column.label, column.number, column.objectName));
        m_columns.last()->setToolTip(QStringLiteral("The number of this column in the file, from 1"));
    }

    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    auto *import = new QPushButton(QStringLiteral("Import"));
    import->setObjectName(QStringLiteral("importButton"));
    import->setDefault(true); // else Enter in a line opens the choice of files
    grid->addWidget(m_status, row, 0, 1, 3);
    grid->addWidget(import, row, 3);
    grid->setColumnStretch(2, 1);
    connect(browse, &QPushButton::clicked, this, &ColumnImportDialog::browseBtnClicked);
    connect(import, &QPushButton::clicked, this, &ColumnImportDialog::importBtnClicked);
    // Enter shows the file as it is now, also the one that is shown already.
    connect(m_path, &QLineEdit::returnPressed, this, [this] { m_shownPath.clear(); });
    connect(m_path, &QLineEdit::editingFinished, this, &ColumnImportDialog::showFile);
}

void ColumnImportDialog::browseBtnClicked()
{
    const QPointer<ColumnImportDialog> self = this;
    const QString path =
        chooseFile(this, m_texts.fileDialogTitle, base::pluginSettings().value(folderKey()).toString(),
                   QStringLiteral("All files (*.*);;TEXT (*.txt *.TXT)"));
    if (!self || path.isEmpty())
        return;
    base::pluginSettings().setValue(folderKey(), QFileInfo(path).absolutePath());
    m_path->setText(path);
    m_shownPath.clear(); // it may have changed since it was shown
    showFile();
}

// Enter behind a path has shown the file: its columns are to be looked at before they replace what the well has.
void ColumnImportDialog::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || !m_path->hasFocus())
        QDialog::keyPressEvent(event);
}

// What cannot be read shows nothing; the import tells.
void ColumnImportDialog::showFile()
{
    if (m_path->text() == m_shownPath)
        return;
    m_shownPath = m_path->text();
    m_status->clear();
    const base::WaitCursor cursor;
    m_preview->setBytes(welldata::readImportFile(m_shownPath).bytes);
    showChoice();
}

void ColumnImportDialog::showChoice()
{
    const welldata::ColumnRequest wanted = request();
    QStringList labels;
    for (const ColumnImportTexts::Column &column : qAsConst(m_texts.columns))
        labels.append(column.label);
    m_preview->setChoice(wanted.headerLines, QVector<int>(wanted.columns.begin(), wanted.columns.end()), labels);
}

welldata::ColumnRequest ColumnImportDialog::request() const
{
    welldata::ColumnRequest wanted;
    wanted.headerLines = integerOf(m_headerLines);
    wanted.fieldsAtLeast = m_texts.fieldsAtLeast;
    for (const QLineEdit *edit : m_columns)
        wanted.columns.push_back(integerOf(edit));
    return wanted;
}

void ColumnImportDialog::warn(const QString &text)
{
    m_data.asker.warn(m_texts.warningTitle, text);
}

void ColumnImportDialog::importBtnClicked()
{
    m_status->clear();
    if (const QString problem = targetProblem(); !problem.isEmpty()) {
        warn(problem);
        return;
    }
    const base::RegularFile bytes = welldata::readImportFile(m_path->text());
    if (!bytes.ok()) {
        warn(QStringLiteral("Unable to open this file.\nPlease check file read/write permission."));
        return;
    }
    const welldata::ColumnFile file = readColumns(bytes.bytes, request());
    if (!file.ok()) {
        m_status->setText(file.problem);
        warn(QStringLiteral("Unable to import this file.\nPlease check input file format."));
        return;
    }
    if (file.rowCount() == 0) {
        m_status->setText(QStringLiteral("The file has no line to import."));
        return;
    }
    const QPointer<ColumnImportDialog> self = this;
    const bool isStored = store(file);
    if (self && isStored)
        accept();
}
