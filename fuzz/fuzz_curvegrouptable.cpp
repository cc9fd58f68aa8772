#include "datastore/curvegrouptable.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    CurveGroupTable table;
    table.merge(bytesOf(data, size));
    CurveGroupTable again;
    again.merge(table.toBytes());
    check(again.size() == table.size(), "a written table reads back with all entries");
    check(again.toBytes() == table.toBytes(), "a written table reads back the same");
    return 0;
}
