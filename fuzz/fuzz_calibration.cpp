#include "datastore/calibrationfile.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const CalibrationParse read =
        parseCalibration(bytesOf(data, size), QStringLiteral("Well"), QStringLiteral("Gamma"));
    check(read.record.depths.size() == read.record.values.size(), "the arrays are parallel");
    check(!read.isMalformed || read.record.depths.isEmpty(), "a malformed file gives no points");
    const QByteArray written = calibrationBytes(read.record);
    const CalibrationParse again = parseCalibration(written, QStringLiteral("Well"), QStringLiteral("Gamma"));
    check(!again.isMalformed && calibrationBytes(again.record) == written, "written points read back the same");
    return 0;
}
