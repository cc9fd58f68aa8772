#pragma once

#include <QElapsedTimer>
#include <QString>

namespace batch {

/// The line on a terminal that says how far a longer work has come: from its second second on, on the standard error. Nothing
/// where that is no terminal. It goes when the work is done.
class Progress
{
public:
    /// \a what as in "Importing", \a total is at least 1.
    Progress(const QString &what, int total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void setDone(int done);
    /// For work whose size shows only on the way.
    void setTotal(int total) { m_total = total; }

private:
    QString m_what;
    int m_total;
    int m_shown = -1;
    bool m_isTerminal;
    QElapsedTimer m_time;
};

} // namespace batch
