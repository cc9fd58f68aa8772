#include "survey/surveyplace.h"

#include "base/atomicfile.h"
#include "base/folderlinks.h"
#include "survey/odfile.h"
#include "survey/surveyfolder.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace survey {

namespace {

constexpr char hiddenPrefix[] = ".lorva-survey-";

bool isEmptyFolder(const QString &path)
{
    return QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

bool isFree(const QString &path)
{
    const QFileInfo there(path);
    return !there.isSymLink() && (!there.exists() || (there.isDir() && isEmptyFolder(path)));
}

// What a dead program left must not make an empty folder look used.
bool isNewRoot(const QString &root)
{
    removeUnfinishedSurveys(root);
    return !QFileInfo::exists(root) || isEmptyFolder(root);
}

} // namespace

void removeUnfinishedSurveys(const QString &root)
{
    base::removeHiddenFolders(root, hiddenPrefix);
}

SurveyPlace::SurveyPlace(const QString &path)
    : m_target(QDir::cleanPath(QDir::current().absoluteFilePath(path)))
    , m_root(QFileInfo(m_target).path())
    , m_isNewRoot(isNewRoot(m_root))
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
    m_beside.emplace(m_root, hiddenPrefix);
    if (!m_beside->isValid())
        m_error = QStringLiteral("Cannot make a folder in %1: %2.").arg(m_root, base::systemErrorText(errno));
}

QString SurveyPlace::buildFolder() const
{
    return m_beside->filePath(QStringLiteral("survey"));
}

host::Status SurveyPlace::putInPlace()
{
    const QString markPath = m_root + QStringLiteral("/.omf");
    const bool isMarked = m_isNewRoot && !QFileInfo::exists(markPath);
    // The mark comes before the survey: whoever finds the survey finds a data root that the host accepts. It is
    // written where all goes if this program dies.
    if (isMarked) {
        const QString mark = m_beside->filePath(QStringLiteral("mark"));
        const base::WriteResult written = base::writeFileAtomically(mark, dataRootMark());
        if (!written.ok())
            return {QStringLiteral("Cannot write the file %1: %2.").arg(markPath, written.error)};
        if (!moveInPlace(mark, markPath))
            return {QStringLiteral("Cannot write the file %1: %2.").arg(markPath, base::systemErrorText(errno))};
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
