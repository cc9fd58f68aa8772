#include "correlation/correlationpropertiesdialog.h"

#include "base/asker.h"
#include "base/colorchoice.h"
#include "base/keptlooks.h"
#include "base/numbers.h"
#include "base/safename.h"
#include "correlation/correlationmarkerstable.h"
#include "correlation/correlationmissing.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationwellstable.h"
#include "correlation/correlationzonestable.h"
#include "datastore/projectdata.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSet>
#include <QSignalBlocker>

namespace {

constexpr int defaultTrackWidthIndex = 2; // "1.2"
constexpr int defaultScaleIndex = 2; // "1000"
const QStringList trackWidths{QStringLiteral("0.75"), QStringLiteral("1"),    QStringLiteral("1.2"),
                              QStringLiteral("1.5"),  QStringLiteral("1.75"), QStringLiteral("2")};
const QStringList scales{QStringLiteral("1"),    QStringLiteral("500"),  QStringLiteral("1000"),
                         QStringLiteral("2000"), QStringLiteral("5000"), QStringLiteral("10000")};

QPushButton *makeButton(const ProjectData &data, const char *name, const char *icon, const char *tip)
{
    auto *button = new QPushButton(data.host.icon(QString::fromLatin1(icon)), QString());
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(tip));
    button->setAutoDefault(false);
    return button;
}

QHBoxLayout *beside(QWidget *table, QWidget *add, QWidget *remove)
{
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto *row = new QHBoxLayout;
    row->addWidget(table, 1);
    row->addLayout(buttons);
    return row;
}

QString numberText(double value)
{
    return QString::fromLatin1(base::formatGeneral(value));
}

} // namespace

CorrelationPropertiesDialog::CorrelationPropertiesDialog(ProjectData &projectData, const QString &name,
                                                         QWidget *parent)
    : QDialog(parent)
    , m_data(projectData)
    , m_storedName(name)
    , m_name(new QLineEdit)
{
    setObjectName(QStringLiteral("CorrelationPropertiesDialog"));
    setWindowTitle(name);
    auto *layout = new QVBoxLayout(this);
    auto *nameRow = new QHBoxLayout;
    auto *nameLabel = new QLabel(QStringLiteral("Name :"));
    m_name->setObjectName(QStringLiteral("nameEdit"));
    nameLabel->setBuddy(m_name);
    nameRow->addWidget(nameLabel);
    nameRow->addWidget(m_name, 1);
    layout->addLayout(nameRow);
    layout->addWidget(makeParts(), 1);
    addScaleRows(layout);

    m_missing = new QLabel;
    m_missing->setObjectName(QStringLiteral("missingLabel"));
    m_missing->setTextFormat(Qt::PlainText);
    m_missing->setWordWrap(true);
    m_missing->hide();
    layout->addWidget(m_missing);

    auto *save = new QPushButton(QStringLiteral("Save"));
    save->setObjectName(QStringLiteral("saveButton"));
    save->setAutoDefault(false);
    auto *close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("closeButton"));
    close->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, &CorrelationPropertiesDialog::saveButtonClicked);
    connect(close, &QPushButton::clicked, this, &CorrelationPropertiesDialog::close);
    connect(m_name, &QLineEdit::textEdited, this, &CorrelationPropertiesDialog::correlationNameChanged);

    m_saved.name = name;
    QString error;
    const auto stored = correlation::load(m_data.project, name, correlation::knownNames(m_data), &error);
    m_isStored = stored.has_value();
    fill(stored.value_or(m_saved));
    if (!m_isStored)
        m_name->selectAll(); // a name of its own is typed over the proposed one
    if (!error.isEmpty()) {
        m_missing->setText(
            QStringLiteral("The file of this correlation cannot be read, and is not written over: %1").arg(error));
        m_missing->show();
    }
    resize(720, 760);
    base::keepSize(this, objectName());
}

