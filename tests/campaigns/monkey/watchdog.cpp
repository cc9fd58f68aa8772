#include "watchdog.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstring>
#include <ctime>
#include <execinfo.h>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace watchdog {

namespace {

constexpr int lineCount = 30;
constexpr int lineLength = 200;
constexpr int longestSilenceS = 90;
constexpr int failureCode = 3;
constexpr int longestTrace = 60;

// Plain memory: a handler of signals may touch nothing else.
char lines[lineCount][lineLength];
int nextLine = 0;

// Silence is counted in looks of the watchdog: while the whole machine stands still nobody looks.
constexpr int lookMs = 200;
std::atomic<int> silentLooks{0};
std::atomic<bool> isRunning{false};
std::thread thread;
pthread_t watched;
double watchedCpuS = 0; ///< at the first silent look

double cpuSecondsOfWatched()
{
    clockid_t clock{};
    timespec time{};
    if (::pthread_getcpuclockid(watched, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return 0;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void print(const char *text)
{
    (void)!::write(STDERR_FILENO, text, std::strlen(text));
}

void printLines()
{
    for (int i = 0; i < lineCount; ++i) {
        const char *line = lines[(nextLine + i) % lineCount];
        if (line[0] == '\0')
            continue;
        print("    ");
        print(line);
        print("\n");
    }
}

void printTrace()
{
    void *frames[longestTrace];
    ::backtrace_symbols_fd(frames, ::backtrace(frames, longestTrace), STDERR_FILENO);
}

void handleCrash(int number)
{
    print("Crashed. What was done before:\n");
    printLines();
    printTrace();
    ::signal(number, SIG_DFL);
    ::raise(number);
}

// In the thread that is silent: where it is.
void handleSilence(int)
{
    printTrace();
    giveUp(QStringLiteral("Hangs."));
}

void look()
{
    const int looks = ++silentLooks;
    if (looks == 1)
        watchedCpuS = cpuSecondsOfWatched();
    if (looks * lookMs == longestSilenceS * 1000) {
        print(qUtf8Printable(QStringLiteral("Silent for %1 s, with %2 s of work.\n")
                                 .arg(longestSilenceS)
                                 .arg(cpuSecondsOfWatched() - watchedCpuS)));
        ::pthread_kill(watched, SIGUSR1);
    }
}

} // namespace

void start()
{
    touch();
    isRunning = true;
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS})
        std::signal(number, handleCrash);
    std::signal(SIGUSR1, handleSilence);
    watched = ::pthread_self();
    thread = std::thread([] {
        while (isRunning) {
            std::this_thread::sleep_for(std::chrono::milliseconds(lookMs));
            if (isRunning)
                look();
        }
    });
}

void stop()
{
    isRunning = false;
    thread.join();
}

void touch()
{
    silentLooks = 0;
}

void remember(const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    char *target = lines[nextLine];
    const auto length = std::min<size_t>(static_cast<size_t>(bytes.size()), lineLength - 1);
    std::memcpy(target, bytes.constData(), length);
    target[length] = '\0';
    nextLine = (nextLine + 1) % lineCount;
}

void giveUp(const QString &why)
{
    print(qUtf8Printable(why + QStringLiteral(" What was done before:\n")));
    printLines();
    ::_exit(failureCode);
}

} // namespace watchdog
