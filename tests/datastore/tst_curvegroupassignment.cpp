#include "datastore/curvegroupassignment.h"

#include "base/filesystemcalls.h"
#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "support/badbytes.h"
#include "support/failingdisk.h"
#include "support/files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The lists of groups and zone types, and which group a log name has.
class tst_curvegroupassignment : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        CurveGroupTable::instance().clear();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("CurveGroups"));
    }

    void theGroupsAreTheseInThisOrder()
    {
        QCOMPARE(curveGroupNames().join(';'),
                 QString("None;Depth;Sonic;Resistivity;Gamma;Caliper;Sp;Porosity;Density;Impedance;Shale Volume;"
                         "Effective Porosity;Water Saturation;Shear Modulus;Lames Modulus;Poisons Ratio;"
                         "Youngs Modulus;Overburden Pressure;Pore Pressure;Horizontal Stress;Rock Strength;Others"));
        QCOMPARE(curveGroupNames().size(), 22);
    }

    void theZoneTypesAreTheseInThisOrder()
    {
        QCOMPARE(zoneTypeNames().join(';'), QString("Oil;Gas;Water;Dry;Oil-Gas;Oil-Water;Gas-Water;Not Tested"));
    }

    void theTableComesFirst()
    {
        CurveGroupTable::instance().set("GR", "Sonic");
        files::write(path("Gamma.txt"), "GR\n");
        QCOMPARE(findCurveGroup(m_folder->path(), "GR"), QString("Sonic"));
    }

    void thenTheFirstGroupFileInGroupOrder()
    {
        files::write(path("Others.txt"), "X\nY\nW");
        files::write(path("Gamma.txt"), "X\nY");
        files::write(path("Sonic.txt"), "X");
        files::write(path("Another.txt"), "Z");
        files::write(path("None.txt"), "W");
        QCOMPARE(findCurveGroup(m_folder->path(), "X"), QString("Sonic"));
        QCOMPARE(findCurveGroup(m_folder->path(), "Y"), QString("Gamma"));
        QCOMPARE(findCurveGroup(m_folder->path(), "W"), QString("None"));
        QCOMPARE(findCurveGroup(m_folder->path(), "Z"), QString("Others")); // no group of ours
    }

    void elseOthers()
    {
        QCOMPARE(findCurveGroup(m_folder->path(), "GR"), QString("Others"));
        QCOMPARE(findCurveGroup(m_folder->filePath("no such project"), "GR"), QString("Others"));
        files::write(path("Gamma.txt"), "gr\nGR1\nXGR\n");
        QCOMPARE(findCurveGroup(m_folder->path(), "GR"), QString("Others"));
    }

    void aGroupFromTheTableIsTextWhateverItIs()
    {
        CurveGroupTable::instance().set("GR", "../x");
        QCOMPARE(findCurveGroup(m_folder->path(), "GR"), QString("../x"));
    }

    void anEntryWithoutAGroupIsNone()
    {
        CurveGroupTable::instance().set("GR", "");
        files::write(path("Gamma.txt"), "GR\n");
        QCOMPARE(findCurveGroup(m_folder->path(), "GR"), QString("Gamma"));
    }

    void anAssignmentSetsGroupFileAndTable()
    {
        files::write(path("Gamma.txt"), "GR");
        files::write(path("CurveGroupTable.txt"), "DT | Sonic\n");
        assignCurveGroup(m_folder->path(), "GAM", "Gamma");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\nGAM\n"));
        QCOMPARE(files::read(path("CurveGroupTable.txt")), QByteArray("DT | Sonic\nGAM | Gamma\n"));
        QCOMPARE(findCurveGroup(m_folder->path(), "GAM"), QString("Gamma"));
    }

    void aLaterAssignmentReplacesTheEntryAndKeepsTheGroupFile()
    {
        assignCurveGroup(m_folder->path(), "X", "Gamma");
        assignCurveGroup(m_folder->path(), " X ", "Sonic");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("X\n"));
        QCOMPARE(files::read(path("Sonic.txt")), QByteArray("X\n"));
        QCOMPARE(files::read(path("CurveGroupTable.txt")), QByteArray("X | Sonic\n"));
        QCOMPARE(findCurveGroup(m_folder->path(), "X"), QString("Sonic"));
    }

    void namesThatNoLineHoldsAreOneNameEverywhere()
    {
        assignCurveGroup(m_folder->path(), " G|Density\n", "Gamma");
        QCOMPARE(files::read(path("CurveGroupTable.txt")), QString("G\u00A6Density | Gamma\n").toUtf8());
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("G|Density\n"));
        assignCurveGroup(m_folder->path(), QString("G\u00A6Density"), "Gamma");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("G|Density\n"));
        CurveGroupTable::instance().clear(); // only the group file is left
        for (const QString &name : {QString("G|Density"), QString("G\u00A6Density"), QString("\tG|Density ")})
            QCOMPARE(findCurveGroup(m_folder->path(), name), QString("Gamma"));
        QCOMPARE(findCurveGroup(m_folder->path(), "G"), QString("Others"));
    }

    void theAssignmentWinsOverTheTableFile()
    {
        files::write(path("CurveGroupTable.txt"), "X | Gamma\n");
        assignCurveGroup(m_folder->path(), "X", "Sonic");
        QCOMPARE(files::read(path("CurveGroupTable.txt")), QByteArray("X | Sonic\n"));
    }

    void noneWritesNothing()
    {
        const auto before = files::snapshot(m_folder->path());
        assignCurveGroup(m_folder->path(), "GR", "None");
        assignCurveGroup(m_folder->path(), "GR", "");
        QCOMPARE(CurveGroupTable::instance().size(), 0);
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void aGroupNameIsNoPath()
    {
        files::write(m_folder->filePath("x.txt"), "another");
        for (const QString &group : badbytes::names())
            assignCurveGroup(m_folder->path(), "LOG", group);
        QCOMPARE(files::read(m_folder->filePath("x.txt")), QByteArray("another"));
        // All but the empty one, which assigns nothing, and the table.
        QCOMPARE(QDir(path("")).entryList(QDir::Files | QDir::Hidden).size(), badbytes::names().size());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({"CurveGroups", "x.txt"}));
    }

    void aFailingDiskIsSilent()
    {
        files::write(path("Gamma.txt"), "GR");
        files::write(path("CurveGroupTable.txt"), "DT | Sonic\n");
        const auto before = files::snapshot(m_folder->path());
        FailingDisk disk(FailingDisk::HalfWrite);
        {
            const base::ScopedFileSystemCalls scope(disk);
            assignCurveGroup(m_folder->path(), "GAM", "Gamma");
        }
        QVERIFY(files::snapshot(m_folder->path()) == before);
        QCOMPARE(findCurveGroup(m_folder->path(), "GAM"), QString("Gamma")); // as long as the process lives
    }

private:
    QString path(const QString &file) const { return m_folder->filePath("CurveGroups/" + file); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_curvegroupassignment)
#include "tst_curvegroupassignment.moc"
