#pragma once

#include "base/folderswap.h"
#include "templates/templatetrack.h"

#include <QStringList>

#include <optional>

struct Project;

/// Which template: one of a well's own, or one that every well may use. They lie in different folders, so a well's
/// own may have the name of a global one.
struct TemplateId
{
    QString name; ///< empty for none
    QString wellName; ///< null for a global one
    bool isGlobal = false;

    static TemplateId global(const QString &name) { return {name, QString(), true}; }
    static TemplateId ofWell(const QString &wellName, const QString &name) { return {name, wellName, false}; }
    /// Whether it is meant where a well is displayed with a template of this name, or would be if there were no global
    /// one of the name.
    bool mayBeShownAs(const QString &shownName, const QString &shownWell) const
    {
        return !name.isEmpty() && shownName == name && (isGlobal || shownWell == wellName);
    }
};

/// The folder of a template of one well. A well without a name has a folder of its own too.
QString templateFolder(const Project &project, const QString &templateName, const QString &wellName);
/// The folder of a template that every well may use.
QString globalTemplateFolder(const Project &project, const QString &templateName);
/// The folder of either.
QString templateFolder(const Project &project, const TemplateId &which);

/// The folder that holds a well's own templates.
QString wellTemplatesFolder(const Project &project, const QString &wellName);
/// The well's own templates, by name; an empty list when it has none.
QStringList wellTemplateNames(const Project &project, const QString &wellName);

/// Whether the well can be displayed with a template of the name: one of the project's global ones, or its own.
bool hasTemplate(const Project &project, const QString &templateName, const QString &wellName);
/// What a name means where a well is displayed: among the project's global templates the global one, whatever the well
/// has, else one of its own, which need not be there.
TemplateId meantTemplate(const Project &project, const QString &templateName, const QString &wellName);

/// All tracks of the template that the name means, in the numeric order of "Track_" and digits, other files after them
/// by name.
QVector<TrackInfo> loadTemplate(const Project &project, const QString &templateName, const QString &wellName);

/// The same by its own folder, whatever other template has its name.
QVector<TrackInfo> loadTemplate(const Project &project, const TemplateId &which);

/// The bytes of its track files in the same order; nothing where one of them cannot be read.
std::optional<QVector<QByteArray>> templateFiles(const Project &project, const TemplateId &which);

/// Whether there is such a template, or anything else in its place.
bool templateExists(const Project &project, const TemplateId &which);

/// Writes a whole template in place of what it was: its tracks, as trackBytes() gives them, become "Track_1.txt" and
/// so on. At every moment the old or the new one is there whole.
base::ReplaceResult saveTemplate(const Project &project, const TemplateId &which, const QVector<QByteArray> &tracks);

/// Takes a template away; true when there is none any more.
bool removeTemplate(const Project &project, const TemplateId &which);

/// "Track_" and the number, which counts from 1.
QString trackNameOf(int number);

/// Reads one track file; without a name and curves when it cannot be opened.
TrackInfo readTrackFile(const Project &project, const QString &path);

/// Writes "<track name>.txt" into \a folder, that of a template, which must exist. Silent; false when it was not
/// written.
bool writeTrack(const QString &folder, const QString &trackName, const QString &typeText,
                const QVector<TemplateCurveRow> &rows);
