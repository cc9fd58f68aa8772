#include "fuzz/fuzzcheck.h"
#include "las/wellinfo.h"

#include <cmath>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// The reader takes a path: that of a file which exists in memory only.
const QString &fileHolding(const uint8_t *data, size_t size)
{
    static const int file = ::memfd_create("fuzz.las", MFD_CLOEXEC);
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    check(::ftruncate(file, 0) == 0 && ::pwrite(file, data, size, 0) == static_cast<ssize_t>(size),
          "the input is written");
    return path;
}

void checkCurves(const WellInfo &info)
{
    int before = -1;
    for (const LogCurveData &curve : info.curves) {
        check(curve.depths.size() == curve.values.size(), "depths and values are parallel");
        check(before < 0 || curve.values.size() <= before, "a curve has no more samples than the one before");
        before = curve.values.size();
        for (double value : curve.values)
            check(std::isfinite(value), "values are finite");
    }
}

void checkSame(const WellInfo &a, const WellInfo &b)
{
    check(a.version == b.version && a.uwi == b.uwi && a.depthUnit == b.depthUnit, "texts are the same again");
    check(a.startDepth == b.startDepth && a.stopDepth == b.stopDepth && a.nullValue == b.nullValue,
          "numbers are the same again");
    check(a.curves.size() == b.curves.size() && a.lines.count() == b.lines.count(), "sizes are the same again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString &path = fileHolding(data, size);
    WellInfo info;
    check(info.load(path) == 0, "a file that is there is loaded");
    checkCurves(info);
    check(info.lines.count() >= 1, "the title is the first line");
    for (int i = 0; i < info.lines.count(); ++i) {
        const QString line = info.lines.line(i);
        check(i == 0 || (!line.contains(QLatin1Char('\n')) && !line.contains(QLatin1Char('\r'))),
              "a line is one line");
        check(info.lines.line(i, 8).size() <= qMax(8, info.lines.line(0).size()), "a cut line is short");
        static_cast<void>(WellInfo::mnemonic(line) + WellInfo::unit(line) + WellInfo::value(line)
                          + WellInfo::description(line));
    }
    WellInfo again = info;
    check(again.load(path) == 0, "it is loaded again");
    checkSame(info, again);
    return 0;
}
