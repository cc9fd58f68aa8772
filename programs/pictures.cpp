// Draws the windows of the workbench and of the plug-in into pictures, for machines without a display:
// lorva-pictures SURVEY_DIR PICTURE_DIR

#include "base/atomicfile.h"
#include "base/usersettings.h"
#include "programs/unattended.h"
#include "survey/surveyfolder.h"
#include "workbench/filechooser.h"
#include "workbench/messagespanel.h"
#include "workbench/newwellsdialog.h"
#include "workbench/pluginloader.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <cstdio>

namespace {

/// Saves pictures of widgets into one folder and tells where they are, or which could not be made and why.
class PictureFolder
{
public:
    explicit PictureFolder(const QString &path)
        : m_path(QDir(path).absolutePath())
    {
        QDir().mkpath(m_path);
    }

    void save(QWidget *widget, const QString &name)
    {
        const QString file = m_path + QLatin1Char('/') + name;
        const QString problem = widget ? write(widget, file) : QStringLiteral("there is no such window");
        if (problem.isEmpty())
            std::printf("%s\n", qUtf8Printable(file));
        else
            std::fprintf(stderr, "Cannot draw %s: %s.\n", qUtf8Printable(file), qUtf8Printable(problem));
        m_isComplete = m_isComplete && problem.isEmpty();
    }

    /// Whether every picture was made.
    bool isComplete() const { return m_isComplete; }

private:
    static QString write(QWidget *widget, const QString &file)
    {
        QCoreApplication::processEvents();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        if (!widget->grab().save(&buffer, "PNG"))
            return QStringLiteral("the picture cannot be encoded");
        return base::writeFileAtomically(file, bytes).error;
    }

