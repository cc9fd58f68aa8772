#include "datastore/perforationfile.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const PerforationRecord read = parsePerforation(bytesOf(data, size), QStringLiteral("Well"));
    check(read.names.size() == read.zoneCount && read.tops.size() == read.zoneCount
              && read.bottoms.size() == read.zoneCount && read.zoneTypes.size() == read.zoneCount,
          "the lists are parallel and as long as the count");
    const QByteArray written = perforationBytes(read);
    const PerforationRecord again = parsePerforation(written, QStringLiteral("Well"));
    check(again.names == read.names && again.zoneTypes == read.zoneTypes, "written zones read back the same");
    check(perforationBytes(again) == written, "written depths read back the same");
    return 0;
}
