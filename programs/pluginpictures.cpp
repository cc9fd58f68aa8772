#include "programs/pluginpictures.h"

#include "programs/demoinputs.h"
#include "programs/picturefolder.h"
#include "programs/pluginwindow.h"
#include "programs/unattended.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>

#include <memory>

namespace programs {

namespace {

constexpr double reservoirPlace = 0.81; // of the demo's first well
constexpr int importedNameColumn = 3;
constexpr int selectColumn = 2;

// Opens the text import of an editor on a file with one heading line; null where there is none.
QDialog *openTextImport(QWidget *editor, const QString &path)
{
    auto *open = editor ? editor->findChild<QPushButton *>(QStringLiteral("asciiFileButton")) : nullptr;
    if (!open)
        return nullptr;
    open->click();
    auto *dialog = editor->findChild<QDialog *>();
    auto *file = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileEdit")) : nullptr;
    auto *headings = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("headerLinesEdit")) : nullptr;
    if (!file || !headings)
        return nullptr;
    file->setText(path);
    emit file->editingFinished();
    headings->setText(QStringLiteral("1"));
    return dialog;
}

// New versions of three logs that the well has already: their rows are red until they get names of their own.
void nameNewVersions(const QDialog &dialog)
{
    const auto *tabs = dialog.findChild<QTabWidget *>(QStringLiteral("fileTabs"));
    const QWidget *tab = tabs ? tabs->widget(0) : nullptr;
    auto *table = tab ? tab->findChild<QTableWidget *>(QStringLiteral("curveTable")) : nullptr;
    for (int row = 0; table && row < table->rowCount(); ++row) {
        if (row == 0)
            table->item(row, selectColumn)->setCheckState(Qt::Unchecked); // the depth
        QTableWidgetItem *name = table->item(row, importedNameColumn);
        if (!QStringList{QStringLiteral("GR"), QStringLiteral("RHOB"), QStringLiteral("DT")}.contains(name->text()))
            continue;
        name->setText(name->text() + QStringLiteral("_2019"));
        table->item(row, selectColumn)->setCheckState(Qt::Checked);
    }
}

void drawImport(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures)
{
    const QStringList files = demoInputs(survey, QStringLiteral("*.las")).mid(0, 3);
    if (files.isEmpty())
        return;
    const std::unique_ptr<QDialog> dialog(plugin.openDialog("importAction", "WellImportDialog"));
    auto *select = dialog ? dialog->findChild<QPushButton *>(QStringLiteral("selectButton")) : nullptr;
    if (select) {
        const unattended::FilePicker picker(files);
        select->click();
        dialog->findChild<QTabWidget *>(QStringLiteral("fileTabs"))->setCurrentIndex(0);
        nameNewVersions(*dialog);
        dialog->findChild<QCheckBox *>(QStringLiteral("intervalBox"))->setChecked(true);
        dialog->resize(1280, 720);
    }
    pictures->save(dialog.get(), QStringLiteral("las-import"));
}

void drawExport(const PluginWindow &plugin, PictureFolder *pictures)
{
    const std::unique_ptr<QDialog> dialog(plugin.openDialog("exportAction", "WellLogExport"));
    auto *wells = dialog ? dialog->findChild<QListWidget *>(QStringLiteral("wellList")) : nullptr;
    for (int well = 0; wells && well < qMin(2, wells->count()); ++well)
        wells->item(well)->setCheckState(Qt::Checked);
    if (dialog) {
        for (auto *logs : dialog->findChildren<QListWidget *>(QStringLiteral("logList")))
            for (int log : {0, 2, 3})
                if (log < logs->count())
                    logs->item(log)->setCheckState(Qt::Checked);
        dialog->findChild<QCheckBox *>(QStringLiteral("intervalBox"))->setChecked(true);
        dialog->findChild<QLineEdit *>(QStringLiteral("folderEdit"))->setText(QStringLiteral("/surveys/export"));
        dialog->resize(720, 680);
    }
    pictures->save(dialog.get(), QStringLiteral("las-export"));
}

} // namespace

void drawDisplays(const PluginWindow &plugin, PictureFolder *pictures)
{
    plugin.expandFirstWell();
    pictures->save(plugin.window(), QStringLiteral("mainwindow"));
    for (const char *name : {"Default", "Simple", "Petrophysics", "Triple Combo", "Density-Neutron", "Saturation"}) {
        if (!plugin.displayFirstWell(QString::fromLatin1(name), reservoirPlace))
            continue;
        const QString file = QString::fromLatin1(name).toLower().remove(QLatin1Char(' '));
        pictures->save(plugin.window(), QStringLiteral("welldisplay-%1").arg(file));
    }
    if (plugin.displayFirstWell(QStringLiteral("Default"), reservoirPlace)) {
        plugin.clickFirstHeader();
        pictures->save(plugin.window(), QStringLiteral("welldisplay-curve"));
    }
}

