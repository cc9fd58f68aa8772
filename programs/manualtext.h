#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace programs {

/// A chapter of the manual, as Markdown.
struct ManualChapter
{
    QString file; ///< its name in the manual's folder
    QString title;
    QString text; ///< begins with the numbered title; links to other chapters name their numbers
};

/// The chapters in a folder of pages: in the order in which its README.md links them, then the pages that it does not
/// know, by name. Empty where there is no README.md.
QVector<ManualChapter> readManual(const QString &folder);

/// The file names of the pictures that a chapter shows.
QStringList picturesOf(const ManualChapter &chapter);

} // namespace programs
