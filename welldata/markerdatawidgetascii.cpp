#include "welldata/markerdatawidgetascii.h"

#include "welldata/markerdatawidget.h"

namespace {

ColumnImportTexts markerTexts()
{
    ColumnImportTexts texts;
    texts.objectName = QStringLiteral("MarkerDataWidgetASCII");
    texts.windowTitle = QStringLiteral("Well Marker Data");
    texts.warningTitle = texts.windowTitle;
    texts.fileLabel = QStringLiteral("Select Input File");
    texts.fileDialogTitle = QStringLiteral("Select Wells Marker data file");
    texts.columns = {
        {QStringLiteral("Name"), QStringLiteral("1"), QStringLiteral("nameColumnEdit")},
        {QStringLiteral("Depth"), QStringLiteral("2"), QStringLiteral("depthColumnEdit")},
    };
    return texts;
}

} // namespace

MarkerDataWidgetASCII::MarkerDataWidgetASCII(MarkerDataWidget &editor, ProjectData &projectData,
                                             const welldata::WellChoice &well)
    : ColumnImportDialog(projectData, markerTexts(), &editor)
    , m_editor(editor)
    , m_well(well)
{
}

QString MarkerDataWidgetASCII::targetProblem() const
{
    return m_well.isSet() ? QString() : QStringLiteral("Unable to set Wellname.");
}

bool MarkerDataWidgetASCII::store(const welldata::ColumnFile &file)
{
    return m_editor.importMarkers(m_well, file, warningTitle());
}
