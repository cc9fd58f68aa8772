#pragma once

#include "logview/propertypanel.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
QT_END_NAMESPACE

namespace base {
class NumberField;
}
class WellLogsScene;

/// The property panel of a log display: scale, depth range, depth type and unit.
class WellLogsScenePropertyWidget : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a scene owns the panel.
    explicit WellLogsScenePropertyWidget(WellLogsScene *scene);

    /// Each shows the value, and gives it to the scene where that keeps it; nothing is drawn anew.
    void setWellName(const QString &wellName);
    void setTotalDepth(float depthM);
    void setScale(float scale);
    float scale() const { return m_scaleValue; }
    /// Types a scale into its field, as a user does.
    void enterScale(float scale);
    void setStartDepth(float depth);
    void setEndDepth(float depth);
    void setDepthType(int depthType);
    void setDepthUnit(int unit);
    /// Chooses and types what another display's panel says; its depth range only where both show the same depths.
    void enterAllOf(const WellLogsScenePropertyWidget &other);

public slots:
    void scaleChanged();
    void startDepthChanged();
    void endDepthChanged();
    void depthTypeChanged();
    void depthUnitTypeChanged();

private:
    WellLogsScene *m_scene;
    float m_scaleValue = 1000.0F;
    QLabel *m_wellName;
    base::NumberField *m_scale;
    base::NumberField *m_startDepth;
    base::NumberField *m_endDepth;
    QComboBox *m_depthType;
    QComboBox *m_depthUnit;
};
