#pragma once

#include "las/exportplan.h"

#include <QStringList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QListWidget;
class QListWidgetItem;
QT_END_NAMESPACE

/// The logs of one well as a list to check, under a check box "All".
class WellLogsTabWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WellLogsTabWidget(const QStringList &logNames, QWidget *parent = nullptr);

    QVector<las::ListedLog> checkedLogs() const;

public slots:
    void allLogsChecked(bool isChecked);
    void checkLogsCheckState(QListWidgetItem *item);

private:
    QCheckBox *m_all = nullptr;
    QListWidget *m_logs = nullptr;
};
