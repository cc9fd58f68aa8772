#include "las/wellimportdialog.h"

#include "base/asker.h"
#include "base/nestedevents.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/hostwriter.h"
#include "datastore/projectdata.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "las/wellimporttab.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleValidator>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <new>
#include <set>

namespace {

const char tabIndexProperty[] = "tabIdx";

QString importTitle()
{
    return QStringLiteral("Las Import");
}

} // namespace

/// What an import has done so far.
struct WellImportDialog::Progress
{
    std::set<int> changedWells;
    las::NameList unsuitedCurves;
};

WellImportDialog::WellImportDialog(ProjectData &projectData, QWidget *parent)
    : QDialog(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("WellImportDialog"));
    setWindowTitle(QStringLiteral("Well Log(s) Import (LAS Import)"));
    setWindowIcon(m_data.host.icon(QStringLiteral("import_wlc.png")));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    chooseFiles = [](QWidget *window, const QString &caption, const QString &filter) {
        return QFileDialog::getOpenFileNames(window, caption, QString(), filter);
    };

    auto *page = new QVBoxLayout(this);
    m_selectButton = new QPushButton(QStringLiteral("Select LAS File(s)"));
    m_selectButton->setObjectName(QStringLiteral("selectButton"));
    m_selectButton->setMinimumWidth(m_selectButton->sizeHint().width() + 16);
    auto *top = new QHBoxLayout;
    top->addWidget(m_selectButton);
    top->addWidget(new QLabel(QStringLiteral("Each file opens in a tab of its own.")));
    top->addStretch(1);
    page->addLayout(top);
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("fileTabs"));
    m_tabs->setTabsClosable(true);
    m_tabs->setUsesScrollButtons(true);
    m_tabs->setElideMode(Qt::ElideMiddle);
    page->addWidget(m_tabs, 1);
    page->addWidget(buildOptions());
    page->addWidget(buildButtons());
    m_importButton->setDefault(true); // else Enter in the interval opens the file dialog
    resize(1280, 720);

    connect(m_selectButton, &QPushButton::clicked, this, &WellImportDialog::selectLasFilesClicked);
    connect(m_intervalBox, &QCheckBox::toggled, this, &WellImportDialog::intervalCheckBoxToggled);
    connect(m_importButton, &QPushButton::clicked, this, &WellImportDialog::importSelectedClicked);
    connect(m_closeButton, &QPushButton::clicked, this, &WellImportDialog::cancelBtnClicked);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &WellImportDialog::tabClosedClicked);
}

QWidget *WellImportDialog::buildOptions()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_intervalBox = new QCheckBox(QStringLiteral("Depth Interval (m):"));
    m_intervalBox->setObjectName(QStringLiteral("intervalBox"));
    m_intervalBox->setToolTip(QStringLiteral("Resample curves with another step to this interval"));
    m_intervalEdit = new QLineEdit(QStringLiteral("0.1524"));
    m_intervalEdit->setObjectName(QStringLiteral("intervalEdit"));
    m_intervalEdit->setMaximumWidth(120);
    m_intervalEdit->setEnabled(false);
    auto *validator = new QDoubleValidator(m_intervalEdit);
    validator->setLocale(QLocale::c());
    m_intervalEdit->setValidator(validator);
    layout->addWidget(m_intervalBox);
    layout->addWidget(m_intervalEdit);
    layout->addStretch(1);
    return row;
}

QWidget *WellImportDialog::buildButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_progressBar = new QProgressBar;
    m_progressBar->setObjectName(QStringLiteral("progressBar"));
    m_progressBar->setValue(0);
    m_importButton = new QPushButton(QStringLiteral("Import Selected Curves"));
    m_importButton->setObjectName(QStringLiteral("importButton"));
    m_importButton->setMinimumWidth(m_importButton->sizeHint().width() + 16);
    m_importButton->setEnabled(false);
    m_closeButton = new QPushButton(QStringLiteral("Close"));
    m_closeButton->setObjectName(QStringLiteral("closeButton"));
    layout->addWidget(m_progressBar, 1);
    layout->addWidget(m_importButton);
    layout->addWidget(m_closeButton);
    return row;
}

WellImportTab *WellImportDialog::tabAt(int index) const
{
    return qobject_cast<WellImportTab *>(m_tabs->widget(index));
}

