#pragma once

#include "options.h"

#include <QHash>
#include <QString>
#include <QTemporaryDir>

#include <random>

namespace campaign {

class SharedDiary;

/// Two programs that write one survey at the same time, each under names of its own, and are killed.
class TwoWriters
{
public:
    enum class Second { Workbench, BatchTool };

    TwoWriters(Second second, std::mt19937 *random, Findings *findings);
    void run(int rounds);

private:
    QString work() const { return m_folder.filePath(QStringLiteral("work")); }
    QString survey() const { return work() + QStringLiteral("/survey"); }
    bool isBatchTool(int program) const { return m_second == Second::BatchTool && program % 2 == 1; }
    QString nameOf(int program, int save) const;
    void find(const QString &what) { m_findings->add(QStringLiteral("two writers"), what); }
    void write(int program, const SharedDiary &diary) const;
    QString import(int program, int save) const;
    void check(int round);

    Second m_second;
    std::mt19937 *m_random;
    Findings *m_findings;
    QTemporaryDir m_folder;
    QHash<int, int> m_done; ///< how many saves a program was told as done
    int m_total[2] = {0, 0};
};

} // namespace campaign
