#include "las/welllogexport.h"

#include "base/asker.h"
#include "base/emptyhint.h"
#include "base/keptlooks.h"
#include "base/labeltext.h"
#include "base/leftovers.h"
#include "base/nestedevents.h"
#include "base/numbervalidator.h"
#include "base/usersettings.h"
#include "datastore/projectdata.h"
#include "las/checklist.h"
#include "las/exportcurvesinascii.h"
#include "las/laswriter.h"
#include "las/resampling.h"
#include "las/welllogstabwidget.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>

#include <new>

namespace {

constexpr int wellKeyRole = Qt::UserRole;

QString exportFolderKey()
{
    return QStringLiteral("folders/export");
}

} // namespace

/// What to write of one well.
struct WellLogExport::Job
{
    QString wellKey;
    QString wellName;
    QVector<las::ListedLog> logs;
    bool isResampling = false;
    QString path;
};

WellLogExport::WellLogExport(ProjectData &projectData, QWidget *parent)
    : RunDialog(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("WellLogExport"));
    setWindowTitle(QStringLiteral("Well Log(s) Export"));
    setWindowIcon(m_data.host.icon(QStringLiteral("export_wlc.png")));
    chooseFolder = [](QWidget *window, const QString &title, const QString &folder) {
        return QFileDialog::getExistingDirectory(window, title, folder);
    };

    auto *page = new QVBoxLayout(this);
    auto *wellsLabel = new QLabel(QStringLiteral("Select Well(s)"));
    m_wells = new QListWidget;
    m_wells->setObjectName(QStringLiteral("wellList"));
    las::fillCheckList(m_wells, m_data.catalogue.wellNames());
    for (int well = 0; well < m_wells->count(); ++well)
        m_wells->item(well)->setData(wellKeyRole, m_data.catalogue.wellKey(well));
    wellsLabel->setBuddy(m_wells);
    auto *logsLabel = new QLabel(QStringLiteral("Select Log(s)"));
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("wellTabs"));
    logsLabel->setBuddy(m_tabs);
    page->addWidget(wellsLabel);
    page->addWidget(m_wells, 2);
    page->addWidget(logsLabel);
    auto *tabsArea = new QWidget;
    base::fillWithTabs(tabsArea, m_tabs, QStringLiteral("Check a well above: its logs are listed here."));
    page->addWidget(tabsArea, 3);
    auto *options = new QWidget;
    buildOptions(options);
    page->addWidget(options);
    m_progressBar = new QProgressBar;
    m_progressBar->setObjectName(QStringLiteral("progressBar"));
    m_progressBar->setValue(0);
    page->addWidget(m_progressBar);
    page->addWidget(buildButtons());
    m_exportButton->setDefault(true);
    resize(720, 680);
    base::keepSize(this, objectName());
    intervalCheckBoxToggled(m_intervalBox->isChecked());

    connect(m_wells, &QListWidget::itemChanged, this, &WellLogExport::wellSelected);
    connect(m_intervalBox, &QCheckBox::toggled, this, &WellLogExport::intervalCheckBoxToggled);
    connect(m_browseButton, &QPushButton::clicked, this, &WellLogExport::browseBtnClicked);
    connect(m_exportButton, &QPushButton::clicked, this, &WellLogExport::exportBtnClicked);
    connect(m_closeButton, &QPushButton::clicked, this, &WellLogExport::close);
    connect(m_asciiButton, &QPushButton::clicked, this, &WellLogExport::curvesInAsciiClicked);
}

