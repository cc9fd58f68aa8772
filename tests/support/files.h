#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// Small file helpers of the tests. They fail the running test when they cannot do what they say.
namespace files {

QByteArray read(const QString &path);
/// Makes missing parent folders too.
void write(const QString &path, const QByteArray &bytes);

/// Everything below a folder, hidden files too: relative path to content; folders end in "/", links are "-> target". Without
/// the lock files of writers, which stay behind.
QMap<QString, QByteArray> snapshot(const QString &folder);

/// Copies a folder with all its content and makes the copy writable.
void copyFolder(const QString &from, const QString &to);

/// The folder of real data with this name, or an empty string when it is not there.
QString sharedFolder(const QString &name);

} // namespace files
