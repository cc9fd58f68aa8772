#include "fuzz/fuzzcheck.h"
#include "survey/topsfile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const survey::TopsFile file = survey::parseTops(bytesOf(data, size));
    QStringList wells;
    for (const survey::TopsLine &line : file.lines) {
        check(!line.name.isEmpty() && std::isfinite(line.depth), "a top has a name and a depth");
        check(file.hasWells || line.well.isEmpty(), "a file of one well names none");
        if (wells.size() < 5)
            wells.append(line.well);
    }
    check(survey::topsOf(file, {}).size() == (file.hasWells ? 0 : file.lines.size()),
          "without a name the tops are those of a file of one well");
    for (const QString &well : qAsConst(wells))
        check(survey::topsOf(file, {well}).size() <= file.lines.size(), "a well has no more tops than the file");
    return 0;
}
