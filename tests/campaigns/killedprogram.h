#pragma once

#include "base/filesystemcalls.h"

#include <QThreadPool>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <functional>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace campaign {

/// Does not wait for the disk, and writes in small pieces, so that a kill can come between them.
class SmallSteps : public base::FileSystemCalls
{
public:
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        return FileSystemCalls::write(file, bytes, qMin<size_t>(size, 500));
    }
    int fsync(int) override { return 0; }
    int syncfs(int) override { return 0; }
};

/// What a program says of itself; it outlives it.
struct Diary
{
    std::atomic<int> isReady;
    std::atomic<int> begun; ///< saves
    std::atomic<int> done; ///< that were told as done
    std::atomic<int> failed; ///< 1 when one was told as failed
    char error[500];
};

class SharedDiary
{
public:
    SharedDiary()
        : m_diary(static_cast<Diary *>(
            ::mmap(nullptr, sizeof(Diary), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
    }
    ~SharedDiary() { ::munmap(m_diary, sizeof(Diary)); }
    SharedDiary(const SharedDiary &) = delete;
    SharedDiary &operator=(const SharedDiary &) = delete;
    Diary *operator->() const { return m_diary; }

private:
    Diary *m_diary;
};

/// A child that does its work until it is killed.
class Program
{
public:
    explicit Program(const std::function<void(const SharedDiary &)> &work)
        : m_pid(forked())
    {
        if (m_pid != 0)
            return;
        ::setpgid(0, 0); // its own programs are killed with it
        SmallSteps calls;
        const base::ScopedFileSystemCalls scope(calls);
        work(diary);
        ::_exit(0);
    }
    ~Program() { kill(); }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    void waitUntilReady() const
    {
        while (diary->isReady == 0 && ::waitpid(m_pid, nullptr, WNOHANG) == 0)
            ::usleep(100);
    }
    /// False when it had ended by itself.
    bool kill()
    {
        if (m_pid <= 0)
            return true;
        ::prctl(PR_SET_CHILD_SUBREAPER, 1); // what it started is waited for too
        ::setpgid(m_pid, m_pid);
        ::kill(-m_pid, SIGKILL);
        int status = 0;
        const bool isKilled =
            ::waitpid(m_pid, &status, 0) == m_pid && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        while (::waitpid(-m_pid, nullptr, 0) > 0 || errno == EINTR) { }
        m_pid = -1;
        return isKilled;
    }

    SharedDiary diary;

private:
    static pid_t forked()
    {
        QThreadPool::globalInstance()->waitForDone(); // the child would wait for threads that it does not have
        return ::fork();
    }

    pid_t m_pid;
};

} // namespace campaign
