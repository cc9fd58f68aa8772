// Template editors opened from the project tree of the main window: what they save shows in the tree, in open
// displays and in open correlations.

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationfixture.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewtabwidget.h"
#include "logview/curveitem.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsviewwidget.h"
#include "logview/welltemplatepreview.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreeitems.h"
#include "mainwin/projecttreewidget.h"
#include "support/testmain.h"
#include "templates/definetemplate.h"
#include "templates/deftemptrackwidget.h"
#include "templates/modifytemplate.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

namespace {

struct Window : CorrelationFixture
{
    Window()
    {
        files::write(path("/Templates/A/Own/Track_1.txt"), linearTrack);
        files::write(path("/Templates/B/Own/Track_1.txt"), linearTrack);
        store("North");
        store("South", "1\nC:T\n");
    }
    void open()
    {
        openAt96Dots();
        window = std::make_unique<MainWindow>(*launch);
        window->resize(1200, 800);
        window->show();
        tree = window->projectTree();
        logs = window->findChild<WellLogsViewWidget *>();
        correlations = window->findChild<CorrelationViewTabWidget *>();
        tree->expandAll();
    }

    QTreeWidgetItem *well(const QString &name) const { return child(tree->wellsItem(), name); }
    QTreeWidgetItem *own(const QString &wellName, const QString &name) const
    {
        return child(templateBranch(well(wellName)), name);
    }
    QTreeWidgetItem *global(const QString &wellName, const QString &name) const
    {
        return child(globalBranch(well(wellName)), name);
    }
    static QTreeWidgetItem *child(const QTreeWidgetItem *parent, const QString &name)
    {
        for (int i = 0; i < parent->childCount(); ++i)
            if (parent->child(i)->text(0) == name)
                return parent->child(i);
        return nullptr;
    }
    static QStringList children(const QTreeWidgetItem *parent)
    {
        QStringList names;
        for (int i = 0; i < parent->childCount(); ++i)
            names.append(parent->child(i)->text(0));
        return names;
    }
    void check(QTreeWidgetItem *item) const
    {
        item->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(item, 0);
    }
    /// Chooses an entry of the context menu of an item and gives the dialog that opens.
    TemplateDialog *choose(QTreeWidgetItem *of, const QString &entry)
    {
        QTimer::singleShot(0, tree, [entry] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                if (action->text() == entry && action->isEnabled())
                    action->trigger();
            menu->close();
        });
        tree->scrollToItem(of);
        const QPoint place = tree->visualItemRect(of).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
        return dialog();
    }
    TemplateDialog *dialog() const { return qobject_cast<TemplateDialog *>(QApplication::activeModalWidget()); }
    static void click(const QWidget *parent, const char *button)
    {
        QTest::mouseClick(find<QPushButton>(parent, button), Qt::LeftButton);
    }
    static void setName(const QWidget *parent, const QString &name)
    {
        find<QLineEdit>(parent, "nameEdit")->setText(name);
    }
    static void close(TemplateDialog *dialog)
    {
        click(dialog, "closeButton");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QStringList boxTexts()
    {
        QStringList texts;
        for (const base::Box &box : qAsConst(asker.boxes))
            texts.append(box.text);
        asker.boxes.clear();
        return texts;
    }
    QStringList displayTabs() const
    {
        const auto *tabs = find<QTabWidget>(logs, "wellTabs");
        QStringList texts;
        for (int i = 0; i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
        return texts;
    }
    WellLogsScene *scene(int tab) const { return logs->display(tab)->scene(); }

    std::unique_ptr<MainWindow> window;
    ProjectTreeWidget *tree = nullptr;
    WellLogsViewWidget *logs = nullptr;
    CorrelationViewTabWidget *correlations = nullptr;
};

} // namespace

class tst_templatesinwindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<Window>(); }
    void cleanup() { m.reset(); }

    void createNewTemplateOpensTheEditor()
    {
        m->open();
        TemplateDialog *dialog = m->choose(templateBranch(m->well("B")), "Create New Template");
        QVERIFY(qobject_cast<DefineTemplate *>(dialog));
        QVERIFY(dialog->isModal());
        QCOMPARE(dialog->wellName(), QString("B"));
        QVERIFY(dialog->findChild<WellTemplatePreview *>());
        const QPointer<TemplateDialog> guard = dialog;
        m->close(dialog);
        QVERIFY(!guard);
    }

    void editOpensTheItemsOwnTemplate()
    {
        files::write(m->path("/Templates/A/T/Track_1.txt"), "Depth\n");
        m->open();
        auto *dialog = qobject_cast<ModifyTemplate *>(m->choose(m->own("A", "T"), "Edit"));
        QVERIFY(dialog);
        QVERIFY(!dialog->opened().isGlobal);
        QCOMPARE(dialog->opened().wellName, QString("A"));
        QCOMPARE(dialog->tracks().size(), 1);
        QVERIFY(dialog->findChild<WellTemplatePreview *>());
        m->close(dialog);
        dialog = qobject_cast<ModifyTemplate *>(m->choose(m->global("B", "T"), "Edit"));
        QVERIFY(dialog->opened().isGlobal);
        QCOMPARE(dialog->opened().name, QString("T"));
        QCOMPARE(dialog->wellName(), QString("B"));
        QCOMPARE(dialog->tracks().size(), 2);
        m->close(dialog);
        QVERIFY(m->boxTexts().isEmpty());
    }

    void slotsNeedTheirItem()
    {
        m->open();
        for (QTreeWidgetItem *item : {m->tree->wellsItem(), m->well("A"), globalBranch(m->well("A"))}) {
            m->tree->setCurrentItem(item);
            m->tree->createNewTemplate();
            m->tree->editWellTemplate();
            m->tree->editGlobalTemplate();
            QVERIFY(!m->dialog());
        }
        m->tree->setCurrentItem(m->own("A", "Own"));
        m->tree->editGlobalTemplate();
        QVERIFY(!m->dialog());
        m->tree->setCurrentItem(m->global("A", "T"));
        m->tree->editWellTemplate();
        QVERIFY(!m->dialog());
        m->tree->editGlobalTemplate();
        QVERIFY(m->dialog());
        m->close(m->dialog());
    }

    void aSavedTemplateIsInTheTree()
    {
        m->open();
        TemplateDialog *dialog = m->choose(templateBranch(m->well("A")), "Create New Template");
        m->setName(dialog, "Mine");
        m->click(dialog, "saveButton");
        QCOMPARE(m->children(templateBranch(m->well("A"))), QStringList({"Global", "Mine", "Own"})); // by name
        QCOMPARE(m->own("A", "Mine")->type(), int(WellTemplateType));
        QCOMPARE(m->own("A", "Mine")->checkState(0), Qt::Unchecked);
        QVERIFY(!m->own("B", "Mine"));
        m->asker.answers = {base::BoxButton::Yes};
        m->click(dialog, "saveButton"); // once only
        QCOMPARE(m->children(templateBranch(m->well("A"))), QStringList({"Global", "Mine", "Own"}));
        m->click(dialog, "saveAsGlobalButton");
        for (const char *name : {"A", "B", "C"}) {
            QCOMPARE(m->children(globalBranch(m->well(name))).last(), QString("Mine"));
            QCOMPARE(m->global(name, "Mine")->type(), int(GlobalTemplateType));
            QCOMPARE(m->global(name, "Mine")->checkState(0), Qt::Unchecked);
        }
        QCOMPARE(m->children(globalBranch(m->well("A"))), m->launch->project.globalTemplateNames);
        m->close(dialog);
    }

    void wellsOfOneNameHaveTheSameTemplates()
    {
        m->addDeepWell("A", 0, 100, {});
        m->open();
        TemplateDialog *dialog = m->choose(templateBranch(m->well("A")), "Create New Template");
        m->setName(dialog, "Mine");
        m->click(dialog, "saveButton");
        int wells = 0;
        for (int i = 0; i < m->tree->wellsItem()->childCount(); ++i) {
            const QTreeWidgetItem *well = m->tree->wellsItem()->child(i);
            const bool hasIt = m->children(templateBranch(well)).contains("Mine");
            QCOMPARE(hasIt, well->text(0) == "A");
            wells += hasIt;
        }
        QCOMPARE(wells, 2);
        m->close(dialog);
    }

    void aRenamedGlobalTemplateIsRenamedUnderEveryWell()
    {
        m->open();
        m->check(m->well("B"));
        m->check(m->global("B", "T"));
        const int place = m->children(globalBranch(m->well("A"))).indexOf("T");
        TemplateDialog *dialog = m->choose(m->global("A", "T"), "Edit");
        m->setName(dialog, "U");
        m->click(dialog, "saveButton");
        for (const char *name : {"A", "B", "C"}) {
            QVERIFY(!m->global(name, "T"));
            QCOMPARE(m->children(globalBranch(m->well(name))).indexOf("U"), place);
        }
        QCOMPARE(m->tree->currentItem(), m->global("A", "U"));
        QCOMPARE(m->global("A", "U")->checkState(0), Qt::Unchecked);
        QCOMPARE(m->global("B", "U")->checkState(0), Qt::Checked); // what is displayed stays checked
        QCOMPARE(m->displayTabs(), QStringList("B:U"));
        QCOMPARE(m->scene(0)->tracks().size(), 2);
        m->close(dialog);
    }

    void aRenamedTemplateOfAWellTakesAnothersPlace()
    {
        files::write(m->path("/Templates/A/Zed/Track_1.txt"), "Depth\n");
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->setName(dialog, "Zed");
        m->asker.answers = {base::BoxButton::Yes};
        m->click(dialog, "saveButton");
        QCOMPARE(m->children(templateBranch(m->well("A"))), QStringList({"Global", "Zed"}));
        QCOMPARE(m->own("A", "Zed")->checkState(0), Qt::Checked);
        QVERIFY(m->own("B", "Own")); // another well's
        QCOMPARE(m->displayTabs(), QStringList("A:Zed"));
        m->close(dialog);
    }

    void madeGlobalItMovesInTheTree()
    {
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->click(dialog, "saveAsGlobalButton");
        QCOMPARE(m->children(templateBranch(m->well("A"))), QStringList("Global"));
        QCOMPARE(m->global("A", "Own")->checkState(0), Qt::Checked);
        QCOMPARE(m->global("B", "Own")->checkState(0), Qt::Unchecked);
        QVERIFY(m->own("B", "Own"));
        QCOMPARE(m->displayTabs(), QStringList("A:Own"));
        m->close(dialog);
    }

    void registeringSendsNothing()
    {
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        int sent = 0;
        connect(m->tree, &ProjectTreeWidget::sendWellDisplayProperties, this, [&] { ++sent; });
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->setName(dialog, "New");
        m->click(dialog, "saveButton");
        QCOMPARE(sent, 0);
        QCOMPARE(m->displayTabs(), QStringList("A:New"));
        m->close(dialog);
    }

    // Scale, range, depth type, unit and markers stay; so does the place that is looked at.
    void anOpenDisplayFollowsAndKeepsItsState()
    {
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        m->check(markersBranch(m->well("A"))->child(0));
        WellLogsScene *scene = m->scene(0);
        WellLogsScenePropertyWidget *panel = scene->panel();
        type(panel, "startDepthEdit", "200");
        type(panel, "endDepthEdit", "1400");
        type(panel, "scaleEdit", "500");
        scene->markers().pick("A");
        const QPointer<MarkerItem> shown = scene->markers().findStored("Top");
        QVERIFY(shown);
        const QPointF markerPlace = shown->pos();
        const int height = scene->trackHeight();
        const int markers = scene->markers().all().size();
        const QPointer<TrackItem> old = scene->tracks().first();

        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->click(dialog, "addTrackButton");
        m->click(dialog, "saveButton");
        QCOMPARE(m->scene(0), scene);
        QVERIFY(!old);
        QCOMPARE(scene->tracks().size(), 2);
        QCOMPARE(scene->trackHeight(), height);
        for (const TrackItem *track : scene->tracks()) {
            QCOMPARE(track->scale(), 500.0F);
            QCOMPARE(track->axis(), logview::DepthAxis::of(200, 1400, 500));
        }
        QCOMPARE(scene->sceneWidth(), 2 * 192);
        QCOMPARE(shown->width(), 384.0F);
        QVERIFY(shown);
        QCOMPARE(shown->pos(), markerPlace);
        QCOMPARE(scene->markers().all().size(), markers);
        QCOMPARE(find<QLineEdit>(panel, "scaleEdit")->text(), QString("500"));
        QCOMPARE(markersBranch(m->well("A"))->child(0)->checkState(0), Qt::Checked);

        find<QComboBox>(panel, "depthUnitBox")->setCurrentText("FEET");
        find<QComboBox>(panel, "depthTypeBox")->setCurrentText("TVDSS");
        const logview::DepthAxis axis = scene->tracks().first()->axis();
        m->click(dialog, "saveButton");
        QCOMPARE(scene->tracks().first()->axis(), axis);
        QCOMPARE(scene->tracks().first()->depthReference().unit, logview::Feet);
        QCOMPARE(scene->tracks().first()->depthReference().type, logview::TvdSubsea);
        QCOMPARE(m->logs->currentDisplay()->findChild<QLabel *>("statusLine")->text(), QString());
        m->close(dialog);
    }

    void onlyDisplaysOfTheTemplateAreRebuilt()
    {
        m->open();
        for (const char *name : {"A", "B", "C"})
            m->check(m->well(name));
        m->check(m->own("A", "Own"));
        m->check(m->own("B", "Own"));
        m->check(m->global("C", "T"));
        QVector<QPointer<TrackItem>> before;
        for (int tab = 0; tab < 3; ++tab)
            before.append(m->scene(tab)->tracks().first());
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->click(dialog, "saveButton");
        QVERIFY(!before.at(0) && before.at(1) && before.at(2));
        m->close(dialog);
        before[0] = m->scene(0)->tracks().first();
        dialog = m->choose(m->global("A", "T"), "Edit"); // no display of this well shows it
        m->click(dialog, "saveButton");
        QVERIFY(before.at(0) && before.at(1) && !before.at(2));
        m->close(dialog);
    }

    // A global template hides a well's own of its name: renaming that one leaves the display alone.
    void aHiddenTemplateIsNotWhatIsDisplayed()
    {
        files::write(m->path("/Templates/A/T/Track_1.txt"), "Depth\n");
        m->open();
        m->check(m->well("A"));
        m->check(m->global("A", "T"));
        TemplateDialog *dialog = m->choose(m->own("A", "T"), "Edit");
        m->setName(dialog, "Mine");
        m->click(dialog, "saveButton");
        QCOMPARE(m->displayTabs(), QStringList("A:T"));
        QCOMPARE(m->scene(0)->tracks().size(), 2);
        QVERIFY(m->global("A", "T"));
        m->close(dialog);
    }

    void aDisplayOfATemplateWithoutTracksSaysSo()
    {
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        emit find<QTabWidget>(dialog, "trackTabs")->tabCloseRequested(0);
        m->click(dialog, "saveButton");
        QVERIFY(m->scene(0)->tracks().isEmpty());
        QCOMPARE(m->logs->currentDisplay()->findChild<QLabel *>("statusLine")->text(),
                 QString("The template \"Own\" has no tracks."));
        m->click(dialog, "addTrackButton");
        m->click(dialog, "saveButton");
        QCOMPARE(m->scene(0)->tracks().size(), 1);
        QCOMPARE(m->logs->currentDisplay()->findChild<QLabel *>("statusLine")->text(), QString());
        m->close(dialog);
    }

    // The panel of a curve stands in the dock while its display is rebuilt.
    void aSelectedCurveMayGo()
    {
        m->open();
        m->check(m->well("A"));
        m->check(m->own("A", "Own"));
        WellLogsScene *scene = m->scene(0);
        scene->selection().selectOnly(scene->tracks().first()->curves().first());
        scene->selection().showPanelOfSelection();
        auto *dock = find<QDockWidget>(m->window.get(), "propertiesDock");
        QVERIFY(dock->widget() != scene->panel());
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->click(dialog, "saveButton");
        QCOMPARE(dock->widget(), static_cast<QWidget *>(scene->panel()));
        m->close(dialog);
    }

    void openCorrelationsFollow()
    {
        m->open();
        emit m->tree->sendCorrelation(m->child(m->tree->correlationsItem(), "North"));
        emit m->tree->sendCorrelation(m->child(m->tree->correlationsItem(), "South"));
        CorrelationView *north = m->correlations->display(0)->view();
        CorrelationView *south = m->correlations->display(1)->view();
        north->setScaleFactor(700);
        const int northDrawn = north->redrawCount();
        const int southDrawn = south->redrawCount();
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit"); // which none of them uses
        m->click(dialog, "saveButton");
        QCOMPARE(north->redrawCount(), northDrawn);
        m->close(dialog);
        dialog = m->choose(m->global("C", "T"), "Edit");
        const int tracks = north->tracks().size();
        m->click(dialog, "addTrackButton");
        m->click(dialog, "saveButton");
        QCOMPARE(north->redrawCount(), northDrawn + 1);
        QCOMPARE(south->redrawCount(), southDrawn + 1);
        QCOMPARE(north->tracks().size(), tracks + 2); // of both its wells
        QCOMPARE(north->scaleFactor(), 700.0F);
        m->setName(dialog, "U");
        m->click(dialog, "saveButton"); // what they use is gone
        QCOMPARE(north->redrawCount(), northDrawn + 2);
        QVERIFY(north->notes().contains("has no template \"T\""));
        const auto *table = find<QTableWidget>(m->correlations->display(0)->dialog(), "wellsTable");
        const auto *offered = qobject_cast<QComboBox *>(table->cellWidget(0, 1));
        QCOMPARE(offered->currentText(), QString("T")); // until another is chosen
        QVERIFY(offered->findText("U") >= 0);
        QVERIFY(!m->correlations->display(0)->dialog()->isChanged());
        m->close(dialog);
    }

    // A correlation of a well's own template.
    void correlationsFollowAWellsOwnTemplate()
    {
        m->store("Own", "1\nA:Own\n");
        m->open();
        emit m->tree->sendCorrelation(m->child(m->tree->correlationsItem(), "Own"));
        CorrelationView *view = m->correlations->display(0)->view();
        QCOMPARE(view->tracks().size(), 1);
        TemplateDialog *dialog = m->choose(m->own("A", "Own"), "Edit");
        m->click(dialog, "addTrackButton");
        m->click(dialog, "saveButton");
        QCOMPARE(view->tracks().size(), 2);
        m->click(dialog, "saveAsGlobalButton");
        QCOMPARE(view->tracks().size(), 2);
        QCOMPARE(view->notes(), QString());
        m->close(dialog);
    }

    // From the empty editor over renaming and reordering to a global template: the files at each step.
    void theLifeOfATemplate()
    {
        m->open();
        const auto content = [this](const QString &owner, const QString &name) {
            return files::snapshot(m->path("/Templates/" + owner + '/' + name));
        };
        const QByteArray depth = "Depth\nDepth | Default | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 "
                                 "| 0\n";
        const auto gamma = [](const char *right) {
            return QByteArray("Linear\nGamma | GR | 0 | ") + right
                + " | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | #000000 | 1 | Rectangle\n";
        };
        using Content = QMap<QString, QByteArray>;

        TemplateDialog *dialog = m->choose(templateBranch(m->well("A")), "Create New Template");
        m->click(dialog, "addTrackButton");
        DefTempTrackWidget *track = dialog->tracks().first();
        m->click(track, "addCurveButton");
        auto *table = find<QTableWidget>(track, "curveTable");
        Window::chooser(table, 0, 0)->setCurrentText("Gamma");
        Window::chooser(table, 0, 1)->setCurrentText("GR");
        QTest::keyClicks(table->cellWidget(0, 2), "0");
        QTest::keyClicks(table->cellWidget(0, 3), "150");
        m->click(dialog, "addTrackButton");
        find<QComboBox>(dialog->tracks().last(), "trackTypeBox")->setCurrentText("Depth");
        m->click(dialog->tracks().last(), "addCurveButton");
        m->setName(dialog, "Life");
        m->click(dialog, "saveButton");
        QCOMPARE(content("A", "Life"), (Content{{"Track_1.txt", gamma("150")}, {"Track_2.txt", depth}}));
        m->close(dialog);

        dialog = m->choose(m->own("A", "Life"), "Edit");
        auto *right =
            qobject_cast<QLineEdit *>(find<QTableWidget>(dialog->tracks().first(), "curveTable")->cellWidget(0, 3));
        QCOMPARE(right->text(), QString("150.00"));
        right->setText("120");
        m->click(dialog, "saveButton");
        QByteArray edited = gamma("120");
        edited.replace("GR | 0 | ", "GR | 0.00 | ");
        QCOMPARE(content("A", "Life"), (Content{{"Track_1.txt", edited}, {"Track_2.txt", depth}}));

        find<QTabWidget>(dialog, "trackTabs")->tabBar()->moveTab(1, 0);
        m->setName(dialog, "Second");
        m->click(dialog, "saveButton");
        QCOMPARE(content("A", "Second"), (Content{{"Track_1.txt", depth}, {"Track_2.txt", edited}}));
        QVERIFY(!QFileInfo::exists(m->path("/Templates/A/Life")));

        m->click(dialog, "saveAsGlobalButton");
        QCOMPARE(content("Global", "Second"), (Content{{"Track_1.txt", depth}, {"Track_2.txt", edited}}));
        QVERIFY(!QFileInfo::exists(m->path("/Templates/A/Second")));
        m->close(dialog);
        QCOMPARE(m->boxTexts(),
                 QStringList({"Saved Successfully !", "Saved Successfully !", "Saved Successfully !",
                              "Saved Successfully !"}));
        m->check(m->well("C"));
        m->check(m->global("C", "Second"));
        QCOMPARE(m->scene(0)->tracks().size(), 2);
        QCOMPARE(m->scene(0)->tracks().at(1)->curves().first()->curveName(), QString("GR"));
    }

private:
    template<class Widget>
    static Widget *find(const QWidget *parent, const char *name)
    {
        return CorrelationFixture::find<Widget>(parent, name);
    }
    static void type(QWidget *panel, const char *field, const QString &text)
    {
        auto *edit = find<QLineEdit>(panel, field);
        edit->setText(text);
        emit edit->editingFinished();
    }

    std::unique_ptr<Window> m;
};

LORVA_TEST_MAIN(tst_templatesinwindow)
#include "tst_templatesinwindow.moc"
