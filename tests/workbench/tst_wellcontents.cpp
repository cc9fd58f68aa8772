#include "dialogscript.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/wellcontents.h"

#include <QColorDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace workbench;

namespace {

const IsolatedSettings isolated;

} // namespace

/// The logs and markers of one well, changed as a user does: by double click, keys and buttons.
class TestWellContents : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void showsLogsAndMarkers();
    void renamesALog();
    void renamesAMarker();
    void movesAMarker();
    void theSelectionFollowsAMarker();
    void movesAMarkerInFeet();
    void coloursAMarker();
    void removesAMarker();
    void importsTops();
    void topsOfAnotherWell();
    void topsOfTheWellByAnotherName();
    void groupsCannotBeChanged();

private:
    void makeWell(survey::DepthUnit unit = survey::DepthUnit::Metre)
    {
        m_contents.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        const QString path = m_folder->filePath(QStringLiteral("survey"));
        survey::NewSurvey fresh;
        fresh.depthUnit = unit;
        QCOMPARE(survey::createSurvey(path, fresh).error, QString());
        m_store = std::make_unique<survey::SurveyStore>(path);
        survey::WellProperties well;
        well.name = QStringLiteral("W-1");
        well.totalDepth = 2000;
        const host::LogData gamma{QStringLiteral("GR"), QStringLiteral("gAPI"), {100, 101, 102}, {1, 2, 3}};
        const host::LogData density{QStringLiteral("RHOB"), QStringLiteral("g/cc"), {100, 101}, {2, 3}};
        m_well = {well.name, m_store->addWell(well, {gamma, density}).value};
        const float metres = unit == survey::DepthUnit::Foot ? 0.3048f : 1;
        QCOMPARE(m_store
                     ->writeMarkers(m_well.key,
                                    {{QStringLiteral("Top"), 100 * metres, Qt::red},
                                     {QStringLiteral("Base"), 1500 * metres, Qt::blue}})
                     .error,
                 QString());
        m_contents = std::make_unique<WellContents>(*m_store, m_asker, chooser());
        m_contents->showWell(m_well);
        QVERIFY(showActive(m_contents.get()));
    }
    FileChooser chooser()
    {
        return {[](QWidget *, const QString &, const QString &) { return QString(); },
                [this](QWidget *, const QString &, const QString &, const QString &) { return m_chosen; }};
    }
    QTreeWidget *tree() const { return m_contents->findChild<QTreeWidget *>(); }
    QTreeWidgetItem *log(int row) const { return tree()->topLevelItem(0)->child(row); }
    QTreeWidgetItem *marker(int row) const { return tree()->topLevelItem(1)->child(row); }
    QPushButton *button(const char *name) const { return m_contents->findChild<QPushButton *>(QLatin1String(name)); }
    void click(QTreeWidgetItem *item, int column = 0) const
    {
        const QRect row = tree()->visualItemRect(item);
        const int x = tree()->columnViewportPosition(column) + (column == 0 ? row.x() : 0) + 5;
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, QPoint(x, row.center().y()));
    }
    void type(const QString &text) const
    {
        auto *editor = tree()->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!tree()->viewport()->findChild<QLineEdit *>());
        QCoreApplication::processEvents();
    }
    QString markers() const
    {
        QStringList texts;
        for (const host::Marker &each : survey::SurveyStore(m_store->surveyDirectory()).markers(m_well.key).value)
            texts.append(QStringLiteral("%1@%2").arg(each.name).arg(static_cast<double>(each.depth)));
        return texts.join(u' ');
    }
    QStringList logs() const
    {
        QStringList names;
        for (const host::LogInfo &info : survey::SurveyStore(m_store->surveyDirectory()).logs(m_well.key).value)
            names.append(info.name);
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<survey::SurveyStore> m_store;
    ScriptedAsker m_asker;
    QStringList m_chosen;
    host::WellEntry m_well;
    std::unique_ptr<WellContents> m_contents;
};

void TestWellContents::init()
{
    m_asker = ScriptedAsker();
    m_chosen.clear();
    makeWell();
}

void TestWellContents::showsLogsAndMarkers()
{
    QCOMPARE(tree()->headerItem()->text(3), QStringLiteral("Top (m)"));
    QCOMPARE(tree()->topLevelItem(0)->text(0), QStringLiteral("Logs (2)"));
    QCOMPARE(tree()->topLevelItem(1)->text(0), QStringLiteral("Markers (2)"));
    QStringList texts;
    for (int column = 0; column < 5; ++column)
        texts.append(log(0)->text(column));
    QCOMPARE(texts.join(u'|'), QStringLiteral("GR|gAPI|3|100.00|102.00"));
    QCOMPARE(marker(0)->text(0), QStringLiteral("Top"));
    QCOMPARE(marker(0)->text(3), QStringLiteral("100.00"));
    QCOMPARE(marker(0)->icon(0).pixmap(4, 4).toImage().pixelColor(1, 1), QColor(Qt::red));
    makeWell(survey::DepthUnit::Foot);
    QCOMPARE(tree()->headerItem()->text(4), QStringLiteral("Base (ft)"));
    QCOMPARE(marker(1)->text(3), QStringLiteral("1500.00"));
    m_contents->showWell({});
    QCOMPARE(tree()->topLevelItemCount(), 0);
    QVERIFY(!button("importTopsButton")->isEnabled());
}

