#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace las {

/// Names under headings as a box lists them, none left out: a line "heading: name, name" for each heading. Names that
/// are too long to read are shortened.
class NameList
{
public:
    void add(const QString &heading, const QString &name);
    void add(const NameList &other);
    bool isEmpty() const { return m_lines.isEmpty(); }
    QString text() const;

private:
    struct Line
    {
        QString heading;
        QStringList names;
    };
    QVector<Line> m_lines;
};

} // namespace las
