#pragma once

#include "templates/templatetrack.h"

#include <QStringList>

struct Project;

/// The folder of a template of one well. A well without a name has a folder of its own too.
QString templateFolder(const Project &project, const QString &templateName, const QString &wellName);
/// The folder of a template that every well may use.
QString globalTemplateFolder(const Project &project, const QString &templateName);

/// The folder that holds a well's own templates.
QString wellTemplatesFolder(const Project &project, const QString &wellName);
/// The well's own templates, by name; an empty list when it has none.
QStringList wellTemplateNames(const Project &project, const QString &wellName);

/// All tracks of a template, in the numeric order of "Track_" and digits, other files after them by name. A name
/// among the project's global templates means the global one, whatever the well has.
QVector<TrackInfo> loadTemplate(const Project &project, const QString &templateName, const QString &wellName);

/// Reads one track file; without a name and curves when it cannot be opened.
TrackInfo readTrackFile(const Project &project, const QString &path);

/// Writes "<track name>.txt" into \a folder, that of a template, which must exist. Silent; false when it was not
/// written.
bool writeTrack(const QString &folder, const QString &trackName, const QString &typeText,
                const QVector<TemplateCurveRow> &rows);
