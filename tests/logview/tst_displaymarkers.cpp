#include "logview/displaymarkers.h"
#include "logview/markeritem.h"
#include "support/testmain.h"

#include <QGraphicsScene>

/// Markers are found by the names that they have now.
class TestDisplayMarkers : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_scene = std::make_unique<QGraphicsScene>();
        m_markers = std::make_unique<DisplayMarkers>(m_scene.get());
    }

    void byName()
    {
        QVERIFY(!m_markers->find("A"));
        MarkerItem *a = add("A");
        MarkerItem *b = add("B");
        QCOMPARE(m_markers->find("A"), a);
        QCOMPARE(m_markers->findStored("B"), b);
        QVERIFY(!m_markers->find("a"));
        m_markers->destroy(a);
        QVERIFY(!m_markers->find("A"));
        QCOMPARE(m_markers->find("B"), b);
        m_markers->forgetAll();
        QVERIFY(!m_markers->find("B"));
    }

    void afterARename()
    {
        MarkerItem *a = add("A");
        a->setMarkerName("B");
        QVERIFY(!m_markers->find("A"));
        QCOMPARE(m_markers->find("B"), a);
        a->setLineThickness(3); // another change
        QCOMPARE(m_markers->find("B"), a);
        m_markers->destroy(a);
        QVERIFY(!m_markers->find("B"));
    }

    void theFirstOfSeveral()
    {
        MarkerItem *first = add("A");
        MarkerItem *second = add("A");
        QCOMPARE(m_markers->find("A"), first);
        first->setMarkerName("B");
        QCOMPARE(m_markers->find("A"), second);
        first->setMarkerName("A");
        QCOMPARE(m_markers->find("A"), first); // it still stands before the other
        m_markers->destroy(first);
        QCOMPARE(m_markers->find("A"), second);
    }

    void pickedMarkersAreNotStored()
    {
        MarkerItem *picked = m_markers->pick("W");
        QCOMPARE(m_markers->find("New_0"), picked);
        QVERIFY(!m_markers->findStored("New_0"));
        MarkerItem *stored = add("New_0");
        QCOMPARE(m_markers->find("New_0"), picked);
        QCOMPARE(m_markers->findStored("New_0"), stored);
        m_markers->setSaved(picked);
        QCOMPARE(m_markers->findStored("New_0"), picked);
    }

    // The lines stay at their depths.
    void crowdedNamesMoveApart()
    {
        MarkerItem *a = add("A", 100);
        QCOMPARE(a->nameShift(), 0.0);
        MarkerItem *b = add("B", 100);
        MarkerItem *far = add("Far", 300);
        QVERIFY(a->nameShift() < 0);
        QCOMPARE(b->nameShift(), -a->nameShift());
        QCOMPARE(far->nameShift(), 0.0);
        QCOMPARE(a->y(), 100.0);
        m_markers->place(b, 200);
        QCOMPARE(a->nameShift(), 0.0);
        QCOMPARE(b->nameShift(), 0.0);
        m_markers->place(b, 300);
        QVERIFY(far->nameShift() != 0.0);
        m_markers->destroy(b);
        QCOMPARE(far->nameShift(), 0.0);
        // Ten metres are 30 pixels on the one axis, none on the other.
        a->setDepth(10);
        far->setDepth(20);
        const auto depth = [](const MarkerItem &marker) { return double(marker.depth()); };
        m_markers->placeInside({0, 1000, 1}, depth);
        QVERIFY(a->nameShift() < 0);
        m_markers->placeInside({0, 1000, 3000}, depth);
        QCOMPARE(a->nameShift(), 0.0);
        m_markers->placeOrDrop({0, 1000, 1}, depth);
        QVERIFY(a->nameShift() < 0);
        m_markers->placeOrDrop({0, 15, 1}, depth); // the other one goes
        QCOMPARE(a->nameShift(), 0.0);
    }

    void aLongerNameNeedsMoreRoom()
    {
        MarkerItem *a = add("A", 100);
        add("B", 130);
        QCOMPARE(a->nameShift(), 0.0);
        a->setMarkerName("A name of several words that stands in a narrow box, broken into lines");
        QVERIFY(a->nameShift() < 0);
    }

    void aNameWithoutRoomIsToldUnderTheMouse()
    {
        for (int i = 0; i < 30; ++i)
            add(i == 29 ? "<b>Last</b>" : "T", 100);
        MarkerItem *last = m_markers->find("<b>Last</b>");
        QVERIFY(!last->isNameShown());
        QVERIFY(last->toolTip().contains(QLatin1String("&lt;b&gt;Last")));
        m_markers->place(last, 500);
        QVERIFY(last->isNameShown());
        QVERIFY(last->toolTip().isEmpty());
    }

    // The box of a long name is narrow and low.
    void aNameThatIsCutIsToldUnderTheMouse()
    {
        const MarkerItem *whole = add("Upper sand one two three", 100);
        const MarkerItem *high =
            add("A name of several words, <b>many</b> more than stand in the box of a name", 300);
        const MarkerItem *broad = add("Anamethatisonewordandbroaderthanitsbox", 500);
        QVERIFY(whole->isNameShown() && whole->toolTip().isEmpty());
        QVERIFY(high->isNameShown());
        QVERIFY(high->toolTip().contains(QLatin1String("&lt;b&gt;many")));
        QVERIFY(broad->toolTip().contains(broad->markerName()));
    }

    void manyChangesPlaceTheNamesOnce()
    {
        m_markers->beginChanges();
        m_markers->beginChanges();
        const MarkerItem *a = add("A", 100);
        add("B", 100);
        m_markers->endChanges();
        QCOMPARE(a->nameShift(), 0.0);
        m_markers->endChanges();
        QVERIFY(a->nameShift() < 0);
    }

private:
    MarkerItem *add(const char *name, double y = 0) const
    {
        auto *marker = new MarkerItem;
        marker->setPos(0, y);
        marker->setMarkerName(QString::fromLatin1(name));
        m_markers->add(marker);
        return marker;
    }
    std::unique_ptr<QGraphicsScene> m_scene;
    std::unique_ptr<DisplayMarkers> m_markers;
};

LORVA_TEST_MAIN(TestDisplayMarkers)
#include "tst_displaymarkers.moc"
