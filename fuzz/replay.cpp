// Runs a fuzz target once on each of the given files, and on the files of the given folders, without a fuzzer.

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

QStringList filesOf(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return {path};
    QStringList files;
    QDirIterator entries(path, QDir::Files | QDir::Hidden);
    while (entries.hasNext())
        files.append(entries.next());
    return files;
}

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Cannot read %s\n", qUtf8Printable(path));
        return false;
    }
    const QByteArray bytes = file.readAll();
    std::printf("%s\n", qUtf8Printable(path)); // the last one printed is the one that crashed
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), static_cast<size_t>(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const QString &path : filesOf(QFile::decodeName(argv[i]))) {
            if (!replay(path))
                return 1;
            ++replayed;
        }
    }
    if (replayed == 0) {
        std::fprintf(stderr, "No file to replay\n");
        return 1;
    }
    return 0;
}
