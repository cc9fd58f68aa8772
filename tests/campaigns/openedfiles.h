#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace campaign {

/// Notes every file below a folder that this program opens, by whatever way, as long as it stands.
class OpenedFiles
{
public:
    /// \a folder without links in its path.
    explicit OpenedFiles(const QByteArray &folder);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles &) = delete;
    OpenedFiles &operator=(const OpenedFiles &) = delete;

    const QByteArrayList &paths() const { return m_paths; }

    /// For the calls that are caught.
    void note(int file);
    static OpenedFiles *inForce;

private:
    QByteArray m_folder;
    QByteArrayList m_paths;
};

} // namespace campaign
