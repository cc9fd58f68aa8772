#pragma once

#include "workbench/filechooser.h"

#include <QDialog>

namespace base {
class Asker;
}

namespace workbench {

/// Shows a text of many lines that the user may copy or save as a file.
class ReportDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a fileName is what the file is proposed to be called.
    ReportDialog(const QString &title, const QString &sentence, const QString &text, const QString &fileName,
                 base::Asker &asker, const FileChooser &chooser, QWidget *parent = nullptr);

private:
    void save();

    QString m_text;
    QString m_fileName;
    base::Asker &m_asker;
    FileChooser m_chooser;
};

} // namespace workbench
