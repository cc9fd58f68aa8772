#include "correlation/correlationwellstable.h"
#include "correlationfixture.h"
#include "support/testmain.h"

#include <QTest>

/// The rows that "+" adds.
class tst_correlationwellstable : public QObject
{
    Q_OBJECT

private slots:
    // A section is built with one click a well.
    void furtherWellsAreOthers()
    {
        CorrelationFixture fixture;
        files::write(fixture.path(QStringLiteral("/Templates/B/Own of B/Track_1.txt")),
                     CorrelationFixture::depthTrack);
        fixture.openAt96Dots();
        CorrelationWellsTable table(*fixture.launch);
        const auto rows = [&table] {
            QStringList texts;
            for (const CorrelationWell &well : table.wells())
                texts.append(well.wellName + ':' + well.templateName);
            return texts;
        };
        table.addNextWell();
        CorrelationFixture::chooser(&table, 0, 1)->setCurrentText("T");
        table.addNextWell();
        QCOMPARE(rows(), QStringList({"A:T", "B:T"}));
        CorrelationFixture::chooser(&table, 1, 1)->setCurrentText("Simple");
        table.addNextWell();
        QCOMPARE(rows().at(2), QString("C:Simple"));
        table.removeWell();
        CorrelationFixture::chooser(&table, 1, 1)->setCurrentText("Own of B");
        CorrelationFixture::chooser(&table, 0, 0)->setCurrentText("C");
        table.addNextWell();
        const QString first = CorrelationFixture::chooser(&table, 2, 1)->itemText(0);
        QCOMPARE(rows(), QStringList({"C:T", "B:Own of B", "A:" + first})); // which has no such template
        table.addNextWell(); // all are there
        QCOMPARE(rows().at(3), "A:" + first);
        table.addWell({QStringLiteral("None"), QStringLiteral("None")}); // as a file may say
        QCOMPARE(rows().at(4), "A:" + first);
    }

    // Of sixty wells a section takes neighbours: the next one stands behind that of the row above.
    void theNextWellStandsBehindTheOneAbove()
    {
        CorrelationFixture fixture;
        fixture.openAt96Dots();
        CorrelationWellsTable table(*fixture.launch);
        const auto wells = [&table] {
            QStringList names;
            for (const CorrelationWell &well : table.wells())
                names.append(well.wellName);
            return names;
        };
        table.addNextWell();
        CorrelationFixture::chooser(&table, 0, 0)->setCurrentText("B");
        table.addNextWell();
        QCOMPARE(wells(), QStringList({"B", "C"}));
        table.addNextWell(); // behind the last one comes the first
        QCOMPARE(wells(), QStringList({"B", "C", "A"}));
    }
};

LORVA_TEST_MAIN(tst_correlationwellstable)
#include "tst_correlationwellstable.moc"
