#include "las/welllogstabwidget.h"

#include "las/checklist.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

WellLogsTabWidget::WellLogsTabWidget(const QStringList &logNames, QWidget *parent)
    : QWidget(parent)
{
    m_all = new QCheckBox(QStringLiteral("All"));
    m_all->setObjectName(QStringLiteral("allBox"));
    m_logs = new QListWidget;
    m_logs->setObjectName(QStringLiteral("logList"));
    las::fillCheckList(m_logs, logNames);
    auto *page = new QVBoxLayout(this);
    page->addWidget(m_all);
    page->addWidget(m_logs);
    connect(m_all, &QCheckBox::toggled, this, &WellLogsTabWidget::allLogsChecked);
    connect(m_logs, &QListWidget::itemChanged, this, &WellLogsTabWidget::checkLogsCheckState);
}

QVector<las::ListedLog> WellLogsTabWidget::checkedLogs() const
{
    return las::checkedLogs(m_logs);
}

void WellLogsTabWidget::allLogsChecked(bool isChecked)
{
    las::setAllChecked(m_logs, isChecked);
}

void WellLogsTabWidget::checkLogsCheckState(QListWidgetItem *)
{
    const QSignalBlocker blocker(m_all);
    m_all->setChecked(las::isAllChecked(m_logs));
}
