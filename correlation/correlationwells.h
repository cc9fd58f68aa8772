#pragma once

#include "correlation/correlationgeometry.h"
#include "templates/templatetrack.h"

#include <QHash>

#include <memory>

class WellDisplayData;
struct ProjectData;

/// What a correlation draws of its wells: read when it is first asked for, kept as long as the correlation is open,
/// shared by all redraws.
class CorrelationWells
{
public:
    struct Well
    {
        std::shared_ptr<WellDisplayData> data;
        QHash<QString, correlation::PlacedMarker> markers;
    };

    /// \a projectData must outlive it; \a dotsPerInch are those of the view, for a display without a launch.
    CorrelationWells(ProjectData &projectData, int dotsPerInch);

    /// Null when the survey has no such well.
    const Well *well(const QString &name);
    /// The tracks of a template with the well's default logs in place. A template that is gone gives the tracks of the
    /// global one "Default"; \a isGone tells.
    QVector<TrackInfo> tracks(const CorrelationWell &well, bool *isGone);

    /// Templates may have changed: they are read anew, what belongs to the wells is not.
    void forgetTemplates() { m_templates.clear(); }
    /// A well changed in the host, or an empty name for all: everything of it is read anew.
    void forgetWell(const QString &name);

private:
    ProjectData &m_data;
    int m_dotsPerInch;
    QHash<QString, Well> m_wells;
    struct Template
    {
        QVector<TrackInfo> tracks;
        bool isGone = false;
    };
    QHash<QString, Template> m_templates; ///< by well and template
};
