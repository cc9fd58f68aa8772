#pragma once

#include "base/filestate.h"
#include "host/hostrecords.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <algorithm>

/// The text layer common to all files of a survey: three header lines and "!", then sections of "Key: value" lines
/// that "!" ends. Lines that are not understood are kept byte by byte.
namespace survey {

/// The longest text of a survey file that is shown, in bytes.
constexpr int maximumShownBytes = 4096;

/// A name or another value of a survey file. One that is longer than anybody reads is cut and ends in "…": lists and
/// tables would take minutes to lay it out.
QString shownText(const QByteArray &bytes);

/// One section of "Key: value" lines, in file order. Changing a value rewrites its line only.
class KeyValues
{
public:
    /// The value of the first line of that key, without white space around it; a null array when there is none.
    QByteArray value(const QByteArray &key) const;
    QString text(const QByteArray &key) const { return shownText(value(key)); }
    bool contains(const QByteArray &key) const;
    /// Replaces the first line of that key, or appends one.
    void set(const QByteArray &key, const QByteArray &value);
    void set(const QByteArray &key, const QString &value) { set(key, value.toUtf8()); }
    void remove(const QByteArray &key);
    /// Removes every line for whose key \a isMatch is true.
    template<class Predicate>
    void removeIf(Predicate isMatch)
    {
        const auto matches = [&isMatch](const Line &line) { return isMatch(line.key); };
        m_lines.erase(std::remove_if(m_lines.begin(), m_lines.end(), matches), m_lines.end());
    }

    void appendLine(const QByteArray &line);
    int size() const { return m_lines.size(); }
    QByteArray keyAt(int i) const { return m_lines.at(i).key; }
    QByteArray valueAt(int i) const { return m_lines.at(i).value; }
    /// The line as it stands in the file.
    QByteArray lineAt(int i) const { return m_lines.at(i).raw; }
    QByteArray toBytes() const;

private:
    struct Line
    {
        QByteArray key;
        QByteArray value;
        QByteArray raw;
    };
    int indexOf(const QByteArray &key) const;
    QVector<Line> m_lines;
};

/// A file of the survey, parsed as far as the text layer goes.
struct OdFile
{
    QByteArray version; ///< "dTect V6.6"
    QByteArray type; ///< "Well Log"
    KeyValues keys; ///< the first section
    int bodyOffset = 0; ///< where what follows the first section begins
    bool isCut = false; ///< the bytes end before the first section does
};

/// Parses the header and the first section. The error is a sentence without the file's name: no survey file, of
/// another type than \a type, or cut off within its header. A section that the end of the bytes cuts off is no error
/// (marker files have no end mark), but isCut tells.
host::Outcome<OdFile> parseOdFile(const QByteArray &bytes, const QByteArray &type);

/// The three header lines and "!" of a new file of a type, dated now.
QByteArray odFileHeader(const QByteArray &type);
/// The date as the survey files write it, in English whatever the locale.
QByteArray odFileDate();

using base::FileState;
using base::fileState;

/// The bytes of a file, or the system's error code.
struct FileRead
{
    QByteArray bytes;
    int errorCode = 0; ///< an errno value; 0 when the file was read
    FileState state; ///< before the first byte was read
};

/// A file that is read piece by piece with plain system calls.
class InputFile
{
public:
    explicit InputFile(const QString &path);
    ~InputFile();
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    /// Up to \a size further bytes of those that the file had when it was opened; none after an error.
    QByteArray read(int size);
    /// As it was when the file was opened, before the first byte was read.
    const FileState &state() const { return m_state; }
    qint64 size() const { return m_state.size; }
    /// An errno value; 0 as long as all went well. Only plain files are read.
    int errorCode() const { return m_errorCode; }

private:
    int m_errorCode = 0;
    int m_file = -1;
    FileState m_state;
    qint64 m_done = 0;
};

/// Reads a whole file, or its first \a maximumSize bytes.
FileRead readFile(const QString &path, int maximumSize = -1);
/// Sentences for the user about a file that could not be read or written; unreadableText() has no file's name in it.
QString readErrorText(const QString &path, int errorCode);
QString writeErrorText(const QString &path, const QString &reason);
QString unreadableText(int errorCode);
/// Reads a whole file. The error is a sentence that names it and says why.
host::Outcome<QByteArray> readFileBytes(const QString &path);

/// Deletes a file, and puts a file or folder in another's place. False when it could not be done.
bool removeFile(const QString &path);
bool moveInPlace(const QString &from, const QString &to);

/// A key as it is written: a ":" in it is escaped.
QByteArray escapedKey(const QByteArray &key);

/// A text as it comes back after it was written as a value: one without white space around it.
QString storedText(const QString &text);

} // namespace survey
