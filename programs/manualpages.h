#pragma once

#include "programs/manualtext.h"

namespace programs {

/// Writes the manual as PDF pages: a title, the contents with page numbers that lead there, the chapters, whose names of
/// others lead there too; their headings are its bookmarks. Returns why it could not be written, or an empty string.
QString writeManual(const QVector<ManualChapter> &chapters, const QString &pictureFolder, const QString &file);

} // namespace programs
