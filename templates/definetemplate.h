#pragma once

#include "templates/templatedialog.h"

/// Makes a new display template, for one well or for all.
class DefineTemplate : public TemplateDialog
{
    Q_OBJECT

public:
    DefineTemplate(ProjectData &projectData, const QString &wellName, QWidget *parent = nullptr);

public slots:
    void populateFromDefaultBtnClicked();
    void saveClicked();
    void saveAsGlobalClicked();

protected:
    bool save() override;

private:
    bool saveAs(const TemplateId &target, bool tellsRemoval);
};
