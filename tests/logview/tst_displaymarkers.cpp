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

private:
    MarkerItem *add(const char *name) const
    {
        auto *marker = new MarkerItem;
        marker->setMarkerName(QString::fromLatin1(name));
        m_markers->add(marker);
        return marker;
    }
    std::unique_ptr<QGraphicsScene> m_scene;
    std::unique_ptr<DisplayMarkers> m_markers;
};

LORVA_TEST_MAIN(TestDisplayMarkers)
#include "tst_displaymarkers.moc"
