#include "displayfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QMenu>
#include <QScrollBar>

namespace {

const QByteArray gammaTrack = "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";

struct MenuFixture : DisplayFixture
{
    MenuFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {75, 75, 75, 75});
        addTrack(1, gammaTrack);
        addMarker(QStringLiteral("Upper"), 80);
        addMarker(QStringLiteral("Lower"), 82);
        show();
    }
    // A right click some rows below a marker, on the curve: the menu it shows.
    QMenu *rightClick(const MarkerItem &marker, int below, int x = 96) const
    {
        WellLogsView *view = display->logView();
        const QPoint place = view->mapFromScene(x, marker.y()) + QPoint(0, below);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &event);
        auto *menu = view->findChild<QMenu *>(QStringLiteral("logContextMenu"));
        if (!menu)
            qFatal("no menu");
        return menu;
    }
    static QStringList entries(const QMenu &menu)
    {
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts.append(action->text());
        return texts;
    }
    QStringList entriesOf(const MarkerItem &marker, int below, int x = 96) const
    {
        QMenu *menu = rightClick(marker, below, x);
        const QStringList texts = entries(*menu);
        delete menu;
        return texts;
    }
    void choose(QMenu *menu, const char *entry) const
    {
        for (QAction *action : menu->actions())
            if (action->text() == QLatin1String(entry))
                action->trigger();
        delete menu;
    }
    MarkerItem *pickAt(int row) const
    {
        WellLogsView *view = display->logView();
        view->startPicking();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(view->mapFromScene(96, 0).x(), row));
        return scene()->markers().last();
    }
    QStringList shown() const
    {
        QStringList names;
        for (const MarkerItem *marker : scene()->markers().all())
            names.append(marker->markerName());
        return names;
    }
};

} // namespace

/// What the right button and the panel do to the markers of a display.
class tst_markermenu : public QObject
{
    Q_OBJECT

private slots:
    void aMarkerIsTakenFourPixelsAway();
    void theNearestMarkerIsTaken();
    void theNameTakesTheMarkerToo();
    void aPickIsOfferedToBeSavedEverywhere();
    void theLastOfSeveralPicksIsSaved();
    void theMarkerUnderTheMouseIsSavedFirst();
    void aRenamedMarkerChangesItsLabelOnly();
    void aRenamedPickSaysNothing();
};

void tst_markermenu::aMarkerIsTakenFourPixelsAway()
{
    MenuFixture f;
    const MarkerItem *upper = f.showMarker(QStringLiteral("Upper"));
    const WellLogsView *view = f.display->logView();
    const double row = view->mapToScene(view->mapFromScene(96, upper->y())).y(); // a whole one; the marker's is not
    for (int below = -6; below <= 6; ++below) {
        const bool isTaken = qAbs(row + below - upper->y()) <= 4;
        QVERIFY(isTaken == (qAbs(below) < 4) || qAbs(below) == 4);
        QCOMPARE(f.entriesOf(*upper, below).last(), QString::fromLatin1(isTaken ? "Delete Marker" : "Delete Curve"));
    }
    QCOMPARE(f.entriesOf(*upper, 6, 30), (QStringList{"Pick Marker", "Delete Track"}));
    QCOMPARE(f.entriesOf(*upper, 3, f.scene()->sceneWidth() + 20), (QStringList{"Pick Marker"}));
    QVERIFY(f.scene()->selectedItems().isEmpty()); // looking changes nothing
}

void tst_markermenu::theNearestMarkerIsTaken()
{
    MenuFixture f;
    f.type(f.panel(), "scaleEdit", QStringLiteral("1500"));
    const MarkerItem *upper = f.showMarker(QStringLiteral("Upper"));
    const MarkerItem *lower = f.showMarker(QStringLiteral("Lower"));
    QVERIFY(lower->y() - upper->y() > 4 && lower->y() - upper->y() < 7); // the reaches of both overlap
    f.choose(f.rightClick(*lower, -1), "Delete Marker");
    QCOMPARE(f.shown(), QStringList("Upper"));
    f.showMarker(QStringLiteral("Lower"));
    f.choose(f.rightClick(*upper, 1), "Delete Marker");
    QCOMPARE(f.shown(), QStringList("Lower"));
}

