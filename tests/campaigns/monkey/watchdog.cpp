#include "watchdog.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstring>
#include <execinfo.h>
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

std::atomic<qint64> lastTouch{0};
std::atomic<bool> isRunning{false};
std::thread thread;

qint64 nowS()
{
    using namespace std::chrono;
    return duration_cast<seconds>(steady_clock::now().time_since_epoch()).count();
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

void handleSignal(int number)
{
    print("Crashed. What was done before:\n");
    printLines();
    void *frames[longestTrace];
    ::backtrace_symbols_fd(frames, ::backtrace(frames, longestTrace), STDERR_FILENO);
    ::signal(number, SIG_DFL);
    ::raise(number);
}

} // namespace

void start()
{
    touch();
    isRunning = true;
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS})
        std::signal(number, handleSignal);
    thread = std::thread([] {
        while (isRunning) {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            if (isRunning && nowS() - lastTouch > longestSilenceS)
                giveUp(QStringLiteral("Hangs."));
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
    lastTouch = nowS();
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
