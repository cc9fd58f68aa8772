#include "las/namelist.h"

#include "las/showntext.h"

namespace las {

void NameList::add(const QString &heading, const QString &name)
{
    if (m_lines.isEmpty() || m_lines.last().heading != heading)
        m_lines.append({heading, {}});
    m_lines.last().names.append(shortened(name));
}

void NameList::add(const NameList &other)
{
    m_lines += other.m_lines;
}

QString NameList::text() const
{
    QStringList lines;
    for (const Line &line : m_lines)
        lines.append(line.heading + QStringLiteral(": ") + line.names.join(QStringLiteral(", ")));
    return lines.join(QLatin1Char('\n'));
}

} // namespace las
