#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

namespace workbench {

/// The files and folders of this machine that are dragged or dropped.
inline QStringList localPaths(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    return paths;
}

} // namespace workbench
