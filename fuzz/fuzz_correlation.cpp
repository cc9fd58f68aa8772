#include "correlation/correlationproperties.h"
#include "fuzz/fuzzcheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Some names are known, so that lines with several ":" are split in all ways.
    const correlation::KnownNames known{
        [](const QString &well) { return well.size() % 2 == 1; },
        [](const QString &, const QString &name) { return name.size() % 3 == 1; },
    };
    bool isWhole = false;
    const CorrelationProperties read = correlation::parseProperties(bytesOf(data, size), known, &isWhole);
    check(qint64(read.wells.size()) + read.markers.size() + read.zones.size() <= qint64(size) + 1,
          "no more entries than lines");
    const QByteArray written = correlation::propertiesBytes(read);
    const CorrelationProperties again = correlation::parseProperties(written, known, nullptr);
    check(again.markers == read.markers && again.zones.size() == read.zones.size()
              && again.wells.size() == read.wells.size(),
          "written lists read back the same");
    // Wells with ":" that are not known are cut, once.
    const QByteArray settled = correlation::propertiesBytes(again);
    check(correlation::propertiesBytes(correlation::parseProperties(settled, known, nullptr)) == settled,
          "what was read and written stays the same");
    return 0;
}