void WellImportDialog::selectLasFilesClicked()
{
    if (m_isRunning)
        return;
    const QPointer<WellImportDialog> self(this);
    const base::NestedEvents events; // the chooser handles them
    const QStringList paths =
        chooseFiles(this, QStringLiteral("Select Well(s)"), QStringLiteral("Las Files (*.Las *.LAS *.las)"));
    if (!self || paths.isEmpty())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (const QString &path : paths) {
        WellInfo file;
        static_cast<void>(file.load(path)); // a file that cannot be read makes a tab without curves, and no message
        addWellWidget(m_tabs->count(), file, path);
    }
    QApplication::restoreOverrideCursor();
    m_tabs->setCurrentIndex(m_tabs->count() - paths.size());
}

void WellImportDialog::addWellWidget(int tabIdx, WellInfo m_well, QString filename)
{
    const QString title = filename.section(QLatin1Char('/'), -1);
    auto *tab = new WellImportTab(m_data, m_well, title);
    const int index = m_tabs->insertTab(tabIdx, tab, las::tabText(title));
    m_tabs->setTabToolTip(index, las::toolTip(filename));
    renumberTabs();
    m_hasFiles = true;
    m_importButton->setEnabled(!m_isRunning);
    // By the index: two wells of the survey may have the same name.
    connect(tab->wellBox(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, tab] { wellChanged(tab->wellBox()->currentText()); });
    connect(tab->table(), &QTableWidget::itemChanged, this, &WellImportDialog::cellChanged);
}

void WellImportDialog::renumberTabs()
{
    for (int i = 0; i < m_tabs->count(); ++i)
        tabAt(i)->wellBox()->setProperty(tabIndexProperty, i);
}

void WellImportDialog::intervalCheckBoxToggled(bool isChecked)
{
    m_intervalEdit->setEnabled(isChecked);
}

void WellImportDialog::tabClosedClicked(int tabIdx)
{
    if (m_isRunning || !tabAt(tabIdx))
        return;
    delete tabAt(tabIdx);
    renumberTabs();
}

void WellImportDialog::wellChanged(QString)
{
    const QObject *box = sender();
    const int index = box ? box->property(tabIndexProperty).toInt() : m_tabs->currentIndex();
    if (WellImportTab *tab = tabAt(index))
        tab->bindWell();
}

void WellImportDialog::cellChanged(QTableWidgetItem *item)
{
    if (item->column() != WellImportTab::NameColumn)
        return;
    for (int i = 0; i < m_tabs->count(); ++i)
        if (tabAt(i)->table() == item->tableWidget())
            tabAt(i)->testRow(item);
}

void WellImportDialog::importSelectedClicked()
{
    if (m_isRunning)
        return;
    QVector<las::ImportTab> tabs;
    for (int i = 0; i < m_tabs->count(); ++i)
        tabs.append(tabAt(i)->plan());
    las::ImportOptions options;
    options.isResampling = m_intervalBox->isChecked();
    options.interval = las::floatIntervalFromText(m_intervalEdit->text());

    const QString refusal = las::refusal(tabs, options);
    if (!refusal.isEmpty()) {
        m_data.asker.warn(importTitle(), refusal);
        return;
    }
    m_isCancelled = false;
    m_closesAfterImport = false;
    m_progressBar->setRange(0, qMax(1, tabs.size() == 1 ? tabs.first().rows.size() : tabs.size()));
    m_progressBar->setValue(0);
    const QPointer<QWidget> focused(focusWidget());
    setRunning(true);
    Progress progress;
    const End end = importTabs(tabs, options, &progress);
    if (end == End::Deleted)
        return;
    const QPointer<WellImportDialog> self(this);
    finishImport(end, progress);
    if (self && focused)
        focused->setFocus();
}

// Boxes and events may delete the dialog (its owner goes, another survey is opened): after each of them nothing of
// it is touched before it is known to be there.
WellImportDialog::End WellImportDialog::importTabs(const QVector<las::ImportTab> &tabs,
                                                   const las::ImportOptions &options, Progress *progress)
{
    const QPointer<WellImportDialog> self(this);
    for (int i = 0; i < tabs.size(); ++i) {
        const QString reason = las::stopReason(tabs.at(i), i + 1);
        if (!reason.isEmpty()) {
            m_data.asker.warn(windowTitle(), reason);
            return self ? End::Stopped : End::Deleted;
        }
        const End end = importRows(tabs.at(i), options, tabs.size() == 1, progress);
        if (end != End::Finished)
            return end;
        if (tabs.size() > 1)
            m_progressBar->setValue(i + 1);
    }
    if (las::hasSelection(tabs))
        return End::Finished;
    m_data.asker.warn(importTitle(), QStringLiteral("To import required well log(s), Please first select them."));
    return self ? End::Stopped : End::Deleted;
}

