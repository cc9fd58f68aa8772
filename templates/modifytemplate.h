#pragma once

#include "templates/templatedialog.h"

/// Edits a display template where it is, under its name or a new one, or makes it one for all wells.
class ModifyTemplate : public TemplateDialog
{
    Q_OBJECT

public:
    /// Opens the template by its own folder. \a wellName is the well whose curves are offered, also for a global one.
    ModifyTemplate(ProjectData &projectData, const TemplateId &which, const QString &wellName,
                   QWidget *parent = nullptr);

    /// The template as it was opened or saved last.
    const TemplateId &opened() const { return m_opened; }

public slots:
    void setTrackWidget(TrackInfo track);
    void tabMovedSlot();
    void saveClicked();
    void saveAsGlobalClicked();
    void closeButtonClicked();

protected:
    bool save() override;
    QString problem() const override;

private:
    void finish(const TemplateId &now, const TemplateId &was, const QString &leftBehind);

    TemplateId m_opened;
    int m_unreadableTracks = 0;
};
