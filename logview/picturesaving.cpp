#include "logview/picturesaving.h"

#include "base/nestedevents.h"
#include "base/progressbox.h"
#include "base/safename.h"
#include "base/waitcursor.h"
#include "datastore/project.h"
#include "datastore/projectfile.h"
#include "logview/withoutselection.h"

namespace logview {

namespace {

QString statusOf(const base::WriteResult &result, const DisplayPicture &picture, const QString &path,
                 const QString &formatName)
{
    if (!result.ok())
        return QStringLiteral("The picture %1 could not be written: %2").arg(path, result.error);
    if (picture.isScaledDown())
        return QStringLiteral("Saved as %1, scaled down to what a %2 file can hold.").arg(path, formatName);
    return QStringLiteral("Saved as %1.").arg(path);
}

} // namespace

SavedPicture saveDisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, const Project &project,
                                const QString &title, PictureFormat format, QWidget *window)
{
    const base::NestedEvents events; // the scenes stay until all is drawn
    const base::WaitCursor cursor;
    const WithoutSelection plain(logScene);
    const DisplayPicture picture(headerScene, logScene, format);
    const bool isJpeg = format == PictureFormat::Jpeg;
    const QString ending = isJpeg ? QStringLiteral(".jpg") : QStringLiteral(".tiff");
    const QString path = project.projectFolder + QLatin1Char('/') + base::fileNameFor(title, ending.size()) + ending;
    base::ProgressBox progress(QStringLiteral("Print"), QStringLiteral("Drawing %1").arg(title), window);
    PicturePage page(picture.size());
    bool isCancelled = false;
    qint64 done = 0;
    const auto take = [&](const QImage &rows) {
        page.append(rows);
        done += rows.height();
        isCancelled = !progress.step(done, picture.size().height());
        return !isCancelled;
    };
    base::WriteResult result = checkProjectPath(project.projectFolder, path);
    if (result.ok())
        result = picture.write(path, take);
    else
        picture.render(take);
    if (isCancelled)
        return {QStringLiteral("The picture was cancelled; nothing was saved."), std::nullopt};
    return {statusOf(result, picture, path, isJpeg ? QStringLiteral("JPEG") : QStringLiteral("TIFF")), page};
}

} // namespace logview
