// Runs a fuzz target without a fuzzer: once on each of the given files and of the files of the given folders, then,
// as often as asked for, on inputs made of them by chance. Chance begins with the same number each time.
//
//     fuzz_track_replay [--mutations NUMBER] FILE_OR_FOLDER…

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
// There in a build with the address sanitizer.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

QByteArray currentInput;

void print(const char *text, size_t size)
{
    while (size > 0) {
        const ssize_t done = ::write(STDERR_FILENO, text, size);
        if (done <= 0)
            return;
        text += done;
        size -= static_cast<size_t>(done);
    }
}

// Runs while the program dies: no memory is taken, nothing of the library is called.
void printInput()
{
    constexpr char digits[] = "0123456789abcdef";
    constexpr char heading[] = "\nThe input; \"xxd -r -p\" makes a file of it:\n";
    print(heading, sizeof heading - 1);
    char line[65];
    size_t used = 0;
    for (int i = 0; i < currentInput.size(); ++i) {
        const auto byte = static_cast<unsigned char>(currentInput.constData()[i]);
        line[used++] = digits[byte >> 4];
        line[used++] = digits[byte & 15];
        if (used == 64 || i + 1 == currentInput.size()) {
            line[used++] = '\n';
            print(line, used);
            used = 0;
        }
    }
}

void crashed(int number)
{
    std::signal(number, SIG_DFL);
    printInput();
    std::raise(number);
}

void reportCrashes()
{
    std::signal(SIGABRT, crashed);
    if (__sanitizer_set_death_callback)
        __sanitizer_set_death_callback(printInput);
    else
        for (int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL})
            std::signal(number, crashed);
}

void run(const QByteArray &input)
{
    currentInput = input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()), static_cast<size_t>(input.size()));
}

/// Inputs made of seeds: bytes changed, parts cut out, repeated or joined to parts of another seed.
class Mutator
{
public:
    explicit Mutator(const QVector<QByteArray> &seeds)
        : m_seeds(seeds)
        , m_random(20240229)
    {
    }

    QByteArray next()
    {
        QByteArray input = anySeed();
        for (int steps = 1 + below(4); steps > 0; --steps)
            mutate(&input);
        return input.left(largestInput);
    }

private:
    static constexpr int largestInput = 16384;

    int below(int limit) { return limit > 0 ? m_random.bounded(limit) : 0; }
    const QByteArray &anySeed() { return m_seeds.at(below(m_seeds.size())); }

    char anyByte()
    {
        constexpr char telling[] = "|:,~#.\n\r \t0-\0\xFF\xEF"; // what the readers look for
        return below(2) == 0 ? telling[below(sizeof telling - 1)] : static_cast<char>(below(256));
    }

    void mutate(QByteArray *input)
    {
        const int at = below(input->size() + 1);
        const int length = below(qMin(input->size() - at, 200) + 1);
        switch (below(5)) {
        case 0:
            if (at < input->size())
                (*input)[at] = static_cast<char>((*input)[at] ^ (1 << below(8)));
            break;
        case 1:
            input->insert(at, anyByte());
            break;
        case 2:
            input->remove(at, length);
            break;
        case 3:
            input->insert(at, input->mid(at, length).repeated(1 + below(3)));
            break;
        default: {
            const QByteArray &other = anySeed();
            *input = input->left(at) + other.mid(below(other.size() + 1));
        }
        }
    }

    QVector<QByteArray> m_seeds;
    QRandomGenerator m_random;
};

QStringList filesOf(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return {path};
    QStringList files;
    QDirIterator entries(path, QDir::Files | QDir::Hidden);
    while (entries.hasNext())
        files.append(entries.next());
    files.sort(); // a folder may be read in any order, and chance counts the seeds
    return files;
}

bool replay(const QString &path, QVector<QByteArray> *seeds)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Cannot read %s\n", qUtf8Printable(path));
        return false;
    }
    std::printf("%s\n", qUtf8Printable(path)); // the last one printed is the one that crashed
    std::fflush(stdout);
    seeds->append(file.readAll());
    run(seeds->last());
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    reportCrashes();
    int mutations = 0;
    QVector<QByteArray> seeds;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--mutations") == 0 && i + 1 < argc) {
            mutations = QByteArray(argv[++i]).toInt();
            continue;
        }
        for (const QString &path : filesOf(QFile::decodeName(argv[i])))
            if (!replay(path, &seeds))
                return 1;
    }
    if (seeds.isEmpty()) {
        std::fprintf(stderr, "No file to replay\n");
        return 1;
    }
    Mutator mutator(seeds);
    for (int i = 0; i < mutations; ++i)
        run(mutator.next());
    std::printf("%d seeds and %d inputs made of them\n", seeds.size(), mutations);
    return 0;
}
