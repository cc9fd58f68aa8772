// What render and correlate draw with their options, beside the windows and in the pages of their PDF files.

#include "batchfixture.h"
#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
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
#include <QLineEdit>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

const QString upperSand = QStringLiteral("Kestrane Upper Sst");
const QString limestone = QStringLiteral("Dunvar Limestone");

/// What a user does in the panel of a display: the field's name, and what is typed or chosen there.
using Steps = QVector<QPair<QString, QString>>;

void doSteps(QWidget *panel, const Steps &steps)
{
    for (const auto &step : steps) {
        if (auto *box = panel->findChild<QComboBox *>(step.first)) {
            QVERIFY2(box->findText(step.second) >= 0, qPrintable(step.second));
            box->setCurrentText(step.second);
            continue;
        }
        auto *edit = panel->findChild<QLineEdit *>(step.first);
        QVERIFY2(edit, qPrintable(step.first));
        edit->setText(step.second);
        emit edit->editingFinished();
    }
}

/// What the window's print saves of it, with nothing lost.
QImage pictureOf(QGraphicsScene &headers, QGraphicsScene &scene)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("window.png");
    const base::WriteResult written = DisplayPicture(headers, scene, PictureFormat::Png).write(file);
    return written.ok() ? QImage(file).convertToFormat(QImage::Format_RGB32) : QImage();
}

/// The text of a PDF file's page, with the blanks that part its columns as one.
QString textOf(const QString &file, int page)
{
    QProcess reader;
    const QString number = QString::number(page);
    reader.start("pdftotext", {"-f", number, "-l", number, "-layout", file, "-"});
    if (!reader.waitForFinished())
        return {};
    return QString::fromUtf8(reader.readAllStandardOutput()).simplified();
}

bool canReadTexts()
{
    return !QStandardPaths::findExecutable("pdftotext").isEmpty();
}

} // namespace

Q_DECLARE_METATYPE(Steps)

