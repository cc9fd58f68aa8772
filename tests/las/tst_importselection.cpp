#include "importfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QTabBar>
#include <QTimer>

namespace {

struct SelectionFixture : ImportFixture
{
    SelectionFixture() { chooseBytes(las("W-1", "100 1 2 3\n", {"GR.gapi", "CALI.in", "RT.ohmm"})); }
    // "x" for each checked row, "-" for others.
    QString checked() const
    {
        QString rows;
        for (int row = 0; row < table()->rowCount(); ++row)
            rows += table()->item(row, WellImportTab::SelectColumn)->checkState() == Qt::Checked ? QLatin1Char('x')
                                                                                                 : QLatin1Char('-');
        return rows;
    }
    QTableWidget *table() const { return find<QTableWidget>("curveTable"); }
    // A right click on the table, and a choice of the menu that it shows.
    QStringList choose(const char *entry) const
    {
        const QPoint place = table()->visualItemRect(table()->item(1, WellImportTab::SelectColumn)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, table()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(table()->viewport(), &event);
        const QPointer<QMenu> menu = dialog->findChild<QMenu *>(QStringLiteral("curveSelectionMenu"));
        if (!menu)
            qFatal("no menu");
        QStringList texts;
        for (QAction *action : menu->actions()) {
            texts.append(action->text());
            if (action->text() == QLatin1String(entry))
                action->trigger();
        }
        delete menu;
        return texts;
    }
};

} // namespace

/// Many curves and many files in the import dialog.
class tst_importselection : public QObject
{
    Q_OBJECT

private slots:
    void theMenuOfTheTable()
    {
        SelectionFixture f;
        QCOMPARE(f.checked(), QString("x-xx")); // the well has GR
        QCOMPARE(f.choose(""), (QStringList{"All", "None", "Invert", "Without Depth"}));
        QCOMPARE(f.checked(), QString("x-xx"));
        f.choose("Without Depth");
        QCOMPARE(f.checked(), QString("--xx"));
        f.choose("Invert");
        QCOMPARE(f.checked(), QString("xx--"));
        f.choose("All");
        QCOMPARE(f.checked(), QString("xxxx"));
        f.choose("None");
        QCOMPARE(f.checked(), QString("----"));
        f.choose("Without Depth");
        QCOMPARE(f.checked(), QString("----"));
    }

    void whatIsChosenIsImported()
    {
        SelectionFixture f;
        f.choose("None");
        f.choose("Invert");
        f.choose("Without Depth");
        f.asker.answers = {base::BoxButton::Yes};
        f.startImport();
        QCOMPARE(f.launch->catalogue.logNames(0), (QStringList{"GR", "CALI", "RT"}));
    }

    void aFileWithoutCurvesHasNoDepth()
    {
        ImportFixture f;
        f.choose({f.survey.filePath(QStringLiteral("las/missing.las"))});
        auto *table = f.find<QTableWidget>("curveTable");
        emit table->customContextMenuRequested(QPoint(5, 5));
        const QPointer<QMenu> menu = f.dialog->findChild<QMenu *>(QStringLiteral("curveSelectionMenu"));
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 3);
        for (QAction *action : menu->actions())
            action->trigger();
        delete menu;
    }

    void namesOfManyFilesStayWhole()
    {
        ImportFixture f;
        QStringList paths;
        for (int i = 0; i < 40; ++i)
            paths.append(f.write(QStringLiteral("a_well_with_a_long_name_%1.las").arg(i),
                                 ImportFixture::las("W-1", "100 1\n")));
        f.choose(paths);
        const auto *bar = f.find<QTabWidget>("fileTabs")->tabBar();
        QCOMPARE(bar->count(), 40);
        for (int tab = 0; tab < bar->count(); ++tab)
            QVERIFY(bar->tabRect(tab).width() > bar->fontMetrics().horizontalAdvance(bar->tabText(tab)));
        QCOMPARE(bar->tabToolTip(7), paths.at(7));
    }

    void progressWhileFilesLoad()
    {
        ImportFixture f;
        QStringList paths;
        for (int i = 0; i < 5; ++i)
            paths.append(f.write(QStringLiteral("%1.las").arg(i), ImportFixture::las("W-1", "100 1\n")));
        auto *bar = f.find<QProgressBar>("progressBar");
        QVector<int> values;
        connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
            values.append(value);
            if (value >= 1)
                QVERIFY(!f.button("importButton")->isEnabled()); // nothing else goes on meanwhile
        });
        f.choose(paths);
        QCOMPARE(values.mid(values.indexOf(1), 5), (QVector<int>{1, 2, 3, 4, 5}));
        QCOMPARE(bar->maximum(), 5);
        QVERIFY(f.button("importButton")->isEnabled());
        QVERIFY(f.find<QLabel>("statusLabel")->text().isEmpty());
        QCOMPARE(f.find<QTabWidget>("fileTabs")->count(), 5);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void closingEndsTheLoading()
    {
        ImportFixture f;
        QStringList paths;
        for (int i = 0; i < 5; ++i)
            paths.append(f.write(QStringLiteral("%1.las").arg(i), ImportFixture::las("W-1", "100 1\n")));
        auto *bar = f.find<QProgressBar>("progressBar");
        connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
            if (value == 2)
                f.dialog->close();
        });
        f.choose(paths);
        QVERIFY(!f.dialog->isVisible());
        QCOMPARE(f.find<QTabWidget>("fileTabs")->count(), 2);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // Events that are handled between two files may take the dialog along.
    void theDialogMayGoWhileFilesLoad()
    {
        ImportFixture f;
        const QStringList paths{f.write(QStringLiteral("a.las"), ImportFixture::las("W-1", "100 1\n")),
                                f.write(QStringLiteral("b.las"), ImportFixture::las("W-1", "100 1\n"))};
        auto *bar = f.find<QProgressBar>("progressBar");
        connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
            if (value == 1)
                QTimer::singleShot(0, this, [&f] { f.dialog.reset(); });
        });
        f.chosen = paths;
        f.dialog->selectLasFilesClicked();
        QVERIFY(!f.dialog);
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

LORVA_TEST_MAIN(tst_importselection)
#include "tst_importselection.moc"
