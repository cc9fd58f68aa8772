#pragma once

#include "las/lastext.h"

#include <QString>
#include <QVector>

/// The lines of a LAS file for display. Holds the file's bytes once (shared between copies) and where each
/// line begins; a line becomes a QString when it is asked for. Does not need the file after loading.
class LasLines
{
public:
    /// No lines at all.
    LasLines() = default;
    /// Only line 0, the title "<b>Filename : " + \a path + "</b>" (the path stands as it is, without
    /// escapes).
    explicit LasLines(const QString &path);

    las::Encoding encoding() const { return m_text.encoding; }
    int count() const { return m_title.isNull() ? 0 : 1 + m_starts.size(); }
    /// Line \a i without its line end, in time proportional to its length; empty where there is none.
    QString line(int i) const;
    /// The same, of a longer line the first \a maximumBytes bytes only; no character is cut.
    QString line(int i, int maximumBytes) const;

private:
    friend class WellInfo;

    QString m_title;
    las::Text m_text;
    QVector<int> m_starts; ///< offset of the first byte of each line of m_text
};
