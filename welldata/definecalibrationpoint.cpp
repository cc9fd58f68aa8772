#include "welldata/definecalibrationpoint.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "welldata/calibrationpointascii.h"
#include "welldata/siderows.h"
#include "welldata/welldatatable.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QVBoxLayout>

DefineCalibrationPoint::DefineCalibrationPoint(ProjectData &projectData, QWidget *parent)
    : WellTableEditor(projectData, QStringLiteral("Calibration Point(s)"), QStringLiteral("calibration points"),
                      welldata::pointColumns(), parent)
    , m_group(new QComboBox)
{
    setObjectName(QStringLiteral("DefineCalibrationPoint"));
    m_group->setObjectName(QStringLiteral("groupBox"));
    m_group->addItems(projectData.project.groupNames);
    m_group->setMaxVisibleItems(22);
    m_group->setToolTip(QStringLiteral("The curve group over whose tracks the points are shown"));
    auto *label = new QLabel(QStringLiteral("Group"));
    label->setBuddy(m_group);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_group);
    row->addStretch(1);
    page()->insertLayout(0, row);
    takeTabsFirst(m_group);
    connect(m_group, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &DefineCalibrationPoint::wellOrGrooupChanged);
}

QString DefineCalibrationPoint::chosenGroup() const
{
    return m_group->currentIndex() > 0 ? m_group->currentText() : QString();
}

void DefineCalibrationPoint::showGroup(int index)
{
    const QSignalBlocker blocker(m_group);
    m_group->setCurrentIndex(index);
}

// Of another group; the table still holds the points of the one before.
void DefineCalibrationPoint::wellOrGrooupChanged()
{
    const int chosen = m_group->currentIndex();
    const QPointer<DefineCalibrationPoint> self = this;
    if (chosen != m_shownGroup && isModified()) {
        showGroup(m_shownGroup); // what is saved now is of that group
        const bool mayGo = mayLeave();
        if (!self || !mayGo)
            return;
        showGroup(chosen);
    }
    setWell(well().name, well().key);
}

void DefineCalibrationPoint::load()
{
    m_shownGroup = m_group->currentIndex();
    const QPointer<DefineCalibrationPoint> self = this;
    const CalibrationRecord record =
        readCalibration(data().project.projectFolder, wellName(), m_group->currentText(), data().asker);
    if (!self)
        return;
    showRows(welldata::pointRows(record));
    setPassingStatus(record.depths.isEmpty() ? QStringLiteral("Calibration data doesn't exist !") : QString());
}

void DefineCalibrationPoint::setCalibrationData(const CalibrationRecord &record)
{
    if (record.wellName != wellName()) {
        setStatus(QStringLiteral("Current wellName is not matching with calibration data."));
        return;
    }
    showRows(welldata::pointRows(record));
    setStatus(QString());
}

bool DefineCalibrationPoint::save()
{
    if (chosenGroup().isEmpty()) {
        data().asker.warn(windowTitle(), QStringLiteral("Unable to set GroupName."));
        return false;
    }
    const QPointer<DefineCalibrationPoint> self = this;
    const QString name = wellName();
    const StoreResult result = storePoints(data(), name, chosenGroup(), table()->rows());
    if (!self || result.isDeclined())
        return false;
    if (!result) {
        setStatus(QStringLiteral("Error in saving/updating Calibration data !"));
        return false;
    }
    setSaved();
    setPassingStatus(QStringLiteral("Successfully updated !"));
    emit pointsWritten(name);
    return true;
}

void DefineCalibrationPoint::updateBtnClicked()
{
    if (hasWell())
        save();
    else
        setStatus(QStringLiteral("Well not selected !"));
}

bool DefineCalibrationPoint::importPoints(const QString &to, const QString &groupName,
                                          const welldata::ColumnFile &file)
{
    const QPointer<DefineCalibrationPoint> self = this;
    const QVector<welldata::TableRow> rows = welldata::pointRows(file);
    if (!storePoints(data(), to, groupName, rows) || !self)
        return false;
    if (groupName == m_group->currentText() || to != wellName()) {
        const CalibrationRecord stored = readCalibration(data().project.projectFolder, to, groupName, data().asker);
        if (!self)
            return true;
        setCalibrationData(stored);
        const QVector<int> without = rowsWithoutNumber(rows);
        if (to == wellName() && !without.isEmpty())
            setStatus(QStringLiteral("No number in %1: read as 0.").arg(welldata::rowList(without)));
    }
    emit pointsWritten(to);
    return true;
}

ColumnImportDialog *DefineCalibrationPoint::makeImport()
{
    return new CalibrationPointASCII(*this, data(), well(), chosenGroup());
}
