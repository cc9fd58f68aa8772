#include "fuzz/fuzzcheck.h"
#include "las/wellinfo.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

namespace {

/// The reader takes a path: one file in memory, written again for each input.
const QString &fileHolding(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("fuzz.las"));
    QFile file(path);
    check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size(), "the input is written");
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
    const QString path = fileHolding(bytesOf(data, size));
    WellInfo info;
    check(info.load(path) == 0, "a file that is there is loaded");
    checkCurves(info);
    check(info.lines.count() >= 1, "the title is the first line");
    for (int i = 0; i < info.lines.count(); ++i) {
        const QString line = info.lines.line(i);
        check(i == 0 || (!line.contains(QLatin1Char('\n')) && !line.contains(QLatin1Char('\r'))), "a line is one line");
        check(info.lines.line(i, 8).size() <= qMax(8, info.lines.line(0).size()), "a cut line is short");
        static_cast<void>(WellInfo::mnemonic(line) + WellInfo::unit(line) + WellInfo::value(line) + WellInfo::description(line));
    }
    WellInfo again = info;
    check(again.load(path) == 0, "it is loaded again");
    checkSame(info, again);
    return 0;
}
