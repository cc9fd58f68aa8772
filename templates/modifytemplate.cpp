#include "templates/modifytemplate.h"

#include "base/asker.h"
#include "datastore/projectdata.h"

#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

ModifyTemplate::ModifyTemplate(ProjectData &projectData, const TemplateId &which, const QString &wellName,
                               QWidget *parent)
    : TemplateDialog(projectData, wellName, parent)
    , m_opened(which)
{
    setObjectName(QStringLiteral("ModifyTemplate"));
    setWindowTitle(QStringLiteral("Edit Display Template"));
    setWindowIcon(projectData.host.icon(QStringLiteral("editTemplate_wlc.png")));
    connect(addButton("Add Track", "addTrackButton"), &QPushButton::clicked, this, &ModifyTemplate::addTrackClicked);
    connect(addButton("Save", "saveButton"), &QPushButton::clicked, this, &ModifyTemplate::saveClicked);
    connect(addButton("Save As Global", "saveAsGlobalButton"), &QPushButton::clicked, this,
            &ModifyTemplate::saveAsGlobalClicked);
    connect(addButton("Close", "closeButton"), &QPushButton::clicked, this, &ModifyTemplate::closeButtonClicked);
    tabs()->setMovable(true);
    connect(tabs()->tabBar(), &QTabBar::tabMoved, this, &ModifyTemplate::tabMovedSlot);
    for (const int step : {-1, 1}) {
        const int key = step < 0 ? Qt::Key_PageUp : Qt::Key_PageDown;
        const auto *move = new QShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + key), this);
        connect(move, &QShortcut::activated, this,
                [this, step] { tabs()->tabBar()->moveTab(tabs()->currentIndex(), tabs()->currentIndex() + step); });
    }

    setName(which.name);
    QVector<TrackInfo> readable;
    for (const TrackInfo &track : loadTemplate(projectData.project, which)) {
        if (track.name.isEmpty())
            ++m_unreadableTracks;
        else
            readable.append(track);
    }
    addTracks(readable);
    noteSaved();
}

void ModifyTemplate::setTrackWidget(TrackInfo track)
{
    addTracks({track});
}

void ModifyTemplate::tabMovedSlot()
{
    renumberTracks();
    updatePreview();
}

// What cannot be shown would be lost by saving.
QString ModifyTemplate::problem() const
{
    if (m_unreadableTracks == 0)
        return {};
    return QStringLiteral("%1 of this template's track files cannot be read and would be lost; nothing is saved.")
        .arg(m_unreadableTracks);
}

void ModifyTemplate::saveClicked()
{
    save();
}

bool ModifyTemplate::save()
{
    TemplateId target = m_opened;
    target.name = name();
    const bool isRenamed = target.name != m_opened.name;
    const QPointer<ModifyTemplate> self = this;
    if (!mayWrite(target, !isRenamed) || !self || !write(target, false))
        return false;
    const bool isOldGone = !isRenamed || removeTemplate(data().project, m_opened);
    finish(target, isRenamed && isOldGone ? m_opened : TemplateId(),
           isOldGone ? QString()
                     : QStringLiteral("Saved as \"%1\", but the folder of \"%2\" could not be removed.")
                           .arg(target.name, m_opened.name));
    return true;
}

void ModifyTemplate::saveAsGlobalClicked()
{
    const TemplateId target = TemplateId::global(name());
    const TemplateId ofWell = TemplateId::ofWell(m_opened.wellName, name());
    const QPointer<ModifyTemplate> self = this;
    if (!mayWrite(target, false) || !self || !write(target, false))
        return;
    const bool moves = !m_opened.isGlobal && templateExists(data().project, ofWell);
    const bool isOldGone = !moves || removeTemplate(data().project, ofWell);
    finish(target, moves && isOldGone ? ofWell : TemplateId(),
           isOldGone ? QString()
                     : QStringLiteral("Saved as a global template, but that of the well \"%1\" could not be removed.")
                           .arg(ofWell.wellName));
}

void ModifyTemplate::finish(const TemplateId &now, const TemplateId &was, const QString &leftBehind)
{
    const QPointer<ModifyTemplate> self = this;
    m_opened = now;
    announce(now, was);
    if (!self)
        return;
    if (leftBehind.isEmpty())
        data().asker.inform(windowTitle(), QStringLiteral("Saved Successfully !"));
    else
        warn(leftBehind);
}

void ModifyTemplate::closeButtonClicked()
{
    close();
}
