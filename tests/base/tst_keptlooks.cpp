#include "base/keptlooks.h"
#include "base/usersettings.h"
#include "support/testmain.h"

#include <QDialog>
#include <QDir>
#include <QHeaderView>
#include <QScreen>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <memory>

namespace {

struct Shown
{
    explicit Shown(const QString &name)
    {
        auto *page = new QVBoxLayout(&dialog);
        table = new QTableWidget(2, 3);
        page->addWidget(table);
        dialog.resize(300, 200);
        base::keepSize(&dialog, name);
        base::keepColumns(table->horizontalHeader(), name);
        dialog.show();
    }
    QVector<int> widths() const { return {table->columnWidth(0), table->columnWidth(1), table->columnWidth(2)}; }
    QDialog dialog;
    QTableWidget *table;
};

} // namespace

/// What windows keep of their looks between two openings.
class tst_keptlooks : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        for (const char *key : {"sizes/A", "columns/A", "sizes/B", "columns/B"})
            base::pluginSettings().setValue(QString::fromLatin1(key), QVariant());
    }

    void settingsAreThoseOfAProgram()
    {
        const base::UserSettings other(QStringLiteral("other"));
        QVERIFY(!other.value(QStringLiteral("k")).isValid());
        other.setValue(QStringLiteral("k"), 5);
        QCOMPARE(base::UserSettings(QStringLiteral("other")).value(QStringLiteral("k")).toInt(), 5);
        QVERIFY(!base::pluginSettings().value(QStringLiteral("k")).isValid());
        base::keepSettingsIn(m_elsewhere.path());
        QVERIFY(!other.value(QStringLiteral("k")).isValid());
        other.setValue(QStringLiteral("k"), 6);
        QVERIFY(!QDir(m_elsewhere.path()).isEmpty());
    }

    void sizesAreKept()
    {
        {
            Shown first(QStringLiteral("A"));
            QCOMPARE(first.dialog.size(), QSize(300, 200)); // none is known
            first.dialog.resize(420, 330);
            first.dialog.close();
        }
        const Shown second(QStringLiteral("A"));
        QCOMPARE(second.dialog.size(), QSize(420, 330));
        const Shown other(QStringLiteral("B"));
        QCOMPARE(other.dialog.size(), QSize(300, 200));
    }

    void aMaximizedDialogKeepsItsOtherSize()
    {
        {
            Shown first(QStringLiteral("A"));
            first.dialog.resize(410, 320);
            first.dialog.showMaximized();
            const bool isMaximized = QTest::qWaitFor([&first] { return first.dialog.width() > 420; });
            if (!isMaximized && QGuiApplication::platformName() == QLatin1String("xcb"))
                QSKIP("no window manager maximizes windows here");
            QVERIFY(isMaximized);
            first.dialog.close();
        }
        const Shown second(QStringLiteral("A"));
        QCOMPARE(second.dialog.size(), QSize(410, 320));
    }

    void aSizeBeyondTheScreenIsCut()
    {
        base::pluginSettings().setValue(QStringLiteral("sizes/A"), QSize(90000, 330));
        const Shown kept(QStringLiteral("A"));
        const QSize screen = kept.dialog.screen()->availableSize();
        QCOMPARE(kept.dialog.width(), screen.width() - 8); // a frame has room
        QCOMPARE(kept.dialog.height(), 330);
        // The size with which it begins as well.
        QDialog first;
        first.resize(500, 70000);
        base::keepSize(&first, QStringLiteral("B"));
        QCOMPARE(first.width(), 500);
        QVERIFY(first.height() < screen.height() - 8); // and a title
        QVERIFY(first.height() > screen.height() - 60);
    }

    // Those of the workbench's dialogs are none of the plug-in's.
    void sizesAreThoseOfAProgram()
    {
        const base::UserSettings other(QStringLiteral("another"));
        QDialog dialog;
        base::keepSize(&dialog, QStringLiteral("A"), other);
        dialog.show();
        dialog.resize(432, 321);
        dialog.close();
        QCOMPARE(other.value(QStringLiteral("sizes/A")).toSize(), QSize(432, 321));
        QVERIFY(!base::pluginSettings().value(QStringLiteral("sizes/A")).isValid());
    }

    void fileDialogsBeginWhereTheLastOneEnded()
    {
        const QString purpose = QStringLiteral("test");
        QCOMPARE(base::lastFolder(purpose), QDir::homePath());
        base::keepLastFolder(purpose, QStringLiteral("/some/where"));
        QCOMPARE(base::lastFolder(purpose), QStringLiteral("/some/where"));
        QCOMPARE(base::lastFolder(QStringLiteral("other")), QDir::homePath());
    }

    void columnsAreKept()
    {
        {
            Shown closed(QStringLiteral("A"));
            closed.table->setColumnWidth(0, 77);
            closed.table->setColumnWidth(2, 133);
            closed.dialog.close();
        }
        const Shown second(QStringLiteral("A"));
        QCOMPARE(second.widths().at(0), 77);
        QCOMPARE(second.widths().at(2), 133);
    }

    // Kept of a table with other columns, or by a hand that wrote nonsense.
    void columnsThatDoNotFit()
    {
        base::pluginSettings().setValue(QStringLiteral("columns/A"), QVariantList{50, 60});
        const Shown two(QStringLiteral("A"));
        QVERIFY(two.widths().at(0) != 50);
        base::pluginSettings().setValue(QStringLiteral("columns/B"), QVariantList{-5, QStringLiteral("x"), 66});
        const Shown odd(QStringLiteral("B"));
        QVERIFY(odd.widths().at(0) > 0);
        QVERIFY(odd.widths().at(1) > 0);
        QCOMPARE(odd.widths().at(2), 66);
    }

private:
    QTemporaryDir m_elsewhere;
};

LORVA_TEST_MAIN(tst_keptlooks)
#include "tst_keptlooks.moc"
