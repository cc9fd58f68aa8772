// The imports of text files: what they ask for, what they say, what they store. What is the same in all three is
// tested on each of them.

#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QIntValidator>
#include <QSignalSpy>

using F = WellDataFixture;

namespace {

enum Kind { Markers, Zones, Points };

} // namespace
Q_DECLARE_METATYPE(Kind)

class tst_textimports : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<WellDataFixture>();
        m->select("W-1");
        group()->setCurrentText("Gamma");
    }
    void cleanup() { m.reset(); }

    void theyLookAsPrescribed_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("fileLabel");
        QTest::addColumn<QString>("fileTitle");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("markers") << Markers << "Well Marker Data"
                                 << "Select Input File"
                                 << "Select Wells Marker data file" << QStringList({"Name", "Depth"});
        QTest::newRow("zones") << Zones << "Well Perforation Zone"
                               << "Select Input File :"
                               << "Select Wells Perforation data file"
                               << QStringList({"Name", "Start Depth", "End Depth", "Zone Type"});
        QTest::newRow("points") << Points << "Well Calibration Points"
                                << "Select Input File :"
                                << "Select Wells Calibration points file" << QStringList({"Depth", "Value"});
    }
    void theyLookAsPrescribed()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, title);
        QFETCH(QString, fileLabel);
        QFETCH(QString, fileTitle);
        QFETCH(QStringList, columns);
        const QByteArray bytes = "Na\tme\n\n x\r\n1\t2";
        const QString path = m->writeInput(bytes);
        ColumnImportDialog *dialog = m->openImport(editor(kind), path);
        QCOMPARE(dialog->windowTitle(), title);
        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->isModal());
        const auto *preview = dialog->findChild<ColumnPreview *>();
        const int height = preview->height();
        dialog->resize(dialog->width(), dialog->height() + 100);
        QCoreApplication::processEvents();
        QCOMPARE(preview->height(), height + 100); // a larger window shows more lines of the file
        QCOMPARE(m->fileTitle, fileTitle);
        QCOMPARE(m->fileFilter, QString("All files (*.*);;TEXT (*.txt *.TXT)"));
        QVERIFY(labelOf(dialog, fileLabel));
        QCOMPARE(line(dialog, "fileEdit")->text(), path);
        QCOMPARE(F::find<QPushButton>(dialog, "browseButton")->text(), QString("Browse"));
        QCOMPARE(F::find<QPushButton>(dialog, "importButton")->text(), QString("Import"));
        const auto *header = qobject_cast<QLineEdit *>(labelOf(dialog, "Number of Header line to skip")->buddy());
        QCOMPARE(header->text(), QString("0"));
        QVERIFY(qobject_cast<const QIntValidator *>(header->validator()));
        for (int i = 0; i < columns.size(); ++i) {
            const auto *number = qobject_cast<QLineEdit *>(labelOf(dialog, columns.at(i))->buddy());
            QCOMPARE(number->text(), QString::number(i + 1));
            QVERIFY(qobject_cast<const QIntValidator *>(number->validator()));
        }
        const auto *text = F::find<QPlainTextEdit>(dialog, "fileText");
        QVERIFY(text->isReadOnly());
        QCOMPARE(text->toPlainText(), QString("Na\tme\n\n x\n1\t2"));
        dialog->close();
    }

    void withoutAWellNothingIsImported_data() { kinds(); }
    void withoutAWellNothingIsImported()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, title);
        m->select("None");
        QVERIFY(!m->import(editor(kind), fileOf(kind)));
        QCOMPARE(m->asker.boxes.size(), 1);
        checkWarning(title, "Unable to set Wellname.");
    }
    void withoutAGroupNoPointsAreImported()
    {
        group()->setCurrentText("None");
        QVERIFY(!m->import(m->points(), fileOf(Points)));
        checkWarning("Define Calibration Points", "Unable to set GroupName.");
    }
    void aFileThatCannotBeOpenedIsTold_data() { kinds(); }
    void aFileThatCannotBeOpenedIsTold()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, title);
        const auto before = stored();
        for (const QString &path : {m->survey.path(), m->survey.filePath("none.txt"), QString()}) {
            ColumnImportDialog *dialog = m->openImport(editor(kind), path);
            F::click(dialog, "importButton");
            checkWarning(title, "Unable to open this file.\nPlease check file read/write permission.");
            QVERIFY(dialog->isVisible());
            delete dialog;
        }
        QCOMPARE(stored(), before);
    }

    void aBadFileStopsWithAWarning_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QByteArray>("tail");
        QTest::addColumn<QStringList>("numbers");
        for (const auto &[kind, name, title] :
             {std::tuple<Kind, const char *, const char *>{Markers, "markers", "Well Marker Data"},
              {Zones, "zones", "Define Well Perforation"},
              {Points, "points", "Define Calibration Points"}}) {
            const auto row = [&, kind = kind, name = name, title = title](const char *what, const QByteArray &tail,
                                                                          const QStringList &numbers) {
                QTest::newRow(qPrintable(QString("%1: %2").arg(name, what)))
                    << kind << QString(title) << tail << numbers;
            };
            row("a blank line in the middle", "\n" + fileOf(kind), {});
            row("a line of one field", "alone\n", {});
            row("blanks", "  \t \n", {});
            row("a trailing blank line", "\n", {});
            row("column 0", "", {"0", "0"});
            row("a negative column", "", {"0", "-1"});
            row("a column beyond the fields", "", {"0", "9"});
            row("no column", "", {"0", ""});
        }
        QTest::newRow("zones: three fields")
            << Zones << "Define Well Perforation" << QByteArray("A\t1\t2\n") << QStringList();
    }
    void aBadFileStopsWithAWarning()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, title);
        QFETCH(QByteArray, tail);
        QFETCH(QStringList, numbers);
        const auto before = stored();
        QVERIFY(!m->import(editor(kind), fileOf(kind) + tail, numbers));
        checkWarning(title, "Unable to import this file.\nPlease check input file format.");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(stored(), before);
    }
    void theLineOfTheProblemIsNamed()
    {
        ColumnImportDialog *dialog = m->openImport(m->markers(), m->writeInput("A\t1\nalone\n"));
        F::click(dialog, "importButton");
        QCOMPARE(F::status(dialog), QString("Line 2 has 1 column between tabs; 2 are needed."));
        delete dialog;
    }

    void aFileWithoutLinesStoresNothing_data() { kinds(); }
    void aFileWithoutLinesStoresNothing()
    {
        QFETCH(Kind, kind);
        const auto before = stored();
        QVERIFY(!m->import(editor(kind), "", {}));
        QVERIFY(!m->import(editor(kind), fileOf(kind), {"99"}));
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(stored(), before);
    }

    void markersReplaceThoseOfTheWell()
    {
        QSignalSpy added(m->markers(), &MarkerDataWidget::markersAdded);
        QVERIFY(m->import(m->markers(), "title\n 300.5 \t Alpha \n100\tBeta\n", {"1", "2", "1"}));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Beta", "Alpha"}));
        QCOMPARE(m->storedDepths(m->key1), QVector<float>({100, 300.5}));
        QCOMPARE(m->well(m->key1).markers.at(0).color, QColor(Qt::black));
        // The table shows what the host holds.
        QCOMPARE(F::shown(m->markers()),
                 QVector<QStringList>(
                     {{"Beta", "100", "100", "80", "#000000"}, {"Alpha", "300.5", "300.5", "280.5", "#000000"}}));
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(added.at(0).at(1).toStringList(), QStringList({"Beta", "Alpha"}));
        QVERIFY(!m->markers()->isModified());
    }
    void headersOfZeroOrLessSkipNothing()
    {
        QVERIFY(m->import(m->markers(), "A\t1\nB\t2\n", {"-5"}));
        QCOMPARE(m->storedNames(m->key1), QStringList({"A", "B"}));
    }
    void markersThatTheHostWouldDropAreAskedFirst()
    {
        const QByteArray bytes = "A\t1\nA\t2\nC\t5000\nD\tabc\nE\t1e400\nF\tnan\nG\t12,5\n";
        m->asker.answers = {base::BoxButton::No};
        QVERIFY(!m->import(m->markers(), bytes));
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Well Marker Data"));
        const QString text = m->asker.boxes.at(0).text;
        for (const char *line :
             {"Row 2: the name \"A\" occurs twice, in row 1 too", "Row 3: the depth 5000 is outside",
              "Row 4: the depth \"abc\" is no number and becomes 0", "Row 5: the depth \"1e400\" is no number",
              "Row 6: the depth \"nan\" is no number", "Row 7: the depth \"12,5\" is no number"})
            QVERIFY2(text.contains(line), qPrintable(text));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
    }
    void yesGoesOnWithTheRest()
    {
        m->asker.answers = {base::BoxButton::Yes};
        QVERIFY(m->import(m->markers(), "A\t1\nA\t2\nD\tabc\n"));
        QCOMPARE(m->storedNames(m->key1), QStringList({"D", "A"}));
        QCOMPARE(m->storedDepths(m->key1), QVector<float>({0, 1}));
        QCOMPARE(m->markers()->table()->rowCount(), 2);
    }
    void aRefusalOfTheHostKeepsTheDialog()
    {
        m->host.markerWritesFail = true;
        QVERIFY(!m->import(m->markers(), "A\t1\n"));
        QCOMPARE(m->host.errors, QStringList({"Cannot write new markers to disk"}));
        QCOMPARE(F::name(m->markers(), 0), QString("Top"));
    }

    void zonesAreStoredAtOnce()
    {
        QSignalSpy written(m->zones(), &DefineWellPerforation::zonesWritten);
        QVERIFY(m->import(m->zones(), "A\t1\t2.5\tGas\nB\t4\t3\tHelium\n"));
        QCOMPARE(files::read(zoneFile()), QByteArray("2\nA|1|2.5|Gas\nB|4|3|Helium\n"));
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"A", "1", "2.5", "Gas"}, {"B", "4", "3", "Oil"}}));
        QVERIFY(F::isEnabled(m->zones(), "updateButton"));
        QCOMPARE(F::status(m->zones()), QString("The zone type of row 2 is none of the list and shows as \"Oil\"."));
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(written.size(), 1);
    }
    void zonesOfOtherColumns()
    {
        QVERIFY(m->import(m->zones(), "Oil\t2\t1\tA\n", {"0", "4", "3", "2", "1"}));
        QCOMPARE(files::read(zoneFile()), QByteArray("1\nA|1|2|Oil\n"));
    }
    void zonesWithTextForANumberAreToldOf()
    {
        QVERIFY(m->import(m->zones(), "A\tx\t2\tGas\nB\t1\t2\tGas\nC\t1\t1e400\tGas\n"));
        QCOMPARE(files::read(zoneFile()), QByteArray("3\nA|0|2|Gas\nB|1|2|Gas\nC|1|0|Gas\n"));
        QCOMPARE(F::status(m->zones()), QString("No number in rows 1, 3: read as 0."));
    }
    void zonesThatTheFileCannotHoldAreRefused()
    {
        QVERIFY(!m->import(m->zones(), "A\t1\t2\tGas\nB|\t1\t2\tGas\nC\t1\t2\tG|as\n"));
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Define Well Perforation"));
        QVERIFY(
            m->asker.boxes.at(0).text.contains("Row 2: the name holds a \"|\"\nRow 3: the zone type holds a \"|\""));
        QVERIFY(!QFileInfo::exists(zoneFile()));
    }
    void noToTheQuestionOfZonesStoresNothing()
    {
        files::write(zoneFile(), "1\nOld|1|2|Oil\n");
        m->select("W-2");
        m->select("W-1");
        m->asker.answers = {base::BoxButton::No};
        QVERIFY(!m->import(m->zones(), "A\t1\t2\tGas\n"));
        QCOMPARE(files::read(zoneFile()), QByteArray("1\nOld|1|2|Oil\n"));
        QCOMPARE(F::name(m->zones(), 0), QString("Old"));
        QCOMPARE(F::status(m->zones()), QString());
    }

    void pointsAreStoredAtOnce()
    {
        QSignalSpy written(m->points(), &DefineCalibrationPoint::pointsWritten);
        QVERIFY(m->import(m->points(), "50\t100\n60\tx\n", {"0", "2", "1"}));
        QCOMPARE(files::read(pointFile()), QByteArray("WellName :W-1\nGroupName :Gamma\n100|50\n0|60\n"));
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"100", "50"}, {"0", "60"}}));
        QCOMPARE(F::status(m->points()), QString("No number in row 2: read as 0."));
        QCOMPARE(written.size(), 1);
    }
    void noToTheQuestionOfPointsStoresNothing()
    {
        files::write(pointFile(), "WellName :W-1\nGroupName :Gamma\n1|2\n");
        m->select("W-2");
        m->select("W-1");
        m->asker.answers = {base::BoxButton::No};
        QVERIFY(!m->import(m->points(), "5\t6\n"));
        QVERIFY(files::read(pointFile()).endsWith("1|2\n"));
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"1", "2"}}));
    }

    // The dialog keeps the well for which it was opened.
    void anImportIsForTheWellItWasOpenedFor_data() { kinds(); }
    void anImportIsForTheWellItWasOpenedFor()
    {
        QFETCH(Kind, kind);
        ColumnImportDialog *dialog = m->openImport(editor(kind), m->writeInput(fileOf(kind)));
        m->select("W-2");
        F::click(dialog, "importButton");
        QCOMPARE(editor(kind)->table()->rowCount(), 0);
        if (kind == Markers)
            QCOMPARE(m->storedNames(m->key1), QStringList({"A"}));
        else
            QVERIFY(QFileInfo::exists(kind == Zones ? zoneFile() : pointFile()));
        QVERIFY(m->well(m->key2).markers.isEmpty());
        if (kind == Points)
            QCOMPARE(F::status(m->points()), QString("Current wellName is not matching with calibration data."));
    }

    void theFolderIsRemembered()
    {
        const QString path = m->writeInput(fileOf(Markers));
        delete m->openImport(m->markers(), path);
        QCOMPARE(m->fileFolder, QString());
        ColumnImportDialog *dialog = m->openImport(m->markers(), path);
        QCOMPARE(m->fileFolder, QFileInfo(path).absolutePath());
        delete dialog;
    }
    void givingUpTheChoiceKeepsTheFile()
    {
        ColumnImportDialog *dialog = m->openImport(m->markers(), m->writeInput("A\t1\n"));
        const QString path = line(dialog, "fileEdit")->text();
        dialog->chooseFile = [](QWidget *, const QString &, const QString &, const QString &) { return QString(); };
        F::click(dialog, "browseButton");
        QCOMPARE(line(dialog, "fileEdit")->text(), path);
        delete dialog;
    }
    void aTypedPathShowsItsFileAndEnterImports()
    {
        ColumnImportDialog *dialog = m->openImport(m->markers(), QString());
        const QPointer<ColumnImportDialog> watched = dialog;
        dialog->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(dialog));
        line(dialog, "fileEdit")->setFocus();
        QTest::keyClicks(line(dialog, "fileEdit"), m->writeInput("Typed\t1\n"));
        QVERIFY(line(dialog, "fileEdit")->hasFocus());
        line(dialog, "headerLinesEdit")->setFocus();
        QCOMPARE(F::find<QPlainTextEdit>(dialog, "fileText")->toPlainText(), QString("Typed\t1\n"));
        QTest::keyClick(line(dialog, "headerLinesEdit"), Qt::Key_Return);
        QCOMPARE(m->storedNames(m->key1), QStringList({"Typed"}));
        QVERIFY(!watched || !watched->isVisible());
    }
    // Nobody has seen yet which columns of the file are chosen, and an import replaces what the well has.
    void enterBehindATypedPathOnlyShowsTheFile()
    {
        const QStringList before = m->storedNames(m->key1);
        for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
            ColumnImportDialog *dialog = m->openImport(m->markers(), QString());
            dialog->activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(dialog));
            line(dialog, "fileEdit")->setFocus();
            QTest::keyClicks(line(dialog, "fileEdit"), m->writeInput("Typed\t1\n"));
            QTest::keyClick(line(dialog, "fileEdit"), Qt::Key(key));
            QCOMPARE(F::find<QPlainTextEdit>(dialog, "fileText")->toPlainText(), QString("Typed\t1\n"));
            QVERIFY(dialog->isVisible());
            QCOMPARE(m->storedNames(m->key1), before);
            m->writeInput("Typed\t2\n"); // an editor saved it meanwhile
            QTest::keyClick(line(dialog, "fileEdit"), Qt::Key(key));
            QCOMPARE(F::find<QPlainTextEdit>(dialog, "fileText")->toPlainText(), QString("Typed\t2\n"));
            delete dialog;
        }
    }

    // Real files: tops and picks as companies and agencies hand them out.
    void realFilesAreImported()
    {
        const QString folder = files::sharedFolder("tops");
        if (folder.isEmpty())
            QSKIP("there is no folder of real tops");
        m->well(m->key1).header.totalDepth = 0; // no track says what is outside
        // One pick a line: site, horizon, depth and quality.
        const QByteArray picks = files::read(folder + "/athabasca_PICKS.TXT");
        QVERIFY(picks.count('\n') > 50);
        ColumnImportDialog *dialog = m->openImport(m->points(), folder + "/athabasca_PICKS.TXT");
        setNumbers(dialog, {"1", "3", "4"});
        F::click(dialog, "importButton");
        const int lines = picks.count('\n') - 1;
        QCOMPARE(m->points()->table()->rowCount(), lines);
        QCOMPARE(F::shown(m->points()).at(0), QStringList({"335.5", "1"}));

        dialog = m->openImport(m->markers(), folder + "/PICKS_DIC.TXT");
        setNumbers(dialog, {"1", "2", "1"});
        F::click(dialog, "importButton");
        QCOMPARE(m->storedNames(m->key1).first(), QString("mannville"));
        QCOMPARE(m->storedDepths(m->key1).first(), 1000.0F);

        // Files of commas are no column files.
        for (const char *name : {"15_9_19_SR_TOPS_NPD.csv", "15_9_19_SR_Formations.csv", "wfmp_tops.csv"}) {
            m->asker.boxes.clear();
            dialog = m->openImport(m->markers(), folder + '/' + name);
            F::click(dialog, "importButton");
            checkWarning("Well Marker Data", "Unable to import this file.\nPlease check input file format.");
            delete dialog;
        }
        // The same tops with tabs, as a spreadsheet saves them.
        QByteArray tops = files::read(folder + "/15_9_19_SR_TOPS_NPD.csv");
        tops.replace(',', '\t');
        m->asker.boxes.clear();
        m->asker.answers = {base::BoxButton::Yes}; // some tops repeat
        QVERIFY(m->import(m->markers(), tops));
        QCOMPARE(m->storedNames(m->key1).first(), QString("UTSIRA FM"));
        QCOMPARE(m->storedDepths(m->key1).first(), 846.0F);
        tops = files::read(folder + "/tops_42303347740000.csv");
        tops.replace(',', '\t');
        QVERIFY(m->import(m->markers(), tops, {"1", "2", "3"}));
        QCOMPARE(m->storedNames(m->key1).first(), QString("WFMPA"));
        QCOMPARE(m->storedDepths(m->key1).first(), 6993.5F);
    }