void TestWellContents::renamesALog()
{
    const QByteArray before = files::read(m_store->surveyDirectory() + QStringLiteral("/WellInfo/W-1^1.wll"));
    QSignalSpy changed(m_contents.get(), &WellContents::changed);
    click(log(0));
    QTest::keyClick(tree(), Qt::Key_F2);
    type(QStringLiteral("GR_edited"));
    QCOMPARE(logs(), (QStringList{QStringLiteral("GR_edited"), QStringLiteral("RHOB")}));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(log(0)->text(0), QStringLiteral("GR_edited"));
    const QByteArray after = files::read(m_store->surveyDirectory() + QStringLiteral("/WellInfo/W-1^1.wll"));
    QCOMPARE(after.right(3 * 8), before.right(3 * 8)); // the samples
    QCOMPARE(m_store->log(m_well.key, 0).value.unit, QStringLiteral("gAPI"));
    QVERIFY(m_asker.boxes.isEmpty());

    // A second time, while it is edited: the editor stays as it is.
    click(log(0));
    QTest::keyClick(tree(), Qt::Key_F2);
    auto *editor = tree()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, "x");
    QTest::keyClick(editor, Qt::Key_F2);
    button("renameContentButton")->click(); // as by its letter, which leaves the focus where it is
    QCOMPARE(tree()->viewport()->findChild<QLineEdit *>(), editor);
    QCOMPARE(editor->text(), QString("x"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_VERIFY(!tree()->viewport()->findChild<QLineEdit *>());
    QCOMPARE(log(0)->text(0), QStringLiteral("GR_edited"));

    // A name that is taken: a box, and nothing changes.
    click(log(0));
    QTest::mouseClick(button("renameContentButton"), Qt::LeftButton);
    type(QStringLiteral("RHOB"));
    QCOMPARE(m_asker.boxes.last().title, QStringLiteral("Rename log"));
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("The well has a log \"RHOB\" already."));
    QCOMPARE(logs(), (QStringList{QStringLiteral("GR_edited"), QStringLiteral("RHOB")}));
    QCOMPARE(log(0)->text(0), QStringLiteral("GR_edited"));
}

void TestWellContents::renamesAMarker()
{
    click(marker(0));
    QTest::mouseClick(button("renameContentButton"), Qt::LeftButton);
    type(QStringLiteral("Upper"));
    QCOMPARE(markers(), QStringLiteral("Upper@100 Base@1500"));
    QTest::mouseClick(button("renameContentButton"), Qt::LeftButton); // it is still selected
    type(QStringLiteral("Base"));
    QCOMPARE(m_asker.boxes.last().title, QStringLiteral("Change marker"));
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("The well has a marker \"Base\" already."));
    QCOMPARE(markers(), QStringLiteral("Upper@100 Base@1500"));
    click(marker(0));
    QTest::mouseClick(button("renameContentButton"), Qt::LeftButton);
    auto *editor = tree()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText(QString(QChar(0x3000))); // a blank too
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!tree()->viewport()->findChild<QLineEdit *>());
    QCoreApplication::processEvents();
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("A marker needs a name."));
    QCOMPARE(markers(), QStringLiteral("Upper@100 Base@1500"));
}

void TestWellContents::movesAMarker()
{
    click(marker(0), 3);
    const QRect row = tree()->visualItemRect(marker(0));
    QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {},
                       QPoint(tree()->columnViewportPosition(3) + 5, row.center().y()));
    type(QStringLiteral("250.5"));
    QCOMPARE(markers(), QStringLiteral("Top@250.5 Base@1500"));
    click(marker(0));
    QTest::mouseClick(button("markerDepthButton"), Qt::LeftButton);
    type(QStringLiteral("2000.5"));
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("The depth must lie between 0 and the total depth, 2000 m."));
    QCOMPARE(markers(), QStringLiteral("Top@250.5 Base@1500"));
    QCOMPARE(marker(0)->text(3), QStringLiteral("250.50"));
}

