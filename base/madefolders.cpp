#include "base/madefolders.h"

#include <QDir>
#include <QFileInfo>

namespace base {

MadeFolders::MadeFolders(const QString &path)
{
    for (QString folder = path; !QFileInfo::exists(folder); folder = QFileInfo(folder).path())
        m_missing.append(folder);
}

MadeFolders::~MadeFolders()
{
    for (const QString &folder : qAsConst(m_missing))
        QDir().rmdir(folder);
}

} // namespace base
