#include "datastore/defaultlogs.h"
#include "fuzz/fuzzcheck.h"
#include "welldata/defaultdata.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const DefaultLogs read = parseDefaultLogs(bytesOf(data, size));
    check(read.groups.size() == read.logs.size(), "the lists are parallel");
    QByteArray written = "Well\n";
    for (int i = 0; i < read.groups.size(); ++i)
        written += read.groups.at(i).toUtf8() + '|' + read.logs.at(i).toUtf8() + '\n';
    const DefaultLogs again = parseDefaultLogs(written);
    check(again.groups == read.groups && again.logs == read.logs, "written default logs read back the same");

    const welldata::DefaultDataFile file = welldata::parseDefaultData(bytesOf(data, size));
    check(file.logs.groups.size() == file.logs.logs.size(), "the editor's lists are parallel");
    check(!isOfWell(file, file.wellName + QStringLiteral("x")), "a file is of one well");
    const welldata::DefaultDataFile stored = welldata::parseDefaultData(defaultLogsBytes(file.wellName, file.logs));
    const QByteArray settled = defaultLogsBytes(stored.wellName, stored.logs);
    const welldata::DefaultDataFile last = welldata::parseDefaultData(settled);
    check(defaultLogsBytes(last.wellName, last.logs) == settled, "what the editor stores reads back the same");
    return 0;
}
