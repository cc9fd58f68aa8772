#include "base/usersettings.h"

#include "support/failingdisk.h"
#include "support/files.h"

#include <QSize>
#include <QTemporaryDir>
#include <QTest>

using base::UserSettings;

class TestUserSettings : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        base::keepSettingsIn(m_folder->path());
    }
    void valuesComeBack_data();
    void valuesComeBack();
    void programsHaveTheirOwn();
    void whatIsNoSettingIsPassedOver();
    void aDiskThatFailsLosesNothing_data();
    void aDiskThatFailsLosesNothing();
    void leftoversGo();

private:
    QString file(const char *name) const
    {
        return m_folder->filePath(QStringLiteral("LORVA/") + QLatin1String(name));
    }
    std::unique_ptr<QTemporaryDir> m_folder;
    const UserSettings m_settings{QStringLiteral("p")};
};

void TestUserSettings::valuesComeBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("size") << "sizes/a" << QVariant(QSize(3, 4));
    QTest::newRow("list") << "a list" << QVariant(QVariantList{1, 2});
    QTest::newRow("texts") << QString::fromUtf8("å=b\nc") << QVariant(QStringList{"/a b", "c=d\n"});
    QTest::newRow("bytes") << "%3D" << QVariant(QByteArray("\0\n=", 3));
    QTest::newRow("yes") << "a/b/c" << QVariant(true);
}

void TestUserSettings::valuesComeBack()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    m_settings.setValue("before", 1);
    m_settings.setValue(key, "old");
    m_settings.setValue(key, value);
    m_settings.setValue("zzz behind", 2);
    QCOMPARE(m_settings.value(key), value);
    QCOMPARE(m_settings.value(key).type(), value.type());
    QCOMPARE(m_settings.value("before").toInt(), 1);
    QCOMPARE(m_settings.value("zzz behind").toInt(), 2);
    QVERIFY(!m_settings.value("other").isValid());
}

void TestUserSettings::programsHaveTheirOwn()
{
    m_settings.setValue("a", 1);
    QVERIFY(!UserSettings("other").value("a").isValid());
    UserSettings("other").setValue("a", 2);
    QCOMPARE(m_settings.value("a").toInt(), 1);
}

void TestUserSettings::whatIsNoSettingIsPassedOver()
{
    m_settings.setValue("a", 1);
    const QByteArray line = files::read(file("p.conf"));
    files::write(file("p.conf"), "[General]\nb=@Size(3 4)\nc\n" + line.mid(1) + "\xFF\xFE=AAAA\n" + line + "e=");
    QCOMPARE(m_settings.value("a").toInt(), 1);
    for (const char *key : {"b", "c", "", "e", "General"})
        QVERIFY(!m_settings.value(key).isValid());
    m_settings.setValue("b", 2);
    QCOMPARE(m_settings.value("a").toInt(), 1);
    QCOMPARE(m_settings.value("b").toInt(), 2);
}

void TestUserSettings::aDiskThatFailsLosesNothing_data()
{
    QTest::addColumn<int>("step");
    for (const FailingStep &failing : failingSteps)
        if (failing.step != FailingDisk::Flush) // they are not flushed
            QTest::newRow(failing.name) << static_cast<int>(failing.step);
}

void TestUserSettings::aDiskThatFailsLosesNothing()
{
    QFETCH(int, step);
    m_settings.setValue("a", "first");
    const auto before = files::snapshot(m_folder->path());
    {
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        const base::ScopedFileSystemCalls calls(disk);
        m_settings.setValue("a", "second");
    }
    QCOMPARE(files::snapshot(m_folder->path()), before);
    QCOMPARE(m_settings.value("a").toString(), QString("first"));
    m_settings.setValue("a", "third");
    QCOMPARE(m_settings.value("a").toString(), QString("third"));
}

void TestUserSettings::leftoversGo()
{
    files::write(file(".lorva-abcDEF"), "half");
    m_settings.setValue("a", 1);
    QCOMPARE(files::snapshot(m_folder->path()).keys(), QStringList({"LORVA/", "LORVA/p.conf"}));
}

QTEST_GUILESS_MAIN(TestUserSettings)
#include "tst_usersettings.moc"
