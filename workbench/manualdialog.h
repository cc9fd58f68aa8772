#pragma once

#include <QDialog>

namespace workbench {

/// Shows the pages of the manual from their folder, "README.md" first; links between them work.
class ManualDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ManualDialog(const QString &folder, QWidget *parent = nullptr);
};

} // namespace workbench
