#pragma once

#include "welldata/columnfile.h"
#include "welldata/welltableeditor.h"

/// The tab "Perforation Zone(s)": the perforated intervals of the selected well.
class DefineWellPerforation : public WellTableEditor
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget.
    explicit DefineWellPerforation(ProjectData &projectData, QWidget *parent = nullptr);

    /// Stores the zones of an imported file as those of the well, and shows them when it shows that well. False when
    /// nothing was stored; the user knows why.
    bool importZones(const welldata::WellChoice &to, const welldata::ColumnFile &file, const QString &title);

signals:
    void zonesWritten(const QString &wellName);

public slots:
    void updateBtnClicked() override;

protected:
    void load() override;
    bool save() override;
    ColumnImportDialog *makeImport() override;
};
