#include "las/wellimportdialog.h"

#include "base/asker.h"
#include "base/keptlooks.h"
#include "base/labeltext.h"
#include "base/nestedevents.h"
#include "base/numbervalidator.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "las/importrun.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "las/wellimporttab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <new>

namespace {

// What the folder of its files is remembered under.
QString importFolder()
{
    return QStringLiteral("lasImport");
}

const char tabIndexProperty[] = "tabIdx";

QString importTitle()
{
    return QStringLiteral("Las Import");
}

QStringList distinct(QStringList names)
{
    names.removeDuplicates();
    return names;
}

} // namespace

WellImportDialog::WellImportDialog(ProjectData &projectData, QWidget *parent)
    : RunDialog(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("WellImportDialog"));
    setWindowTitle(QStringLiteral("Well Log(s) Import (LAS Import)"));
    setWindowIcon(m_data.host.icon(QStringLiteral("import_wlc.png")));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    chooseFiles = [](QWidget *window, const QString &caption, const QString &filter) {
        const QString folder = base::lastFolder(importFolder());
        const QStringList files = QFileDialog::getOpenFileNames(window, caption, folder, filter);
        if (!files.isEmpty())
            base::keepLastFolder(importFolder(), QFileInfo(files.first()).path());
        return files;
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
    m_tabs->setElideMode(Qt::ElideNone); // many files scroll with their whole names
    page->addWidget(m_tabs, 1);
    page->addWidget(buildOptions());
    page->addWidget(buildButtons());
    m_importButton->setDefault(true); // else Enter in the interval opens the file dialog
    resize(1280, 720);
    base::keepSize(this, objectName());

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
    m_intervalEdit->setValidator(new base::NumberValidator(m_intervalEdit));
    m_feetBox = new QCheckBox(QStringLiteral("Convert feet to metres"));
    m_feetBox->setObjectName(QStringLiteral("feetBox"));
    m_feetBox->setToolTip(QStringLiteral("For files whose depths are in feet, also before an interval is applied"));
    m_feetBox->setEnabled(false);
    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    layout->addWidget(m_intervalBox);
    layout->addWidget(m_intervalEdit);
    layout->addSpacing(24);
    layout->addWidget(m_feetBox);
    layout->addSpacing(24);
    layout->addWidget(m_status, 1);
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
    if (isRunning())
        return;
    const QPointer<WellImportDialog> self(this);
    const base::NestedEvents events; // the chooser handles them
    const QStringList paths =
        chooseFiles(this, QStringLiteral("Select Well(s)"), QStringLiteral("Las Files (*.Las *.LAS *.las)"));
    if (!self || paths.isEmpty())
        return;
    const int first = m_tabs->count();
    if (loadFiles(paths) == End::Deleted)
        return;
    m_tabs->setCurrentIndex(first);
    QStringList unreadable;
    for (int i = first; i < m_tabs->count(); ++i)
        if (!tabAt(i)->isWellReadable())
            unreadable.append(tabAt(i)->wellBox()->currentText());
    tellUnreadableWells(unreadable);
}

// Closing the dialog meanwhile ends it after the file that is being read.
RunDialog::End WellImportDialog::loadFiles(const QStringList &paths)
{
    const base::WaitCursor cursor;
    m_progressBar->setRange(0, paths.size());
    m_progressBar->setValue(0);
    beginRun();
    for (int i = 0; i < paths.size(); ++i) {
        m_status->setText(QStringLiteral("Reading file %1 of %2").arg(i + 1).arg(paths.size()));
        const End end = handleEvents();
        if (end == End::Deleted)
            return end;
        if (end == End::Cancelled)
            break;
        WellInfo file;
        static_cast<void>(file.load(paths.at(i))); // one that cannot be read makes a tab without curves, no message
        addTab(m_tabs->count(), file, paths.at(i));
        m_progressBar->setValue(i + 1);
    }
    m_status->clear();
    m_progressBar->setValue(0);
    const QPointer<WellImportDialog> self(this);
    endRun();
    return self ? End::Finished : End::Deleted;
}

void WellImportDialog::addWellWidget(int tabIdx, WellInfo m_well, QString filename)
{
    const WellImportTab *tab = addTab(tabIdx, m_well, filename);
    if (!tab->isWellReadable())
        tellUnreadableWells({tab->wellBox()->currentText()});
}

WellImportTab *WellImportDialog::addTab(int tabIdx, const WellInfo &file, const QString &path)
{
    const QString title = path.section(QLatin1Char('/'), -1);
    auto *tab = new WellImportTab(m_data, file, title);
    const int index = m_tabs->insertTab(tabIdx, tab, base::labelText(title));
    m_tabs->setTabToolTip(index, las::toolTip(path));
    m_hasFiles = true;
    tabsChanged();
    // By the index: two wells of the survey may have the same name.
    connect(tab->wellBox(), qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, tab] { wellChanged(tab->wellBox()->currentText()); });
    connect(tab->table(), &QTableWidget::itemChanged, this, &WellImportDialog::cellChanged);
    return tab;
}

// Once a well, however many files are for it.
void WellImportDialog::tellUnreadableWells(const QStringList &wellNames)
{
    host::Host &host = m_data.host; // a box may end with the dialog deleted
    for (const QString &name : distinct(wellNames))
        host.showError(QStringLiteral("Cannot get data for this well : ") + name);
}

bool WellImportDialog::hasFileInFeet() const
{
    for (int i = 0; i < m_tabs->count(); ++i)
        if (tabAt(i)->isInFeet())
            return true;
    return false;
}

