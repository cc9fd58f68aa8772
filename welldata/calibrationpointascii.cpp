#include "welldata/calibrationpointascii.h"

#include "welldata/definecalibrationpoint.h"

namespace {

ColumnImportTexts pointTexts()
{
    ColumnImportTexts texts;
    texts.objectName = QStringLiteral("CalibrationPointASCII");
    texts.windowTitle = QStringLiteral("Well Calibration Points");
    texts.warningTitle = QStringLiteral("Define Calibration Points");
    texts.fileLabel = QStringLiteral("Select Input File :");
    texts.fileDialogTitle = QStringLiteral("Select Wells Calibration points file");
    texts.columns = {
        {QStringLiteral("Depth"), QStringLiteral("1"), QStringLiteral("depthColumnEdit")},
        {QStringLiteral("Value"), QStringLiteral("2"), QStringLiteral("valueColumnEdit")},
    };
    return texts;
}

} // namespace

CalibrationPointASCII::CalibrationPointASCII(DefineCalibrationPoint &editor, ProjectData &projectData,
                                             const welldata::WellChoice &well, const QString &groupName)
    : ColumnImportDialog(projectData, pointTexts(), &editor)
    , m_editor(editor)
    , m_well(well)
    , m_groupName(groupName)
{
}

QString CalibrationPointASCII::targetProblem() const
{
    if (!m_well.isSet())
        return QStringLiteral("Unable to set Wellname.");
    return m_groupName.isEmpty() ? QStringLiteral("Unable to set GroupName.") : QString();
}

bool CalibrationPointASCII::store(const welldata::ColumnFile &file)
{
    return m_editor.importPoints(m_well.name, m_groupName, file);
}
