#include "demolaunch.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QComboBox>
#include <QDialog>
#include <QGraphicsView>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

/// A display template through the built plug-in in the workbench, by mouse and keyboard: made, shown, edited while it is
/// shown, reordered by dragging, and given to all wells.
class tst_templatesinworkbench : public QObject
{
    Q_OBJECT

private slots:
    void theLifeOfATemplate()
    {
        DemoLaunch demo;
        auto *window = find<QMainWindow>(&demo.window, "MainWindow");
        window->showNormal();
        window->resize(1400, 900);
        m_tree = find<QTreeWidget>(&demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *well = m_tree->topLevelItem(0)->child(0);
        const QString wellName = well->text(0);
        QTreeWidgetItem *templates = well->child(2);
        QCOMPARE(templates->text(0), QString("Template"));

        chooseInMenu(templates, "Create New Template");
        QWidget *editor = QApplication::activeModalWidget();
        QVERIFY(editor);
        QCOMPARE(editor->windowTitle(), QString("Define Display Template"));
        press(editor, "addTrackButton");
        QWidget *track = find<QTabWidget>(editor, "trackTabs")->currentWidget();
        press(track, "addCurveButton");
        auto *table = find<QTableWidget>(track, "curveTable");
        pick(table, 0, 0, "Gamma");
        pick(table, 0, 1, "GR");
        typeInto(table, 0, 2, "0");
        typeInto(table, 0, 3, "150");
        press(editor, "addTrackButton");
        track = find<QTabWidget>(editor, "trackTabs")->currentWidget();
        pickIn(find<QComboBox>(track, "trackTypeBox"), "Depth");
        press(track, "addCurveButton");
        QTest::keyClicks(find<QLineEdit>(editor, "nameEdit"), "Two tracks");
        press(editor, "saveButton");
        QCOMPARE(demo.boxes.seen.last().title, QString("Define Display Template"));
        QCOMPARE(demo.boxes.seen.last().text, QString("Saved Successfully !"));
        press(editor, "closeButton");
        QCOMPARE(demo.boxes.seen.size(), 1);
        const QString own = demo.survey + "/WLC/Templates/" + wellName + "/Two tracks";
        const QByteArray gamma =
            "Linear\nGamma | GR | 0 | 150 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | "
            "#000000 | 1 | Rectangle\n";
        const QByteArray depth =
            "Depth\nDepth | Default | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n";
        using Content = QMap<QString, QByteArray>;
        QCOMPARE(files::snapshot(own), (Content{{"Track_1.txt", gamma}, {"Track_2.txt", depth}}));

        QTreeWidgetItem *item = childNamed(templates, "Two tracks");
        QVERIFY(item);
        clickBox(well);
        clickBox(item);
        auto *displays = find<QTabWidget>(&demo.window, "wellTabs");
        QCOMPARE(displays->tabText(0), wellName + ":Two tracks");
        const auto *view = find<QGraphicsView>(displays, "logView");
        const QRectF paper = view->sceneRect();
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() / 2);
        const int place = view->verticalScrollBar()->value();
        const int before = darkPixels(view);
        QVERIFY(before > 100);

        chooseInMenu(item, "Edit");
        editor = QApplication::activeModalWidget();
        QCOMPARE(editor->windowTitle(), QString("Edit Display Template"));
        auto *tabs = find<QTabWidget>(editor, "trackTabs");
        dragFirstTabBehindTheSecond(tabs->findChild<QTabBar *>());
        QCOMPARE(tabs->tabText(0), QString("Track_1"));
        QVERIFY(find<QComboBox>(tabs->widget(0), "trackTypeBox")->currentText() == "Depth");
        press(editor, "saveButton");
        QCOMPARE(files::snapshot(own).value("Track_1.txt"), depth);
        QCOMPARE(view->sceneRect(), paper);
        QCOMPARE(view->verticalScrollBar()->value(), place);
        press(editor, "saveAsGlobalButton");
        press(editor, "closeButton");
        QVERIFY(!QFileInfo::exists(own));
        QCOMPARE(files::snapshot(demo.survey + "/WLC/Templates/Global/Two tracks").value("Track_1.txt"), depth);
        QVERIFY(!childNamed(templates, "Two tracks"));
        QTreeWidgetItem *global = childNamed(templates->child(0), "Two tracks");
        QVERIFY(global);
        QCOMPARE(global->checkState(0), Qt::Checked);
        for (int i = 0; i < m_tree->topLevelItem(0)->childCount(); ++i)
            QVERIFY(childNamed(m_tree->topLevelItem(0)->child(i)->child(2)->child(0), "Two tracks"));
        QCOMPARE(demo.boxes.seen.size(), 3);
    }

