#pragma once

#include "workbench/pluginloader.h"

#include <QDialog>

namespace workbench {

/// Shows what became of each plug-in library.
class LoadedPluginsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LoadedPluginsDialog(const QVector<PluginReport> &reports, QWidget *parent = nullptr);

private:
    QWidget *makeTable(const QVector<PluginReport> &reports);
};

} // namespace workbench
