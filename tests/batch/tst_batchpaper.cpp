#include "batchfixture.h"
#include "datastore/projectdata.h"
#include "demo/democorrelation.h"
#include "logview/displaypicture.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "programs/batch/arguments.h"
#include "programs/batch/session.h"
#include "support/pdfreader.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

#include <QComboBox>
#include <QGraphicsView>
#include <QImage>
#include <QXmlStreamReader>

namespace {

/// The well's markers with their places on a continuous sheet from depth 0: lines that run over all tracks.
QVector<double> horizontalLines(const pdf::Page &page, double widthMm)
{
    QVector<double> places;
    for (const pdf::Path &path : page.paths)
        for (const QPolygonF &line : path.lines)
            if (path.painted == "S" && line.size() == 2 && qAbs(line.first().y() - line.last().y()) < 0.01
                && qAbs(line.last().x() - line.first().x()) > widthMm)
                places.append(line.first().y());
    return places;
}

} // namespace

class tst_batchpaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_demo.make();
        m_well =
            runBatch({"wells", "--json", "--survey", m_demo.original()}).record("wells").value("name").toString();
        QVERIFY(!m_well.isEmpty());
    }

    // Pixel for pixel what the window's own print saves.
    void aPictureIsTheWindows_data()
    {
        QTest::addColumn<QString>("templateName");
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QString>("unit");
        QTest::newRow("png") << "Default"
                             << "png"
                             << "METER";
        QTest::newRow("tiff") << "Simple"
                              << "tiff"
                              << "METER";
        QTest::newRow("feet") << "Simple"
                              << "png"
                              << "FEET";
    }
    void aPictureIsTheWindows()
    {
        QFETCH(QString, templateName);
        QFETCH(QString, ending);
        QFETCH(QString, unit);
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            QSKIP("the batch tool's fonts are those of the platform without a screen");
        const QString file = m_files.filePath("picture." + ending);
        VERIFY_EXIT(0, render({m_well + ':' + templateName, "--out", file, "--force", "--unit", unit}));

        batch::Session session(m_demo.original(), {});
        WellDisplayWidget window(session.project(), m_well, templateName, nullptr);
        window.resize(700, 500);
        window.show();
        window.scene()->panel()->findChild<QComboBox *>("depthUnitBox")->setCurrentText(unit);
        const DisplayPicture shown(*window.headerView()->scene(), *window.scene());
        const QImage picture = QImage(file).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(picture.size(), shown.size());
        QCOMPARE(picture, shown.rows(0, shown.size().height()));
        QVERIFY(qAbs(picture.dotsPerMeterX() - 96 / 0.0254) < 2);
    }

    void everyEndingGivesItsFormat()
    {
        const QMap<QString, QByteArray> starts{{"png", "\x89PNG"}, {"jpg", "\xff\xd8"}, {"jpeg", "\xff\xd8"},
                                               {"tif", "II"},      {"TIFF", "II"},      {"pdf", "%PDF-"},
                                               {"svg", "<?xml"}};
        for (auto start = starts.begin(); start != starts.end(); ++start) {
            const QString file = m_files.filePath("format." + start.key());
            const BatchRun run = render({m_well, "--out", file, "--to", "200", "--json"});
            VERIFY_EXIT(0, run);
            QVERIFY2(files::read(file).startsWith(start.value()), qPrintable(start.key()));
            QCOMPARE(run.record("files").value("format").toString(), start.key().toLower());
            QCOMPARE(run.record("files").value("file").toString(), file);
            QCOMPARE(run.record("files").value("to").toDouble(), 200.0);
        }
    }

    void aPdfIsTrueToScaleAndTellsIt_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("metres") << "METER";
        QTest::newRow("feet") << "FEET";
    }
    void aPdfIsTrueToScaleAndTellsIt()
    {
        QFETCH(QString, unit);
        const QString file = m_files.filePath("true.pdf");
        const BatchRun run = render({m_well, "--out", file, "--scale", "2000", "--paper", "continuous", "--markers",
                                     "all", "--unit", unit, "--json", "--force"});
        VERIFY_EXIT(0, run);
        const QJsonObject record = run.record("files");
        const pdf::File pdf = pdf::read(files::read(file));
        QVERIFY(pdf.isComplete);
        QVERIFY(pdf.hasEmbeddedFonts);
        QCOMPARE(pdf.pages.size(), record.value("pages").toInt());
        QCOMPARE(pdf.pages.size(), 1);
        QVERIFY(qAbs(pdf.pages.first().sizeMm.height() - record.value("heightMm").toDouble()) < 0.01);
        // Markers stand as far apart as their depths at the scale; they stand on whole pixels of the tracks.
        const QJsonArray markers =
            runBatch({"markers", m_well, "--json", "--survey", m_demo.original()}).list("markers");
        QVERIFY(markers.size() > 3);
        QVector<double> places = horizontalLines(pdf.pages.first(), 80);
        const double first = markers.first().toObject().value("depth").toDouble();
        for (const QJsonValue &marker : markers) {
            const double apart = (marker.toObject().value("depth").toDouble() - first) * 1000 / 2000;
            const bool isThere = std::any_of(places.begin(), places.end(), [&](double from) {
                return std::any_of(places.begin(), places.end(),
                                   [&](double to) { return qAbs(to - from - apart) < 25.4 / 96; });
            });
            QVERIFY2(isThere, qPrintable(QString::number(apart)));
        }
    }

    void rangeTypeAndUnitAreThoseThatWereAskedFor()
    {
        const BatchRun feet = render({m_well, "--out", m_files.filePath("feet.pdf"), "--unit", "FEET", "--type",
                                      "TVDSS", "--from", "1000", "--to", "2000", "--scale", "500", "--json"});
        VERIFY_EXIT(0, feet);
        const QJsonObject record = feet.record("files");
        QCOMPARE(record.value("unit").toString(), QString("ft"));
        QCOMPARE(record.value("depthType").toString(), QString("TVDSS"));
        QCOMPARE(record.value("from").toDouble(), 1000.0);
        QCOMPARE(record.value("to").toDouble(), 2000.0);
        QCOMPARE(record.value("scale").toDouble(), 500.0);
        const BatchRun whole = render({m_well, "--out", m_files.filePath("whole.pdf"), "--json", "--dry-run"});
        QCOMPARE(whole.record("files").value("from").toDouble(), 0.0);
        QVERIFY(whole.record("files").value("pages").toInt() > 1);
        QVERIFY(!QFileInfo::exists(m_files.filePath("whole.pdf")));
    }

    // Paper is as long as in metres; a picture is the window's, where a foot is as long as a metre.
    void feetAreTrueOnPaperAndTheWindowsInPictures()
    {
        const auto height = [this](const QString &command, const QString &ending, const QString &unit) {
            const QStringList words{"--out",    m_files.filePath("length." + ending), "--unit", unit, "--json",
                                    "--dry-run"};
            const BatchRun run = command == "render" ? render(QStringList{m_well} + words) : correlate(words);
            return run.record("files").value(ending == "svg" ? "heightMm" : "height").toDouble();
        };
        for (const QString command : {"render", "correlate"}) {
            const double metres = height(command, "svg", "METER");
            QVERIFY2(metres > 1000, qPrintable(command));
            QVERIFY2(qAbs(height(command, "svg", "FEET") - metres) < 1, qPrintable(command));
            const double pixels = height(command, "png", "METER");
            QVERIFY2(height(command, "png", "FEET") > 3 * pixels, qPrintable(command));
        }
    }

    void dotsAnInch()
    {
        const BatchRun screen =
            render({m_well, "--out", m_files.filePath("d.png"), "--to", "100", "--json", "--dry-run"});
        const BatchRun fine = render(
            {m_well, "--out", m_files.filePath("d.png"), "--to", "100", "--json", "--dpi", "192", "--dry-run"});
        QCOMPARE(fine.record("files").value("width").toInt(), 2 * screen.record("files").value("width").toInt());
        QCOMPARE(fine.record("files").value("height").toInt(), 2 * screen.record("files").value("height").toInt());
    }

    void anSvgFileIsWellFormed()
    {
        const QString file = m_files.filePath("sheet.svg");
        VERIFY_EXIT(0, render({m_well, "--out", file, "--markers", "all"}));
        QXmlStreamReader reader(files::read(file));
        int paths = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            paths += reader.isStartElement() && reader.name() == QLatin1String("path");
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QVERIFY(paths > 100);
    }

    void nothingIsReplacedWithoutForce()
    {
        for (const char *ending : {"png", "pdf", "svg"}) {
            const QString file = m_files.filePath(QStringLiteral("old.") + ending);
            files::write(file, "old");
            const BatchRun run = render({m_well, "--out", file, "--to", "100"});
            VERIFY_EXIT(1, run);
            QVERIFY2(run.errors.contains(file + " exists; --force replaces it."), qPrintable(run.errors));
            QCOMPARE(files::read(file), QByteArray("old"));
            files::write(m_files.filePath(".lorva-abcDEF"), "of a program that died");
            VERIFY_EXIT(0, render({m_well, "--out", file, "--to", "100", "--force"}));
            QVERIFY(files::read(file) != QByteArray("old"));
            QCOMPARE(QDir(m_files.path()).entryList({".lorva*"}, QDir::Files | QDir::Hidden), QStringList());
        }
    }

    void aCorrelationIsDrawn()
    {
        const QString file = m_files.filePath("panel.pdf");
        const BatchRun run = correlate({"--out", file, "--paper", "continuous", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(pdf::read(files::read(file)).pages.size(), 1);
        QCOMPARE(run.record("files").value("title").toString(), demo::demoCorrelationName());
        const BatchRun flat =
            correlate({"--out", m_files.filePath("flat.png"), "--flat", "Kestrane Upper Sst", "--json"});
        VERIFY_EXIT(0, flat);
        QVERIFY(!flat.record("files").value("depthsOf").toString().isEmpty());
        QVERIFY(run.record("files").value("depthsOf").isNull());
        const BatchRun part =
            correlate({"--out", m_files.filePath("part.png"), "--from", "1000", "--to", "1100", "--json"});
        VERIFY_EXIT(0, part);
        const double scale = part.record("files").value("scale").toDouble();
        const QImage image(m_files.filePath("part.png"));
        const double tracks = 100 / scale * 100 * 96 / 2.54;
        QVERIFY2(image.height() > tracks && image.height() < tracks + 250,
                 qPrintable(QString::number(image.height())));
        const BatchRun pages =
            correlate({"--out", m_files.filePath("pages.pdf"), "--json", "--from", "1000", "--to", "1200"});
        VERIFY_EXIT(0, pages);
        QVERIFY(pages.record("files").value("pages").toInt() > 1);
    }

    void wrongOptionsAreUsageErrors_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("said");
        QTest::newRow("no file") << QStringList() << "needs the option --out";
        QTest::newRow("ending") << QStringList{"--out", "a.doc"}
                                << "ends in .png, .jpg, .jpeg, .tif, .tiff, .pdf or .svg, not \"a.doc\"";
        QTest::newRow("no ending") << QStringList{"--out", "a"} << "not \"a\"";
        QTest::newRow("no name") << QStringList{"--out", ".png"} << "has no name before its ending: \".png\"";
        QTest::newRow("no name in a folder") << QStringList{"--out", "x/.pdf"} << "before its ending: \"x/.pdf\"";
        QTest::newRow("scale 0") << QStringList{"--out", "a.pdf", "--scale", "0"}
                                 << "is a number from 1 to 1000000, not \"0\"";
        QTest::newRow("negative scale") << QStringList{"--out", "a.pdf", "--scale=-5"} << "from 1 to 1000000";
        QTest::newRow("no scale") << QStringList{"--out", "a.pdf", "--scale", "nan"} << "not \"nan\"";
        QTest::newRow("large scale") << QStringList{"--out", "a.pdf", "--scale", "1e9"} << "from 1 to 1000000";
        QTest::newRow("upside down") << QStringList{"--out", "a.pdf", "--from", "20", "--to", "10"}
                                     << "the option --from does not lie above";
        QTest::newRow("empty") << QStringList{"--out", "a.pdf", "--from", "10", "--to", "10"} << "does not lie above";
        QTest::newRow("dpi 0") << QStringList{"--out", "a.pdf", "--dpi", "0"} << "is a whole number from 50 to 2400";
        QTest::newRow("dpi 100000") << QStringList{"--out", "a.pdf", "--dpi", "100000"} << "from 50 to 2400";
        QTest::newRow("type") << QStringList{"--out", "a.pdf", "--type", "TVD"} << "is one of MD, TVDSS, not \"TVD\"";
        QTest::newRow("unit") << QStringList{"--out", "a.pdf", "--unit", "M"} << "is one of METER, FEET";
        QTest::newRow("paper") << QStringList{"--out", "a.pdf", "--paper", "A5"} << "is one of A4, A3, continuous";
        QTest::newRow("paper of a picture") << QStringList{"--out", "a.png", "--paper", "A4"} << "for files of paper";
        QTest::newRow("pages of svg") << QStringList{"--out", "a.svg", "--paper", "A4"} << "one sheet without pages";
        QTest::newRow("markers") << QStringList{"--out", "a.pdf", "--markers", "all,Top"} << "not several of these";
        QTest::newRow("twice") << QStringList{"--out", "a.pdf", "--scale", "5", "--scale", "6"} << "once only";
    }
    void wrongOptionsAreUsageErrors()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, said);
        const BatchRun run = render(QStringList{m_well} + options);
        VERIFY_EXIT(2, run);
        QVERIFY2(run.errors.contains(said), qPrintable(run.errors));
        QCOMPARE(run.output, QByteArray());
    }

    void whatCannotBeDrawnIsSaid_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("said");
        const QString pdf = m_files.filePath("none.pdf");
        const QString w = m_well;
        QTest::newRow("well") << QStringList{"Nobody", "--out", pdf}
                              << "has no well \"Nobody\"; there are Aldra-1, Aldra-2, ";
        QTest::newRow("well in other letters")
            << QStringList{"aldra-1", "--out", pdf} << "\"aldra-1\"; it is \"Aldra-1\".";
        QTest::newRow("template") << QStringList{w + ":Nothing", "--out", pdf}
                                  << "has no template \"Nothing\"; there are ";
        QTest::newRow("no template") << QStringList{w + ":", "--out", pdf} << "has no template \"\"; there are ";
        QTest::newRow("marker") << QStringList{w, "--out", pdf, "--markers", "Ghost"}
                                << "has no marker \"Ghost\"; there are Ostrel Sandstone, ";
        QTest::newRow("below the log") << QStringList{w, "--out", pdf, "--from", "90000", "--to", "90100"}
                                       << "Nothing lies at 90000 to 90100 m: its depths are 0 to ";
        QTest::newRow("above the log") << QStringList{w, "--out", pdf, "--from=-100", "--to", "0"}
                                       << "Nothing lies at";
        QTest::newRow("from below") << QStringList{w, "--out", pdf, "--from", "90000"}
                                    << "Nothing lies below 90000 m: its depths are 0 to ";
        QTest::newRow("to above") << QStringList{w, "--out", pdf, "--to", "-5"}
                                  << "Nothing lies above -5 m: its depths are 0 to ";
        const QString choices =
            "A larger --scale, a part of the depths (--from, --to), a smaller --dpi or paper (.pdf, .svg)";
        const QString most = "holds no more than %1. " + choices;
        QTest::newRow("png") << QStringList{w, "--out", m_files.filePath("none.png"), "--scale", "9"}
                             << "and a .png file " + most.arg("1000000 pixels a side");
        QTest::newRow("jpeg") << QStringList{w, "--out", m_files.filePath("none.jpeg"), "--scale", "100"}
                              << "and a .jpeg file " + most.arg("65500 pixels a side");
        QTest::newRow("tiff") << QStringList{w, "--out", m_files.filePath("none.tif"), "--scale", "1", "--dry-run"}
                              << "and a .tif file " + most.arg("1431306239 pixels in all");
        QTest::newRow("dpi") << QStringList{w + ":Simple", "--out", m_files.filePath("none.jpg"), "--dpi", "2400"}
                             << "The picture would be of 16250 x 24";
        QTest::newRow("pages") << QStringList{w, "--out", pdf, "--scale", "20"}
                               << "pages of A4; no more than 200 are made.";
        QTest::newRow("length") << QStringList{w, "--out", pdf, "--scale", "100", "--paper", "continuous"}
                                << "a PDF page ends at 5080 mm";
        QTest::newRow("folder") << QStringList{w, "--out", m_files.filePath("no/folder/a.pdf")}
                                << "could not be written";
    }
    void whatCannotBeDrawnIsSaid()
    {
        QFETCH(QStringList, words);
        QFETCH(QString, said);
        const BatchRun run = render(words);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains(said), qPrintable(run.errors));
        QCOMPARE(QDir(m_files.path()).entryList({"none*", ".lorva*"}, QDir::Files | QDir::Hidden), QStringList());
    }

    void lettersOfAWordMayBeSmall()
    {
        const BatchRun run = render({m_well, "--out", m_files.filePath("small.pdf"), "--paper", "a3", "--type",
                                     "tvdss", "--unit", "feet", "--json", "--dry-run"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("files").value("unit").toString(), QString("ft"));
        QCOMPARE(run.record("files").value("depthType").toString(), QString("TVDSS"));
        QVERIFY(run.record("files").value("widthMm").toDouble() + run.record("files").value("heightMm").toDouble()
                > 700);
        QCOMPARE(run.record("files").value("isWritten").toBool(true), false);
    }

    // Paper is not wasted on depths that the well has not.
    void depthsEndWhereTheWellDoes()
    {
        const QString file = m_files.filePath("deep.pdf");
        const BatchRun run = render({m_well, "--out", file, "--from=-50", "--to", "90000", "--json"});
        VERIFY_EXIT(0, run);
        const QJsonObject record = run.record("files");
        QCOMPARE(record.value("from").toDouble(), 0.0);
        QCOMPARE(record.value("to").toDouble(), 2610.0);
        QVERIFY(record.value("isWritten").toBool());
        QCOMPARE(
            run.list("notices"),
            QJsonArray{"The well \"Aldra-1\": Drawn is 0 to 2610 m instead of -50 to 90000 m: its depths are 0 to "
                       "2610 m."});
        const BatchRun panel =
            correlate({"--out", m_files.filePath("deep.png"), "--to", "90000", "--json", "--dry-run"});
        VERIFY_EXIT(0, panel);
        QVERIFY(panel.record("files").value("to").toDouble() < 4000);
        QVERIFY2(panel.errors.contains("instead of") && panel.errors.contains("to 90000 m"),
                 qPrintable(panel.errors));
        const BatchRun above = render({m_well, "--out", file, "--force", "--from=-50", "--dry-run", "--json"});
        QCOMPARE(above.record("files").value("from").toDouble(), 0.0);
        QCOMPARE(above.list("notices").size(), 1);
        QVERIFY(render({m_well, "--out", file, "--force", "--from", "1000", "--to", "1200", "--json"})
                    .list("notices")
                    .isEmpty());
    }

    void depthsWithoutALogAreTold()
    {
        const QString survey = m_demo.copy();
        survey::SurveyStore store(survey);
        const host::LogData log{"GR", "gapi", {100, 1000, 1100}, {host::undefinedValue, 5, 6}};
        QVERIFY(store.writeLog(store.list().value.first().key, log).ok());
        const BatchRun gap = runBatch({"render", m_well + ":Simple", "--out", m_files.filePath("gap.png"), "--to",
                                       "200", "--dry-run", "--survey", survey});
        QVERIFY2(gap.errors.contains("no log has a value in these depths"), qPrintable(gap.errors));
        const BatchRun run =
            render({m_well + ":Simple", "--out", m_files.filePath("bare.png"), "--to", "200", "--unit", "FEET"});
        VERIFY_EXIT(0, run);
        QVERIFY2(run.errors.contains(
                     "Aldra-1: no log has a value in these depths; their values lie at 2625 to 8517.5 ft."),
                 qPrintable(run.errors));
    }

    void depthsWithoutALogInAPanelAreTold()
    {
        const QString file = m_files.filePath("bare.pdf");
        const BatchRun run = correlate({"--out", file, "--to", "200", "--dry-run"});
        VERIFY_EXIT(0, run);
        QVERIFY2(run.errors.contains("Kestrane reservoir: no log has a value in these depths; their values lie at "),
                 qPrintable(run.errors));
        QVERIFY(correlate({"--out", file, "--dry-run", "--from", "1000", "--to", "1200"}).errors.isEmpty());
    }

    void correlationsThatCannotBeDrawn()
    {
        const QString pdf = m_files.filePath("none.pdf");
        for (const char *name : {"Nothing", "..", ".", "../Templates"}) {
            const BatchRun run = runBatch({"correlate", name, "--out", pdf, "--survey", m_demo.original()});
            VERIFY_EXIT(1, run);
            QVERIFY2(
                run.errors.contains(
                    QStringLiteral("The survey has no correlation \"%1\"; there is Kestrane reservoir.").arg(name)),
                qPrintable(run.errors));
        }
        const BatchRun flat = correlate({"--out", pdf, "--flat", "Ghost"});
        VERIFY_EXIT(1, flat);
        QVERIFY2(flat.errors.contains("No well of the correlation"), qPrintable(flat.errors));
        VERIFY_EXIT(1, correlate({"--out", pdf, "--markers", "Ghost"}));
        VERIFY_EXIT(1, correlate({"--out", pdf, "--from", "90000"}));
        QVERIFY(!QFileInfo::exists(pdf));
    }

    // Its tracks and grid come out, and it is said that logs are missing.
    void aWellWithoutLogsAndATemplateWithoutTracks()
    {
        const QString survey = m_demo.copy();
        QVERIFY(QDir().mkpath(survey + "/WLC/Templates/Global/Empty"));
        const BatchRun empty =
            runBatch({"render", m_well + ":Empty", "--out", m_files.filePath("e.pdf"), "--survey", survey});
        VERIFY_EXIT(1, empty);
        QVERIFY2(empty.errors.contains("The template \"Empty\" has no tracks."), qPrintable(empty.errors));
        for (const QString &log : QDir(survey + "/WellInfo").entryList({"*.wll"}))
            QVERIFY(QFile::remove(survey + "/WellInfo/" + log));
        const BatchRun bare = runBatch({"render", m_well, "--out", m_files.filePath("b.pdf"), "--survey", survey});
        VERIFY_EXIT(0, bare);
        QVERIFY(pdf::read(files::read(m_files.filePath("b.pdf"))).isComplete);
    }

    void missingDefaultLogsAreToldWithTheCommandThatSetsThem()
    {
        const QString survey = m_demo.copyWithoutDefaults();
        const BatchRun run = runBatch(
            {"render", m_well + ":Simple", "--out", m_files.filePath("d.png"), "--dry-run", "--survey", survey});
        VERIFY_EXIT(0, run);
        QVERIFY2(run.errors.contains("No default log for Gamma, Resistivity, Density in Aldra-1: "
                                     "\"lorva-batch default-logs\" sets them.\n"),
                 qPrintable(run.errors));
    }

    void aSurveyWithoutAProjectStaysWithoutOne()
    {
        const QString survey = m_demo.copy();
        QVERIFY(QDir(survey + "/WLC").removeRecursively());
        const BatchRun run = runBatch({"render", m_well, "--out", m_files.filePath("p.pdf"), "--survey", survey});
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("no templates yet"), qPrintable(run.errors));
        QVERIFY(!QFileInfo::exists(survey + "/WLC"));
        // What the message names makes them.
        QVERIFY2(run.errors.contains("as \"lorva-batch default-logs WELL GROUP=LOG\""), qPrintable(run.errors));
        VERIFY_EXIT(0, runBatch({"default-logs", m_well, "Gamma=GR", "--survey", survey}));
        VERIFY_EXIT(0, runBatch({"render", m_well, "--out", m_files.filePath("p.pdf"), "--survey", survey}));
    }

private:
    BatchRun render(const QStringList &words) const
    {
        return runBatch(QStringList{"render", "--survey", m_demo.original()} + words, m_files.path());
    }
    BatchRun correlate(const QStringList &words) const
    {
        return runBatch(QStringList{"correlate", demo::demoCorrelationName(), "--survey", m_demo.original()} + words,
                        m_files.path());
    }

    BatchFixture m_demo;
    QTemporaryDir m_files;
    QString m_well;
};

LORVA_TEST_MAIN(tst_batchpaper)
#include "tst_batchpaper.moc"
