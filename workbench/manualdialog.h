#pragma once

#include <QDialog>

namespace workbench {

/// Shows the pages of the manual from their folder; links between them work. One page is the first: "README.md".
class ManualDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ManualDialog(const QString &folder, QWidget *parent = nullptr);
};

} // namespace workbench
