#include "welldata/wellsdatamanagerwidget.h"

#include "datastore/projectdata.h"
#include "welldata/defaultdataclass.h"
#include "welldata/definecalibrationpoint.h"
#include "welldata/definewellperforation.h"
#include "welldata/markerdatawidget.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int narrowestPx = 180; // a page must not make the main window wider than the other work areas do

} // namespace

WellsDataManagerWidget::WellsDataManagerWidget(ProjectData &projectData, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_wells(new QComboBox)
    , m_tabs(new QTabWidget)
    , m_defaultData(new DefaultDataClass(projectData))
    , m_markers(new MarkerDataWidget(projectData))
    , m_zones(new DefineWellPerforation(projectData))
    , m_points(new DefineCalibrationPoint(projectData))
{
    setObjectName(QStringLiteral("WellsDataManagerWidget"));
    m_wells->setObjectName(QStringLiteral("wellBox"));
    m_wells->setMinimumContentsLength(18);
    m_wells->setMaxVisibleItems(20);
    m_tabs->setObjectName(QStringLiteral("editorTabs"));
    for (QWidget *editor : std::initializer_list<QWidget *>{m_defaultData, m_markers, m_zones, m_points})
        m_tabs->addTab(editor, editor->windowTitle());
    auto *label = new QLabel(QStringLiteral("Well"));
    label->setBuddy(m_wells);
    auto *top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_wells);
    top->addStretch(1);
    auto *page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addWidget(m_tabs, 1);
    m_tabs->setUsesScrollButtons(true);
    setMinimumWidth(narrowestPx);
    fillWells();
    m_wellName = m_wells->currentText();
    connect(m_wells, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &WellsDataManagerWidget::wellChanged);
}

void WellsDataManagerWidget::fillWells()
{
    m_wells->addItem(QStringLiteral("None"));
    for (int well = 0; well < m_data.catalogue.wellCount(); ++well)
        m_wells->addItem(m_data.catalogue.wellNames().at(well), m_data.catalogue.wellKey(well));
}

QString WellsDataManagerWidget::chosenKey() const
{
    return m_wells->currentData().toString();
}

QVector<WellTableEditor *> WellsDataManagerWidget::tableEditors() const
{
    return {m_points, m_zones, m_markers};
}

// A table whose changes could not be saved though the user wanted it stays, and its well with it.
void WellsDataManagerWidget::wellChanged(int index)
{
    const QPointer<WellsDataManagerWidget> self = this;
    for (WellTableEditor *editor : tableEditors()) {
        const bool mayLeave = editor->mayLeave();
        if (!self)
            return;
        if (mayLeave)
            continue;
        const QSignalBlocker blocker(m_wells);
        m_wells->setCurrentIndex(m_shownWell);
        m_tabs->setCurrentWidget(editor);
        return;
    }
    m_shownWell = index;
    m_wellName = m_wells->itemText(index);
    const QString key = m_wells->itemData(index).toString();
    m_defaultData->setWell(m_wellName, key);
    if (self)
        m_points->setWell(m_wellName, key);
    if (self)
        m_zones->setWell(m_wellName, key);
    if (self)
        m_markers->setWell(m_wellName, key);
}

void WellsDataManagerWidget::synchronise()
{
    const QString key = chosenKey();
    const QString name = m_wellName;
    int index = 0;
    {
        const QSignalBlocker blocker(m_wells);
        m_wells->clear();
        fillWells();
        index = key.isEmpty() ? 0 : qMax(0, m_wells->findData(key));
        m_wells->setCurrentIndex(index);
    }
    const bool isSame = m_wells->itemText(index) == name && chosenKey() == key;
    m_shownWell = index;
    if (!isSame) {
        if (index > 0)
            for (WellTableEditor *editor : tableEditors())
                editor->followName(m_wells->itemText(index));
        wellChanged(index);
        return;
    }
    const int well = m_data.catalogue.indexOfKey(key);
    logsChanged(well);
    markersChanged(well);
}

void WellsDataManagerWidget::logsChanged(int well)
{
    if (well >= 0 && m_data.catalogue.wellKey(well) == chosenKey() && !m_defaultData->isModified())
        m_defaultData->setWell(m_wellName, chosenKey());
}

void WellsDataManagerWidget::markersChanged(int well)
{
    m_markers->markersChanged(well);
}
