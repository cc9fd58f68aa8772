#include "las/exportcurvesinascii.h"

#include "base/asker.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "las/checklist.h"
#include "las/curvetextwriter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <new>

ExportCurvesInAscii::ExportCurvesInAscii(ProjectData &projectData, QWidget *parent)
    : QDialog(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("ExportCurvesInAscii"));
    setWindowTitle(QStringLiteral("Exporting Well Curve(s)"));
    setWindowIcon(m_data.host.icon(QStringLiteral("export_wlc.png")));
    m_wellBox = new QComboBox;
    m_wellBox->setObjectName(QStringLiteral("wellBox"));
    for (int well = 0; well < m_data.catalogue.wellCount(); ++well)
        m_wellBox->addItem(m_data.catalogue.wellNames().at(well), m_data.catalogue.wellKey(well));
    m_wellBox->setMaxVisibleItems(20);
    m_allBox = new QCheckBox(QStringLiteral("Select All"));
    m_allBox->setObjectName(QStringLiteral("allBox"));
    m_logs = new QListWidget;
    m_logs->setObjectName(QStringLiteral("logList"));
    auto *target =
        new QLabel(QStringLiteral("Files go to the project folder, %1/Wells.").arg(m_data.project.projectFolder));
    target->setWordWrap(true);
    target->setTextFormat(Qt::PlainText);
    auto *exportButton = new QPushButton(QStringLiteral("Export"));
    exportButton->setObjectName(QStringLiteral("exportButton"));
    auto *closeButton = new QPushButton(QStringLiteral("Close"));
    closeButton->setObjectName(QStringLiteral("closeButton"));

    auto *page = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->addRow(QStringLiteral("Well :"), m_wellBox);
    page->addLayout(form);
    page->addWidget(m_allBox);
    page->addWidget(m_logs, 1);
    page->addWidget(target);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(exportButton);
    buttons->addWidget(closeButton);
    page->addLayout(buttons);
    exportButton->setDefault(true);
    resize(380, 440);
    wellChanged();

    connect(m_wellBox, qOverload<int>(&QComboBox::currentIndexChanged), this, &ExportCurvesInAscii::wellChanged);
    connect(m_allBox, &QCheckBox::toggled, this, &ExportCurvesInAscii::selectAllToggle);
    connect(m_logs, &QListWidget::itemChanged, this, &ExportCurvesInAscii::logChecked);
    connect(exportButton, &QPushButton::clicked, this, &ExportCurvesInAscii::exportClicked);
    connect(closeButton, &QPushButton::clicked, this, &ExportCurvesInAscii::close);
}

// By its key: wells may share a name, and the catalogue may be read anew while the dialog stands.
int ExportCurvesInAscii::currentWell() const
{
    return m_data.catalogue.indexOfKey(m_wellBox->currentData().toString());
}

void ExportCurvesInAscii::wellChanged()
{
    const int well = currentWell();
    las::fillCheckList(m_logs, well >= 0 ? m_data.catalogue.logNames(well) : QStringList());
    const QSignalBlocker blocker(m_allBox);
    m_allBox->setChecked(false);
}

void ExportCurvesInAscii::selectAllToggle(bool flag)
{
    las::setAllChecked(m_logs, flag);
}

void ExportCurvesInAscii::logChecked()
{
    const QSignalBlocker blocker(m_allBox);
    m_allBox->setChecked(las::isAllChecked(m_logs));
}

ExportCurvesInAscii::Outcome ExportCurvesInAscii::exportLog(const las::ListedLog &log)
{
    const QString wellName = m_wellBox->currentText().trimmed();
    try {
        const std::optional<LogCurveData> curve =
            las::readListedLog(m_data.catalogue, currentWell(), log, WellsCatalogue::OnFailure::BeSilent);
        if (!curve)
            return Outcome::Unread;
        return las::writeCurveText(m_data.project.projectFolder, wellName, *curve).ok() ? Outcome::Written
                                                                                        : Outcome::Failed;
    } catch (const std::bad_alloc &) {
        return Outcome::Failed;
    }
}

void ExportCurvesInAscii::exportClicked()
{
    const QPointer<ExportCurvesInAscii> self(this);
    bool hasFailed = false;
    bool hasWritten = false;
    las::NameList unread;
    {
        const base::WaitCursor waiting;
        for (const las::ListedLog &log : las::checkedLogs(m_logs)) {
            const Outcome outcome = exportLog(log);
            hasFailed = hasFailed || outcome != Outcome::Written;
            hasWritten = hasWritten || outcome == Outcome::Written;
            if (outcome == Outcome::Unread)
                unread.add(m_wellBox->currentText(), log.name);
        }
    }
    if (!unread.isEmpty())
        m_data.host.showError(las::unreadableLogsText(unread));
    if (!self)
        return;
    if (hasWritten)
        emit exported(m_data.project.projectFolder + QStringLiteral("/Wells"));
    base::Box box{base::BoxIcon::Information,
                  QStringLiteral("Exporting Well Curve(s)"),
                  QStringLiteral("Exporting of Selected Well Curve(s) is Done."),
                  {base::BoxButton::Ok},
                  QStringLiteral("Ok")};
    if (hasFailed) {
        box.icon = base::BoxIcon::Warning;
        box.text = QStringLiteral("Some errors while Exporting Well Curves.\nPlease Check file permision.");
    }
    m_data.asker.show(box);
}
