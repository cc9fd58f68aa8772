#include "fuzz/memoryfile.h"
#include "survey/surveyfolder.h"
#include "survey/surveyunit.h"

#include <QFile>

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    check(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the input is written");
}

} // namespace

// The input is the survey's own file; what follows a line of three "=" is that of the host's defaults.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    const int end = bytes.indexOf("\n===\n");
    write(survey::surveyFilePath(memoryFolder()), end < 0 ? bytes : bytes.left(end + 1));
    if (end < 0)
        QFile::remove(survey::surveyDefaultsPath(memoryFolder()));
    else
        write(survey::surveyDefaultsPath(memoryFolder()), bytes.mid(end + 5));
    const host::Outcome<survey::SurveyInfo> info = survey::readSurveyInfo(memoryFolder());
    check(!info.value.name.isEmpty() && !info.value.folderName.isEmpty(), "a survey has a name");
    check(info.ok() || info.value.depthUnit == survey::DepthUnit::Metre, "what cannot be read is in metres");
    survey::SurveyUnit unit;
    check(unit.of(memoryFolder()) == info.value.depthUnit, "its unit is that of the survey");
    return 0;
}
