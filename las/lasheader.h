#pragma once

#include <QChar>
#include <QString>
#include <QStringList>
#include <QVector>

/// The header of a LAS file read leniently, for proposals (a new well from a file) and previews. What an
/// import takes from a file comes from WellInfo.
namespace las {

/// One line "mnemonic.unit value : description". Fields are trimmed; blanks inside a value stay, and so do
/// colons but the last. In a line without a colon two blanks or tabs in a row end the value.
struct HeaderItem
{
    QChar section; ///< 'V', 'W', 'P' or 'C'
    QString mnemonic;
    QString unit;
    QString value; ///< where a LAS 1.2 well section has it behind the colon, that text
    QString description;
};

struct Header
{
    QVector<HeaderItem> items; ///< in file order
    bool wrapped = false;

    /// The first item of \a section ('\0': of any) with the first of \a mnemonics (any case) that occurs;
    /// null where none does. The pointer is good as long as items is not changed.
    const HeaderItem *find(QChar section, const QStringList &mnemonics) const;
};

struct HeaderResult
{
    Header header;
    QString error; ///< empty on success, else a sentence that names the file
    bool isUnicode = true; ///< of what was read; otherwise its characters are a guess, or the codec's
};

/// Reads the sections V, W, P and C (either case; "~Log_Parameter" and "~Log_Definition" of LAS 3.0 are P and
/// C, other titles of that kind are left out) up to the first data section. Touches the file no further than
/// about twice its header and never more than 4 MB; what a header holds beyond that is left out. An error is
/// a file that cannot be read or has no title of a section V, W or C. \a codec as in prepareText().
HeaderResult readHeader(const QString &path, const QByteArray &codec = {});

} // namespace las
