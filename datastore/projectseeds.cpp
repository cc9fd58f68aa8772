#include "datastore/projectseeds.h"

#include "base/atomicfile.h"
#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/leftovers.h"
#include "datastore/projectfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct SeedGroup
{
    const char *group;
    const char *mnemonics;
};

constexpr SeedGroup seedGroups[] = {
    {"Depth", "MD\nTVDSS"},
    {"Sonic", "DT"},
    {"Resistivity", "LLD\nLLS\nMSFL"},
    {"Gamma", "GR"},
    {"Sp", "SP"},
    {"Caliper", "CALI"},
    {"Porosity", "NPHI"},
    {"Density", "RHOB"},
    {"Impedance", nullptr},
    {"Shale Volume", "VSH_log\nSP_VSH_log"},
    {"Effective Porosity", "PHIE_log\nPHIT_log"},
    {"Water Saturation", "WS_log"},
    {"Shear Modulus", "U_log"},
    {"Lames Modulus", "LAMBDA_log"},
    {"Poisons Ratio", "PRV_log"},
    {"Youngs Modulus", "E_log"},
    {"Overburden Pressure", "OBP_log"},
    {"Pore Pressure", "PP_log"},
    {"Horizontal Stress", "MINIHS_log\nMAXIHS_log"},
    {"Rock Strength", "UCS_log"},
    {"Others", nullptr},
};

constexpr int seedTrackCount = 4;

struct SeedTemplate
{
    const char *name;
    const char *tracks[seedTrackCount]; ///< "Track_1.txt" first
};

constexpr char seedDepthTrack[] = "Depth\n"
                                  "Depth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0";

// The blanks at line ends and the missing last line feeds are part of the files.
constexpr SeedTemplate seedTemplates[] = {
    {"Default",
     {"Linear\n"
      "Gamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
      "Sp | Default | -100.00 | 100.00 | #120202|0,#ffffff|0,#ffffff|None | None | 0 | 1 \n"
      "Caliper | Default | 6.00 | 16.00 | #120202|0,#ffffff|0,#ffffff|None | None | 1 | 1",
      seedDepthTrack,
      "Logrithmic\n"
      "Resistivity | Default | 0.10 | 2000.00 | #d01212|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
      "Resistivity | LLS | 0.10 | 2000.00 | #4046fa|0,#ffffff|0,#ffffff|None | None | 1 | 1\n"
      "Resistivity | MSFL | 0.10 | 2000.00 | #1d0f0f|0,#ffffff|0,#ffffff|None | None | 0 | 1",
      "Linear\n"
      "Density | Default | 1.80 | 2.80 | #d21414|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
      "Porosity | Default | 0.60 | 0 | #2648ef|0,#ffffff|0,#ffffff|None | None | 1 | 1\n"
      "Sonic | Default | 40 | 240 | #2648ef|0,#ffffff|0,#ffffff|None | None | 0 | 1 "}},
    {"Simple",
     {"Linear\n"
      "Gamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1\n",
      seedDepthTrack,
      "Logrithmic\n"
      "Resistivity | Default | 0.10 | 2000.00 | #d01212|0,#ffffff|0,#ffffff|None | None | 0 | 1\n",
      "Linear\n"
      "Density | Default | 1.80 | 2.80 | #0000ff|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"}},
};

/// How far a seeding came.
struct Seeding
{
    int made = 0; ///< files and folders
    bool isComplete = true;
};

// False when the seeding has to end: a file could not be made. A folder that cannot be made ends nothing, and an
// existing one is a user's, with or without tracks.
bool seedTemplate(const QString &projectFolder, const SeedTemplate &seed, Seeding *seeding)
{
    const QString name = QString::fromLatin1(seed.name);
    const QString folder = projectFolder + QStringLiteral("/Templates/Global");
    const QString target = folder + QLatin1Char('/') + name;
    if (base::isThere(target))
        return true;
    if (!QFileInfo(folder).isDir() || isLinkedAway(projectFolder, folder)) {
        seeding->isComplete = false;
        return true;
    }
    // Built aside: a crash between two tracks must not leave a folder that then counts as the user's own.
    const base::HiddenFolder aside(projectFolder);
    const QString built = aside.filePath(name);
    if (!QFileInfo(folder).isDir() || !aside.isValid() || !QDir().mkdir(built)) {
        seeding->isComplete = false;
        return true;
    }
    for (int i = 0; i < seedTrackCount; ++i)
        if (writeIfMissing(built + QStringLiteral("/Track_%1.txt").arg(i + 1), seed.tracks[i]) != 1)
            return false;
    if (base::fileSystemCalls().rename(QFile::encodeName(built).constData(), QFile::encodeName(target).constData())
        == 0)
        ++seeding->made;
    else
        seeding->isComplete = false;
    return true;
}

Seeding makeSeeds(const QString &projectFolder)
{
    Seeding seeding;
    if (isLinkedAway(projectFolder, projectFolder + QStringLiteral("/CurveGroups")))
        return {0, false};
    for (const SeedGroup &seed : seedGroups) {
        const QString path = projectFolder + QStringLiteral("/CurveGroups/") + QString::fromLatin1(seed.group)
            + QStringLiteral(".txt");
        const int result = writeIfMissing(path, QByteArray(seed.mnemonics));
        if (result < 0)
            return {seeding.made, false};
        seeding.made += result;
    }
    for (const SeedTemplate &seed : seedTemplates)
        if (!seedTemplate(projectFolder, seed, &seeding))
            return {seeding.made, false};
    return seeding;
}

} // namespace

int writeIfMissing(const QString &path, const QByteArray &text)
{
    if (base::isThere(path))
        return 0;
    return base::writeFileAtomically(path, text, base::Flush::Later).ok() ? 1 : -1;
}

bool seedProject(const QString &projectFolder)
{
    const Seeding seeding = makeSeeds(projectFolder);
    const bool isFlushed = seeding.made == 0 || base::flushFileSystem(projectFolder).ok();
    return seeding.isComplete && isFlushed;
}
