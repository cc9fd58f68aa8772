#pragma once

#include <QStringList>

namespace base {

/// Takes away the folders that lead to a path and were missing, as far as they are empty, unless they are kept.
class MadeFolders
{
public:
    /// To be made before they are.
    explicit MadeFolders(const QString &path);
    ~MadeFolders();
    MadeFolders(const MadeFolders &) = delete;
    MadeFolders &operator=(const MadeFolders &) = delete;
    void keep() { m_missing.clear(); }

private:
    QStringList m_missing; ///< the innermost first
};

} // namespace base
