#include "logview/markersaving.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

class tst_markersaving : public QObject
{
    Q_OBJECT

private slots:
    void theOthersKeepTheirStoredDepths();
    void aTakenNameIsNotTakenAgain();
    void aSetThatCannotBeReadIsNotReplaced();
    void aFailedWriteKeepsTheSet();
    void markersThatWouldBeLostStayAfterANo();
    void aMarkerWithoutAName();
    void aWellThatIsGone();
};

void tst_markersaving::theOthersKeepTheirStoredDepths()
{
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top"), QStringLiteral("Base")});
    f.open();
    QCOMPARE(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("New_0"), 200.1F, QColor(9, 8, 7)}),
             QString("New_0"));
    const QVector<host::Marker> markers = f.host.markers(key).value;
    QCOMPARE(markers.size(), 3);
    QCOMPARE(markers.at(0).name, QString("Top"));
    QCOMPARE(markers.at(0).depth, 150.0F); // no elevation was taken off
    QCOMPARE(markers.at(0).color, QColor(10, 20, 30));
    QCOMPARE(markers.at(1).name, QString("New_0"));
    QCOMPARE(markers.at(1).depth, 200.1F);
    QCOMPARE(markers.at(1).color, QColor(9, 8, 7));
    QCOMPARE(markers.at(2).depth, 250.0F);
}

void tst_markersaving::aTakenNameIsNotTakenAgain()
{
    QCOMPARE(freeMarkerName(QStringLiteral("A"), {}), QString("A"));
    QCOMPARE(freeMarkerName(QStringLiteral("A"), {QStringLiteral("A"), QStringLiteral("A_1")}), QString("A_2"));
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
    f.open();
    QCOMPARE(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("Top"), 700, Qt::black}),
             QString("Top_1"));
    QCOMPARE(f.host.markers(key).value.size(), 2);
}

void tst_markersaving::aSetThatCannotBeReadIsNotReplaced()
{
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
    f.open();
    f.host.find(key)->isUnreadable = true;
    QVERIFY(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("New_0"), 700, Qt::black}).isNull());
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY(f.asker.boxes.first().text.contains(QLatin1String("the well A")));
    f.host.find(key)->isUnreadable = false;
    QCOMPARE(f.host.markers(key).value.size(), 1);
}

void tst_markersaving::aFailedWriteKeepsTheSet()
{
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
    f.open();
    f.host.markerWritesFail = true;
    QVERIFY(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("New_0"), 700, Qt::black}).isNull());
    QCOMPARE(f.host.errors.size(), 1);
    QCOMPARE(f.host.markers(key).value.size(), 1);
}

void tst_markersaving::markersThatWouldBeLostStayAfterANo()
{
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
    f.open();
    f.host.find(key)->hiddenMarkers = QStringList{QStringLiteral("Deep")};
    f.asker.answers = {base::BoxButton::No};
    QVERIFY(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("New_0"), 700, Qt::black}).isNull());
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY(f.asker.boxes.first().text.contains(QLatin1String("\nDeep\n")));
    QCOMPARE(f.host.markers(key).value.size(), 1);
    QCOMPARE(f.host.find(key)->hiddenMarkers.size(), 1);
}

void tst_markersaving::aMarkerWithoutAName()
{
    ProjectFixture f;
    const QString key = f.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
    f.open();
    QVERIFY(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("  "), 700, Qt::black}).isNull());
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.host.markers(key).value.size(), 1);
    QCOMPARE(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral(" B "), 700, Qt::black}), QString("B"));
}

void tst_markersaving::aWellThatIsGone()
{
    ProjectFixture f;
    f.open();
    QVERIFY(savePickedMarker(*f.launch, QStringLiteral("A"), {QStringLiteral("New_0"), 700, Qt::black}).isNull());
    QCOMPARE(f.asker.boxes.size(), 1);
}

LORVA_TEST_MAIN(tst_markersaving)
#include "tst_markersaving.moc"
