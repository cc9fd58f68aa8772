#pragma once

#include "correlation/correlationproperties.h"

#include <QDialog>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;
QT_END_NAMESPACE

class CorrelationMarkersTable;
class CorrelationWellsTable;
class CorrelationZonesTable;
struct ProjectData;

/// Edits one correlation: wells with templates, markers, zones, track width and scale. What the view draws is what was
/// saved, not what the choosers show meanwhile.
class CorrelationPropertiesDialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows the saved correlation \a name; an empty dialog where there is none. \a projectData must outlive it.
    CorrelationPropertiesDialog(ProjectData &projectData, const QString &name, QWidget *parent = nullptr);

    /// What the file says.
    const CorrelationProperties &saved() const { return m_saved; }
    /// Whether there is a file.
    bool isStored() const { return m_isStored; }
    /// The marker at which the view is to be flattened since the last save; empty for none. Not stored.
    const QString &flatMarker() const { return m_flatMarker; }
    /// The view is flattened at this marker now, or at none: the dialog shows it, unless the user edited something.
    void showFlatMarker(const QString &marker);
    /// Whether the user edited something since it was opened or saved.
    bool isChanged() const { return m_isChanged; }
    /// A well changed in the host, or with an empty name any of them: the choosers offer what there is now. What the user
    /// chose and did not save stays where it is still offered.
    void followWell(const QString &wellName);
    /// Reads the file anew, unless the user edited something. True when it says something else now.
    bool readAgain();
    /// Offers the templates as they are now. A chosen one that is gone stays until another is chosen.
    void templatesChanged();
    /// Saves; false when a warning was shown and nothing was written.
    bool save();

signals:
    void sendCorrelationNameChanged(QString name);
    /// The file was written.
    void correlationDataChanged();

public slots:
    void correlationNameChanged();
    void wellChanged();
    void addWellClicked();
    void removeWellClicked();
    void allTopsChecked(bool areChecked);
    void setAllTopCheckBox(bool isChecked);
    void zoneAddClicked();
    void zoneDeleteClicked();
    void zoneTableCellClicked(int row, int column);
    void saveButtonClicked();
    void okButtonClicked();

private:
    struct Refusal
    {
        QString text;
        QPointer<QLineEdit> field; ///< where it is mended; may be null
    };

    QWidget *makeParts();
    QWidget *makeWellsPart();
    QWidget *makeMarkersPart();
    QWidget *makeZonesPart();
    void addScaleRows(QVBoxLayout *layout);
    void fill(const CorrelationProperties &properties);
    void showWells(const CorrelationProperties &properties);
    void showMarkersAndZones(const CorrelationProperties &properties);
    void refillMarkers();
    void tellMissing(const CorrelationProperties &properties);
    void markChanged();
    CorrelationProperties collected() const;
    Refusal refusal(const CorrelationProperties &properties) const;
    void refuse(const Refusal &refusal);

    ProjectData &m_data;
    CorrelationProperties m_saved;
    QString m_storedName; ///< the name of its folder
    QString m_flatMarker;
    bool m_isStored = false;
    bool m_isChanged = false;
    QLineEdit *m_name;
    CorrelationWellsTable *m_wells = nullptr;
    QCheckBox *m_allMarkers = nullptr;
    CorrelationMarkersTable *m_markers = nullptr;
    QComboBox *m_flatAt = nullptr;
    QCheckBox *m_hasPerforations = nullptr;
    CorrelationZonesTable *m_zones = nullptr;
    QComboBox *m_trackWidth = nullptr;
    QComboBox *m_scale = nullptr;
    QLabel *m_missing = nullptr;
};
