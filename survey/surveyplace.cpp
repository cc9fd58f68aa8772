#include "survey/surveyplace.h"

#include "base/atomicfile.h"
#include "survey/odfile.h"
#include "survey/surveyfolder.h"

#include <QDir>
#include <QFileInfo>

namespace survey {

namespace {

bool isEmptyFolder(const QString &path)
{
    return QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

bool isFree(const QString &path)
{
    const QFileInfo there(path);
    return !there.isSymLink() && (!there.exists() || (there.isDir() && isEmptyFolder(path)));
}

} // namespace

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

SurveyPlace::SurveyPlace(const QString &path)
    : m_target(QDir::cleanPath(QDir::current().absoluteFilePath(path)))
    , m_root(QFileInfo(m_target).path())
    , m_isNewRoot(!QFileInfo::exists(m_root) || isEmptyFolder(m_root))
    , m_made(m_root)
{
    if (!isFree(m_target)) {
        m_error = QStringLiteral("%1 exists already and is not empty. Nothing was changed.").arg(m_target);
        return;
    }
    if (!QDir().mkpath(m_root)) {
        m_error = QStringLiteral("Cannot make the folder %1.").arg(m_root);
        return;
    }
    m_beside = std::make_unique<QTemporaryDir>(m_root + QStringLiteral("/.lorva-survey-XXXXXX"));
    if (!m_beside->isValid())
        m_error = QStringLiteral("Cannot make a folder in %1: %2.").arg(m_root, m_beside->errorString());
}

QString SurveyPlace::buildFolder() const
{
    return m_beside->path() + QStringLiteral("/survey");
}

host::Status SurveyPlace::putInPlace()
{
    const QString markPath = m_root + QStringLiteral("/.omf");
    const bool isMarked = m_isNewRoot && !QFileInfo::exists(markPath);
    // The mark comes before the survey: whoever finds the survey finds a data root that the host accepts.
    if (isMarked) {
        const base::WriteResult mark = base::writeFileAtomically(markPath, dataRootMark());
        if (!mark.ok())
            return {QStringLiteral("Cannot write the file %1: %2.").arg(markPath, mark.error)};
    }
    // An empty folder in the way is replaced by the rename itself.
    if (!moveInPlace(buildFolder(), m_target)) {
        if (isMarked)
            removeFile(markPath);
        return {QStringLiteral("Cannot put the new survey in its place %1.").arg(m_target)};
    }
    m_made.keep();
    return {};
}

} // namespace survey