    QString m_path;
    bool m_isComplete = true;
};

QWidget *childWindow(const QWidget *parent, const char *className)
{
    for (QWidget *widget : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (widget->inherits(className))
            return widget;
    return nullptr;
}

/// The plug-in's main window, worked by its project tree as a user does. The plug-in is a library of its own: only
/// Qt's classes are known here.
class PluginWindow
{
public:
    explicit PluginWindow(QWidget *window)
        : m_window(window)
        , m_tree(window->findChild<QTreeWidget *>(QStringLiteral("ProjectTreeWidget")))
    {
    }

    /// Null when the survey has no wells.
    QTreeWidgetItem *firstWell() const
    {
        const QTreeWidgetItem *wells = m_tree ? m_tree->topLevelItem(0) : nullptr;
        return wells ? wells->child(0) : nullptr;
    }
    void expandFirstWell() const
    {
        QTreeWidgetItem *well = firstWell();
        if (!well)
            return;
        well->setExpanded(true);
        for (int i = 0; i < well->childCount(); ++i)
            well->child(i)->setExpanded(true);
    }
    /// Displays the first well with one of its templates and all its markers, some way down.
    bool displayFirstWell(const QString &templateName) const
    {
        QTreeWidgetItem *well = firstWell();
        QTreeWidgetItem *item = well ? findBelow(well, templateName) : nullptr;
        QTreeWidgetItem *markers = well ? findBelow(well, QStringLiteral("Markers")) : nullptr;
        if (!item || !markers)
            return false;
        for (QTreeWidgetItem *checked : {well, item, markers})
            check(checked);
        auto *view = m_window->findChild<QAbstractScrollArea *>(QStringLiteral("logView"));
        if (!view)
            return false;
        QCoreApplication::processEvents();
        scrollTo(view, 0.81);
        return true;
    }

    /// Opens the first correlation, with \a y of its scene in the middle. False when there is none.
    bool displayFirstCorrelation(double y) const
    {
        const QTreeWidgetItem *correlations = m_tree ? m_tree->topLevelItem(1) : nullptr;
        QTreeWidgetItem *item = correlations ? correlations->child(0) : nullptr;
        if (!item)
            return false;
        m_tree->setCurrentItem(item);
        emit m_tree->itemDoubleClicked(item, 0);
        return showOfCorrelation(y);
    }
    /// Chooses a text in a box of the correlation's panel.
    bool chooseForCorrelation(const char *box, const QString &text, double y) const
    {
        const auto *dock = m_window->findChild<QDockWidget *>(QStringLiteral("propertiesDock"));
        if (!dock || !dock->widget()) // other panels have boxes of the same name
            return false;
        auto *chooser = dock->widget()->findChild<QComboBox *>(QString::fromLatin1(box));
        if (chooser)
            chooser->setCurrentText(text);
        return chooser && showOfCorrelation(y);
    }

    bool hasTemplate(const QString &templateName) const
    {
        QTreeWidgetItem *well = firstWell();
        return well && findBelow(well, templateName);
    }
    /// The editor that edits a global template, with one of its tracks in front. Null when there is no such template.
    QWidget *editTemplate(const QString &templateName, int track) const
    {
        QTreeWidgetItem *well = firstWell();
        m_tree->setCurrentItem(well ? findBelow(well, templateName) : nullptr);
        QMetaObject::invokeMethod(m_tree, "editGlobalTemplate");
        return showTrack(track);
    }
    /// The editor of a new template, begun with the default one.
    QWidget *defineTemplate(const QString &newName) const
    {
        QTreeWidgetItem *well = firstWell();
        m_tree->setCurrentItem(well ? findBelow(well, QStringLiteral("Template")) : nullptr);
        QMetaObject::invokeMethod(m_tree, "createNewTemplate");
        QWidget *editor = QApplication::activeModalWidget();
        if (!editor)
            return nullptr;
        QMetaObject::invokeMethod(editor, "populateFromDefaultBtnClicked");
        if (auto *name = editor->findChild<QLineEdit *>(QStringLiteral("nameEdit")))
            name->setText(newName);
        return showTrack(0);
    }

    /// Shows a tab of the well data manager for the first well; null when the survey has no wells.
    QWidget *showWellData(int tab) const
    {
        constexpr int wellDataPage = 2;
        auto *pages = m_window->findChild<QTabWidget *>(QStringLiteral("centralTabs"));
        auto *manager = m_window->findChild<QWidget *>(QStringLiteral("WellsDataManagerWidget"));
        auto *tabs = manager ? manager->findChild<QTabWidget *>(QStringLiteral("editorTabs")) : nullptr;
        auto *wells = manager ? manager->findChild<QComboBox *>(QStringLiteral("wellBox")) : nullptr;
        if (!pages || !tabs || !wells || wells->count() < 2)
            return nullptr;
        pages->setCurrentIndex(wellDataPage);
        wells->setCurrentIndex(1);
        tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        return tabs->currentWidget();
    }
    /// Opens the text import of an editor on a file with one heading line; null where there is none.
    static QWidget *openImport(QWidget *editor, const QString &path)
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

    /// Selects the first curve as a click on its header does.
    void clickFirstHeader() const
    {
        const auto *headers = m_window->findChild<QGraphicsView *>(QStringLiteral("headerView"));
        if (!headers)
            return;
        const QPoint place = headers->mapFromScene(QPointF(20, 50));
        QMouseEvent press(QEvent::MouseButtonPress, place, headers->viewport()->mapToGlobal(place), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(headers->viewport(), &press);
    }

private:
    static QWidget *showTrack(int track)
    {
        QWidget *editor = QApplication::activeModalWidget();
        if (auto *tabs = editor ? editor->findChild<QTabWidget *>(QStringLiteral("trackTabs")) : nullptr)
            tabs->setCurrentIndex(track);
        QCoreApplication::processEvents();
        return editor;
    }
    bool showOfCorrelation(double y) const
    {
        auto *view = m_window->findChild<QGraphicsView *>(QStringLiteral("correlationView"));
        QCoreApplication::processEvents();
        if (view)
            view->centerOn(0, y);
        return view;
    }
    static void scrollTo(const QAbstractScrollArea *view, double place)
    {
        QScrollBar *bar = view->verticalScrollBar();
        bar->setValue(static_cast<int>(bar->maximum() * place));
    }
    static QTreeWidgetItem *findBelow(QTreeWidgetItem *parent, const QString &text)
    {
        for (int i = 0; i < parent->childCount(); ++i) {
            QTreeWidgetItem *child = parent->child(i);
            if (child->text(0) == text)
                return child;
            if (QTreeWidgetItem *found = findBelow(child, text))
                return found;
        }
        return nullptr;
    }
    void check(QTreeWidgetItem *item) const
    {
        item->setCheckState(0, Qt::Unchecked);
        item->setCheckState(0, Qt::Checked);
        emit m_tree->itemClicked(item, 0);
    }

    QWidget *m_window;
    QTreeWidget *m_tree;
};

QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    return dark;
}

/// Both template editors, each under its name and an end that tells the palette.
void saveTemplateEditors(const PluginWindow &plugin, PictureFolder *pictures, const QString &nameEnd)
{
    const auto save = [&](QWidget *editor, const QString &name) {
        pictures->save(editor, name + nameEnd + QStringLiteral(".png"));
        delete editor;
    };
    save(plugin.editTemplate(QStringLiteral("Petrophysics"), 2), QStringLiteral("template-editor"));
    save(plugin.defineTemplate(QStringLiteral("My template")), QStringLiteral("template-new"));
}

// The entry that a plug-in added; a menu without one holds a disabled line that says so.
QAction *pluginAction(const QMenu *utilities)
{
    QAction *last = utilities->isEmpty() ? nullptr : utilities->actions().last();
    return last && last->isEnabled() ? last : nullptr;
}

void printMissingPlugin(const workbench::PluginLoader &loader, const QStringList &folders)
{
    std::fprintf(stderr, "No plug-in was started from %s.\n", qUtf8Printable(folders.join(QStringLiteral(", "))));
    for (const workbench::PluginReport &report : loader.reports())
        if (!report.error.isEmpty())
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(report.file), qUtf8Printable(report.error));
}

void printMessages(const workbench::WorkbenchWindow &window)
{
    const auto *panel = window.findChild<workbench::MessagesPanel *>();
    for (const QString &message : panel->messages())
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

// The four editors of well data, and the import of the markers that lie beside a demo survey.
void drawWellData(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures, const QString &suffix)
{
    const char *names[] = {"logs", "markers", "zones", "points"};
    for (int tab = 0; tab < 4; ++tab) {
        QWidget *editor = plugin.showWellData(tab);
        if (!editor)
            return;
        if (auto *group = editor->findChild<QComboBox *>(QStringLiteral("groupBox")))
            group->setCurrentText(QStringLiteral("Porosity"));
        pictures->save(editor->window(),
                       QStringLiteral("welldata-%1%2.png").arg(QString::fromLatin1(names[tab]), suffix));
    }
    const QDir inputs(survey + QStringLiteral("/Import"));
    const QStringList tops = inputs.entryList({QStringLiteral("*_tops.txt")}, QDir::Files);
    QWidget *dialog =
        tops.isEmpty() ? nullptr : PluginWindow::openImport(plugin.showWellData(1), inputs.filePath(tops.first()));
    if (dialog) {
        pictures->save(dialog, QStringLiteral("welldata-import%1.png").arg(suffix));
        dialog->close();
    }
}

/// The list of wells with the tree of logs and markers of one of them.
void drawManagedWells(workbench::WorkbenchHost &host, base::Asker &asker, PictureFolder *pictures)
{
    const QVector<host::WellEntry> wells = host.store().list().value;
    if (wells.isEmpty())
        return;
    workbench::WellManagerDialog dialog(host.store(), asker);
    dialog.resize(860, 820); // the markers stand behind the logs
    dialog.show();
    dialog.selectWell(wells.at(wells.size() / 2).key);
    QCoreApplication::processEvents();
    pictures->save(&dialog, QStringLiteral("workbench-wells.png"));
}

/// The wells that the files beside a demo survey would make in a new one.
void drawNewWells(const QString &survey, base::Asker &asker, PictureFolder *pictures)
{
    const QDir inputs(survey + QStringLiteral("/Import"));
    QStringList files;
    for (const QString &name : inputs.entryList({QStringLiteral("*.las")}, QDir::Files))
        files.append(inputs.filePath(name));
    const QTemporaryDir folder;
    const QString empty = folder.filePath(QStringLiteral("survey"));
    if (files.isEmpty() || !survey::createSurvey(empty, {}).ok())
        return;
    survey::SurveyStore store(empty);
    workbench::NewWellsDialog dialog(store, asker, {});
    dialog.resize(1160, 460);
    dialog.addFiles(files);
    dialog.show();
    pictures->save(&dialog, QStringLiteral("workbench-las.png"));
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "Usage: lorva-pictures SURVEY_DIR PICTURE_DIR\n");
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true); // the user's own settings stay out of it
    const QTemporaryDir settings;
    base::keepSettingsIn(settings.path());
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("LORVA"));
    QApplication::setApplicationName(QStringLiteral("pictures"));

    PictureFolder pictures(QFile::decodeName(argv[2]));
    const unattended::BoxCloser closer;
    unattended::PrintingAsker asker;
    workbench::WorkbenchHost host(workbench::WorkbenchHost::installedDataFolder());
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    host.setWindow(&window, window.utilitiesMenu());
    window.resize(1200, 760);
    window.show();
    const QStringList folders = workbench::PluginLoader::searchFolders({});
    loader.loadAll(folders);
    window.setPluginReports(loader.reports());
    if (!window.openSurvey(QDir::current().absoluteFilePath(QFile::decodeName(argv[1]))))
        return 1;
    printMessages(window);
    pictures.save(&window, QStringLiteral("workbench.png"));
    drawManagedWells(host, asker, &pictures);
    drawNewWells(QFile::decodeName(argv[1]), asker, &pictures);
    QAction *action = pluginAction(window.utilitiesMenu());
    if (!action) {
        printMissingPlugin(loader, folders);
        return 1;
    }
    action->trigger();
    pictures.save(childWindow(&window, "Launcher"), QStringLiteral("launcher.png"));
    QWidget *mainWindow = childWindow(&window, "MainWindow");
    if (!mainWindow) {
        std::fprintf(stderr, "The plug-in has opened no main window.\n");
        return 1;
    }
    mainWindow->showNormal();
    mainWindow->resize(1500, 900);
    // The screen without a display is small: the docks grew with the window.
    if (auto *docked = qobject_cast<QMainWindow *>(mainWindow))
        docked->resizeDocks({docked->findChild<QDockWidget *>(QStringLiteral("propertiesDock"))}, {220},
                            Qt::Horizontal);
    const PluginWindow plugin(mainWindow);
    plugin.expandFirstWell();
    pictures.save(mainWindow, QStringLiteral("mainwindow.png"));
    for (const char *name : {"Default", "Simple", "Petrophysics", "Triple Combo", "Density-Neutron", "Saturation"}) {
        if (!plugin.displayFirstWell(QString::fromLatin1(name)))
            continue;
        const QString file = QString::fromLatin1(name).toLower().remove(QLatin1Char(' '));
        pictures.save(mainWindow, QStringLiteral("welldisplay-%1.png").arg(file));
    }
    if (plugin.displayFirstWell(QStringLiteral("Default"))) {
        plugin.clickFirstHeader();
        pictures.save(mainWindow, QStringLiteral("welldisplay-curve.png"));
    }
    // The demo's reservoir: in measured depth, and 1000 m below the top of all wells once it is flattened.
    if (plugin.displayFirstCorrelation(7905))
        pictures.save(mainWindow, QStringLiteral("correlation.png"));
    if (plugin.chooseForCorrelation("flatAtBox", QStringLiteral("Kestrane Upper Sst"), 4050))
        pictures.save(mainWindow, QStringLiteral("correlation-flattened.png"));
    plugin.chooseForCorrelation("flatAtBox", QStringLiteral("None"), 0);
    plugin.chooseForCorrelation("depthUnitBox", QStringLiteral("FEET"), 0);
    // 2,030 m below the sea.
    if (plugin.chooseForCorrelation("depthTypeBox", QStringLiteral("TVDSS"), 25900))
        pictures.save(mainWindow, QStringLiteral("correlation-feet.png"));
    drawWellData(plugin, QFile::decodeName(argv[1]), &pictures, QString());
    if (plugin.hasTemplate(QStringLiteral("Petrophysics"))) {
        saveTemplateEditors(plugin, &pictures, QString());
        const QPalette light = QApplication::palette();
        QApplication::setPalette(darkPalette());
        saveTemplateEditors(plugin, &pictures, QStringLiteral("-dark"));
        drawWellData(plugin, QFile::decodeName(argv[1]), &pictures, QStringLiteral("-dark"));
        QApplication::setPalette(light);
    }
    return pictures.isComplete() ? 0 : 1;
}
