#include "workbench/wellmanagerdialog.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "survey/wellnames.h"
#include "workbench/wellactions.h"
#include "workbench/wellcontents.h"
#include "workbench/welleditdialog.h"
#include "workbench/widgetkey.h"
#include "workbench/windowsettings.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench {

namespace {

constexpr int keyRole = Qt::UserRole;

QString number(double value)
{
    return QString::fromLatin1(base::formatWritten(static_cast<float>(value)));
}

QString headerLine(const survey::WellProperties &well, survey::DepthUnit unit)
{
    const QString type = survey::wellTypeNames().value(well.typeCode);
    const bool hasGround = !host::isUndefined(static_cast<float>(well.groundElevation));
    const QString ground = hasGround
        ? QStringLiteral("   Ground %1 %2").arg(number(well.groundElevation), survey::symbol(unit))
        : QString();
    QString line =
        QStringLiteral("X %1   Y %2\nKB %3 %6%4   TD %5 %6")
            .arg(QString::fromLatin1(base::formatWritten(well.x)), QString::fromLatin1(base::formatWritten(well.y)),
                 number(well.kbElevation), ground, number(well.totalDepth), survey::symbol(unit));
    if (well.typeCode != host::NoWellType && !type.isEmpty())
        line += QStringLiteral("   Type ") + type;
    return line;
}

} // namespace

WellManagerDialog::WellManagerDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                                     QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("wellManagerDialog"));
    setWindowTitle(QStringLiteral("Manage wells"));
    buildWidgets();
    resize(980, 560);
    settings::keepSize(this);
    readWells({});
}

QPushButton *WellManagerDialog::addButton(const char *objectName, const QString &text,
                                          void (WellManagerDialog::*clicked)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(objectName));
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QWidget *WellManagerDialog::buildWellsSide()
{
    m_wells = new QStandardItemModel(this);
    m_filtered = new QSortFilterProxyModel(this);
    m_filtered->setSourceModel(m_wells);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto *side = new QWidget(this);
    m_filter = new QLineEdit(side);
    m_filter->setObjectName(QStringLiteral("wellFilterEdit"));
    m_filter->setPlaceholderText(QStringLiteral("Filter wells"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_filtered, &QSortFilterProxyModel::setFilterFixedString);
    auto *caption = new QLabel(QStringLiteral("&Wells:"), side);

    m_list = new QListView(side);
    m_list->setObjectName(QStringLiteral("wellsList"));
    m_list->setModel(m_filtered);
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    caption->setBuddy(m_list);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &WellManagerDialog::showCurrentWell);
    connect(m_list, &QListView::doubleClicked, this, &WellManagerDialog::editCurrent);

    QPushButton *add = addButton("addWellButton", QStringLiteral("&Add…"), &WellManagerDialog::addWell);
    QPushButton *edit = addButton("editWellButton", QStringLiteral("&Edit…"), &WellManagerDialog::editCurrent);
    QPushButton *rename =
        addButton("renameWellButton", QStringLiteral("Re&name…"), &WellManagerDialog::renameCurrent);
    QPushButton *remove =
        addButton("deleteWellButton", QStringLiteral("&Delete…"), &WellManagerDialog::deleteCurrent);
    edit->setDefault(true);
    m_wellButtons = {edit, rename, remove};
    connect(addWidgetKey(m_list, Qt::Key_F2), &QAction::triggered, rename, &QPushButton::click);
    connect(addWidgetKey(m_list, QKeySequence::Delete), &QAction::triggered, remove, &QPushButton::click);

    auto *buttons = new QVBoxLayout;
    for (QPushButton *button : {add, edit, rename, remove})
        buttons->addWidget(button);
    buttons->addStretch();
    auto *row = new QHBoxLayout;
    row->addWidget(m_list, 1);
    row->addLayout(buttons);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 6, 0);
    column->addWidget(caption);
    column->addWidget(m_filter);
    column->addLayout(row, 1);
    return side;
}

