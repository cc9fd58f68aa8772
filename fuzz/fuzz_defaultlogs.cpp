#include "datastore/defaultlogs.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const DefaultLogs read = parseDefaultLogs(bytesOf(data, size));
    check(read.groups.size() == read.logs.size(), "the lists are parallel");
    QByteArray written = "Well\n";
    for (int i = 0; i < read.groups.size(); ++i)
        written += read.groups.at(i).toUtf8() + '|' + read.logs.at(i).toUtf8() + '\n';
    const DefaultLogs again = parseDefaultLogs(written);
    check(again.groups == read.groups && again.logs == read.logs, "written default logs read back the same");
    return 0;
}
