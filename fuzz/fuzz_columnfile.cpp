#include "fuzz/fuzzcheck.h"
#include "welldata/columnfile.h"
#include "welldata/markerrows.h"
#include "welldata/siderows.h"

namespace {

// The first byte chooses what is asked of the file.
welldata::ColumnRequest requestOf(unsigned char choice)
{
    switch (choice % 4) {
    case 0:
        return {0, {1, 2}, 2};
    case 1:
        return {1, {2, 1}, 2};
    case 2:
        return {choice / 64, {1, 2, 3, 4}, 4};
    default:
        return {-1, {choice / 16, 2}, 2};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const welldata::ColumnRequest request = requestOf(data[0]);
    const QByteArray bytes = bytesOf(data + 1, size - 1);
    const welldata::ColumnFile file = readColumns(bytes, request);
    check(file.ok() || file.fields.empty(), "a file with a problem gives nothing");
    check(file.ok() == file.problem.isEmpty() && (file.problemLine == 0 || !file.ok()),
          "a line is named for a problem");
    check(file.fields.size() == static_cast<size_t>(file.rowCount()) * request.columns.size(), "rows are whole");
    for (int row = 0; row < file.rowCount(); ++row)
        for (int column = 0; column < file.columns; ++column) {
            const textfields::Field field = file.field(row, column);
            check(field.find_first_of("\t\r\n") == textfields::Field::npos, "a field is one part of a line");
            check(textfields::trimmed(field) == field, "fields are trimmed");
        }
    if (file.columns == 4) {
        const QVector<welldata::TableRow> zones = welldata::zoneRows(file);
        check(zones.size() == file.rowCount(), "a zone a line");
        // What is not refused reads back.
        if (zoneProblems(zones).isEmpty()) {
            const PerforationRecord stored = zoneRecord(QStringLiteral("W"), zones);
            const PerforationRecord again = parsePerforation(perforationBytes(stored), QStringLiteral("W"));
            check(zones.isEmpty() || again.zoneCount == stored.zoneCount,
                  "zones that were not refused are all stored");
        }
    } else if (file.columns == 2) {
        const auto markers = welldata::markerRows(file, welldata::MarkerElevations());
        check(markerRecord(QStringLiteral("W"), markers).names.size() == file.rowCount(), "a marker a line");
        static_cast<void>(markerProblems(markers, 1000));
        check(welldata::pointRows(file).size() == file.rowCount(), "a point a line");
    }
    return 0;
}
