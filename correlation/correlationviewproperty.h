#pragma once

#include "logview/propertypanel.h"

#include <QStringList>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

class CorrelationView;

/// The property panel of a correlation: scale, depth type and unit, flattening.
class CorrelationViewProperty : public PropertyPanel
{
    Q_OBJECT

public:
    /// \a view is what the fields change; it must outlive the panel's slots.
    explicit CorrelationViewProperty(CorrelationView *view);

    /// Each shows the value; nothing is drawn anew.
    void setCorrelationName(const QString &name);
    void setScale(double scale);
    /// The markers to flatten at. The chosen one stays where it is still among them, else the field goes to "None".
    void setMarkers(const QStringList &names);
    /// Empty for "None", also when there is no such marker.
    void setFlatMarker(const QString &name);
    /// The chosen marker; empty for "None".
    QString flatMarker() const;

    /// Writes a scale into its field and leaves it, as a user would.
    void enterScale(double scale);

public slots:
    void scaleChanged();
    void depthTypeChanged(const QString &text);
    void depthUnitTypeChanged();
    void flatAtMarkerChanged(const QString &text);
    void wellsDisChanged();

private:
    CorrelationView *m_view;
    double m_shownScale;
    QLabel *m_name;
    QLineEdit *m_scale;
    QComboBox *m_depthType;
    QComboBox *m_depthUnit;
    QComboBox *m_flatAt;
    QLineEdit *m_wellDistance;
};
