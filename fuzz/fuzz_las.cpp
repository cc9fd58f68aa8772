#include "fuzz/memoryfile.h"
#include "las/wellinfo.h"

#include <cmath>

namespace {

void checkCurves(const WellInfo &info)
{
    for (const LogCurveData &curve : info.curves) {
        check(curve.depths.size() == curve.values.size(), "depths and values are parallel");
        for (double value : curve.values)
            check(std::isfinite(value), "values are finite");
    }
}

void checkDataSections(const WellInfo &info)
{
    int filled = 0; // curves that the sections so far have
    for (const LasDataSection &section : info.dataSections) {
        check(section.firstCurve == filled && section.curveCount > 0, "sections share the curves in order");
        filled += section.curveCount;
        check(filled <= info.curves.size(), "a section has curves that are there");
        int before = section.rowCount;
        for (int curve = section.firstCurve; curve < filled; ++curve) {
            const int samples = info.curves.at(curve).values.size();
            check(samples <= before, "a curve has no more samples than its section rows and the curve before");
            before = samples;
        }
        check(section.unevenRowCount <= section.rowCount, "uneven rows are rows");
    }
    for (int curve = filled; curve < info.curves.size(); ++curve)
        check(info.curves.at(curve).values.isEmpty(), "a curve without a section has no samples");
    check(info.dataSections.size() <= info.dataSectionCount, "sections with curves are sections");
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
    checkDataSections(info);
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
