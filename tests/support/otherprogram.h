#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

/// Another program, as a child of the test: it does its work, calls what it is given at the point at which it is to
/// stand, and is killed there.
class OtherProgram
{
public:
    template<class Work>
    explicit OtherProgram(const Work &work)
    {
        int ready[2];
        if (::pipe(ready) != 0)
            qFatal("no pipe");
        m_pid = ::fork();
        if (m_pid == 0) {
            work([&ready] {
                (void)!::write(ready[1], "r", 1);
                while (true)
                    ::pause();
            });
            ::_exit(0);
        }
        char byte = 0;
        ::close(ready[1]);
        (void)!::read(ready[0], &byte, 1);
        ::close(ready[0]);
    }
    ~OtherProgram() { kill(); }
    void kill()
    {
        if (m_pid <= 0)
            return;
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
        m_pid = -1;
    }

private:
    pid_t m_pid = -1;
};