void WellLogExport::buildOptions(QWidget *page)
{
    m_intervalBox = new QCheckBox;
    m_intervalBox->setObjectName(QStringLiteral("intervalBox"));
    m_intervalBox->setAccessibleName(QStringLiteral("Resample to the depth interval"));
    m_intervalBox->setToolTip(QStringLiteral("Resample logs with another step to this interval"));
    m_intervalBox->setChecked(true); // only resampled logs stand at their depths whatever their step
    m_intervalEdit = new QLineEdit(QStringLiteral("0.1524"));
    m_intervalEdit->setObjectName(QStringLiteral("intervalEdit"));
    m_intervalEdit->setMaximumWidth(120);
    m_intervalEdit->setValidator(new base::NumberValidator(m_intervalEdit));
    m_intervalHint = new QLabel;
    m_intervalHint->setObjectName(QStringLiteral("intervalHint"));
    m_intervalHint->setWordWrap(true);
    m_folderEdit = new QLineEdit;
    m_folderEdit->setObjectName(QStringLiteral("folderEdit"));
    m_browseButton = new QPushButton(QStringLiteral("Browse"));
    m_browseButton->setObjectName(QStringLiteral("browseButton"));

    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    auto *interval = new QHBoxLayout;
    interval->addWidget(m_intervalBox);
    interval->addWidget(m_intervalEdit);
    interval->addWidget(m_intervalHint, 1);
    auto *intervalLabel = new QLabel(QStringLiteral("Depth Interval :"));
    intervalLabel->setBuddy(m_intervalEdit);
    grid->addWidget(intervalLabel, 0, 0);
    grid->addLayout(interval, 0, 1, 1, 2);
    auto *folderLabel = new QLabel(QStringLiteral("Output Folder :"));
    folderLabel->setBuddy(m_folderEdit);
    grid->addWidget(folderLabel, 1, 0);
    grid->addWidget(m_folderEdit, 1, 1);
    grid->addWidget(m_browseButton, 1, 2);
}

QWidget *WellLogExport::buildButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_exportButton = new QPushButton(QStringLiteral("Export"));
    m_exportButton->setObjectName(QStringLiteral("exportButton"));
    m_closeButton = new QPushButton(QStringLiteral("Close"));
    m_closeButton->setObjectName(QStringLiteral("closeButton"));
    m_asciiButton = new QPushButton(QStringLiteral("Curves in ASCII"));
    m_asciiButton->setObjectName(QStringLiteral("asciiButton"));
    m_asciiButton->setMinimumWidth(m_asciiButton->sizeHint().width() + 16);
    m_asciiButton->setToolTip(QStringLiteral("Write logs of a well as two-column text files into the project"));
    layout->addStretch(1);
    layout->addWidget(m_exportButton);
    layout->addWidget(m_closeButton);
    layout->addSpacing(24);
    layout->addWidget(m_asciiButton);
    return row;
}

WellLogsTabWidget *WellLogExport::tabAt(int index) const
{
    return qobject_cast<WellLogsTabWidget *>(m_tabs->widget(index));
}

// Two wells may have one name, so the tab of an item is remembered; its text is the item's name in any case.
void WellLogExport::wellSelected(QListWidgetItem *item)
{
    const bool isChecked = item->checkState() == Qt::Checked;
    WellLogsTabWidget *tab = m_tabOfItem.value(item);
    if (isChecked && !tab) {
        const int well = m_data.catalogue.indexOfKey(item->data(wellKeyRole).toString());
        tab = new WellLogsTabWidget(well >= 0 ? m_data.catalogue.logNames(well) : QStringList());
        m_tabOfItem.insert(item, tab);
        m_tabs->setCurrentIndex(m_tabs->addTab(tab, base::labelText(item->text())));
    } else if (!isChecked && tab) {
        m_tabOfItem.remove(item);
        delete tab;
    }
}

void WellLogExport::intervalCheckBoxToggled(bool isChecked)
{
    // The interval stays editable: the data lines step by it in either case.
    m_intervalHint->setText(isChecked
                                ? QStringLiteral("m; logs with another step are resampled")
                                : QStringLiteral("m; logs are not resampled: one sample a line, whatever its depth"));
}

void WellLogExport::browseBtnClicked()
{
    const QPointer<WellLogExport> self(this);
    const base::NestedEvents events; // the chooser handles them
    const QString typed = m_folderEdit->text();
    const QString start = typed.isEmpty() ? base::pluginSettings().value(exportFolderKey()).toString() : typed;
    const QString folder = chooseFolder(this, QStringLiteral("Open Directory"), start);
    if (self && !folder.isEmpty())
        m_folderEdit->setText(folder);
}

