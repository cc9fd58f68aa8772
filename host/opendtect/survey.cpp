#include "host/opendtect/survey.h"

#include "host/opendtect/odtext.h"

#include <ioman.h>
#include <oddirs.h>
#include <ptrman.h>
#include <survinfo.h>

namespace opendtect {

Survey::Survey(std::function<void()> changed, std::function<void()> closing)
    : m_changed(std::move(changed))
    , m_closing(std::move(closing))
{
    mAttachCB(IOM().afterSurveyChange, Survey::afterSurveyChange);
    mAttachCB(IOM().applicationClosing, Survey::applicationClosing);
}

Survey::~Survey()
{
    detachAllNotifiers();
}

QString Survey::directory() const
{
    const QString folder = toFolder(GetDataDir());
    const PtrMan<SurveyInfo> info = SurveyInfo::read(folder.toUtf8().constData());
    // A survey that vanished has no record; where it was is still the best answer.
    if (!info)
        return folder;
    return toFolder(info->getDataDirName().buf()) + QLatin1Char('/') + toQString(info->getDirName().buf());
}

QString Survey::name() const
{
    return toQString(SurveyInfo::curSurveyName());
}

QString Survey::setupDataFolder() const
{
    return toFolder(GetSetupDataFileDir(ODSetupLoc_SWDirOnly, true));
}

QString Survey::documentationFolder() const
{
    return toFolder(GetDocFileDir(""));
}

void Survey::afterSurveyChange(CallBacker *)
{
    m_changed();
}

void Survey::applicationClosing(CallBacker *)
{
    m_closing();
}

} // namespace opendtect
