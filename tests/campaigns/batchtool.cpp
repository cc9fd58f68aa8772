#include "batchtool.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

namespace campaign {

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