// What is selected stays selected in its new row, so that the next key is for it.
void TestWellContents::theSelectionFollowsAMarker()
{
    const auto selected = [this] {
        const QList<QTreeWidgetItem *> items = tree()->selectedItems();
        return items.isEmpty() ? QString() : items.first()->text(0);
    };
    click(marker(0));
    QTest::mouseClick(button("markerDepthButton"), Qt::LeftButton);
    type(QStringLiteral("1800"));
    QCOMPARE(markers(), QStringLiteral("Base@1500 Top@1800"));
    QCOMPARE(selected(), QStringLiteral("Top"));
    QTest::keyClick(tree(), Qt::Key_F2);
    type(QStringLiteral("Lower"));
    QCOMPARE(selected(), QStringLiteral("Lower"));
    m_contents->showWell(m_well); // as after a refresh
    QCOMPARE(selected(), QStringLiteral("Lower"));
    click(log(1));
    QTest::keyClick(tree(), Qt::Key_F2);
    type(QStringLiteral("Density"));
    QCOMPARE(selected(), QStringLiteral("Density"));
    m_asker.answers = {base::BoxButton::Yes};
    click(marker(1));
    QTest::keyClick(tree(), Qt::Key_Delete); // its place is taken
    QCOMPARE(selected(), QStringLiteral("Base"));
}

void TestWellContents::movesAMarkerInFeet()
{
    makeWell(survey::DepthUnit::Foot);
    click(marker(0));
    QTest::mouseClick(button("markerDepthButton"), Qt::LeftButton);
    type(QStringLiteral("1000"));
    QCOMPARE(m_store->markers(m_well.key).value.first().depth, 304.8f);
    QCOMPARE(marker(0)->text(3), QStringLiteral("1000.00"));
    click(marker(0));
    QTest::mouseClick(button("markerDepthButton"), Qt::LeftButton);
    type(QStringLiteral("1000.4"));
    const QByteArray stored = files::read(m_store->surveyDirectory() + "/WellInfo/W-1.wlm");
    QVERIFY2(stored.contains(": 1000.4\n"), stored); // the digits that were typed
}

void TestWellContents::coloursAMarker()
{
    click(marker(1));
    onNextDialog(QStringLiteral("markerColorDialog"), [](QDialog *dialog) {
        auto *colors = qobject_cast<QColorDialog *>(dialog);
        colors->setCurrentColor(QColor(1, 2, 3));
        QMetaObject::invokeMethod(colors, "accept");
    });
    QTest::mouseClick(button("markerColorButton"), Qt::LeftButton);
    QCOMPARE(m_store->markers(m_well.key).value.at(1).color, QColor(1, 2, 3));
    QCOMPARE(markers(), QStringLiteral("Top@100 Base@1500"));
}

void TestWellContents::removesAMarker()
{
    click(marker(0));
    m_asker.answers = {base::BoxButton::No, base::BoxButton::Yes};
    QTest::keyClick(tree(), Qt::Key_Delete);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("Remove the marker \"Top\" of the well \"W-1\"?\nThis cannot be undone."));
    QCOMPARE(markers(), QStringLiteral("Top@100 Base@1500"));
    QTest::keyClick(tree(), Qt::Key_Delete);
    QCOMPARE(markers(), QStringLiteral("Base@1500"));
}

void TestWellContents::importsTops()
{
    m_chosen = QStringList{m_folder->filePath(QStringLiteral("tops.csv"))};
    files::write(m_chosen.first(), "Name,MD\nTop,120\nMiddle,800\nToo deep,2500\n");
    m_asker.answers = {base::BoxButton::No, base::BoxButton::Yes};
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("3 tops for the well \"W-1\", depths in metres: 1 new, 1 with another depth.\n"
                            "Below the total depth and so left out: Too deep.\nTake them?"));
    QCOMPARE(markers(), QStringLiteral("Top@100 Base@1500"));
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(markers(), QStringLiteral("Top@120 Middle@800 Base@1500"));
    QCOMPARE(m_store->markers(m_well.key).value.first().color, QColor(Qt::red));

    files::write(m_chosen.first(), "Name,MD\nA,6000\nB,7000\n"); // feet, to all appearance
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("2 tops for the well \"W-1\", depths in metres: 0 new, 0 with another depth.\n"
                            "Below the total depth and so left out: A, B.\n"
                            "The file tells no unit of its depths; a title like \"MD (ft)\" would.\n"
                            "There is nothing to change."));
    files::write(m_chosen.first(), "Name,MD (m)\nA,6000\n");
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QVERIFY(!m_asker.boxes.last().text.contains(QLatin1String("no unit")));
    files::write(m_chosen.first(), "Name,MD\nTop,120\nMiddle,800\nToo deep,2500\n");

    // The same again: nothing is asked.
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().icon, base::BoxIcon::Information);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("3 tops for the well \"W-1\", depths in metres: 0 new, 0 with another depth.\n"
                            "Below the total depth and so left out: Too deep.\nThere is nothing to change."));
    files::write(m_chosen.first(), "Name,MD\nTop,120\nTop,130\n");
    m_asker.answers = {base::BoxButton::Yes};
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("2 tops for the well \"W-1\", depths in metres: 1 new, 0 with another depth.\n"
                            "At several depths, and so with a number behind the further ones: Top.\nTake them?"));
    QCOMPARE(markers(), QStringLiteral("Top@120 Top_2@130 Middle@800 Base@1500"));
    files::write(m_chosen.first(), "Name,MD\nTop,125\n");
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QVERIFY(m_asker.boxes.last().text.startsWith(QLatin1String("1 top for the well")));

    files::write(m_chosen.first(), "Well;Name;MD [ft]\nW-1;Lower;3280,84\nW-1;Gap;\nW-2;Gap;\n");
    m_asker.answers = {base::BoxButton::Yes};
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("1 top for the well \"W-1\", depths in feet: 1 new, 0 with another depth.\n"
                            "Lines without a name or a depth are left out: 1.\nTake them?"));
    QVERIFY(markers().contains(QLatin1String("Lower@1000 ")));
}

