#include "templates/definetemplate.h"

#include "base/asker.h"
#include "datastore/projectdata.h"

#include <QPointer>
#include <QPushButton>

DefineTemplate::DefineTemplate(ProjectData &projectData, const QString &wellName, QWidget *parent)
    : TemplateDialog(projectData, wellName, parent)
{
    setObjectName(QStringLiteral("DefineTemplate"));
    setWindowTitle(QStringLiteral("Define Display Template"));
    setWindowIcon(projectData.host.icon(QStringLiteral("defineTemplate_wlc.png")));
    connect(addButton("Add Track", "addTrackButton"), &QPushButton::clicked, this, &DefineTemplate::addTrackClicked);
    connect(addButton("Default Template", "defaultTemplateButton"), &QPushButton::clicked, this,
            &DefineTemplate::populateFromDefaultBtnClicked);
    connect(addButton("Save Template", "saveButton"), &QPushButton::clicked, this, &DefineTemplate::saveClicked);
    connect(addButton("Save as Global", "saveAsGlobalButton"), &QPushButton::clicked, this,
            &DefineTemplate::saveAsGlobalClicked);
    connect(addButton("Close", "closeButton"), &QPushButton::clicked, this, &DefineTemplate::close);
    noteSaved();
}

void DefineTemplate::populateFromDefaultBtnClicked()
{
    clearTracks();
    const QVector<TrackInfo> tracks = loadTemplate(data().project, QStringLiteral("Default"), wellName());
    addTracks(tracks);
    if (tracks.isEmpty())
        warn(QStringLiteral("The template \"Default\" has no tracks, or is not known yet."));
}

void DefineTemplate::saveClicked()
{
    save();
}

bool DefineTemplate::save()
{
    return saveAs(TemplateId::ofWell(wellName(), name()), true);
}

void DefineTemplate::saveAsGlobalClicked()
{
    saveAs(TemplateId::global(name()), false);
}

bool DefineTemplate::saveAs(const TemplateId &target, bool tellsRemoval)
{
    const QPointer<DefineTemplate> self = this;
    if (!mayWrite(target, false) || !self)
        return false;
    const bool replaces = templateExists(data().project, target);
    if (!write(target, tellsRemoval))
        return false;
    announce(target, {});
    if (self && tellsRemoval && replaces)
        warn(QStringLiteral("Removed Successfully !"));
    if (self)
        data().asker.inform(windowTitle(), QStringLiteral("Saved Successfully !"));
    return true;
}
