#pragma once

#include <QByteArray>
#include <QString>

namespace base {

/// A hidden folder ".lorva-XXXXXX" in which something is built or to which something is moved. It goes, with all that
/// it holds, when this does. Locked meanwhile, so that removeLeftovers() of another program lets it stand.
class HiddenFolder
{
public:
    /// In folders that are not ours alone \a prefix says more. A folder that cannot be made leaves errno.
    explicit HiddenFolder(const QString &parent, const QByteArray &prefix = ".lorva-");
    ~HiddenFolder();
    HiddenFolder(const HiddenFolder &) = delete;
    HiddenFolder &operator=(const HiddenFolder &) = delete;

    bool isValid() const { return m_file >= 0; }
    const QString &path() const { return m_path; }
    QString filePath(const QString &name) const { return m_path + QLatin1Char('/') + name; }

private:
    QString m_path;
    int m_file = -1;
};

/// Locks an open hidden file or folder of ours. False when another program took it for a leftover in the moment before:
/// then it is gone or about to go, and the writer makes another one.
bool lockHidden(int file, const QByteArray &path);

/// Deletes the hidden files and folders that writes of ours left directly in \a folder when their process died: those
/// named ".lorva-" and six letters or digits on which nobody holds a lock. Nothing else is touched, and no link is
/// followed.
void removeLeftovers(const QString &folder);

/// The same for hidden folders with another prefix than ".lorva-"; files are not touched.
void removeHiddenFolders(const QString &folder, const QByteArray &prefix);

} // namespace base
