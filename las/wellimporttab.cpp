#include "las/wellimporttab.h"

#include "base/cellcombobox.h"
#include "base/keptlooks.h"
#include "base/numbers.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/projectdata.h"
#include "las/curveselection.h"
#include "las/importnotices.h"
#include "las/lastextbrowser.h"
#include "las/noticearea.h"
#include "las/shorttextdelegate.h"
#include "las/showntext.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStringListModel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

const QColor takenColor(Qt::red);
// Combo boxes cost the square of their number; those of further rows are made when they come into view.
constexpr int rowsWithBox = 300;

QTableWidgetItem *fixedItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

QString number(double value)
{
    return QString::fromLatin1(base::formatGeneral(value, 9));
}

} // namespace

WellImportTab::WellImportTab(ProjectData &projectData, const WellInfo &file, const QString &title, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_file(file)
    , m_title(title)
{
    auto *page = new QVBoxLayout(this);
    buildHead();
    buildTable();
    auto *head = new QHBoxLayout;
    auto *label = new QLabel(QStringLiteral("Well :"));
    label->setBuddy(m_wellBox);
    head->addWidget(label);
    head->addWidget(m_wellBox);
    head->addSpacing(12);
    head->addWidget(m_summary, 1);
    page->addLayout(head);
    m_text = new LasTextBrowser;
    m_text->setLines(m_file.lines);
    auto *curves = new QWidget;
    auto *left = new QVBoxLayout(curves);
    left->setContentsMargins(0, 0, 0, 0);
    left->addWidget(new NoticeArea(las::importNotices(m_file, maximumRows)));
    left->addWidget(m_table);
    auto *splitter = new QSplitter;
    splitter->addWidget(curves);
    splitter->addWidget(m_text);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({560, 680});
    page->addWidget(splitter, 1);
    bindWell();
}

void WellImportTab::buildHead()
{
    m_wellBox = new QComboBox;
    m_wellBox->setObjectName(QStringLiteral("wellBox"));
    m_wellBox->addItem(QStringLiteral("None"));
    // With the key: while the dialog stands the catalogue may be read anew, and indexes then mean other wells.
    for (int well = 0; well < m_data.catalogue.wellCount(); ++well)
        m_wellBox->addItem(m_data.catalogue.wellNames().at(well), m_data.catalogue.wellKey(well));
    m_wellBox->setCurrentText(m_file.uwi);
    m_wellBox->setMinimumContentsLength(18);
    m_wellBox->setMaxVisibleItems(20);
    m_wellBox->setToolTip(QStringLiteral("The well that receives the curves of this file"));
    m_summary = new QLabel(summary());
    m_summary->setObjectName(QStringLiteral("fileSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_summary->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QString WellImportTab::summary() const
{
    const QString unit = m_file.depthUnit.isEmpty() ? QString() : QLatin1Char(' ') + las::shortened(m_file.depthUnit);
    const QString uwi =
        m_file.uwi.isEmpty() ? QStringLiteral("no UWI") : QStringLiteral("UWI ") + las::shortened(m_file.uwi);
    return QStringLiteral("%1   ·   %2 to %3%4, step %5%4   ·   null %6   ·   %7 curves")
        .arg(uwi, number(m_file.startDepth), number(m_file.stopDepth), unit, number(m_file.step),
             m_file.hasNullValue ? number(m_file.nullValue) : QStringLiteral("not given"),
             QString::number(m_file.curves.size()));
}

void WellImportTab::buildTable()
{
    const int rows = qMin(m_file.curves.size(), maximumRows);
    m_table = new QTableWidget(rows, 4);
    m_table->setObjectName(QStringLiteral("curveTable"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Curve"), QStringLiteral("Curve Group"),
                                        QStringLiteral("Select"), QStringLiteral("Alternate Curve Name")});
    m_table->setItemDelegate(new ShortTextDelegate(m_table));
    m_table->setTabKeyNavigation(false); // Tab leaves the table, the arrows move inside it
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 12);
    m_groups = new QStringListModel(m_data.project.groupNames, m_table);
    for (int row = 0; row < rows; ++row) {
        const LogCurveData &curve = m_file.curves.at(row);
        auto *name = fixedItem(curve.logName);
        name->setToolTip(las::toolTip(curve.description + QStringLiteral(" [") + curve.unit + QLatin1Char(']')));
        m_table->setItem(row, CurveColumn, name);
        m_table->setItem(row, GroupColumn, fixedItem(QString()));
        auto *check = fixedItem(QString());
        check->setFlags(check->flags() | Qt::ItemIsUserCheckable);
        check->setCheckState(Qt::Checked);
        m_table->setItem(row, SelectColumn, check);
        m_table->setItem(row, NameColumn, new QTableWidgetItem(curve.logName));
    }
    CurveGroupFinder groups(m_data.project.projectFolder);
    for (int row = 0; row < qMin(rows, rowsWithBox); ++row)
        addGroupBox(row, &groups);
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this, &WellImportTab::addGroupBoxesInView);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setColumnWidth(CurveColumn, 100);
    m_table->setColumnWidth(GroupColumn, 150);
    m_table->setColumnWidth(SelectColumn, 60);
    m_table->horizontalHeader()->setStretchLastSection(true);
    base::keepColumns(m_table->horizontalHeader(), QStringLiteral("importCurves"));
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QTableWidget::customContextMenuRequested, this, &WellImportTab::showSelectionMenu);
    if (rows > 0)
        m_table->setCurrentCell(0, CurveColumn);
}

// The first curve of a file is its depth.
void WellImportTab::showSelectionMenu(const QPoint &position)
{
    QMenu *menu = las::curveSelectionMenu(m_table, SelectColumn, 0, this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(m_table->viewport()->mapToGlobal(position));
}

base::CellComboBox *WellImportTab::groupBox(int row) const
{
    return qobject_cast<base::CellComboBox *>(m_table->cellWidget(row, GroupColumn));
}

void WellImportTab::addGroupBox(int row, CurveGroupFinder *groups)
{
    auto *box = new base::CellComboBox(m_groups, m_table);
    box->setCurrentText(groups->group(m_file.curves.at(row).logName));
    m_table->setCellWidget(row, GroupColumn, box);
    paintGroupBox(row, m_table->item(row, GroupColumn)->background().style() != Qt::NoBrush);
}

void WellImportTab::addGroupBoxesInView()
{
    const int first = m_table->rowAt(0);
    const int last = m_table->rowAt(m_table->viewport()->height() - 1);
    CurveGroupFinder groups(m_data.project.projectFolder);
    for (int row = qMax(0, first); row <= (last < 0 ? m_table->rowCount() - 1 : last); ++row)
        if (!groupBox(row))
            addGroupBox(row, &groups);
}

void WellImportTab::paintGroupBox(int row, bool isTaken)
{
    base::CellComboBox *box = groupBox(row);
    if (!box)
        return;
    QPalette colors; // of the box itself; its list keeps the usual ones
    if (isTaken) {
        colors.setColor(QPalette::Button, takenColor.darker(130)); // styles paint buttons lighter
        colors.setColor(QPalette::ButtonText, Qt::white);
    }
    box->setPalette(colors);
}

void WellImportTab::bindWell()
{
    const std::optional<WellRecord> well =
        m_data.catalogue.readWellRecord(m_data.catalogue.indexOfKey(wellKey()), WellsCatalogue::OnFailure::BeSilent);
    m_isWellReadable = well || wellKey().isEmpty();
    m_wellMaximumDepth = well ? well->totalDepth : 0;
    {
        const QSignalBlocker blocker(m_table);
        for (int row = 0; row < m_table->rowCount(); ++row)
            m_table->item(row, NameColumn)->setData(wellNameRole, m_wellBox->currentText());
    }
    testAllRows();
}

QString WellImportTab::wellKey() const
{
    return m_wellBox->currentData().toString();
}

QStringList WellImportTab::logsOfWell() const
{
    const int well = m_data.catalogue.indexOfKey(wellKey());
    return well >= 0 ? m_data.catalogue.logNames(well) : QStringList();
}

void WellImportTab::testAllRows()
{
    const QStringList logs = logsOfWell();
    const QSet<QString> taken(logs.begin(), logs.end());
    for (int row = 0; row < m_table->rowCount(); ++row)
        paintRow(row, taken.contains(m_table->item(row, NameColumn)->text().trimmed()));
}

void WellImportTab::testRow(QTableWidgetItem *nameItem)
{
    paintRow(nameItem->row(), logsOfWell().contains(nameItem->text().trimmed()));
}

void WellImportTab::paintRow(int row, bool isTaken)
{
    const QSignalBlocker blocker(m_table);
    const QString tip = isTaken ? QStringLiteral("The well has a log of this name already") : QString();
    for (int column = 0; column < m_table->columnCount(); ++column) {
        QTableWidgetItem *item = m_table->item(row, column);
        item->setBackground(isTaken ? QBrush(takenColor) : QBrush());
        item->setForeground(isTaken ? QBrush(Qt::white) : QBrush());
        if (column != CurveColumn)
            item->setToolTip(tip);
    }
    paintGroupBox(row, isTaken);
    if (isTaken)
        m_table->item(row, SelectColumn)->setCheckState(Qt::Unchecked);
    m_table->viewport()->update();
}

las::ImportTab WellImportTab::plan(bool convertsFeet) const
{
    las::ImportTab tab = las::importTab(m_file, m_title, convertsFeet);
    tab.wellKey = wellKey();
    tab.wellName = m_wellBox->currentText();
    tab.wellMaximumDepth = m_wellMaximumDepth;
    CurveGroupFinder groups(m_data.project.projectFolder);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const base::CellComboBox *box = groupBox(row);
        const bool isSelected = m_table->item(row, SelectColumn)->checkState() == Qt::Checked;
        const QString group = box ? box->currentText()
            : isSelected          ? groups.group(m_file.curves.at(row).logName)
                                  : QString();
        tab.rows.append({row, isSelected, m_table->item(row, NameColumn)->text().trimmed(), group});
    }
    return tab;
}
