#pragma once

#include "base/atomicfile.h"
#include "survey/logfiles.h"
#include "survey/objectlist.h"
#include "survey/wellfile.h"

#include <QHash>
#include <QStringList>

namespace survey {

/// The main files (".well") of wells with their separate track files. A stem is the path of a well's files without
/// their endings.
class WellFiles
{
public:
    using Report = LogFiles::Report;

    /// The well, with the track of a separate track file (".track") where there is one. What is damaged and can be
    /// passed over is reported.
    host::Outcome<WellFile> read(const QString &stem, const Report &report) const;
    /// The same for one that is shown to be edited: change() then refuses when another program changed it meanwhile.
    host::Outcome<WellFile> readToChange(const QString &stem, const Report &report);
    host::Status write(const QString &stem, const WellFile &file, base::Flush flush = base::Flush::Now) const;
    /// Changes everything but the name. A separate track file becomes part of the main file.
    host::Status change(const QString &stem, const WellProperties &properties, const Report &report);
    void forget() { m_given.clear(); }
    void forget(const QString &stem) { m_given.remove(stem); }

private:
    host::Outcome<WellFile> read(const QString &stem, const Report &report, bool *hasTrackFile) const;

    QHash<QString, FileState> m_given; ///< of those given out to be changed, by stem
};

/// The depth unit that the well's files name, the survey's where its main file names none.
QByteArray unitOf(const WellFile &file, DepthUnit surveyUnit);
/// A stem in \a folder that no entry of the list and no file has: files that were left behind must not become those of
/// a new well.
QString newStem(const QString &folder, const QString &name, const ObjectList &list);
/// Deletes all files of a well in \a folder, of exactly this stem ("Probe_2" does not take those of "Probe_2_A"
/// along). Gives those that could not be deleted.
QStringList removeWellFiles(const QString &folder, const QString &stem);

} // namespace survey