private:
    static void kinds()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("title");
        QTest::newRow("markers") << Markers << "Well Marker Data";
        QTest::newRow("zones") << Zones << "Define Well Perforation";
        QTest::newRow("points") << Points << "Define Calibration Points";
    }
    static QByteArray fileOf(Kind kind)
    {
        return kind == Markers ? "A\t5\n" : kind == Zones ? "A\t1\t2\tOil\n" : "1\t2\n";
    }
    WellTableEditor *editor(Kind kind) const
    {
        if (kind == Markers)
            return m->markers();
        return kind == Zones ? static_cast<WellTableEditor *>(m->zones()) : m->points();
    }
    QComboBox *group() const { return F::find<QComboBox>(m->points(), "groupBox"); }
    QString zoneFile() const { return m->path("/W-1_perforationZone.txt"); }
    QString pointFile() const { return m->path("/W-1_Gamma_calibrationPoints.txt"); }
    // All that an import may touch.
    QMap<QString, QByteArray> stored() const
    {
        QMap<QString, QByteArray> all = files::snapshot(m->launch->project.projectFolder);
        all.insert("markers", m->storedNames(m->key1).join(',').toUtf8());
        return all;
    }
    void checkWarning(const QString &title, const QString &text) const
    {
        const base::Box &box = m->asker.boxes.last();
        QCOMPARE(box.title, title);
        QCOMPARE(box.text, text);
        QCOMPARE(box.icon, base::BoxIcon::Warning);
    }
    static QLineEdit *line(const QWidget *dialog, const char *name) { return F::find<QLineEdit>(dialog, name); }
    static QLabel *labelOf(const QWidget *dialog, const QString &text)
    {
        for (QLabel *label : dialog->findChildren<QLabel *>())
            if (label->text() == text)
                return label;
        return nullptr;
    }
    static void setNumbers(const QWidget *dialog, const QStringList &numbers)
    {
        line(dialog, "headerLinesEdit")->setText(numbers.at(0));
        const bool isPoints = dialog->objectName() == "CalibrationPointASCII";
        line(dialog, isPoints ? "depthColumnEdit" : "nameColumnEdit")->setText(numbers.at(1));
        line(dialog, isPoints ? "valueColumnEdit" : "depthColumnEdit")->setText(numbers.at(2));
    }

    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_textimports)
#include "tst_textimports.moc"