void TestWellContents::topsOfAnotherWell()
{
    m_chosen = QStringList{m_folder->filePath(QStringLiteral("tops.csv"))};
    files::write(m_chosen.first(), "Well,Name,MD\nW-2,Top,120\n,Base,130\nW-3,Top,140\nw 2,Base,150\n");
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("The file names no top of the well \"W-1\". Its wells are: W-2, W-3."));
    QByteArray wells = "Well,Name,MD\n";
    for (char well = 'A'; well <= 'L'; ++well) {
        wells += QByteArray(1, well) + ",Top,120\n";
        files::write(m_chosen.first(), wells);
        if (well == 'J' || well == 'L')
            QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
        if (well == 'J')
            QVERIFY(m_asker.boxes.last().text.endsWith(QLatin1String(" A, B, C, D, E, F, G, H, I, J.")));
    }
    QVERIFY(m_asker.boxes.last().text.endsWith(QLatin1String(" A, B, C, D, E, F, G, H, I, J and 2 more.")));
    files::write(m_chosen.first(), "Well,Name,MD\n,Top,120\n");
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("tops.csv: no line has a well, a name and a depth that can be read."));
    files::write(m_chosen.first(), "nothing here\n");
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("tops.csv: the file holds no line with a name and a depth."));
    m_chosen = QStringList{m_folder->filePath(QStringLiteral("gone.csv"))};
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QVERIFY(m_asker.boxes.last().text.contains(QLatin1String("gone.csv")));
    QCOMPARE(markers(), QStringLiteral("Top@100 Base@1500"));
}

void TestWellContents::topsOfTheWellByAnotherName()
{
    m_chosen = QStringList{m_folder->filePath(QStringLiteral("tops.csv"))};
    files::write(m_chosen.first(), "uwi,form,depth\n42303,Top,120\n42-303,Lower,800\n42303,Gap,\n");
    m_asker.answers = {base::BoxButton::No, base::BoxButton::Yes};
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text,
             QStringLiteral("2 tops for the well \"W-1\", depths in metres: 1 new, 1 with another depth.\n"
                            "The file calls its only well \"42303\".\n"
                            "Lines without a name or a depth are left out: 1.\nTake them?"));
    QCOMPARE(m_asker.boxes.last().buttons.first(), base::BoxButton::No); // it may be another well after all
    QCOMPARE(markers(), QStringLiteral("Top@100 Base@1500"));
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QCOMPARE(markers(), QStringLiteral("Top@120 Lower@800 Base@1500"));
    files::write(m_chosen.first(), "uwi,form,depth\nw 1,Top,130\n"); // its name, in other letters
    QTest::mouseClick(button("importTopsButton"), Qt::LeftButton);
    QVERIFY(!m_asker.boxes.last().text.contains(QLatin1String("only well")));
}

void TestWellContents::groupsCannotBeChanged()
{
    click(tree()->topLevelItem(1));
    for (const char *name : {"renameContentButton", "markerDepthButton", "markerColorButton", "removeLogButton"})
        QVERIFY(!button(name)->isEnabled());
    click(log(1));
    QVERIFY(button("renameContentButton")->isEnabled() && button("removeLogButton")->isEnabled());
    QVERIFY(!button("markerDepthButton")->isEnabled() && !button("markerColorButton")->isEnabled());
    // Nor can what a log's samples tell.
    for (int column = 1; column < tree()->columnCount(); ++column) {
        emit tree()->itemDoubleClicked(log(1), column);
        QVERIFY(!tree()->viewport()->findChild<QLineEdit *>());
    }
    m_asker.answers = {base::BoxButton::No};
    QTest::keyClick(tree(), Qt::Key_Delete);
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(logs().size(), 2);
}

LORVA_TEST_MAIN(TestWellContents)
#include "tst_wellcontents.moc"
