#pragma once

#include "base/filesystemcalls.h"
#include "support/files.h"
#include "survey/surveystore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>

/// Survey files written by hand, so that what the store reads does not depend on what it writes.
namespace survey_fixture {

inline QByteArray header(const QByteArray &type)
{
    return "dTect V6.6\n" + type + "\nFri 20 Nov 2026, 17:09:32\n!\n";
}

inline QByteArray floatBytes(float value, bool isBigEndian = false)
{
    char bytes[4];
    std::memcpy(bytes, &value, sizeof bytes); // the machines we run on are little-endian
    if (isBigEndian)
        std::reverse(bytes, bytes + sizeof bytes);
    return QByteArray(bytes, sizeof bytes);
}

inline QByteArray samples(const QVector<float> &numbers, bool isBigEndian = false)
{
    QByteArray bytes;
    for (const float number : numbers)
        bytes += floatBytes(number, isBigEndian);
    return bytes;
}

inline QByteArray logFile(const QByteArray &name, const QVector<float> &numbers)
{
    return header("Well Log") + "Depth-Unit: Meter\nName: " + name
        + "\nUnit of Measure: gAPI\nHeader info: No\nStorage type: Binary\nDah range: 0`1\nLog range: 0`1\n!\n"
        + samples(numbers);
}

inline QByteArray wellFile()
{
    return header("Well") + "Depth-Unit: Meter\nUnique Well ID: UWI\nSurface coordinate: (502500,6003000)\n!\n"
        + "502500\t6003000\t-25\t0\n502500\t6003000\t2475\t2500\n";
}

/// An object list of wells: name and file name in pairs, numbers from 2 on.
inline QByteArray wellList(const QVector<QPair<QByteArray, QByteArray>> &wells)
{
    QByteArray bytes = header("Object Management file") + "ID: 100050`" + QByteArray::number(wells.size() + 1)
        + "\n!\nWellInfo: 1\nWell Info directory: dGB`Stream\n$Name: WellInfo\n!\n";
    int number = 1;
    for (const auto &well : wells)
        bytes += well.first + ": " + QByteArray::number(++number) + "\nWell: dGB`Stream\n$Name: " + well.second
            + "\n#Version: 6.6\n!\n";
    return bytes;
}

/// What follows the date line: the date differs from run to run.
inline QByteArray withoutDate(const QByteArray &bytes)
{
    int at = 0;
    for (int line = 0; line < 3; ++line)
        at = bytes.indexOf('\n', at) + 1;
    return bytes.mid(at);
}

/// A survey without wells in a folder of its own that goes with it.
class Survey
{
public:
    Survey()
    {
        files::write(path() + QStringLiteral("/.survey"), header("Survey Info") + "Name: Fixture\n!\n");
        files::write(path() + QStringLiteral("/.omf"),
                     header("Object Management file") + "ID: 0`1\n!\n@100050: WellInfo\n!\n");
        write(".omf", wellList({}));
    }
    QString path() const { return m_folder.filePath(QStringLiteral("survey")); }
    QString wells() const { return path() + QStringLiteral("/WellInfo"); }
    QString file(const char *name) const { return wells() + QLatin1Char('/') + QString::fromUtf8(name); }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile::remove(file(name)); // some file systems flush a file that is cut and written again
        files::write(file(name), bytes);
    }
    QByteArray read(const char *name) const { return files::read(file(name)); }
    /// The names in the well folder, "." files too, but for the writers' lock file.
    QStringList names() const
    {
        QStringList names = QDir(wells()).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        names.removeAll(QStringLiteral(".lorva.lock"));
        return names;
    }

private:
    // Nothing here outlives the machine, and flushing to the disk is most of the time that these tests would take.
    class NoFlush : public base::FileSystemCalls
    {
        int fsync(int) override { return 0; }
    };
    NoFlush m_calls;
    base::ScopedFileSystemCalls m_scope{m_calls};
    QTemporaryDir m_folder;
};

inline survey::WellProperties properties(const char *name)
{
    survey::WellProperties well;
    well.name = QString::fromUtf8(name);
    well.x = 502500;
    well.y = 6003000;
    well.kbElevation = 25;
    well.groundElevation = 12.5;
    well.totalDepth = 2500;
    well.typeCode = host::GasWell;
    return well;
}

inline host::LogData log(const char *name, const QVector<float> &values, float top = 100)
{
    host::LogData data;
    data.name = QString::fromUtf8(name);
    data.unit = QStringLiteral("gAPI");
    data.values = values;
    for (int i = 0; i < values.size(); ++i)
        data.depths.append(top + 0.5f * static_cast<float>(i));
    return data;
}

inline host::Marker marker(const char *name, float depth, const QColor &color = QColor(255, 0, 0))
{
    return {QString::fromUtf8(name), depth, color};
}

/// "A@10 B@20"
inline QString summary(const QVector<host::Marker> &markers)
{
    QStringList parts;
    for (const host::Marker &marker : markers)
        parts.append(QStringLiteral("%1@%2").arg(marker.name).arg(static_cast<double>(marker.depth)));
    return parts.join(QLatin1Char(' '));
}

} // namespace survey_fixture
