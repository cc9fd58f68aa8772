#pragma once

#include "welldata/columnimportdialog.h"
#include "welldata/welldatastore.h"

class MarkerDataWidget;

/// The import "Well Marker Data": markers of a text file become the markers of a well.
class MarkerDataWidgetASCII : public ColumnImportDialog
{
    Q_OBJECT

public:
    /// \a editor is the parent, stores the markers and shows them when it still shows the well.
    MarkerDataWidgetASCII(MarkerDataWidget &editor, ProjectData &projectData, const welldata::WellChoice &well);

protected:
    QString targetProblem() const override;
    bool store(const welldata::ColumnFile &file) override;

private:
    MarkerDataWidget &m_editor;
    welldata::WellChoice m_well;
};
