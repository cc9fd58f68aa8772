#include "ownprogram.h"
#include "support/files.h"
#include "support/grabbed.h"
#include "support/testmain.h"

#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGraphicsView>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QUrl>

#include <cmath>

namespace {

const IsolatedSettings isolated;

/// Of the gamma ray in the template that every project begins with, #0e6f21, thinned by smoothing; all else is grey, red,
/// blue or black.
bool isGammaGreen(QRgb pixel)
{
    return qGreen(pixel) - qRed(pixel) > 25 && qGreen(pixel) - qBlue(pixel) > 20;
}

/// Where the gamma ray of a file begins and ends, told by a reader that knows no more than rows of numbers.
struct GammaRange
{
    double topM = 0;
    double baseM = 0;
    bool isFound() const { return baseM > topM; }
};

GammaRange gammaRange(const QByteArray &bytes, double metres)
{
    GammaRange range;
    int column = -1;
    int columns = 0;
    char section = 0;
    for (QByteArray line : bytes.split('\n')) {
        line = line.trimmed();
        if (line.startsWith('~')) {
            section = line.at(1);
        } else if (section == 'C' && !line.isEmpty() && !line.startsWith('#')) {
            if (line.left(line.indexOf('.')).trimmed() == "GR")
                column = columns;
            ++columns;
        } else if (section == 'A' && !line.startsWith('#')) {
            const QByteArrayList values = line.simplified().split(' ');
            if (values.size() != columns || column < 0)
                continue;
            const double value = values.at(column).toDouble();
            if (value < 2 || value > 200)
                continue; // null, on the line at the side of the track, or beyond it
            const double depthM = values.first().toDouble() * metres;
            range.topM = range.baseM > 0 ? qMin(range.topM, depthM) : depthM;
            range.baseM = qMax(range.baseM, depthM);
        }
    }
    return range;
}

} // namespace

/// What a newcomer with own files does, through the workbench's window and the built plug-in: a new survey, the folder
/// dropped, one button pressed, the plug-in launched, a well checked, and the curves stand at their depths.
class tst_ownfiles : public QObject
{
    Q_OBJECT

private slots:
    void fromFilesToCurves_data();
    void fromFilesToCurves();
    void theFirstLaunchKnowsTheTemplates();
    void realFiles_data();
    void realFiles();

private:
    /// The first and the last row of the display, from the top of its range, that hold the gamma ray. Every part of
    /// the display is scrolled into view, as a user sees it.
    static QPair<int, int> gammaRows(QGraphicsView *view)
    {
        QPair<int, int> rows(-1, -1);
        QScrollBar *bar = view->verticalScrollBar();
        const int page = view->viewport()->height();
        for (int at = bar->minimum();; at = qMin(at + page, bar->maximum())) {
            bar->setValue(at);
            const QImage image = grabbed(view->viewport());
            const int top = view->mapFromScene(0, 0).y(); // the viewport's row of the display's first
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (isGammaGreen(image.pixel(x, y))) {
                        rows.first = rows.first < 0 ? y - top : qMin(rows.first, y - top);
                        rows.second = qMax(rows.second, y - top);
                        break;
                    }
            if (at == bar->maximum())
                return rows;
        }
    }
    /// The display begins at depth 0; its scale is 1:1000 at 96 dots an inch.
    static double rowOf(double depthM) { return depthM / 1000 * 100 * 96 / 2.54; }
    static void compareRows(QGraphicsView *view, const GammaRange &expected)
    {
        const QPair<int, int> rows = gammaRows(view);
        QVERIFY2(std::fabs(rows.first - rowOf(expected.topM)) <= 3,
                 qPrintable(QStringLiteral("top: %1, not %2").arg(rows.first).arg(rowOf(expected.topM))));
        QVERIFY2(std::fabs(rows.second - rowOf(expected.baseM)) <= 3,
                 qPrintable(QStringLiteral("base: %1, not %2").arg(rows.second).arg(rowOf(expected.baseM))));
    }
};

void tst_ownfiles::fromFilesToCurves_data()
{
    QTest::addColumn<bool>("isInFeet");
    QTest::newRow("a survey in metres") << false;
    QTest::newRow("a survey in feet") << true;
}