class tst_batchdrawing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            QSKIP("the batch tool's fonts are those of the platform without a screen");
        m_demo.make();
    }

    // Pixel for pixel what a user comes to in the window.
    void aPictureWithOptionsIsTheWindows_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QStringList>("markers");
        QTest::newRow("plain") << QStringList{} << Steps{} << QStringList{};
        QTest::newRow("scale") << QStringList{"--scale", "2500"} << Steps{{"scaleEdit", "2500"}} << QStringList{};
        QTest::newRow("range") << QStringList{"--from", "1000", "--to", "1200"}
                               << Steps{{"startDepthEdit", "1000"}, {"endDepthEdit", "1200"}} << QStringList{};
        QTest::newRow("range in feet") << QStringList{"--unit", "FEET", "--from",  "3000",
                                                      "--to",   "4000", "--scale", "500"}
                                       << Steps{{"depthUnitBox", "FEET"},
                                                {"startDepthEdit", "3000"},
                                                {"endDepthEdit", "4000"},
                                                {"scaleEdit", "500"}}
                                       << QStringList{};
        QTest::newRow("TVDSS") << QStringList{"--type", "TVDSS"} << Steps{{"depthTypeBox", "TVDSS"}} << QStringList{};
        QTest::newRow("markers") << QStringList{"--markers", upperSand + ',' + limestone} << Steps{}
                                 << QStringList{upperSand, limestone};
        QTest::newRow("no markers") << QStringList{"--markers", "none"} << Steps{} << QStringList{};
        QTest::newRow("all markers") << QStringList{"--markers", "all"} << Steps{} << QStringList{"*"};
    }
    void aPictureWithOptionsIsTheWindows()
    {
        QFETCH(QStringList, options);
        QFETCH(Steps, steps);
        QFETCH(QStringList, markers);
        const QImage picture = drawn({"render", m_well + ":Simple"}, options);
        const QImage plain = drawn({"render", m_well + ":Simple"}, {});

        batch::Session session(m_demo.original(), {});
        WellDisplayWidget window(session.project(), m_well, "Simple", nullptr);
        window.resize(700, 500);
        window.show();
        doSteps(window.scene()->panel(), steps);
        if (QTest::currentTestFailed())
            return;
        if (markers == QStringList{"*"})
            markers = markersOf(session, m_well);
        for (const QString &marker : qAsConst(markers))
            window.addMarker(m_well, marker);
        QCOMPARE(window.scene()->markers().all().size(), markers.size());
        const QImage shown = pictureOf(*window.headerView()->scene(), *window.scene());
        QVERIFY(!shown.isNull());
        QCOMPARE(picture.size(), shown.size());
        QCOMPARE(picture, shown);
        QCOMPARE(picture == plain, steps.isEmpty() && markers.isEmpty());
    }

    void aPanelWithOptionsIsTheWindows_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<Steps>("steps");
        QTest::newRow("plain") << QStringList{} << Steps{};
        QTest::newRow("flat") << QStringList{"--flat", upperSand} << Steps{{"flatAtBox", upperSand}};
        QTest::newRow("scale") << QStringList{"--scale", "2500"} << Steps{{"scaleEdit", "2500"}};
        QTest::newRow("TVDSS in feet") << QStringList{"--type", "TVDSS", "--unit", "FEET", "--scale", "4000"}
                                       << Steps{{"depthTypeBox", "TVDSS"},
                                                {"depthUnitBox", "FEET"},
                                                {"scaleEdit", "4000"}};
    }
    void aPanelWithOptionsIsTheWindows()
    {
        QFETCH(QStringList, options);
        QFETCH(Steps, steps);
        const QImage picture = drawn({"correlate", demo::demoCorrelationName()}, options);
        const QImage plain = drawn({"correlate", demo::demoCorrelationName()}, {});
        batch::Session session(m_demo.original(), {});
        const QImage shown = panelInWindow(session.project(), steps);
        QVERIFY(!shown.isNull());
        QCOMPARE(picture.size(), shown.size());
        QCOMPARE(picture, shown);
        QCOMPARE(picture == plain, steps.isEmpty());
    }

    // As a correlation that was saved with these markers; without the option it is its own.
    void theMarkersOfAPanelAreThoseThatWereAskedFor_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QStringList>("markers");
        QTest::newRow("two") << QStringList{"--markers", limestone + ',' + upperSand}
                             << QStringList{limestone, upperSand};
        QTest::newRow("none") << QStringList{"--markers", "none"} << QStringList{};
        QTest::newRow("all") << QStringList{"--markers", "all"} << QStringList{"*"};
    }
    void theMarkersOfAPanelAreThoseThatWereAskedFor()
    {
        QFETCH(QStringList, options);
        QFETCH(QStringList, markers);
        const QStringList words{"correlate", demo::demoCorrelationName()};
        const QImage picture = drawn(words, options + QStringList{"--scale", "4000"});
        batch::Session session(m_demo.copy(), {});
        ProjectData &data = session.project();
        auto properties = correlation::load(data.project, demo::demoCorrelationName(), correlation::knownNames(data));
        QVERIFY(properties);
        const QStringList own = properties->markers;
        QVERIFY(own.size() > 2);
        if (markers == QStringList{"*"}) {
            markers.clear();
            for (const CorrelationWell &well : qAsConst(properties->wells))
                markers += markersOf(session, well.wellName);
            markers.removeDuplicates();
            QVERIFY(markers.size() > own.size());
        }
        properties->markers = markers;
        properties->scale = 4000;
        QVERIFY(correlation::write(data.project, *properties).ok());
        const QImage shown = panelInWindow(data, {});
        QVERIFY(!shown.isNull());
        QCOMPARE(picture.size(), shown.size());
        QCOMPARE(picture, shown);
        QVERIFY(picture != drawn(words, {"--scale", "4000"}));
    }

    void aMarkerMayBeCalledAllOrNone()
    {
        const QString survey = m_demo.copy();
        survey::SurveyStore store(survey);
        const QString key = store.list().value.first().key;
        const auto problems = [&](const QString &markers) {
            return runBatch({"render", m_well + ":Simple", "--out", m_files.filePath("called.png"), "--dry-run",
                             "--markers", markers, "--survey", survey})
                .errors;
        };
        QVERIFY2(problems("\\none").contains("has no marker \"none\""), qPrintable(problems("\\none")));
        QVERIFY(store.writeMarkers(key, {{"none", 1100, Qt::red}, {"Base", 1200, Qt::blue}}).ok());
        QCOMPARE(problems("\\none"), QString());
        QCOMPARE(problems("Base,\\none"), QString());
        QVERIFY(problems("Base,none").contains("(\\all)"));
        QVERIFY(problems("\\all").contains("has no marker \"all\""));
        QVERIFY(problems("\\\\none").contains("has no marker \"\\none\""));
        QVERIFY(problems("\\other").contains("has no marker \"\\other\""));
        const QStringList words{"render", m_well + ":Simple", "--survey", survey};
        const QImage marked = drawn(words, {"--markers", "\\none"});
        QVERIFY(!marked.isNull());
        QVERIFY(marked != drawn(words, {"--markers", "none"}));
        QVERIFY(marked != drawn(words, {"--markers", "all"}));
    }

    void everyPageOfAPdfTellsWhatItShows()
    {
        if (!canReadTexts())
            QSKIP("pdftotext is not installed");
        const QString file = m_files.filePath("pages.pdf");
        const BatchRun run = runBatch({"render", m_well + ":Simple", "--scale", "1000", "--from", "1000", "--to",
                                       "1500", "--out", file, "--json", "--survey", m_demo.original()});
        VERIFY_EXIT(0, run);
        const int pages = run.record("files").value("pages").toInt();
        QVERIFY(pages > 2);
        QCOMPARE(pdf::read(files::read(file)).pages.size(), pages);
        QString start = "1000";
        for (int page = 1; page <= pages; ++page) {
            const QString text = textOf(file, page);
            for (const char *header : {"GR", "gAPI", "MD"})
                QVERIFY2(text.contains(QLatin1String(header), Qt::CaseInsensitive),
                         qPrintable(QStringLiteral("%1 %2: %3").arg(page).arg(header, text)));
            static const QRegularExpression footer(
                QStringLiteral("(\\S+) 1:1000 MD (\\d+) – (\\d+) m Page (\\d+) of (\\d+)$"));
            const QRegularExpressionMatch found = footer.match(text);
            QVERIFY2(found.hasMatch(), qPrintable(text.right(120)));
            QCOMPARE(found.captured(1), m_well);
            QCOMPARE(found.captured(2), start); // where the last one ended
            QCOMPARE(found.captured(4).toInt(), page);
            QCOMPARE(found.captured(5).toInt(), pages);
            start = found.captured(3);
        }
        QCOMPARE(start, QString("1500"));
    }

    void paperHasTheSizeThatWasAskedFor()
    {
        const QString file = m_files.filePath("paper.pdf");
        for (const auto &[paper, shortMm, longMm] :
             {std::tuple("A4", 210.0, 297.0), std::tuple("A3", 297.0, 420.0)}) {
            VERIFY_EXIT(0,
                        runBatch({"render", m_well + ":Simple", "--scale", "2000", "--paper", paper, "--out", file,
                                  "--force", "--survey", m_demo.original()}));
            const pdf::File pdf = pdf::read(files::read(file));
            QVERIFY(pdf.pages.size() > 1);
            for (const pdf::Page &page : pdf.pages) {
                const QSizeF size = page.sizeMm;
                QVERIFY2(qAbs(qMin(size.width(), size.height()) - shortMm) < 0.5, paper);
                QVERIFY2(qAbs(qMax(size.width(), size.height()) - longMm) < 0.5, paper);
            }
        }
    }

    // Curves are as fine as the printer: fewer dots need fewer corners, and 600 is what stands without the option.
    void paperHasThePrintersDots()
    {
        const QString file = m_files.filePath("dots.pdf");
        const auto pages = [&](const QStringList &options) {
            runBatch(QStringList{"render", m_well + ":Simple", "--scale", "5000", "--paper", "continuous", "--out",
                                 file, "--force", "--survey", m_demo.original()}
                     + options);
            return pdf::read(files::read(file)).contents;
        };
        const QVector<QByteArray> usual = pages({});
        QCOMPARE(usual.size(), 1);
        QCOMPARE(pages({"--dpi", "600"}), usual);
        const int fine = pages({"--dpi", "1200"}).value(0).size();
        const int coarse = pages({"--dpi", "150"}).value(0).size();
        QVERIFY2(coarse > 0 && 2 * coarse < usual.first().size(), qPrintable(QString::number(coarse)));
        QVERIFY2(fine > usual.first().size(), qPrintable(QString::number(fine)));
    }

