#pragma once

#include <QVector>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QComboBox;
class QTabWidget;
QT_END_NAMESPACE

class DefaultDataClass;
class DefineCalibrationPoint;
class DefineWellPerforation;
class MarkerDataWidget;
class WellTableEditor;
struct ProjectData;

/// The work area "Well Data Manager": a choice of well above the editors of its default logs, markers, perforation
/// zones and calibration points.
class WellsDataManagerWidget : public QWidget
{
    Q_OBJECT

public:
    /// \a projectData must outlive the widget.
    explicit WellsDataManagerWidget(ProjectData &projectData, QWidget *parent = nullptr);

    const QString &currentWellName() const { return m_wellName; }
    DefaultDataClass *defaultData() const { return m_defaultData; }
    MarkerDataWidget *markers() const { return m_markers; }
    DefineWellPerforation *zones() const { return m_zones; }
    DefineCalibrationPoint *points() const { return m_points; }

    /// The catalogue was read anew: the choice of wells follows. A well that is still there stays chosen.
    void synchronise();
    /// The logs of a well of the catalogue changed.
    void logsChanged(int well);
    /// The markers of a well of the catalogue changed in the host.
    void markersChanged(int well);

public slots:
    void wellChanged(int index);

private:
    void fillWells();
    QString chosenKey() const;
    QVector<WellTableEditor *> tableEditors() const;

    ProjectData &m_data;
    QString m_wellName;
    int m_shownWell = 0; ///< index of the choice that the editors show
    QComboBox *m_wells = nullptr;
    QTabWidget *m_tabs = nullptr;
    DefaultDataClass *m_defaultData = nullptr;
    MarkerDataWidget *m_markers = nullptr;
    DefineWellPerforation *m_zones = nullptr;
    DefineCalibrationPoint *m_points = nullptr;
};
