#include "survey/surveyuse.h"

#include "base/atomicfile.h"
#include "base/filelock.h"
#include "survey/odfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace survey {

namespace {

const QLatin1String beginning(".lorva.open.");

/// The first two lines of such a file.
struct User
{
    QString host;
    QString process;
};

User userOf(const QString &path)
{
    const QStringList lines = QString::fromUtf8(readFile(path, maximumShownBytes).bytes).split(u'\n');
    return {lines.value(0), lines.value(1)};
}

bool isAlive(const User &user)
{
    bool isNumber = false;
    const int process = user.process.toInt(&isNumber);
    if (user.host != QSysInfo::machineHostName() || !isNumber || process <= 0)
        return true; // nobody here can tell
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

} // namespace

SurveyUse::~SurveyUse()
{
    close();
}

void SurveyUse::close()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
    if (!m_path.isEmpty())
        removeFile(m_path);
    m_path.clear();
}

QStringList SurveyUse::open(const QString &surveyDirectory)
{
    close();
    QStringList others;
    if (surveyDirectory.isEmpty())
        return others;
    const QDir folder(surveyDirectory);
    for (const QString &name : folder.entryList({beginning + QLatin1Char('*')}, QDir::Files | QDir::Hidden)) {
        const QString path = folder.filePath(name);
        const User user = userOf(path);
        const int file = base::openToLock(QFile::encodeName(path));
        const base::LockState state = file < 0 ? base::LockState::NotLockable : base::tryLock(file);
        const bool isStale =
            state == base::LockState::Locked || (state == base::LockState::NotLockable && !isAlive(user));
        if (isStale)
            removeFile(path);
        else
            others.append(QStringLiteral("process %1 on %2").arg(user.process, user.host));
        if (file >= 0)
            ::close(file);
    }
    const QString host = QSysInfo::machineHostName();
    const QString process = QString::number(QCoreApplication::applicationPid());
    const QString path = folder.filePath(beginning + QFileInfo(host).fileName() + QLatin1Char('.') + process);
    if (!base::writeFileAtomically(path, (host + QLatin1Char('\n') + process + QLatin1Char('\n')).toUtf8(),
                                   base::Flush::Later)
             .ok())
        return others;
    m_path = path;
    m_file = base::openToLock(QFile::encodeName(path));
    if (m_file >= 0)
        base::tryLock(m_file);
    return others;
}

} // namespace survey
