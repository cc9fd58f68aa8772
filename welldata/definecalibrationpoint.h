#pragma once

#include "welldata/columnfile.h"
#include "welldata/welltableeditor.h"

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

struct CalibrationRecord;

/// The tab "Calibration Point(s)": the measured values of the selected well for one curve group.
class DefineCalibrationPoint : public WellTableEditor
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget.
    explicit DefineCalibrationPoint(ProjectData &projectData, QWidget *parent = nullptr);

    /// Shows points that were stored, unless they are those of another well.
    void setCalibrationData(const CalibrationRecord &record);
    /// Stores the points of an imported file for well and group, and shows them. False when nothing was stored; the
    /// user knows why.
    bool importPoints(const QString &to, const QString &groupName, const welldata::ColumnFile &file);

signals:
    void pointsWritten(const QString &wellName);

public slots:
    void wellOrGrooupChanged();
    void updateBtnClicked() override;

protected:
    void load() override;
    bool save() override;
    ColumnImportDialog *makeImport() override;

private:
    void showGroup(int index);
    /// Empty for "None".
    QString chosenGroup() const;

    QComboBox *m_group;
    int m_shownGroup = 0; ///< index of the group whose points the table holds
};