// Files in metres and feet, wrapped, with commas: the gamma ray stands between 100 and 250 metres or feet.
void tst_ownfiles::fromFilesToCurves()
{
    QFETCH(bool, isInFeet);
    OwnProgram program(isInFeet);
    QVERIFY(program.window.hasSurvey());
    const auto head = [](const char *name, const char *unit, const char *version) {
        return QByteArray("~V\nVERS. 2.0 :\n") + version + "\n~W\nSTRT." + unit + " 100 :\nSTOP." + unit
            + " 250 :\nSTEP." + unit + " 0.5 :\nNULL. -999.25 :\nWELL. " + name + " : WELL\nUWI. 42 :\n~C\nDEPT."
            + unit + " :\nGR.GAPI :\nRHOB.G/C3 :\n~A\n";
    };
    QByteArray plain;
    QByteArray wrapped;
    QByteArray commas;
    for (int i = 0; i <= 300; ++i) {
        const QByteArray depth = QByteArray::number(100 + 0.5 * i);
        const QByteArray gamma = QByteArray::number(60 + 40 * std::sin(0.2 * i));
        plain += depth + ' ' + gamma + " 2.4\n";
        wrapped += depth + '\n' + gamma + " 2.4\n";
        commas += depth + ',' + gamma + ",2.4\n";
    }
    const QDir own(program.folder.filePath("own"));
    files::write(own.filePath("metres.las"), head("Metres", "M", "WRAP. NO :") + plain);
    files::write(own.filePath("feet.LAS"), head("Feet", "FT", "WRAP. NO :") + plain);
    files::write(own.filePath("deeper/wrapped.las"), head("Wrapped", "F", "WRAP. YES :") + wrapped);
    files::write(own.filePath("deeper/commas.las"), head("Commas", "M", "DLM. COMMA :") + commas);
    files::write(own.filePath("readme.txt"), "no LAS file\n");
    program.drop(own.path());
    QVERIFY2(program.summary.startsWith("4 wells were made with 8 logs.\n"), qPrintable(program.summary));
    QVERIFY2(program.summary.contains("readme.txt"), qPrintable(program.summary));

    program.launch();
    QCOMPARE(program.wells()->childCount(), 4);
    for (const char *name : {"Metres", "Feet", "Wrapped", "Commas"}) {
        const double metres = name == QByteArray("Feet") || name == QByteArray("Wrapped") ? 0.3048 : 1;
        QGraphicsView *view = program.display(name);
        QVERIFY(view);
        compareRows(view, {100 * metres, 250 * metres});
    }
    QVERIFY(program.boxes.seen.isEmpty());
    QVERIFY(program.asker.boxes.isEmpty());
}

void tst_ownfiles::theFirstLaunchKnowsTheTemplates()
{
    OwnProgram program(false);
    QVERIFY(QFile::exists(program.survey() + "/WLC/Templates/Global/Default/Track_1.txt"));
    files::write(program.folder.filePath("own/a.las"),
                 "~V\nVERS. 2.0 :\n~W\nSTOP.M 20 :\nWELL. A :\n~C\nDEPT.M :\nGR.GAPI :\n~A\n10 1\n20 2\n");
    program.drop(program.folder.filePath("own"));
    program.launch();
    QStringList templates;
    QTreeWidgetItem *well = program.well("A");
    QVERIFY(well);
    QTreeWidgetItemIterator items(well);
    for (; *items; ++items)
        templates.append((*items)->text(0));
    QVERIFY2(templates.contains("Default") && templates.contains("Simple"), qPrintable(templates.join(' ')));
}

void tst_ownfiles::realFiles_data()
{
    fromFilesToCurves_data();
}

// Wells of real files, in metres and in feet, against where the numbers of the files begin and end.
void tst_ownfiles::realFiles()
{
    QFETCH(bool, isInFeet);
    const QString folder = files::sharedFolder(QStringLiteral("las"));
    if (folder.isEmpty())
        QSKIP("The folder of real data has no LAS files.");
    OwnProgram program(isInFeet);
    program.drop(folder);
    const int made = program.summary.section(' ', 0, 0).toInt();
    QVERIFY2(made >= 30, qPrintable(program.summary));
    program.launch();
    QCOMPARE(program.wells()->childCount(), made);
    struct Known
    {
        const char *file;
        const char *well;
        double metres;
    };
    int compared = 0;
    for (const Known &known :
         {Known{"00-07-36-067-03W4-0.LAS", "07-36-067-03W4", 1},
          Known{"00-11-04-067-03W4-0.LAS", "11-04-067-03W4", 1}, Known{"F03-02.las", "F/3-2", 1},
          Known{"15-9-19_SR_COMP.LAS", "15/9-19", 1}, Known{"1020068962.las", nullptr, 0.3048},
          Known{"42303347740000.las", nullptr, 0.3048}, Known{"ex5_1045399772.las", nullptr, 0.3048}}) {
        const QByteArray bytes = files::read(folder + '/' + known.file);
        QString name = known.well;
        if (name.isEmpty()) { // the summary names the well of a file
            const QString line = program.summary.section(QString::fromLatin1(" (%1):").arg(known.file), 0, 0);
            name = line.section('\n', -1).trimmed();
        }
        const GammaRange range = gammaRange(bytes, known.metres);
        if (!range.isFound() || !program.well(name))
            continue;
        QVERIFY(program.totalDepthM(name) >= range.baseM - 0.001);
        QGraphicsView *view = program.display(name);
        QVERIFY(view);
        compareRows(view, range);
        ++compared;
        qInfo("%s: %.1f to %.1f m", known.file, range.topM, range.baseM);
    }
    QVERIFY(compared >= 5);
}

LORVA_TEST_MAIN(tst_ownfiles)
#include "tst_ownfiles.moc"