WellImportDialog::End WellImportDialog::importRows(const las::ImportTab &tab, const las::ImportOptions &options,
                                                   bool countsRows, Progress *progress)
{
    const QPointer<WellImportDialog> self(this);
    HostWriter writer(m_data.host.wells(), m_data.catalogue, m_data.asker,
                      [this](const QString &text) { m_data.host.showError(text); });
    for (int row = 0; row <= tab.rows.size(); ++row) {
        base::handleEvents(); // the last time behind the last row
        if (!self)
            return End::Deleted;
        if (m_isCancelled)
            return End::Cancelled;
        if (row == tab.rows.size())
            break;
        const las::ImportRow &chosen = tab.rows.at(row);
        if (chosen.isSelected) {
            const End end = importRow(tab, chosen, options, &writer, progress);
            if (end != End::Finished)
                return end;
        }
        if (countsRows)
            m_progressBar->setValue(row + 1);
    }
    return End::Finished;
}

WellImportDialog::End WellImportDialog::importRow(const las::ImportTab &tab, const las::ImportRow &row,
                                                  const las::ImportOptions &options, HostWriter *writer,
                                                  Progress *progress)
{
    const QPointer<WellImportDialog> self(this);
    try {
        las::ImportedCurve curve = las::importedCurve(tab, row, options);
        const bool isWritten =
            writer->writeLog(tab.well, las::withHostNulls(std::move(curve.record), *tab.file), false);
        if (!self)
            return End::Deleted;
        // Whatever became of the log, the name's group is what the user chose.
        assignCurveGroup(m_data.project.projectFolder, row.logName, row.group);
        if (isWritten)
            progress->changedWells.insert(tab.well);
        if (isWritten && curve.isUnsuited)
            progress->unsuitedCurves.add(tab.title, row.logName);
        return End::Finished;
    } catch (const std::bad_alloc &) {
        if (!self)
            return End::Deleted;
        m_data.asker.warn(importTitle(),
                          QStringLiteral("There is not enough memory to import the curve %1 of %2.\n"
                                         "The import ends here; the curves before it were imported.")
                              .arg(las::shortened(row.logName), tab.title));
        return self ? End::Stopped : End::Deleted;
    }
}

void WellImportDialog::finishImport(End end, const Progress &progress)
{
    const QPointer<WellImportDialog> self(this);
    for (int i = 0; i < m_tabs->count(); ++i)
        tabAt(i)->testAllRows();
    for (int well : progress.changedWells)
        if (self)
            emit logsImported(well);
    if (self && !progress.unsuitedCurves.isEmpty())
        m_data.asker.warn(importTitle(), las::unsuitedWarning(progress.unsuitedCurves));
    if (self && end == End::Finished && !m_isCancelled) {
        m_progressBar->setValue(m_progressBar->maximum());
        m_data.asker.inform(importTitle(), QStringLiteral("The selected LAS files have been imported successfully."));
    }
    if (!self)
        return;
    setRunning(false);
    if (m_closesAfterImport)
        close();
}

void WellImportDialog::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    for (QWidget *widget : {static_cast<QWidget *>(m_selectButton), static_cast<QWidget *>(m_tabs),
                            static_cast<QWidget *>(m_intervalBox)})
        widget->setEnabled(!isRunning);
    m_importButton->setEnabled(!isRunning && m_hasFiles);
    m_intervalEdit->setEnabled(!isRunning && m_intervalBox->isChecked());
}

void WellImportDialog::cancelBtnClicked()
{
    m_isCancelled = true;
    close();
}

// A running import still needs its dialog: it goes out of sight, the import ends at the next curve, and only then is
// it closed for good (and deleted, where its owner asked for that).
void WellImportDialog::closeEvent(QCloseEvent *event)
{
    if (!m_isRunning) {
        QDialog::closeEvent(event);
        return;
    }
    reject();
    event->ignore();
}

void WellImportDialog::reject()
{
    if (!m_isRunning) {
        QDialog::reject();
        return;
    }
    m_isCancelled = true;
    m_closesAfterImport = true;
    hide();
}
