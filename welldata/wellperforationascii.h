#pragma once

#include "welldata/columnimportdialog.h"
#include "welldata/welldatastore.h"

class DefineWellPerforation;

/// The import "Well Perforation Zone": intervals of a text file become the perforation zones of a well.
class WellPerforationASCII : public ColumnImportDialog
{
    Q_OBJECT

public:
    /// \a editor is the parent, stores the zones and shows them when it still shows the well.
    WellPerforationASCII(DefineWellPerforation &editor, ProjectData &projectData, const welldata::WellChoice &well);

protected:
    QString targetProblem() const override;
    bool store(const welldata::ColumnFile &file) override;

private:
    DefineWellPerforation &m_editor;
    welldata::WellChoice m_well;
};
