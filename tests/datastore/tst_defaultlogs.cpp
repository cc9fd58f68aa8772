#include "defaultlogsfixture.h"
#include "support/badbytes.h"

class tst_defaultlogs : public QObject
{
    Q_OBJECT

private slots:
    void aLogIsClassifiedByItsUnit()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        files::write(survey.path("CurveGroups/Gamma.txt"), "GAMMA");
        survey.run();
        QCOMPARE(survey.table(), QByteArray("GR | Gamma\n"));
        QCOMPARE(survey.group("Gamma"), QByteArray("GAMMA\nGR\n"));
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|GR\n"));
    }

    void aListedNameIsNotAppendedAgain()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        files::write(survey.path("CurveGroups/Gamma.txt"), "GR");
        survey.run();
        QCOMPARE(survey.group("Gamma"), QByteArray("GR"));
    }

    void theTableWinsOverTheUnit()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "GR | Sonic\n");
        survey.run();
        QCOMPARE(survey.table(), QByteArray("GR | Sonic\n"));
        QCOMPARE(survey.group("Sonic"), QByteArray("GR\n"));
        QVERIFY(!QFile::exists(survey.path("CurveGroups/Gamma.txt")));
        QCOMPARE(survey.defaults("W"), QByteArray("W\nSonic|GR\n"));
    }

    void othersIsClassifiedAgainAtEveryPass()
    {
        Survey survey;
        const QString key = survey.addWell("W", {{"TENS", "lbs"}});
        survey.run();
        QCOMPARE(survey.table(), QByteArray("TENS | Others\n"));
        QCOMPARE(survey.group("Others"), QByteArray("TENS\n"));
        QCOMPARE(survey.defaults("W"), QByteArray("W\nOthers|TENS\n"));
        survey.host.find(key)->logs[0].unit = "mv";
        survey.run();
        QCOMPARE(survey.table(), QByteArray("TENS | Sp\n"));
        QCOMPARE(survey.group("Sp"), QByteArray("TENS\n"));
        QCOMPARE(survey.group("Others"), QByteArray("TENS\n")); // group files only grow
        QCOMPARE(survey.defaults("W"), QByteArray("W\nOthers|TENS\n"));
        survey.host.find(key)->logs[0].unit = "us/ft"; // no longer "Others": stays
        survey.run();
        QCOMPARE(survey.table(), QByteArray("TENS | Sp\n"));
    }

    void theFirstUnitOfANameDecides()
    {
        Survey survey;
        survey.addWell("A", {{"X", "strange"}});
        survey.addWell("B", {{"X", "gapi"}});
        survey.addWell("C", {{"X", "mv"}});
        survey.run();
        QCOMPARE(survey.table(), QByteArray("X | Gamma\n"));
        QCOMPARE(survey.group("Others"), QByteArray("X\n"));
        QCOMPARE(survey.group("Gamma"), QByteArray("X\n"));
        QCOMPARE(survey.defaults("A"),
                 QByteArray("A\nGamma|X\n")); // the files are made after all logs are classified
    }

    void onlyTheFirstLogOfAGroupIsADefault()
    {
        Survey survey;
        survey.addWell("W", {{"LLS", "ohmm"}, {"GR", "gapi"}, {"LLD", "ohmm"}, {"ECGR", "api"}, {"DT", "us/f"}});
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\nResistivity|LLS\nGamma|GR\nSonic|DT\n"));
        QCOMPARE(survey.group("Resistivity"), QByteArray("LLS\nLLD\n"));
    }

    void groupsAreComparedWithoutCaseAndWrittenAsTheTableHasThem()
    {
        Survey survey;
        survey.addWell("W", {{"GR", ""}, {"GR1", "gapi"}, {"X", ""}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "GR | gAMMA\nX | My Group\n");
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\ngAMMA|GR\n"));
        QCOMPARE(survey.group("gAMMA"), QByteArray("GR\n"));
        QCOMPARE(survey.group("My Group"), QByteArray("X\n"));
    }

    void anExistingFileIsLeftUntouched()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        survey.addWell("B", {{"GR", "gapi"}});
        survey.addWell("C", {{"GR", "gapi"}});
        files::write(survey.path("DefaultLogs/A.txt"), "anything");
        files::write(survey.path("DefaultLogs/B.txt"), "");
        QVERIFY(QFile::link("/no such file", survey.path("DefaultLogs/C.txt")));
        survey.run();
        QCOMPARE(survey.defaults("A"), QByteArray("anything"));
        QCOMPARE(survey.defaults("B"), QByteArray());
        QCOMPARE(QFileInfo(survey.path("DefaultLogs/C.txt")).symLinkTarget(), QString("/no such file"));
    }

    void laterLogsDoNotDisplaceADefault()
    {
        Survey survey;
        const QString key = survey.addWell("W", {{"ECGR", "gapi"}});
        survey.run();
        survey.host.find(key)->logs.prepend({"GR", "gapi", {1}, {2}});
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|ECGR\n"));
        QCOMPARE(survey.group("Gamma"), QByteArray("ECGR\nGR\n"));
    }

    void aWellWithoutLogsGetsItsNameOnly()
    {
        Survey survey;
        survey.addWell("W", {});
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\n"));
        QCOMPARE(survey.table(), QByteArray());
    }

    void ofTwoWellsWithOneNameTheFirstIsTaken()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        survey.addWell("W", {{"DT", "us/f"}});
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|GR\n"));
    }

    void aSurveyWithoutWellsGetsAnEmptyTable()
    {
        Survey survey;
        survey.run();
        QCOMPARE(files::snapshot(survey.path("CurveGroups")).keys(), QStringList("CurveGroupTable.txt"));
        QCOMPARE(survey.table(), QByteArray());
    }

    void anEntryWithoutAGroupCountsAsAbsent()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "GR | \n");
        survey.run();
        QCOMPARE(survey.table(), QByteArray("GR | Gamma\n"));
    }

    void theGroupsOwnSpellingAndAnotherAreOneGroup()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}, {"GR1", ""}, {"DT", "us/f"}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "GR1 | gamma\n");
        survey.run();
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|GR\nSonic|DT\n"));
        QCOMPARE(survey.group("Gamma"), QByteArray("GR\n"));
        QCOMPARE(survey.group("gamma"), QByteArray("GR1\n"));
    }

    void theGroupNoneHasNoFile()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "GR | None\n");
        survey.run();
        QVERIFY(!QFile::exists(survey.path("CurveGroups/None.txt")));
        QCOMPARE(survey.defaults("W"), QByteArray("W\nNone|GR\n"));
    }

    void theTableKeepsWhatItHasFromEarlierLaunches()
    {
        Survey first;
        first.addWell("W", {{"X", "gapi"}});
        first.run();
        QTemporaryDir folder;
        first.host.changeSurvey(folder.path()); // another survey in the same process
        first.host.find("100050.2")->logs[0].unit = "mv";
        openProject(first.host, &first.data.project);
        first.run();
        QCOMPARE(first.table(), QByteArray("X | Gamma\n"));
    }

    void hostileWellNamesStayInTheFolder()
    {
        Survey survey;
        for (const QString &name : badbytes::names())
            survey.addWell(name, {{"GR", "gapi"}});
        survey.run();
        QCOMPARE(QDir(survey.path("DefaultLogs")).entryList(QDir::Files | QDir::Hidden).size(),
                 badbytes::names().size());
        QCOMPARE(QDir(survey.root.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("WLC"));
        QCOMPARE(survey.defaults("15%2F9-F-1"), QByteArray("15/9-F-1\nGamma|GR\n"));
        for (const QString &name : badbytes::names()) {
            const DefaultLogs read = readDefaultLogs(survey.data.project.projectFolder, name);
            QCOMPARE(read.groups, QStringList("Gamma"));
            QCOMPARE(read.logs, QStringList("GR"));
        }
    }

    void hostileLogNamesDoNotPileUp()
    {
        Survey survey;
        QVector<Log> logs{{"A\nB", "gapi"}, {"C\rD", "mv"}, {"G|R", "gapi"}, {QString(QChar(0xD800)), "in"}};
        for (const QString &name : badbytes::names())
            logs.append({name, "us/ft"});
        survey.addWell("W", logs);
        survey.run();
        const auto settled = files::snapshot(survey.path(""));
        const int entries = CurveGroupTable::instance().size();
        survey.runInNewProcess();
        QVERIFY(files::snapshot(survey.path("")) == settled);
        QCOMPARE(CurveGroupTable::instance().size(), entries);
    }

    void aBarInALogNameKeepsItsGroupInTheNextProcess()
    {
        Survey survey;
        survey.addWell("W", {{"G|Density", "gapi"}, {"G", "mv"}});
        survey.run();
        QCOMPARE(survey.table(), QString("G | Sp\nG\u00A6Density | Gamma\n").toUtf8());
        QCOMPARE(survey.group("Gamma"), QByteArray("G|Density\n"));
        QCOMPARE(survey.defaults("W"), QString("W\nGamma|G\u00A6Density\nSp|G\n").toUtf8());
        const auto settled = files::snapshot(survey.path(""));
        survey.runInNewProcess();
        QVERIFY(files::snapshot(survey.path("")) == settled);
        QCOMPARE(CurveGroupTable::instance().group("G"), QString("Sp"));
        QCOMPARE(CurveGroupTable::instance().group("G|Density"), QString("Gamma"));
    }

    void aDefaultLogWithABarInItsNameIsFound()
    {
        Survey survey;
        survey.addWell("W", {{"A|B", "gapi"}, {" C\n", "mv"}});
        survey.run();
        const DefaultLogs read = readDefaultLogs(survey.data.project.projectFolder, "W");
        QCOMPARE(read.logs.size(), 2);
        QCOMPARE(survey.data.catalogue.logIndex(0, read.logs.at(0)), 0);
        QCOMPARE(survey.data.catalogue.logIndex(0, read.logs.at(1)), 1);
        QCOMPARE(survey.data.catalogue.curve("W", read.logs.at(0)).unit, QString("gapi"));
    }

    void logsOfOneNameAreClassifiedByTheFirst()
    {
        Survey survey;
        survey.addWell("A", {{"X", "gapi"}, {"X", "mv"}});
        survey.addWell("B", {{"Y", "furlong"}, {"Y", "us/ft"}});
        survey.run();
        QCOMPARE(survey.table(), QByteArray("X | Gamma\nY | Sonic\n"));
        QCOMPARE(survey.group("Others"), QByteArray("Y\n"));
        QVERIFY(!QFile::exists(survey.path("CurveGroups/Sp.txt")));
    }

    void aWellThatBecameUnreadableIsPassedOverInSilence()
    {
        Survey survey;
        survey.addWell("A", {{"KNOWN", "gapi"}});
        const QString key = survey.addWell("B", {{"KNOWN2", "gapi"}, {"GR", "gapi"}});
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "KNOWN2 | Sp\n");
        survey.data.catalogue.build();
        survey.host.find(key)->isUnreadable = true;
        runDefaultLogsPass(survey.data);
        QVERIFY(survey.asker.boxes.isEmpty() && survey.host.errors.isEmpty());
        QVERIFY(!QFile::exists(survey.path("DefaultLogs/B.txt")));
        QCOMPARE(survey.table(), QByteArray("KNOWN | Gamma\nKNOWN2 | Sp\n"));
        QVERIFY(!QFile::exists(survey.path("CurveGroups/Others.txt")));
        QVERIFY(!QFile::exists(survey.path("CurveGroups/Sp.txt")));
        QCOMPARE(survey.defaults("A"), QByteArray("A\nGamma|KNOWN\n"));
        survey.host.find(key)->isUnreadable = false;
        runDefaultLogsPass(survey.data);
        QCOMPARE(survey.defaults("B"), QByteArray("B\nSp|KNOWN2\nGamma|GR\n"));
    }

    void theFirstLineIsSkippedAndLinesOfTwoPartsAreKept()
    {
        const DefaultLogs read =
            parseDefaultLogs("Gamma|the well's name\nGamma|GR\n  Sonic|DT\t\nSp\nA|B|C\n\nShale Volume|VSH_log");
        QCOMPARE(read.groups, QStringList({"Gamma", "Sonic", "Shale Volume"}));
        QCOMPARE(read.logs, QStringList({"GR", "DT", "VSH_log"}));
    }

    void emptyPartsAreKept()
    {
        const DefaultLogs read = parseDefaultLogs("W\nGamma|\n|GR\n|\nSp | SP\n||\n");
        QCOMPARE(read.groups, QStringList({"Gamma", "", "", "Sp "})); // the line is trimmed, not its parts
        QCOMPARE(read.logs, QStringList({"", "GR", "", " SP"}));
    }

    void whatThePassWroteReadsBack()
    {
        Survey survey;
        survey.addWell("W", {{"GR", "gapi"}, {"Größe", "in"}});
        survey.run();
        const DefaultLogs read = readDefaultLogs(survey.data.project.projectFolder, "W");
        QCOMPARE(read.groups, QStringList({"Gamma", "Caliper"}));
        QCOMPARE(read.logs, QStringList({"GR", QString("Größe")}));
        QCOMPARE(defaultLogsPath(survey.data.project.projectFolder, "W"), survey.path("DefaultLogs/W.txt"));
    }

    void aMissingOrUnreadableFileIsEmpty()
    {
        Survey survey;
        QVERIFY(QDir().mkdir(survey.path("DefaultLogs/D.txt")));
        for (const char *name : {"none", "D"})
            QVERIFY(readDefaultLogs(survey.data.project.projectFolder, name).groups.isEmpty());
        QVERIFY(readDefaultLogs("no such project", "W").logs.isEmpty());
    }

    void allLineEndsAndEncodingsAreRead()
    {
        for (const QByteArray &bytes :
             {QByteArray("W\r\nGamma|GR\r\nSonic|DT\r\n"), QByteArray("W\rGamma|GR\rSonic|DT"),
              QByteArray("\xEF\xBB\xBFW\nGamma|GR\nSonic|DT"), QByteArray("\nGamma|GR\n\nSonic|DT\n\n")}) {
            QCOMPARE(parseDefaultLogs(bytes).groups, QStringList({"Gamma", "Sonic"}));
            QCOMPARE(parseDefaultLogs(bytes).logs, QStringList({"GR", "DT"}));
        }
        QCOMPARE(parseDefaultLogs("W\nGamma|Gr\xF6\xDF"
                                  "e\n")
                     .logs,
                 QStringList(QString("Größe")));
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = QString("Well\r\nGamma|GR\r\nSp|Größe\nSonic|DT").toUtf8();
        for (int size = 0; size <= whole.size(); ++size) {
            const DefaultLogs read = parseDefaultLogs(whole.left(size));
            QCOMPARE(read.groups.size(), read.logs.size());
            QVERIFY(read.groups.size() <= 3);
        }
        QCOMPARE(parseDefaultLogs(whole).groups.size(), 3);
    }

    void badBytesAreRead()
    {
        const DefaultLogs binary = parseDefaultLogs(badbytes::binary(1 << 20));
        QCOMPARE(binary.groups.size(), binary.logs.size());
        QVERIFY(parseDefaultLogs("W\n" + badbytes::manyFields("field")).groups.isEmpty());
        QVERIFY(parseDefaultLogs("W\n" + QByteArray(10000, '|')).groups.isEmpty());
    }

    void aHugeFileIsRead()
    {
        const DefaultLogs read = parseDefaultLogs(badbytes::huge("W\nGamma|GR\n"));
        QCOMPARE(read.groups, QStringList("Gamma"));
    }
};

QTEST_GUILESS_MAIN(tst_defaultlogs)
#include "tst_defaultlogs.moc"
