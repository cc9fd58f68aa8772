#include "workbench/filechooser.h"

#include <QFileDialog>

namespace workbench {

FileChooser dialogFileChooser()
{
    return {[](QWidget *parent, const QString &title, const QString &folder) {
                return QFileDialog::getExistingDirectory(parent, title, folder);
            },
            [](QWidget *parent, const QString &title, const QString &folder, const QString &filter) {
                return QFileDialog::getOpenFileNames(parent, title, folder, filter);
            },
            [](QWidget *parent, const QString &title, const QString &path, const QString &filter) {
                return QFileDialog::getSaveFileName(parent, title, path, filter);
            }};
}

} // namespace workbench