QWidget *WellManagerDialog::buildContentsSide()
{
    auto *side = new QWidget(this);
    m_header = new QLabel(side);
    m_header->setObjectName(QStringLiteral("wellHeaderLabel"));
    m_header->setTextFormat(Qt::PlainText);
    m_header->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_header->setWordWrap(true);
    m_contents = new WellContents(m_store, m_asker, m_chooser, side);
    connect(m_contents, &WellContents::changed, this, &WellManagerDialog::changed);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(6, 0, 0, 0);
    column->addWidget(m_header);
    column->addWidget(m_contents, 1);
    return side;
}

void WellManagerDialog::buildWidgets()
{
    auto *splitter = new QSplitter(this);
    splitter->addWidget(buildWellsSide());
    splitter->addWidget(buildContentsSide());
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    splitter->setChildrenCollapsible(false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::rejected, this, &WellManagerDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(splitter, 1);
    column->addWidget(buttons);
    m_list->setFocus();
}

void WellManagerDialog::readWells(const QString &keyToSelect)
{
    const host::Outcome<QVector<host::WellEntry>> wells = m_store.list();
    if (!wells.ok())
        m_asker.warn(windowTitle(), wells.error);
    QList<QStandardItem *> items;
    items.reserve(wells.value.size());
    QVector<host::WellEntry> entries = wells.value;
    std::stable_sort(entries.begin(), entries.end(), [](const host::WellEntry &a, const host::WellEntry &b) {
        return survey::isNaturallyBefore(a.name, b.name);
    });
    for (const host::WellEntry &well : qAsConst(entries)) {
        auto *item = new QStandardItem(well.name);
        item->setData(well.key, keyRole);
        items.append(item);
    }
    m_wells->clear();
    m_wells->appendColumn(items);
    selectWell(keyToSelect);
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_filtered->index(0, 0));
    showCurrentWell();
}

void WellManagerDialog::selectWell(const QString &key)
{
    const QModelIndexList found = m_wells->match(m_wells->index(0, 0), keyRole, key, 1, Qt::MatchExactly);
    if (found.isEmpty())
        return;
    if (!m_filtered->mapFromSource(found.first()).isValid())
        m_filter->clear();
    m_list->setCurrentIndex(m_filtered->mapFromSource(found.first()));
    m_list->scrollTo(m_list->currentIndex());
}

host::WellEntry WellManagerDialog::currentWell() const
{
    const QModelIndex current = m_list->currentIndex();
    return {current.data().toString(), current.data(keyRole).toString()};
}

QString WellManagerDialog::currentWellKey() const
{
    return currentWell().key;
}

void WellManagerDialog::enableButtons()
{
    for (QPushButton *button : m_wellButtons)
        button->setEnabled(m_list->currentIndex().isValid());
}

void WellManagerDialog::showCurrentWell()
{
    m_header->clear();
    const host::WellEntry well = currentWell();
    if (!well.key.isEmpty()) {
        const host::Outcome<survey::WellProperties> properties = m_store.properties(well.key);
        m_header->setText(properties.ok() ? headerLine(properties.value, m_store.depthUnit()) : properties.error);
    }
    m_contents->showWell(well);
    enableButtons();
}

void WellManagerDialog::finish(const QString &keyToSelect)
{
    readWells(keyToSelect);
    emit changed();
}

void WellManagerDialog::addWell()
{
    WellEditDialog dialog(m_store, m_asker, this);
    dialog.exec();
    if (dialog.hasWritten())
        finish(dialog.wellKey());
}

void WellManagerDialog::editCurrent()
{
    const host::WellEntry well = currentWell();
    if (!well.key.isEmpty() && editWell(m_store, m_asker, well, this))
        finish(well.key);
}

void WellManagerDialog::renameCurrent()
{
    const host::WellEntry well = currentWell();
    if (!well.key.isEmpty() && renameWell(m_store, m_asker, well, this))
        finish(well.key);
}

void WellManagerDialog::deleteCurrent()
{
    const host::WellEntry well = currentWell();
    // The well below moves up to the place of the deleted one.
    const QModelIndex current = m_list->currentIndex();
    QModelIndex next = current.sibling(current.row() + 1, 0);
    if (!next.isValid())
        next = current.sibling(current.row() - 1, 0);
    const QString nextKey = next.data(keyRole).toString();
    if (!well.key.isEmpty() && deleteWell(m_store, m_asker, well))
        finish(nextKey);
}

} // namespace workbench
