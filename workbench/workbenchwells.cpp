// What the window does to the wells of its survey, each in a dialog: it shows afterwards what came of it.

#include "base/asker.h"
#include "workbench/newwellsdialog.h"
#include "workbench/surveyoverview.h"
#include "workbench/topsdialog.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QMenu>

namespace workbench {

void WorkbenchWindow::manageWells()
{
    WellManagerDialog dialog(m_host.store(), m_asker, m_chooser, this);
    dialog.selectWell(m_overview->selectedKey());
    bool isChanged = false;
    connect(&dialog, &WellManagerDialog::changed, &dialog, [&isChanged] { isChanged = true; });
    dialog.exec();
    const QString key = dialog.currentWellKey();
    if (isChanged)
        refresh();
    m_overview->selectWell(key);
}

void WorkbenchWindow::showWellMenu(const QString &key, const QPoint &place)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("wellMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [this, menu](const char *name, const QString &text, const std::function<void()> &act) {
        QAction *action = menu->addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        // Queued: the menu is closed and gone before a dialog runs an event loop of its own.
        connect(action, &QAction::triggered, this, act, Qt::QueuedConnection);
    };
    // Behind the tabulator stands the key that does the same in the table.
    add("wellContentsAction", QStringLiteral("&Logs and markers…\tEnter"), [this] { manageWells(); });
    add("editWellAction", QStringLiteral("&Edit…"), [this, key] { changeWell(key, editWell); });
    add("renameWellAction", QStringLiteral("&Rename…\tF2"), [this, key] { changeWell(key, renameWell); });
    add("deleteWellAction", QStringLiteral("&Delete…\tDel"), [this, key] { deleteStored(key); });
    menu->popup(place);
}

void WorkbenchWindow::changeWell(const QString &key, WellAction change)
{
    const host::WellEntry well = storedWell(m_host.store(), key);
    if (!well.key.isEmpty() && change(m_host.store(), m_asker, well, this))
        refresh();
}

void WorkbenchWindow::deleteStored(const QString &key)
{
    const QString neighbour = m_overview->neighbourKey();
    changeWell(key, [](survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well, QWidget *) {
        return deleteWell(store, asker, well);
    });
    if (m_overview->selectedKey().isEmpty())
        m_overview->selectWell(neighbour);
}

void WorkbenchWindow::newWellsFromFiles()
{
    const QStringList files = NewWellsDialog::chosenFiles(m_chooser, this);
    if (!files.isEmpty())
        newWells(files);
}

void WorkbenchWindow::newWells(const QStringList &paths)
{
    NewWellsDialog dialog(m_host.store(), m_asker, m_chooser, this);
    dialog.setModal(true);
    dialog.show(); // reading many headers shows its progress
    dialog.addFiles(paths);
    dialog.exec();
    if (dialog.createdCount() > 0)
        refresh();
}

void WorkbenchWindow::importTopsOfFiles()
{
    const QStringList files = TopsDialog::chosenFiles(m_chooser, this);
    if (!files.isEmpty())
        importTops(files);
}

void WorkbenchWindow::importTops(const QStringList &paths)
{
    if (workbench::importTops(m_host.store(), m_asker, m_chooser, paths, this))
        refresh();
}

} // namespace workbench