// The demo's reservoir: in measured depth, 1000 m below the top of all wells once it is flattened, 2,030 m below the sea.
void drawCorrelations(const PluginWindow &plugin, PictureFolder *pictures)
{
    if (!plugin.openFirstCorrelation())
        return;
    plugin.showOfCorrelation(7905);
    pictures->save(plugin.window(), QStringLiteral("correlation"));
    if (plugin.chooseForCorrelation("flatAtBox", QStringLiteral("Kestrane Upper Sst"))) {
        plugin.showOfCorrelation(4050);
        pictures->save(plugin.window(), QStringLiteral("correlation-flattened"));
    }
    plugin.chooseForCorrelation("flatAtBox", QStringLiteral("None"));
    plugin.chooseForCorrelation("depthUnitBox", QStringLiteral("FEET"));
    if (plugin.chooseForCorrelation("depthTypeBox", QStringLiteral("TVDSS"))) {
        plugin.showOfCorrelation(25900);
        pictures->save(plugin.window(), QStringLiteral("correlation-feet"));
    }
}

void drawWideCorrelation(const PluginWindow &plugin, PictureFolder *pictures)
{
    plugin.window()->resize(2880, 860);
    const bool isFlattened = plugin.openFirstCorrelation()
        && plugin.chooseForCorrelation("flatAtBox", QStringLiteral("Kestrane Upper Sst"));
    if (!isFlattened) {
        pictures->save(nullptr, QStringLiteral("correlation-20wells"));
        return;
    }
    // The western half above the eastern one: side by side nobody could read them on a page.
    QPixmap west;
    QPixmap east;
    for (QPixmap *half : {&west, &east}) {
        plugin.showOfCorrelation(2030, half == &west ? 0 : 1e6);
        *half = pictures->pictureOf(plugin.page());
    }
    QPixmap both(west.width(), 2 * west.height());
    both.setDevicePixelRatio(west.devicePixelRatio());
    QPainter painter(&both);
    painter.drawPixmap(0, 0, west);
    painter.drawPixmap(QPointF(0, west.height() / west.devicePixelRatio()), east);
    painter.end();
    pictures->save(both, QStringLiteral("correlation-20wells"));
}

void drawTreeMenu(const PluginWindow &plugin, PictureFolder *pictures)
{
    QTreeWidgetItem *item = plugin.belowFirstWell(QStringLiteral("Petrophysics"));
    if (!item)
        return;
    for (const char *branch : {"Logs", "Markers"})
        plugin.belowFirstWell(QString::fromLatin1(branch))->setExpanded(false);
    QTreeWidget *tree = plugin.tree();
    tree->scrollToItem(item);
    QCoreApplication::processEvents();
    const QPoint place = tree->visualItemRect(item).center();
    const QPoint global = tree->viewport()->mapToGlobal(place);
    // The menu runs an event loop of its own until it is closed.
    QTimer::singleShot(0, tree, [&plugin, pictures] {
        QWidget *menu = QApplication::activePopupWidget();
        if (!menu)
            return;
        QPixmap picture = pictures->pictureOf(plugin.window());
        QPainter(&picture).drawPixmap(plugin.window()->mapFromGlobal(menu->pos()), menu->grab());
        const QRect corner(0, 0, 620, 640);
        const qreal ratio = picture.devicePixelRatio();
        picture = picture.copy(QRect(QPoint(), corner.size() * ratio));
        menu->close();
        pictures->save(picture, QStringLiteral("project-tree-menu"));
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, global);
    QCoreApplication::sendEvent(tree->viewport(), &event);
}

void drawExchange(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures)
{
    drawImport(plugin, survey, pictures);
    drawExport(plugin, pictures);
}

void drawWellData(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures)
{
    const char *names[] = {"logs", "markers", "zones", "points"};
    for (int tab = 0; tab < 4; ++tab) {
        QWidget *editor = plugin.showWellData(tab);
        if (!editor)
            return;
        if (auto *group = editor->findChild<QComboBox *>(QStringLiteral("groupBox")))
            group->setCurrentText(QStringLiteral("Porosity"));
        pictures->save(editor->window(), QStringLiteral("welldata-") + QString::fromLatin1(names[tab]));
    }
    const QStringList tops = demoInputs(survey, QStringLiteral("*_tops.txt"));
    QDialog *dialog = tops.isEmpty() ? nullptr : openTextImport(plugin.showWellData(1), tops.first());
    if (dialog) {
        dialog->resize(820, 560);
        pictures->save(dialog, QStringLiteral("welldata-import"));
        dialog->close();
    }
}

void drawTemplateEditors(const PluginWindow &plugin, PictureFolder *pictures)
{
    if (!plugin.belowFirstWell(QStringLiteral("Petrophysics")))
        return;
    const auto save = [pictures](QWidget *editor, const QString &name) {
        if (editor)
            editor->resize(1400, 680);
        pictures->save(editor, name);
        delete editor;
    };
    save(plugin.editTemplate(QStringLiteral("Petrophysics"), 2), QStringLiteral("template-editor"));
    save(plugin.defineTemplate(QStringLiteral("My template")), QStringLiteral("template-new"));
}

} // namespace programs
