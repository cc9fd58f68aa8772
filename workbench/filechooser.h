#pragma once

#include <QString>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace workbench {

/// How windows let the user choose folders and files: dialogs in the product, functions of their own in tests.
struct FileChooser
{
    /// An existing folder, or an empty string when the user gives up. Starts in \a folder.
    std::function<QString(QWidget *parent, const QString &title, const QString &folder)> chooseFolder;
    /// Existing files, none when the user gives up. \a filter as in QFileDialog.
    std::function<QStringList(QWidget *parent, const QString &title, const QString &folder, const QString &filter)>
        chooseFiles;
    /// A file to be written, or an empty string. \a path is what is proposed; replacing a file has been asked about.
    std::function<QString(QWidget *parent, const QString &title, const QString &path, const QString &filter)>
        chooseNewFile = {};
};

FileChooser dialogFileChooser();

} // namespace workbench