void WellImportDialog::tabsChanged()
{
    for (int i = 0; i < m_tabs->count(); ++i)
        tabAt(i)->wellBox()->setProperty(tabIndexProperty, i);
    setInputsEnabled(!isRunning());
    if (!hasFileInFeet())
        m_feetBox->setChecked(false);
}

void WellImportDialog::intervalCheckBoxToggled(bool isChecked)
{
    m_intervalEdit->setEnabled(isChecked);
}

void WellImportDialog::tabClosedClicked(int tabIdx)
{
    if (isRunning() || !tabAt(tabIdx))
        return;
    delete tabAt(tabIdx);
    tabsChanged();
}

void WellImportDialog::wellChanged(QString)
{
    const QObject *box = sender();
    const int index = box ? box->property(tabIndexProperty).toInt() : m_tabs->currentIndex();
    WellImportTab *tab = tabAt(index);
    if (!tab)
        return;
    tab->bindWell();
    if (!tab->isWellReadable())
        tellUnreadableWells({tab->wellBox()->currentText()});
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
    if (isRunning())
        return;
    QVector<las::ImportTab> tabs;
    for (int i = 0; i < m_tabs->count(); ++i)
        tabs.append(tabAt(i)->plan(m_feetBox->isChecked()));
    las::ImportOptions options;
    options.isResampling = m_intervalBox->isChecked();
    options.interval = las::floatIntervalFromText(m_intervalEdit->text());

    const QString refusal = las::refusal(tabs, options);
    if (!refusal.isEmpty()) {
        m_data.asker.warn(importTitle(), refusal);
        return;
    }
    m_progressBar->setRange(0, qMax(1, tabs.size() == 1 ? tabs.first().rows.size() : tabs.size()));
    m_progressBar->setValue(0);
    m_status->clear();
    beginRun();
    las::ImportRun run(m_data);
    const End end = importTabs(tabs, options, &run);
    if (end == End::Deleted) {
        run.release();
        return;
    }
    run.finish();
    if (tellResults(end, run) != End::Deleted)
        endRun();
}

RunDialog::End WellImportDialog::importTabs(const QVector<las::ImportTab> &tabs, const las::ImportOptions &options,
                                            las::ImportRun *run)
{
    for (int i = 0; i < tabs.size(); ++i) {
        const QString reason = las::stopReason(tabs.at(i), i + 1);
        if (!reason.isEmpty()) {
            m_tabs->setCurrentIndex(i); // the one that the box speaks of
            return stop(m_data.asker, windowTitle(), reason);
        }
        const End end = importRows(tabs.at(i), options, tabs.size() == 1, run);
        if (end != End::Finished)
            return end;
        if (tabs.size() > 1)
            m_progressBar->setValue(i + 1);
    }
    return las::hasSelection(tabs)
        ? End::Finished
        : stop(m_data.asker, importTitle(),
               QStringLiteral("To import required well log(s), Please first select them."));
}

RunDialog::End WellImportDialog::importRows(const las::ImportTab &tab, const las::ImportOptions &options,
                                            bool countsRows, las::ImportRun *run)
{
    for (int row = 0; row <= tab.rows.size(); ++row) {
        End end = handleEvents(); // the last time behind the last row
        if (end != End::Finished || row == tab.rows.size())
            return end;
        if (tab.rows.at(row).isSelected)
            end = importRow(tab, tab.rows.at(row), options, run);
        if (end != End::Finished)
            return end;
        if (countsRows)
            m_progressBar->setValue(row + 1);
    }
    return End::Finished;
}

RunDialog::End WellImportDialog::importRow(const las::ImportTab &tab, const las::ImportRow &row,
                                           const las::ImportOptions &options, las::ImportRun *run)
{
    const QPointer<WellImportDialog> self(this);
    try {
        run->write(tab, row, options);
        return self ? End::Finished : End::Deleted;
    } catch (const std::bad_alloc &) {
        return self ? stop(m_data.asker, importTitle(),
                           QStringLiteral("There is not enough memory to import the curve %1 of %2.\n"
                                          "The import ends here; the curves before it were imported.")
                               .arg(las::shortened(row.logName), tab.title))
                    : End::Deleted;
    }
}

RunDialog::End WellImportDialog::tellResults(End end, const las::ImportRun &run)
{
    const QPointer<WellImportDialog> self(this);
    for (int i = 0; i < m_tabs->count(); ++i)
        tabAt(i)->testAllRows();
    m_status->setText(run.leftOut());
    for (int well : run.changedWells())
        if (self)
            emit logsImported(well);
    for (const QString &failure : run.failures())
        if (self)
            m_data.asker.warn(QStringLiteral("Writing Well Logs"), failure);
    if (self && !run.unsuitedCurves().isEmpty())
        m_data.asker.warn(importTitle(), las::unsuitedWarning(run.unsuitedCurves()));
    if (self && end == End::Finished && !isCancelled()) {
        m_progressBar->setValue(m_progressBar->maximum());
        m_data.asker.inform(importTitle(), QStringLiteral("The selected LAS files have been imported successfully."));
    }
    return self ? end : End::Deleted;
}

void WellImportDialog::setInputsEnabled(bool isEnabled)
{
    for (QWidget *widget : {static_cast<QWidget *>(m_selectButton), static_cast<QWidget *>(m_tabs),
                            static_cast<QWidget *>(m_intervalBox)})
        widget->setEnabled(isEnabled);
    m_importButton->setEnabled(isEnabled && m_hasFiles);
    m_intervalEdit->setEnabled(isEnabled && m_intervalBox->isChecked());
    m_feetBox->setEnabled(isEnabled && hasFileInFeet());
}

void WellImportDialog::cancelBtnClicked()
{
    cancel();
    close();
}
