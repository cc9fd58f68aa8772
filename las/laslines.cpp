#include "las/laslines.h"

#include <limits>

LasLines::LasLines(const QString &path)
    : m_title(QStringLiteral("<b>Filename : ") + path + QStringLiteral("</b>"))
{
}

QString LasLines::line(int i) const
{
    return line(i, std::numeric_limits<int>::max());
}

QString LasLines::line(int i, int maximumBytes) const
{
    if (i == 0)
        return m_title;
    if (i < 0 || i > m_starts.size())
        return QString();
    const char *bytes = m_text.bytes.constData();
    const char *begin = bytes + m_starts.at(i - 1);
    const char *end = bytes + (i < m_starts.size() ? m_starts.at(i) : m_text.bytes.size());
    while (end > begin && base::isLineEnd(end[-1]))
        --end;
    return las::decodeFront(begin, end, m_text.encoding, maximumBytes);
}
