#include "welldata/columnfile.h"

#include <algorithm>
#include <cerrno>
#include <new>

namespace welldata {

namespace {

constexpr char separator = '\t';
constexpr qint64 largestFile = 512 << 20;

size_t fieldsNeeded(const ColumnRequest &request)
{
    int needed = std::max(request.fieldsAtLeast, 0);
    for (const int column : request.columns)
        needed = std::max(needed, column);
    return static_cast<size_t>(needed);
}

} // namespace

base::RegularFile readImportFile(const QString &path)
{
    base::RegularFile failed;
    failed.errorCode = ENOMEM;
    try {
        return path.isEmpty() ? failed : base::readRegularFile(path, QStringLiteral("/"), largestFile);
    } catch (const std::bad_alloc &) {
        return failed;
    }
}

std::vector<textfields::Field> fieldsOfLine(textfields::Field line)
{
    std::vector<textfields::Field> parts;
    textfields::splitSkippingEmpty(textfields::trimmed(line), separator, line.size(), &parts);
    return parts;
}

ColumnFile readColumns(const QByteArray &bytes, const ColumnRequest &request)
{
    using textfields::Field;
    ColumnFile file;
    file.columns = static_cast<int>(request.columns.size());
    if (std::any_of(request.columns.begin(), request.columns.end(), [](int column) { return column < 1; })) {
        file.problem = QStringLiteral("Column numbers begin with 1.");
        return file;
    }
    file.text = textfields::utf8Text(bytes);
    const size_t needed = fieldsNeeded(request);
    std::vector<Field> parts;
    int lineNumber = 0;
    const char *begin = file.text.constData();
    base::forEachLine(begin, begin + file.text.size(), [&](const char *from, const char *to) {
        if (++lineNumber <= request.headerLines)
            return true;
        const Field line(from, static_cast<size_t>(to - from));
        textfields::splitSkippingEmpty(textfields::trimmed(line), separator, needed, &parts);
        if (parts.size() < needed) {
            file.problemLine = lineNumber;
            file.problem = QStringLiteral("Line %1 has %2 between tabs; %3 are needed.")
                               .arg(lineNumber)
                               .arg(parts.size() == 1 ? QStringLiteral("1 column")
                                                      : QStringLiteral("%1 columns").arg(parts.size()))
                               .arg(needed);
            file.fields.clear();
            return false;
        }
        for (const int column : request.columns)
            file.fields.push_back(textfields::trimmed(parts[static_cast<size_t>(column) - 1]));
        return true;
    });
    return file;
}

} // namespace welldata
