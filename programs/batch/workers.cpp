#include "programs/batch/workers.h"

#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/wholebytes.h"

#include <QJsonDocument>

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <new>
#include <optional>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace batch {

namespace {

constexpr int pollMs = 50;
constexpr int noPiece = -1;

Result done(const QString &name, int number, const Piece &piece)
{
    try {
        return piece(number);
    } catch (const std::bad_alloc &) {
        return Result::failed(name + QStringLiteral(": there is not enough memory."));
    }
}

/// A child process: it is given a number, does that piece and gives its result back, until nobody gives it another.
class Worker
{
public:
    Worker(const QStringList &names, const Piece &piece, const std::vector<std::unique_ptr<Worker>> &others);
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    bool isRunning() const { return m_process > 0; }
    int piece() const { return m_piece; }
    int resultFile() const { return m_results[0]; }
    void give(int number);
    /// The result of its piece; nothing when the process died.
    std::optional<Result> take();
    void terminate() const
    {
        if (isRunning())
            ::kill(m_process, SIGTERM);
    }

private:
    [[noreturn]] void serve(const QStringList &names, const Piece &piece) const;
    void closeParentEnds() const
    {
        ::close(m_numbers[1]);
        ::close(m_results[0]);
    }

    std::array<int, 2> m_numbers{-1, -1}; ///< pipe to the child
    std::array<int, 2> m_results{-1, -1}; ///< pipe from the child
    pid_t m_process = -1;
    int m_piece = noPiece;
};

Worker::Worker(const QStringList &names, const Piece &piece, const std::vector<std::unique_ptr<Worker>> &others)
{
    if (::pipe(m_numbers.data()) != 0)
        return;
    if (::pipe(m_results.data()) != 0)
        return;
    const pid_t parent = ::getpid();
    m_process = ::fork();
    if (m_process != 0)
        return;
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent)
        ::_exit(1);
    closeParentEnds();
    for (const auto &other : others)
        other->closeParentEnds(); // else their ends would not end with the parent's
    // The parent holds signals while it waits; a child holds them only while it writes.
    sigset_t none;
    ::sigemptyset(&none);
    ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
    serve(names, piece);
}

void Worker::serve(const QStringList &names, const Piece &piece) const
{
    qint32 number = 0;
    while (readWhole(m_numbers[0], &number, sizeof number)) {
        const QByteArray bytes = bytesOf(done(names.at(number), number, piece));
        const qint32 size = bytes.size();
        if (writeWhole(m_results[1], &size, sizeof size) != 0
            || writeWhole(m_results[1], bytes.constData(), static_cast<size_t>(size)) != 0)
            break;
    }
    ::_exit(0);
}

Worker::~Worker()
{
    for (const int file : {m_numbers[0], m_numbers[1], m_results[0], m_results[1]})
        if (file >= 0)
            ::close(file);
    if (isRunning())
        while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) { }
}

void Worker::give(int number)
{
    if (m_numbers[0] >= 0) { // the child's ends: the parent sees the child's death only when they are closed here
        ::close(m_numbers[0]);
        ::close(m_results[1]);
        m_numbers[0] = -1;
        m_results[1] = -1;
    }
    const qint32 sent = number;
    m_piece = number;
    static_cast<void>(writeWhole(m_numbers[1], &sent, sizeof sent)); // take() tells
}

std::optional<Result> Worker::take()
{
    m_piece = noPiece;
    qint32 size = 0;
    if (!readWhole(m_results[0], &size, sizeof size))
        return std::nullopt;
    QByteArray bytes(size, Qt::Uninitialized);
    if (!readWhole(m_results[0], bytes.data(), static_cast<size_t>(size)))
        return std::nullopt;
    return resultOf(bytes);
}

/// Gives pieces to workers until all are done.
class Foreman
{
public:
    Foreman(const QString &what, const QStringList &names, const Piece &piece)
        : m_names(names)
        , m_piece(piece)
        , m_progress(what, names.size())
        , m_results(names.size())
    {
    }

    QVector<Result> run(int processes);

private:
    void hire(int processes);
    void giveNext(Worker &worker)
    {
        if (m_next < m_names.size())
            worker.give(m_next++);
    }
    void takeFrom(Worker &worker);
    void doHere(int number);
    bool wait();

    QStringList m_names;
    const Piece &m_piece;
    Progress m_progress;
    QVector<Result> m_results;
    std::vector<std::unique_ptr<Worker>> m_workers;
    int m_next = 0;
    int m_done = 0;
};

void Foreman::hire(int processes)
{
    for (int i = 0; i < processes; ++i) {
        auto worker = std::make_unique<Worker>(m_names, m_piece, m_workers);
        if (!worker->isRunning())
            return; // the system has no more of them
        m_workers.push_back(std::move(worker));
        giveNext(*m_workers.back());
    }
}

void Foreman::doHere(int number)
{
    m_results[number] = done(m_names.at(number), number, m_piece);
    m_progress.setDone(++m_done);
}

void Foreman::takeFrom(Worker &worker)
{
    const int number = worker.piece();
    if (const auto result = worker.take()) {
        m_results[number] = *result;
        giveNext(worker);
    } else {
        m_results[number] =
            Result::failed(m_names.at(number) + QStringLiteral(": the process that worked on it died."));
    }
    m_progress.setDone(++m_done);
}

/// False when no worker has a piece.
bool Foreman::wait()
{
    std::vector<pollfd> files;
    std::vector<Worker *> busy;
    for (const auto &worker : m_workers) {
        if (worker->piece() == noPiece)
            continue;
        files.push_back({worker->resultFile(), POLLIN, 0});
        busy.push_back(worker.get());
    }
    if (files.empty())
        return false;
    ::poll(files.data(), files.size(), pollMs);
    for (size_t i = 0; i < files.size(); ++i)
        if (files[i].revents != 0)
            takeFrom(*busy[i]);
    m_progress.setDone(m_done);
    return true;
}

QVector<Result> Foreman::run(int processes)
{
    if (processes > 1) {
        const HeldSignals held;
        hire(processes);
        while (wait()) {
            if (!HeldSignals::isOneWaiting())
                continue;
            for (const auto &worker : m_workers)
                worker->terminate();
            break;
        }
        m_workers.clear(); // waits for each
    }
    while (m_next < m_names.size())
        doHere(m_next++);
    return m_results;
}

} // namespace

QByteArray bytesOf(const Result &result)
{
    QJsonArray records;
    for (const Record &record : result.records)
        records.append(record);
    return QJsonDocument(QJsonObject{{QStringLiteral("records"), records},
                                     {QStringLiteral("notices"), QJsonArray::fromStringList(result.notices)},
                                     {QStringLiteral("failures"), QJsonArray::fromStringList(result.failures)}})
        .toJson(QJsonDocument::Compact);
}

Result resultOf(const QByteArray &bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    Result result;
    for (const QJsonValue &record : object.value(QStringLiteral("records")).toArray())
        result.records.append(record.toObject());
    for (const QJsonValue &notice : object.value(QStringLiteral("notices")).toArray())
        result.notices.append(notice.toString());
    for (const QJsonValue &failure : object.value(QStringLiteral("failures")).toArray())
        result.failures.append(failure.toString());
    return result;
}

Result runPieces(const QString &what, const QStringList &names, int processes, const Piece &piece)
{
    Result all;
    for (const Result &result : Foreman(what, names, piece).run(qMin(processes, names.size())))
        all.add(result);
    return all;
}

} // namespace batch
