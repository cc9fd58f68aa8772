#pragma once

#include "welldata/columnimportdialog.h"
#include "welldata/welldatastore.h"

class DefineCalibrationPoint;

/// The import "Well Calibration Points": points of a text file become those of a well and a curve group.
class CalibrationPointASCII : public ColumnImportDialog
{
    Q_OBJECT

public:
    /// \a editor is the parent, stores the points and shows them. An empty group name is none.
    CalibrationPointASCII(DefineCalibrationPoint &editor, ProjectData &projectData, const welldata::WellChoice &well,
                          const QString &groupName);

protected:
    QString targetProblem() const override;
    bool store(const welldata::ColumnFile &file) override;

private:
    DefineCalibrationPoint &m_editor;
    welldata::WellChoice m_well;
    QString m_groupName;
};