// On a low screen the parts scroll, so that the buttons below them stay in sight.
QWidget *CorrelationPropertiesDialog::makeParts()
{
    auto *parts = new QWidget;
    auto *column = new QVBoxLayout(parts);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeWellsPart(), 2);
    column->addWidget(makeMarkersPart(), 3);
    column->addWidget(makeZonesPart(), 2);
    auto *area = new QScrollArea;
    area->setObjectName(QStringLiteral("partsArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(parts);
    return area;
}

QWidget *CorrelationPropertiesDialog::makeWellsPart()
{
    auto *part = new QGroupBox(QStringLiteral("Wells"));
    m_wells = new CorrelationWellsTable(m_data);
    auto *add = makeButton(m_data, "addWellButton", "plus", "Add a well on the right");
    auto *remove = makeButton(m_data, "removeWellButton", "minus.png", "Remove the current well");
    part->setLayout(beside(m_wells, add, remove));
    connect(add, &QPushButton::clicked, this, &CorrelationPropertiesDialog::addWellClicked);
    connect(remove, &QPushButton::clicked, this, &CorrelationPropertiesDialog::removeWellClicked);
    connect(m_wells, &CorrelationWellsTable::wellChosen, this, &CorrelationPropertiesDialog::wellChanged);
    connect(m_wells, &CorrelationWellsTable::wellMoved, this, &CorrelationPropertiesDialog::wellChanged);
    connect(m_wells, &CorrelationWellsTable::templateChosen, this, &CorrelationPropertiesDialog::markChanged);
    return part;
}

QWidget *CorrelationPropertiesDialog::makeMarkersPart()
{
    auto *part = new QGroupBox(QStringLiteral("Markers"));
    m_allMarkers = new QCheckBox(QStringLiteral("All Markers"));
    m_allMarkers->setObjectName(QStringLiteral("allMarkersBox"));
    m_markers = new CorrelationMarkersTable;
    m_flatAt = new QComboBox;
    m_flatAt->setObjectName(QStringLiteral("flatAtChooser"));
    m_flatAt->addItem(QStringLiteral("None"));
    auto *flatLabel = new QLabel(QStringLiteral("Flat At Marker :"));
    flatLabel->setBuddy(m_flatAt);
    auto *flatRow = new QHBoxLayout;
    flatRow->addWidget(flatLabel);
    flatRow->addWidget(m_flatAt, 1);
    auto *layout = new QVBoxLayout(part);
    layout->addWidget(m_allMarkers);
    layout->addWidget(m_markers);
    layout->addLayout(flatRow);
    connect(m_allMarkers, &QCheckBox::clicked, this, &CorrelationPropertiesDialog::allTopsChecked);
    connect(m_markers, &CorrelationMarkersTable::tickChanged, this, &CorrelationPropertiesDialog::setAllTopCheckBox);
    connect(m_markers, &CorrelationMarkersTable::tickChanged, this, &CorrelationPropertiesDialog::markChanged);
    connect(m_flatAt, QOverload<int>::of(&QComboBox::activated), this, &CorrelationPropertiesDialog::markChanged);
    return part;
}

QWidget *CorrelationPropertiesDialog::makeZonesPart()
{
    auto *part = new QGroupBox(QStringLiteral("Perforation Zone"));
    m_hasPerforations = new QCheckBox(QStringLiteral("Zone(s)"));
    m_hasPerforations->setObjectName(QStringLiteral("zonesBox"));
    m_zones = new CorrelationZonesTable;
    auto *add = makeButton(m_data, "addZoneButton", "add_wlc.png", "Add a zone");
    auto *remove = makeButton(m_data, "removeZoneButton", "sub_wlc.png", "Remove the current zone");
    auto *layout = new QVBoxLayout(part);
    layout->addWidget(m_hasPerforations);
    layout->addLayout(beside(m_zones, add, remove));
    connect(m_hasPerforations, &QCheckBox::clicked, this, &CorrelationPropertiesDialog::markChanged);
    connect(add, &QPushButton::clicked, this, &CorrelationPropertiesDialog::zoneAddClicked);
    connect(remove, &QPushButton::clicked, this, &CorrelationPropertiesDialog::zoneDeleteClicked);
    connect(m_zones, &QTableWidget::cellClicked, this, &CorrelationPropertiesDialog::zoneTableCellClicked);
    connect(m_zones, &CorrelationZonesTable::edited, this, &CorrelationPropertiesDialog::markChanged);
    return part;
}

void CorrelationPropertiesDialog::addScaleRows(QVBoxLayout *layout)
{
    m_trackWidth = new QComboBox;
    m_trackWidth->setObjectName(QStringLiteral("trackWidthChooser"));
    m_trackWidth->addItems(trackWidths);
    m_trackWidth->setCurrentIndex(defaultTrackWidthIndex);
    m_trackWidth->setToolTip(QStringLiteral("Inches"));
    m_scale = new QComboBox;
    m_scale->setObjectName(QStringLiteral("scaleChooser"));
    m_scale->setEditable(true);
    m_scale->setInsertPolicy(QComboBox::NoInsert);
    m_scale->setCompleter(nullptr);
    m_scale->addItems(scales);
    m_scale->setCurrentIndex(defaultScaleIndex);
    auto *widthLabel = new QLabel(QStringLiteral("Track Width:"));
    widthLabel->setBuddy(m_trackWidth);
    auto *scaleLabel = new QLabel(QStringLiteral("Scale Factor  1:"));
    scaleLabel->setBuddy(m_scale);
    auto *row = new QHBoxLayout;
    row->addWidget(widthLabel);
    row->addWidget(m_trackWidth);
    row->addStretch();
    row->addWidget(scaleLabel);
    row->addWidget(m_scale);
    row->addWidget(new QLabel(QStringLiteral("Meters")));
    layout->addLayout(row);
    connect(m_trackWidth, QOverload<int>::of(&QComboBox::activated), this, &CorrelationPropertiesDialog::markChanged);
    connect(m_scale, &QComboBox::editTextChanged, this, &CorrelationPropertiesDialog::markChanged);
}

void CorrelationPropertiesDialog::fill(const CorrelationProperties &properties)
{
    m_saved = properties;
    m_name->setText(properties.name);
    m_trackWidth->setCurrentText(numberText(properties.trackWidth));
    m_scale->setCurrentText(numberText(properties.scale));
    m_hasPerforations->setChecked(properties.showsPerforations);
    showWells(properties);
    refillMarkers();
    showMarkersAndZones(properties);
    tellMissing(properties);
    m_isChanged = false;
}

void CorrelationPropertiesDialog::showWells(const CorrelationProperties &properties)
{
    m_wells->setRowCount(0);
    for (const CorrelationWell &well : properties.wells)
        m_wells->addWell(well);
}

void CorrelationPropertiesDialog::showMarkersAndZones(const CorrelationProperties &properties)
{
    m_markers->setTicked(properties.markers);
    m_allMarkers->setChecked(m_markers->areAllTicked());
    m_zones->setRowCount(0);
    for (const CorrelationZone &zone : properties.zones)
        m_zones->addZone(zone);
}

// Without unsaved edits the dialog shows the file again, so that a marker that comes back is ticked again.
void CorrelationPropertiesDialog::followWell(const QString &wellName)
{
    const bool areAll = wellName.isEmpty();
    if (areAll && m_isChanged)
        m_wells->refill();
    else if (areAll)
        showWells(m_saved);
    refillMarkers();
    if (!m_isChanged)
        showMarkersAndZones(m_saved);
    if (m_isStored)
        tellMissing(m_saved);
}

// Names what a save would lose, since the choosers cannot show it.
void CorrelationPropertiesDialog::tellMissing(const CorrelationProperties &properties)
{
    const QString text = correlation::missingText(properties, correlation::knownNames(m_data), m_markers->markers());
    m_missing->setText(text);
    m_missing->setVisible(!text.isEmpty());
}

void CorrelationPropertiesDialog::refillMarkers()
{
    QStringList names;
    QSet<QString> known;
    for (const CorrelationWell &row : m_wells->wells()) {
        const int well = m_data.catalogue.indexOf(row.wellName);
        if (well < 0)
            continue;
        for (const QString &name : m_data.catalogue.markerNames(well))
            if (!known.contains(name)) {
                known.insert(name);
                names.append(name);
            }
    }
    m_markers->setMarkers(names);
    m_allMarkers->setChecked(m_markers->areAllTicked());
    m_zones->setMarkers(names);

    const QString flat = m_flatAt->currentIndex() > 0 ? m_flatAt->currentText() : QString();
    const QSignalBlocker blocker(m_flatAt);
    m_flatAt->clear();
    m_flatAt->addItem(QStringLiteral("None"));
    m_flatAt->addItems(names);
    m_flatAt->setCurrentIndex(flat.isEmpty() ? 0 : names.indexOf(flat) + 1);
}

bool CorrelationPropertiesDialog::readAgain()
{
    if (m_isChanged || !m_isStored)
        return false;
    const auto stored = correlation::load(m_data.project, m_storedName, correlation::knownNames(m_data));
    if (!stored || correlation::propertiesBytes(*stored) == correlation::propertiesBytes(m_saved))
        return false;
    fill(*stored);
    return true;
}

void CorrelationPropertiesDialog::showFlatMarker(const QString &marker)
{
    if (!m_isChanged)
        m_flatAt->setCurrentIndex(marker.isEmpty() ? 0 : qMax(0, m_flatAt->findText(marker)));
}

void CorrelationPropertiesDialog::templatesChanged()
{
    m_wells->offerTemplates();
}

void CorrelationPropertiesDialog::markChanged()
{
    m_isChanged = true;
}

void CorrelationPropertiesDialog::correlationNameChanged()
{
    markChanged();
}

void CorrelationPropertiesDialog::wellChanged()
{
    refillMarkers();
    markChanged();
}

void CorrelationPropertiesDialog::addWellClicked()
{
    m_wells->addNextWell();
    m_wells->scrollToBottom();
    wellChanged();
}

void CorrelationPropertiesDialog::removeWellClicked()
{
    m_wells->removeWell();
    wellChanged();
}

void CorrelationPropertiesDialog::allTopsChecked(bool areChecked)
{
    m_allMarkers->setChecked(areChecked);
    m_markers->tickAll(areChecked);
    markChanged();
}

void CorrelationPropertiesDialog::setAllTopCheckBox(bool isChecked)
{
    m_allMarkers->setChecked(isChecked && m_markers->areAllTicked());
}

void CorrelationPropertiesDialog::zoneAddClicked()
{
    CorrelationZone zone;
    zone.isStartUserDepth = zone.isEndUserDepth = false; // the choosers show "User Depth" until something is chosen
    zone.color = QString::fromLatin1(correlation::zoneWithoutColor);
    m_zones->addZone(zone);
    m_zones->scrollToBottom();
    markChanged();
}

void CorrelationPropertiesDialog::zoneDeleteClicked()
{
    m_zones->removeZone();
    markChanged();
}

void CorrelationPropertiesDialog::zoneTableCellClicked(int row, int column)
{
    if (column != CorrelationZonesTable::colorColumn || row < 0 || row >= m_zones->rowCount())
        return;
    const QColor current = m_zones->zoneColor(row);
    const QColor color =
        base::chooseColor(this, current.isValid() ? current : QColor(QLatin1String(correlation::zoneWithoutColor)));
    if (color.isValid()) // else this may be gone
        m_zones->setZoneColor(row, color);
}

CorrelationProperties CorrelationPropertiesDialog::collected() const
{
    CorrelationProperties properties;
    properties.name = m_name->text().trimmed();
    properties.trackWidth = base::parseNumber(m_trackWidth->currentText()).value_or(properties.trackWidth);
    properties.scale = base::parseNumber(m_scale->currentText()).value_or(properties.scale);
    properties.wells = m_wells->wells();
    properties.markers = m_markers->ticked();
    properties.showsPerforations = m_hasPerforations->isChecked();
    properties.zones = m_zones->zones();
    return properties;
}

// Why this cannot be saved, and the widget in which it is mended; no text when it can.
CorrelationPropertiesDialog::Refusal
CorrelationPropertiesDialog::refusal(const CorrelationProperties &properties) const
{
    if (properties.name.isEmpty())
        return {QStringLiteral("Please give correlation name."), m_name};
    if (properties.wells.isEmpty())
        return {QStringLiteral("Please first add well(s)."), nullptr};
    const QString nameProblem = base::typedNameProblem(properties.name);
    if (!nameProblem.isEmpty())
        return {nameProblem, m_name};
    if (properties.name != m_storedName && correlation::exists(m_data.project, properties.name))
        return {
            QStringLiteral("'%1' is already exists.\nPlease give a different correlation name.").arg(properties.name),
            m_name};
    if (!base::parseNumber(m_scale->currentText()))
        return {QStringLiteral("The scale factor \"%1\" is no number.").arg(m_scale->currentText()),
                m_scale->lineEdit()};
    for (int i = 0; i < properties.zones.size(); ++i) {
        const CorrelationZone &zone = properties.zones.at(i);
        const bool isStartGood = !zone.isStartUserDepth || base::parseNumber(zone.start);
        if (isStartGood && (!zone.isEndUserDepth || base::parseNumber(zone.end)))
            continue;
        const QString name = zone.name.isEmpty() ? QString() : QStringLiteral(" \"%1\"").arg(zone.name);
        return {QStringLiteral("The %1 depth of zone %2%3 is neither a marker nor a number.")
                    .arg(isStartGood ? QStringLiteral("end") : QStringLiteral("start"), QString::number(i + 1), name),
                isStartGood ? m_zones->endEdit(i) : m_zones->startEdit(i)};
    }
    return {};
}

void CorrelationPropertiesDialog::refuse(const Refusal &refusal)
{
    const QPointer<CorrelationPropertiesDialog> self = this;
    m_data.asker.warn(windowTitle(), refusal.text);
    if (!self || !refusal.field)
        return;
    refusal.field->setFocus(Qt::OtherFocusReason);
    refusal.field->selectAll();
}

bool CorrelationPropertiesDialog::save()
{
    const CorrelationProperties properties = collected();
    if (const Refusal problem = refusal(properties); !problem.text.isEmpty()) {
        refuse(problem);
        return false;
    }
    const base::WriteResult written = correlation::write(m_data.project, properties);
    if (!written.ok()) {
        m_data.asker.warn(windowTitle(),
                          QStringLiteral("The correlation \"%1\" was not saved; what was stored is as it was.\n%2")
                              .arg(properties.name, written.error));
        return false;
    }
    const QString oldName = properties.name != m_storedName ? m_storedName : QString();
    m_saved = properties;
    m_storedName = properties.name;
    m_flatMarker = m_flatAt->currentIndex() > 0 ? m_flatAt->currentText().trimmed() : QString();
    m_isStored = true;
    m_isChanged = false;
    setWindowTitle(m_storedName);
    tellMissing(m_saved);
    const bool isOldGone = oldName.isEmpty() || correlation::remove(m_data.project, oldName);
    if (!oldName.isEmpty())
        emit sendCorrelationNameChanged(m_storedName);
    emit correlationDataChanged();
    if (!isOldGone)
        m_data.asker.warn(windowTitle(),
                          QStringLiteral("Saved as \"%1\", but the folder of \"%2\" could not be removed.")
                              .arg(m_storedName, oldName));
    return true;
}

void CorrelationPropertiesDialog::saveButtonClicked()
{
    save();
}

void CorrelationPropertiesDialog::okButtonClicked()
{
    if (save())
        close();
}
