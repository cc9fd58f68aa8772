#include "batchtool.h"

#include "programs/batch/command.h"
#include "programs/batch/session.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

namespace campaign {

BatchOutcome runBatchHere(const QString &survey, const QStringList &options, const QStringList &operands)
{
    const auto line = [&](const QStringList &more) {
        QStringList words = options + more;
        if (!operands.isEmpty())
            words += QStringList{QStringLiteral("--")} + operands;
        return batch::parseCommandLine(words, batch::commands());
    };
    const batch::Command *command = line({}).command;
    QStringList more;
    if (command && command->usesSurvey)
        more = QStringList{QStringLiteral("--survey"), survey};
    batch::CommandLine given = line(more);
    if (command && command->replaces) {
        const batch::CommandLine forced = line(more + QStringList{QStringLiteral("--force")});
        if (forced.action == batch::CommandLine::Action::Run) // some replace only with other options
            given = forced;
    }
    if (given.action != batch::CommandLine::Action::Run)
        return {given.error, {}, {}};
    batch::Session session(command->usesSurvey ? survey : QString(), given.arguments);
    const batch::Result result = command->run(session, given.arguments);
    return {{}, result.failures + session.takeFailures(), result.records};
}

std::optional<QByteArray> batchToolFailure(const QByteArrayList &arguments)
{
    static const char program[] = LORVA_BINARY_DIR "/bin/lorva-batch";
    std::vector<char *> words{const_cast<char *>(program)};
    for (const QByteArray &argument : arguments)
        words.push_back(const_cast<char *>(argument.constData()));
    words.push_back(nullptr);
    int ends[2];
    if (::pipe(ends) != 0)
        return QByteArray("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        ::execv(program, words.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    QByteArray said;
    char part[1000];
    for (ssize_t got = 0; (got = ::read(ends[0], part, sizeof part)) > 0;)
        said.append(part, static_cast<int>(got));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return std::nullopt;
    return said + " (ended with " + QByteArray::number(status) + ')';
}

} // namespace campaign
