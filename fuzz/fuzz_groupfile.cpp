#include "datastore/groupfiles.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QStringList names = parseGroupFile(bytesOf(data, size));
    QByteArray written;
    for (const QString &name : names) {
        check(name == name.trimmed(), "entries are trimmed");
        written += name.toUtf8() + '\n';
    }
    check(parseGroupFile(written) == names, "a written list reads back the same");
    return 0;
}
