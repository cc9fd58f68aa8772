#include "workbench/loadedpluginsdialog.h"

#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"
#include "workbench/windowsettings.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

namespace workbench {

namespace {

constexpr int widestColumn = 190;
constexpr int columnPadding = 12;

QStringList rowTexts(const PluginReport &report)
{
    const bool runs = report.error.isEmpty();
    // A library that failed early gave no record; its name tells at least which one it is.
    return {report.displayName.isEmpty() ? report.name : report.displayName,
            report.productName,
            report.creator,
            report.version,
            report.text,
            runs || !report.displayName.isEmpty() ? QString::number(report.license) : QString(),
            report.file,
            runs ? QStringLiteral("Running") : QStringLiteral("Left out. ") + report.error};
}

} // namespace

LoadedPluginsDialog::LoadedPluginsDialog(const QVector<PluginReport> &reports, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("loadedPluginsDialog"));
    setWindowTitle(QStringLiteral("Loaded plug-ins"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::rejected, this, &LoadedPluginsDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(makeTable(reports), 1);
    QString text = reports.isEmpty() ? QStringLiteral("No plug-in library was found. ") : QString();
    text +=
        QStringLiteral("A plug-in is a library \"libNAME.so\". The workbench loads those in the folder "
                       "\"lib/lorva/plugins\" beside its own, in the folders of LORVA_PLUGIN_PATH, and in those that "
                       "the option \"--plugin-dir DIR\" names; the plug-in of this project, libLORVAOS.so, is built "
                       "and installed with it. A new one is found at the next start.");
    auto *howTo = new QLabel(text, this);
    howTo->setObjectName(QStringLiteral("howToLabel"));
    howTo->setWordWrap(true);
    howTo->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(howTo);
    column->addWidget(buttons);
    resize(1240, 300);
    settings::keepSize(this);
}

QWidget *LoadedPluginsDialog::makeTable(const QVector<PluginReport> &reports)
{
    const QStringList titles{
        QStringLiteral("Display name"), QStringLiteral("Product"), QStringLiteral("Creator"),
        QStringLiteral("Version"),      QStringLiteral("Text"),    QStringLiteral("License code"),
        QStringLiteral("File"),         QStringLiteral("State"),
    };
    auto *table = new QTableWidget(reports.size(), titles.size(), this);
    table->setObjectName(QStringLiteral("pluginsTable"));
    table->setHorizontalHeaderLabels(titles);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    for (int row = 0; row < reports.size(); ++row) {
        const bool failed = !reports.at(row).error.isEmpty();
        const QStringList texts = rowTexts(reports.at(row));
        for (int column = 0; column < texts.size(); ++column) {
            auto *item = new QTableWidgetItem(texts.at(column));
            item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
            item->setToolTip(toolTipText(texts.at(column)));
            if (failed)
                item->setForeground(problemText(palette()));
            if (failed && column == 0)
                item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
            table->setItem(row, column, item);
        }
    }
    table->setTextElideMode(Qt::ElideMiddle);
    table->resizeColumnsToContents();
    for (int column = 0; column < table->columnCount(); ++column)
        table->setColumnWidth(column, qMin(table->columnWidth(column) + columnPadding, widestColumn));
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
    // An error is a sentence: it takes the lines that it needs.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return table;
}

} // namespace workbench
