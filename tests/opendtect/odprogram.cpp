#include "odprogram.h"

#include "support/files.h"
#include "survey/surveyfolder.h"

#include <genc.h>
#include <ioman.h>
#include <moddepmgr.h>
#include <odruncontext.h>
#include <uimain.h>

OdProgram::OdProgram(int &argc, char **argv)
{
    files::write(m_folder.filePath(QStringLiteral("settings/survey")), "Start\n");
    qputenv("DTECT_SETTINGS", m_folder.filePath(QStringLiteral("settings")).toUtf8());
    qputenv("DTECT_DATA", m_folder.filePath(QStringLiteral("root")).toUtf8());
    const host::Status made = survey::createSurvey(dataRoot() + QStringLiteral("/Start"), {});
    if (!made.ok())
        qFatal("The test cannot make a survey: %s", qUtf8Printable(made.error));

    OD::SetRunContext(OD::BatchProgCtxt);
    SetProgramArgs(argc, argv);
    m_application = std::make_unique<uiMain>(argc, argv);
    OD::ModDeps().ensureLoaded("Well");
    OD::ModDeps().ensureLoaded("uiBase");
    IOM().setDataSource(dataRoot().toUtf8().constData(), "Start");
}

OdProgram::~OdProgram() = default;

QString OdProgram::dataRoot()
{
    return QString::fromUtf8(qgetenv("DTECT_DATA"));
}