void WellLogExport::curvesInAsciiClicked()
{
    auto *dialog = new ExportCurvesInAscii(m_data, this);
    connect(dialog, &ExportCurvesInAscii::exported, this, &WellLogExport::exported);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

QVector<WellLogExport::Job> WellLogExport::jobs() const
{
    QVector<Job> jobs;
    for (int i = 0; i < m_tabs->count(); ++i) {
        const QListWidgetItem *item = m_tabOfItem.key(tabAt(i));
        Job job;
        job.wellKey = item->data(wellKeyRole).toString();
        job.wellName = item->text();
        job.logs = tabAt(i)->checkedLogs();
        job.isResampling = m_intervalBox->isChecked();
        job.path = m_folderEdit->text() + QLatin1Char('/') + las::lasFileName(job.wellName);
        jobs.append(job);
    }
    return jobs;
}

// By its key: wells may share a name, and the catalogue may be read anew while the dialog stands.
int WellLogExport::wellOf(const Job &job) const
{
    return m_data.catalogue.indexOfKey(job.wellKey);
}

void WellLogExport::exportBtnClicked()
{
    if (isRunning())
        return;
    if (m_folderEdit->text().isEmpty()) {
        m_data.asker.warn(windowTitle(), QStringLiteral("Please first select output folder."));
        return;
    }
    if (m_tabs->count() == 0) {
        m_data.asker.warn(windowTitle(), QStringLiteral("Please first select Well(s)."));
        return;
    }
    const QVector<Job> wells = jobs();
    const double interval = las::intervalFromText(m_intervalEdit->text());
    const QString problem = las::intervalProblem(interval);
    if (!problem.isEmpty()) {
        m_data.asker.warn(windowTitle(), problem);
        return;
    }
    m_progressBar->setRange(0, wells.size());
    m_progressBar->setValue(0);
    const QPointer<WellLogExport> self(this);
    beginRun();
    End end = checkGrids(wells, interval);
    if (end == End::Finished) {
        base::removeLeftovers(m_folderEdit->text()); // of programs that died while they exported
        end = exportWells(wells, interval);
    }
    if (end == End::Finished && self)
        tellExported();
    if (self)
        endRun();
}

void WellLogExport::tellExported()
{
    const QString folder = QDir(m_folderEdit->text()).absolutePath();
    base::pluginSettings().setValue(exportFolderKey(), folder);
    emit exported(folder);
    m_data.asker.inform(windowTitle(), QStringLiteral("Successfully Exported !"));
}

// Reads the logs once more than needed, so that depths which make too large a grid are told before the first file is
// written. A well that cannot be read ends the export when its turn comes, and is told then.
RunDialog::End WellLogExport::checkGrids(const QVector<Job> &wells, double interval)
{
    for (const Job &job : wells) {
        bool isReadable = false;
        const End end = withinMemory(job, [&] { return checkGrid(job, interval, &isReadable); });
        if (end != End::Finished || !isReadable)
            return end;
    }
    return End::Finished;
}

RunDialog::End WellLogExport::checkGrid(const Job &job, double interval, bool *isReadable)
{
    const std::optional<WellRecord> well =
        m_data.catalogue.readWellRecord(wellOf(job), WellsCatalogue::OnFailure::BeSilent);
    if (!well || job.logs.isEmpty())
        return End::Finished;
    las::ExportRange range(well->totalDepth);
    for (const las::ListedLog &listed : job.logs) {
        std::optional<LogCurveData> log;
        const End end = readLog(job, listed, &log);
        if (end != End::Finished || !log)
            return end;
        range.add(*log);
    }
    *isReadable = true;
    const QString problem = las::gridProblem(range.start, range.stop, interval, job.wellName);
    return problem.isEmpty() ? End::Finished : stop(m_data.asker, windowTitle(), problem);
}

// Nothing for a log that cannot be read.
RunDialog::End WellLogExport::readLog(const Job &job, const las::ListedLog &listed, std::optional<LogCurveData> *log)
{
    const End end = handleEvents();
    if (end == End::Finished)
        *log = las::readListedLog(m_data.catalogue, wellOf(job), listed, WellsCatalogue::OnFailure::BeSilent);
    return end;
}

RunDialog::End WellLogExport::exportWells(const QVector<Job> &wells, double interval)
{
    const QPointer<WellLogExport> self(this);
    las::NameList unsuitedLogs;
    End end = End::Finished;
    for (int i = 0; i < wells.size() && end == End::Finished; ++i) {
        if (wells.at(i).logs.isEmpty())
            m_tabs->setCurrentIndex(i); // the one that the box speaks of
        end = withinMemory(wells.at(i), [&] { return exportWell(wells.at(i), interval, &unsuitedLogs); });
        if (end == End::Finished)
            m_progressBar->setValue(i + 1);
    }
    if (end != End::Deleted && !unsuitedLogs.isEmpty())
        m_data.asker.warn(windowTitle(), las::unsuitedExportWarning(unsuitedLogs));
    return self ? end : End::Deleted;
}

// Boxes and events may delete the dialog: after each of them nothing of it is touched before it is known to be there.
RunDialog::End WellLogExport::exportWell(const Job &job, double interval, las::NameList *unsuitedLogs)
{
    const QPointer<WellLogExport> self(this);
    if (job.logs.isEmpty())
        return stop(m_data.asker, windowTitle(),
                    QStringLiteral("Please first select log(s) for this Well :%1.").arg(job.wellName));
    const std::optional<WellRecord> well = m_data.catalogue.readWellRecord(wellOf(job));
    if (!well) // the host's box has told of it
        return self ? End::Stopped : End::Deleted;
    las::ExportFile file = las::exportFile(*well, job.wellName, interval);
    las::NameList unsuited;
    for (const las::ListedLog &listed : job.logs) {
        std::optional<LogCurveData> log;
        const End end = readLog(job, listed, &log);
        if (end != End::Finished)
            return end;
        if (!log) {
            las::NameList unread;
            unread.add(job.wellName, listed.name);
            m_data.host.showError(las::unreadableLogsText(unread));
            return self ? End::Stopped : End::Deleted;
        }
        if (!las::addLog(&file, *log, job.isResampling))
            unsuited.add(job.wellName, listed.name);
    }
    // Once more: the host's logs may have changed since they were checked.
    const QString problem = las::gridProblem(file.range.start, file.range.stop, interval, job.wellName);
    const End end = problem.isEmpty() ? writeFile(job, file) : stop(m_data.asker, windowTitle(), problem);
    if (end == End::Finished)
        unsuitedLogs->add(unsuited);
    return end;
}

RunDialog::End WellLogExport::writeFile(const Job &job, const las::ExportFile &file)
{
    const QPointer<WellLogExport> self(this);
    bool isCreated = false;
    const base::WriteResult result = las::writeLas(
        job.path, file, [this, &self] { return self && handleEvents() == End::Finished; }, &isCreated);
    if (!self)
        return End::Deleted;
    if (isCancelled())
        return End::Cancelled;
    if (result.ok())
        return End::Finished;
    return stop(
        m_data.asker, windowTitle(),
        isCreated
            ? QStringLiteral("Unable to write file %1: %2.\nWhat was at this place before is unchanged.")
                  .arg(job.path, result.error)
            : QStringLiteral("Unable to create file.\nPlease check file read/write permission for that folder."));
}

template<class Step>
RunDialog::End WellLogExport::withinMemory(const Job &job, const Step &step)
{
    const QPointer<WellLogExport> self(this);
    try {
        return step();
    } catch (const std::bad_alloc &) {
        return self ? stop(m_data.asker, windowTitle(),
                           QStringLiteral("There is not enough memory to export the logs of %1.\n"
                                          "Its file was not written; what was at its place before is unchanged.")
                               .arg(job.wellName))
                    : End::Deleted;
    }
}

void WellLogExport::setInputsEnabled(bool isEnabled)
{
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_wells, m_tabs, m_intervalBox, m_intervalEdit, m_folderEdit,
                                          m_browseButton, m_exportButton, m_asciiButton})
        widget->setEnabled(isEnabled);
}