    // The survey may be changed, and the workbench closed, while an editor stands.
    void theWorkbenchMayEndWithAnEditorOpen()
    {
        DemoLaunch demo;
        m_tree = find<QTreeWidget>(&demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *global = m_tree->topLevelItem(0)->child(0)->child(2)->child(0);
        chooseInMenu(childNamed(global, "Petrophysics"), "Edit");
        QVERIFY(QApplication::activeModalWidget());
        press(QApplication::activeModalWidget(), "addTrackButton");
        QCoreApplication::processEvents();
    }

private:
    template<class Widget>
    static Widget *find(const QWidget *parent, const char *name)
    {
        auto *found = parent->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    static void press(const QWidget *parent, const char *button)
    {
        QTest::mouseClick(find<QPushButton>(parent, button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    static QTreeWidgetItem *childNamed(const QTreeWidgetItem *parent, const QString &name)
    {
        for (int i = 0; i < parent->childCount(); ++i)
            if (parent->child(i)->text(0) == name)
                return parent->child(i);
        return nullptr;
    }
    QRect show(QTreeWidgetItem *item) const
    {
        for (QTreeWidgetItem *above = item->parent(); above; above = above->parent())
            above->setExpanded(true);
        m_tree->scrollToItem(item);
        QCoreApplication::processEvents();
        return m_tree->visualItemRect(item);
    }
    void clickBox(QTreeWidgetItem *item) const
    {
        const QRect row = show(item);
        QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 8, row.center().y()));
        QCOMPARE(item->checkState(0), Qt::Checked);
    }
    void chooseInMenu(QTreeWidgetItem *item, const QString &entry) const
    {
        const QPoint place = show(item).center();
        QTimer::singleShot(0, qApp, [entry] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                if (action->text() == entry)
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, m_tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_tree->viewport(), &event);
        QCoreApplication::processEvents();
    }
    // Types the text into a closed chooser, as far as that chooses it.
    static void pickIn(QComboBox *box, const QString &text)
    {
        box->setFocus();
        QTest::keyClicks(box, text);
        QCOMPARE(box->currentText(), text);
    }
    static void pick(QTableWidget *table, int row, int column, const QString &text)
    {
        pickIn(qobject_cast<QComboBox *>(table->cellWidget(row, column)), text);
    }
    static void typeInto(QTableWidget *table, int row, int column, const QString &text)
    {
        QTest::mouseClick(table->cellWidget(row, column), Qt::LeftButton);
        QTest::keyClicks(table->cellWidget(row, column), text);
    }
    static void dragFirstTabBehindTheSecond(QTabBar *bar)
    {
        const QPoint from = bar->tabRect(0).center();
        const QPoint to(bar->tabRect(1).right() - 2, from.y());
        // Through the window, so that Qt knows which button is held.
        QWindow *window = bar->window()->windowHandle();
        const auto inWindow = [bar](const QPoint &at) { return bar->mapTo(bar->window(), at); };
        QTest::mousePress(window, Qt::LeftButton, {}, inWindow(from));
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(window, inWindow(from + (to - from) * step / 10));
        QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(to));
        QTest::qWait(400); // the tabs slide to their places
    }
    static int darkPixels(const QGraphicsView *view)
    {
        const QImage image = view->viewport()->grab().toImage();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                pixels += qGray(image.pixel(x, y)) < 40;
        return pixels;
    }

    QTreeWidget *m_tree = nullptr;
};

LORVA_TEST_MAIN(tst_templatesinworkbench)
#include "tst_templatesinworkbench.moc"