private:
    /// The picture that the program draws.
    QImage drawn(const QStringList &words, const QStringList &options)
    {
        const QString file = m_files.filePath("picture.png");
        const BatchRun run = runBatch(
            words + QStringList{"--out", file, "--force"}
                + (words.contains("--survey") ? QStringList() : QStringList{"--survey", m_demo.original()}) + options,
            m_files.path());
        return run.exitCode == 0 ? QImage(file).convertToFormat(QImage::Format_RGB32) : QImage();
    }

    static QImage panelInWindow(ProjectData &data, const Steps &steps)
    {
        CorrelationDisplayWidget window(data, demo::demoCorrelationName(), nullptr);
        window.resize(700, 500);
        window.show();
        doSteps(window.view()->panel(), steps);
        window.view()->makeAllWells();
        return pictureOf(*window.headerView()->scene(), *window.view()->scene());
    }

    static QStringList markersOf(batch::Session &session, const QString &wellName)
    {
        const WellsCatalogue &catalogue = session.project().catalogue;
        const auto markers = catalogue.readWellMarkers(catalogue.indexOf(wellName));
        QStringList names;
        for (const WellMarker &marker : *markers)
            names.append(marker.name);
        return names;
    }

    const QString m_well = QStringLiteral("Aldra-1");
    BatchFixture m_demo;
    QTemporaryDir m_files;
};

LORVA_TEST_MAIN(tst_batchdrawing)
#include "tst_batchdrawing.moc"
