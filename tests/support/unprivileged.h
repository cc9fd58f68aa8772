#pragma once

#include <QGuiApplication>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

/// Runs \a work in a child process that has no rights of the superuser, so that read-only folders are read-only to
/// it, and gives back what it returns (0..255); -1 when the child could not run or crashed. The child shares nothing
/// with the test but the files.
template<class Work>
int runUnprivileged(const Work &work)
{
    const pid_t child = ::fork();
    if (child < 0)
        return -1;
    if (child == 0) {
        constexpr unsigned nobody = 65534;
        constexpr unsigned patienceS = 100;
        ::alarm(patienceS); // one that hangs fails
        if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(254);
        ::_exit(work());
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

/// Whether such a child can show windows: not where they need a connection, which it would share with the test.
inline bool canShowInChild()
{
    return QGuiApplication::platformName() != QLatin1String("xcb");
}

} // namespace testing_support
