#pragma once

#include "mainwin/projecttreewidget.h"
#include "support/projectfixture.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

/// The tree of a project with two wells, two global templates more than the seeds, and everything a branch can hold.
class TreeFixture : public ProjectFixture
{
public:
    TreeFixture() { fill(); }
    /// With another asker for all boxes.
    explicit TreeFixture(base::Asker &otherAsker)
    {
        launch = std::make_unique<ProjectData>(host, otherAsker);
        fill();
    }

    void fill()
    {
        addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT")},
                {QStringLiteral("Top"), QStringLiteral("Base")});
        addWell(QStringLiteral("B"), {QStringLiteral("SP")});
        open();
        addTemplate(QStringLiteral("Own"), QStringLiteral("A"));
        addTemplate(QStringLiteral("Second"), QStringLiteral("A"));
        addCorrelation(QStringLiteral("East-West"));
        tree = std::make_unique<ProjectTreeWidget>(*launch);
        tree->resize(300, 900);
        tree->show();
        QObject::connect(tree.get(), &ProjectTreeWidget::sendWellDisplayProperties,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("show %1 %2").arg(well, name));
                         });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeWellDisplay,
                         [this](const QString &well) { sent.append(QStringLiteral("hide %1").arg(well)); });
        QObject::connect(tree.get(), &ProjectTreeWidget::displayMarker,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("marker %1 %2").arg(well, name));
                         });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeMarker,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("no marker %1 %2").arg(well, name));
                         });
    }

    /// An item by its texts from the top: {"Wells", "A", "Logs"}.
    QTreeWidgetItem *item(const QStringList &path) const
    {
        QTreeWidgetItem *current = tree->invisibleRootItem();
        for (const QString &text : path) {
            QTreeWidgetItem *next = nullptr;
            for (int i = 0; i < current->childCount() && !next; ++i)
                if (current->child(i)->text(0) == text)
                    next = current->child(i);
            if (!next)
                return nullptr;
            current = next;
        }
        return current;
    }
    QTreeWidgetItem *item(const char *path) const { return item(QString::fromLatin1(path).split(QLatin1Char('/'))); }

    /// Toggles the item's check box with the mouse.
    void clickBox(const char *path)
    {
        QTreeWidgetItem *target = item(path);
        QVERIFY2(target, path);
        for (QTreeWidgetItem *parent = target->parent(); parent; parent = parent->parent())
            parent->setExpanded(true);
        tree->scrollToItem(target);
        const QRect rect = tree->visualItemRect(target);
        QStyleOptionViewItem option;
        option.initFrom(tree.get());
        option.rect = rect;
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        if (!target->icon(0).isNull())
            option.features |= QStyleOptionViewItem::HasDecoration;
        option.text = target->text(0);
        lastBox = tree->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree.get()).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, lastBox);
    }

    /// The menu entries that a right click on the item offers; disabled ones in brackets. Chooses \a choose.
    QStringList menuOf(const char *path, const QString &choose = {})
    {
        QTreeWidgetItem *target = item(path);
        if (!target)
            return {QStringLiteral("no such item")};
        for (QTreeWidgetItem *parent = target->parent(); parent; parent = parent->parent())
            parent->setExpanded(true);
        tree->scrollToItem(target);
        const QPoint position = tree->visualItemRect(target).center();
        QStringList entries;
        QTimer::singleShot(0, tree.get(), [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                entries.append(action->isEnabled() ? action->text() : QStringLiteral("[%1]").arg(action->text()));
            for (QAction *action : menu->actions())
                if (action->text() == choose)
                    menu->setActiveAction(action);
            QTest::keyClick(menu, choose.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, tree->viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
        return entries;
    }

    QStringList takeSent()
    {
        QStringList result;
        result.swap(sent);
        return result;
    }

    std::unique_ptr<ProjectTreeWidget> tree;
    QStringList sent;
    QPoint lastBox; ///< that clickBox() clicked
};

inline QStringList childTexts(const QTreeWidgetItem *parent)
{
    QStringList result;
    for (int i = 0; i < parent->childCount(); ++i)
        result.append(parent->child(i)->text(0));
    return result;
}

inline QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

inline void compareDeletion(const TreeFixture &fixture, bool isDeleted, const QString &fragment)
{
    QCOMPARE(fixture.asker.boxes.size(), 1);
    const base::Box &box = fixture.asker.boxes.first();
    QCOMPARE(box.icon, base::BoxIcon::Warning);
    QCOMPARE(box.title, isDeleted ? QStringLiteral("Successfully deleted !") : QStringLiteral("Error in deleting !"));
    QCOMPARE(box.text, fixture.path(fragment));
    QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    if (isDeleted)
        QVERIFY(!QFileInfo::exists(fixture.path(fragment)));
}
