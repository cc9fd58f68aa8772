#pragma once

#include "las/lasheader.h"

namespace las {

/// Takes the items from the lines of a LAS file's header sections, line by line.
class HeaderParser
{
public:
    /// Called for a line that begins with "~". Gives 'V', 'W', 'P' or 'C' for the header sections, 'A' for log data
    /// and null for any other section, whose lines readLine() passes over.
    QChar beginSection(const QString &title);
    void readLine(const QString &line);
    /// Whether readLine() takes anything from the lines of the section.
    bool isInSection() const { return !m_section.isNull(); }

    const Header &header() const { return m_header; }

private:
    Header m_header;
    QChar m_section;
    bool m_isVersion1 = false;
};

} // namespace las