void tst_markermenu::theNameTakesTheMarkerToo()
{
    MenuFixture f;
    const MarkerItem *upper = f.showMarker(QStringLiteral("Upper"));
    QCOMPARE(f.entriesOf(*upper, 2, -20), (QStringList{"Pick Marker", "Delete Marker"}));
    QCOMPARE(f.entriesOf(*upper, 9, -20), (QStringList{"Pick Marker"}));
}

void tst_markermenu::aPickIsOfferedToBeSavedEverywhere()
{
    MenuFixture f;
    const MarkerItem *upper = f.showMarker(QStringLiteral("Upper"));
    QCOMPARE(f.entriesOf(*upper, 20), (QStringList{"Pick Marker", "Delete Curve"}));
    MarkerItem *pick = f.pickAt(60);
    QCOMPARE(f.entriesOf(*upper, 60), (QStringList{"Pick Marker", "Save Picked Marker", "Delete Curve"}));
    QCOMPARE(f.entriesOf(*upper, 1), (QStringList{"Pick Marker", "Save Picked Marker", "Delete Marker"}));
    const QString name = pick->markerName();
    f.choose(f.rightClick(*upper, 100), "Save Picked Marker");
    QVERIFY(f.scene()->markers().unsaved().isEmpty());
    QVERIFY2(f.statusText().contains(name + QLatin1String("\" was saved")), qPrintable(f.statusText()));
    QCOMPARE(f.host.markers(f.wellKey).value.size(), 3);
    QCOMPARE(f.entriesOf(*upper, 60), (QStringList{"Pick Marker", "Delete Curve"}));
    QCOMPARE(f.entriesOf(*pick, 1), (QStringList{"Pick Marker", "Delete Marker"}));
}

void tst_markermenu::theLastOfSeveralPicksIsSaved()
{
    MenuFixture f;
    const MarkerItem *first = f.pickAt(60);
    const MarkerItem *second = f.pickAt(100);
    f.choose(f.rightClick(*second, 60), "Save Picked Marker");
    QCOMPARE(f.scene()->markers().unsaved().size(), 1);
    QCOMPARE(f.scene()->markers().unsaved().first(), first);
    f.choose(f.rightClick(*second, 60), "Save Picked Marker");
    QVERIFY(f.scene()->markers().unsaved().isEmpty());
}

void tst_markermenu::theMarkerUnderTheMouseIsSavedFirst()
{
    MenuFixture f;
    const MarkerItem *first = f.pickAt(60);
    const MarkerItem *second = f.pickAt(100);
    f.choose(f.rightClick(*first, 2), "Save Picked Marker");
    QCOMPARE(f.scene()->markers().unsaved().size(), 1);
    QCOMPARE(f.scene()->markers().unsaved().first(), second);
}

void tst_markermenu::aRenamedMarkerChangesItsLabelOnly()
{
    MenuFixture f;
    MarkerItem *upper = f.showMarker(QStringLiteral("Upper"));
    const QVector<host::Marker> stored = f.host.markers(f.wellKey).value;
    f.type(f.panelOf(upper), "markerNameEdit", QStringLiteral("Upper")); // only visited
    QCOMPARE(f.statusText(), QString());
    f.type(f.panelOf(upper), "markerNameEdit", QStringLiteral("Top of it"));
    QCOMPARE(upper->markerName(), QString("Top of it"));
    QCOMPARE(f.statusText(),
             QString("Only the label in this display changed: the marker keeps its name in the well W."));
    const QVector<host::Marker> after = f.host.markers(f.wellKey).value;
    QCOMPARE(after.size(), stored.size());
    QCOMPARE(after.first().name, QString("Upper"));
}

void tst_markermenu::aRenamedPickSaysNothing()
{
    MenuFixture f;
    MarkerItem *pick = f.pickAt(60);
    f.type(f.panelOf(pick), "markerNameEdit", QStringLiteral("Mine"));
    QCOMPARE(f.statusText(), QString());
    f.choose(f.rightClick(*pick, 0), "Save Picked Marker");
    f.type(f.panelOf(pick), "markerNameEdit", QStringLiteral("Other"));
    QVERIFY(f.statusText().startsWith(QLatin1String("Only the label"))); // it is one of the well now
}

LORVA_TEST_MAIN(tst_markermenu)
#include "tst_markermenu.moc"
