#include "welldata/wellperforationascii.h"

#include "welldata/definewellperforation.h"

namespace {

ColumnImportTexts zoneTexts()
{
    ColumnImportTexts texts;
    texts.objectName = QStringLiteral("WellPerforationASCII");
    texts.windowTitle = QStringLiteral("Well Perforation Zone");
    texts.warningTitle = QStringLiteral("Define Well Perforation");
    texts.fileLabel = QStringLiteral("Select Input File :");
    texts.fileDialogTitle = QStringLiteral("Select Wells Perforation data file");
    texts.columns = {
        {QStringLiteral("Name"), QStringLiteral("1"), QStringLiteral("nameColumnEdit")},
        {QStringLiteral("Start Depth"), QStringLiteral("2"), QStringLiteral("startDepthColumnEdit")},
        {QStringLiteral("End Depth"), QStringLiteral("3"), QStringLiteral("endDepthColumnEdit")},
        {QStringLiteral("Zone Type"), QStringLiteral("4"), QStringLiteral("zoneTypeColumnEdit")},
    };
    texts.fieldsAtLeast = 4;
    return texts;
}

} // namespace

WellPerforationASCII::WellPerforationASCII(DefineWellPerforation &editor, ProjectData &projectData,
                                           const welldata::WellChoice &well)
    : ColumnImportDialog(projectData, zoneTexts(), &editor)
    , m_editor(editor)
    , m_well(well)
{
}

QString WellPerforationASCII::targetProblem() const
{
    return m_well.isSet() ? QString() : QStringLiteral("Unable to set Wellname.");
}

bool WellPerforationASCII::store(const welldata::ColumnFile &file)
{
    return m_editor.importZones(m_well, file, warningTitle());
}
