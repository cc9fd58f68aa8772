#include "logview/picturewriter.h"

#include "base/leftovers.h"

#include <QFileInfo>

base::WriteResult PictureWriter::open(const QString &path, const QSize &size, int dotsPerInch)
{
    base::removeLeftovers(QFileInfo(path).path()); // of programs that died while they wrote a picture there
    m_fileResult = m_file.open(path);
    return m_fileResult.ok() ? resultOf(start(size, dotsPerInch)) : m_fileResult;
}

base::WriteResult PictureWriter::append(const QImage &rows)
{
    const QImage pixels = rows.convertToFormat(QImage::Format_RGB888);
    base::WriteResult result;
    for (int y = 0; y < pixels.height() && result.ok(); ++y)
        result = resultOf(appendRow(pixels.constScanLine(y)));
    return result;
}

base::WriteResult PictureWriter::commit()
{
    const base::WriteResult result = resultOf(finish());
    return result.ok() ? m_file.commit() : result;
}

base::WriteResult PictureWriter::commitAsNew()
{
    const base::WriteResult result = resultOf(finish());
    bool isTaken = false;
    return result.ok() ? m_file.commitAsNew(&isTaken) : result;
}

bool PictureWriter::writeBytes(const void *bytes, qint64 size)
{
    if (m_fileResult.ok())
        m_fileResult = m_file.write(static_cast<const char *>(bytes), size);
    return m_fileResult.ok();
}

bool PictureWriter::seek(qint64 position)
{
    if (m_fileResult.ok())
        m_fileResult = m_file.seek(position);
    return m_fileResult.ok();
}

base::WriteResult PictureWriter::resultOf(bool isEncoded) const
{
    if (m_fileResult.ok() && !isEncoded)
        return {QStringLiteral("the picture could not be encoded")};
    return m_fileResult;
}
