// The same contract on surveys whose depths are in feet, and what the host's library has then.

#include "opendtectcontract.h"

class tst_opendtecthostfeet : public OpendTectContract
{
    Q_OBJECT

protected:
    bool isInFeet() const override { return true; }

private slots:
    void theHostHasFeetAndTheInterfaceMetres()
    {
        host::WellHeader header;
        header.name = "A";
        header.kbElevation = 30.48f;
        header.groundElevation = 15.24f;
        header.totalDepth = 2133.6;
        const QString key = addWell(header);
        QVERIFY(wells().writeLog(key, {"GR", "gAPI", {30.48f, 304.8f, 2133.6f}, {1, 2, 3}}).ok());
        QVERIFY(wells().writeMarkers(key, {{"Top", 304.8f, Qt::red}, {"Base", 2133.6f, Qt::red}}).ok());
        QCOMPARE(markerNames(key), (QStringList{"Top", "Base"}));
        const odsurvey::Well stored = odsurvey::readAll().first();
        QCOMPARE(stored.header.kbElevation, 100.0f);
        QCOMPARE(stored.header.groundElevation, 50.0f);
        QCOMPARE(stored.header.totalDepth, 7000.0);
        QCOMPARE(stored.logs.first().depths, (QVector<float>{100, 1000, 7000}));
        QCOMPARE(stored.markers.first().depth, 1000.0f);
    }

    void aMarkerThatStaysKeepsItsDepthInFeet()
    {
        odsurvey::Well well;
        well.header.name = "A";
        well.track = {{1, 1, 0, 0}, {1, 1, 9000, 9000}};
        for (int i = 0; i < 50; ++i)
            well.markers.append({QString::number(i), 7000.123f + 0.4071f * static_cast<float>(i), Qt::red});
        const QString key = odsurvey::add(well);
        const QVector<host::Marker> before = odsurvey::readAll().first().markers;
        QVector<host::Marker> markers = wells().markers(key).value;
        markers.prepend({"New", 30.48f, Qt::red});
        QVERIFY(wells().writeMarkers(key, markers).ok());
        const QVector<host::Marker> after = odsurvey::readAll().first().markers;
        QCOMPARE(after.size(), 51);
        for (int i = 0; i < before.size(); ++i)
            QVERIFY(after.at(i + 1).depth == before.at(i).depth);
    }
};

OD_TEST_MAIN(tst_opendtecthostfeet)
#include "tst_opendtecthostfeet.moc"
