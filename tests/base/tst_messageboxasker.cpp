#include "base/messageboxasker.h"
#include "base/waitcursor.h"
#include "support/boxdriver.h"
#include "support/testmain.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTranslator>

namespace {

/// A host in another language.
class Translator : public QTranslator
{
public:
    QString translate(const char *, const char *source, const char *, int) const override
    {
        const QString text = QString::fromLatin1(source).remove(QLatin1Char('&'));
        if (text == QLatin1String("OK"))
            return QStringLiteral("Einverstanden");
        if (text == QLatin1String("Yes"))
            return QStringLiteral("Ja");
        return text == QLatin1String("No") ? QStringLiteral("Nein") : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestMessageBoxAsker : public QObject
{
    Q_OBJECT

private slots:
    void showsTitleTextIconAndButtonsInOrder();
    void okMayHaveATextOfItsOwn();
    void yesAndNoKeepTheirTextsInATranslatedHost();
    void everyButtonAnswersForItself();
    void escapeIsNo();
    void escapeIsCancelWhereThatIsOffered();
    void escapeIsOkWithoutNo();
    void returnIsTheFirstButton();
    void showsTextLiterally();
    void isOverItsParent();
    void staysOverTheWindowOfTheBoxBefore();
    void survivesItsParent();
    void survivesItsParentWhileTheBoxIsShown();
    void theBoxHasAnArrowWhateverWaitsForIt();
};

void TestMessageBoxAsker::showsTitleTextIconAndButtonsInOrder()
{
    BoxDriver driver;
    base::MessageBoxAsker asker;
    asker.inform(QStringLiteral("Sync Data"), QStringLiteral("done !"));
    asker.warn(QStringLiteral("LAS"), QStringLiteral("two\nlines"));
    asker.confirm(QStringLiteral("Template"), QStringLiteral("override it ?"));
    QCOMPARE(driver.seen.size(), 3);
    QCOMPARE(driver.seen.at(0).title, QStringLiteral("Sync Data"));
    QCOMPARE(driver.seen.at(0).text, QStringLiteral("done !"));
    QCOMPARE(driver.seen.at(0).icon, QMessageBox::Information);
    QCOMPARE(driver.seen.at(0).buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(driver.seen.at(1).text, QStringLiteral("two\nlines"));
    QCOMPARE(driver.seen.at(1).icon, QMessageBox::Warning);
    QCOMPARE(driver.seen.at(1).buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(driver.seen.at(2).title, QStringLiteral("Template"));
    QCOMPARE(driver.seen.at(2).icon, QMessageBox::Question);
    QCOMPARE(driver.seen.at(2).buttons, (QStringList{QStringLiteral("Yes"), QStringLiteral("No")}));
}

void TestMessageBoxAsker::theBoxHasAnArrowWhateverWaitsForIt()
{
    BoxDriver driver;
    base::MessageBoxAsker asker;
    QVector<Qt::CursorShape> shapes;
    driver.onBox = [&shapes] {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        shapes.append(cursor ? cursor->shape() : Qt::BlankCursor);
    };
    asker.inform(QStringLiteral("Idle"), QStringLiteral("text"));
    {
        const base::WaitCursor cursor;
        asker.inform(QStringLiteral("Working"), QStringLiteral("text"));
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    QCOMPARE(shapes, (QVector<Qt::CursorShape>{Qt::BlankCursor, Qt::ArrowCursor}));
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestMessageBoxAsker::okMayHaveATextOfItsOwn()
{
    BoxDriver driver;
    const base::Box box{base::BoxIcon::Information,
                        QStringLiteral("t"),
                        QStringLiteral("x"),
                        {base::BoxButton::Ok},
                        QStringLiteral("Ok")};
    QCOMPARE(base::MessageBoxAsker().show(box), base::BoxButton::Ok);
    QCOMPARE(driver.seen.first().buttons, QStringList{QStringLiteral("Ok")});
}

void TestMessageBoxAsker::yesAndNoKeepTheirTextsInATranslatedHost()
{
    Translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    BoxDriver driver;
    base::MessageBoxAsker asker;
    asker.confirm(QStringLiteral("t"), QStringLiteral("x"));
    asker.inform(QStringLiteral("t"), QStringLiteral("x"));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(driver.seen.at(0).buttons, (QStringList{QStringLiteral("Yes"), QStringLiteral("No")}));
    QCOMPARE(driver.seen.at(1).buttons, QStringList{QStringLiteral("Einverstanden")});
}

void TestMessageBoxAsker::everyButtonAnswersForItself()
{
    BoxDriver driver;
    base::MessageBoxAsker asker;
    driver.answers = QStringList{QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("OK")};
    QVERIFY(asker.confirm(QStringLiteral("t"), QStringLiteral("x")));
    QVERIFY(!asker.confirm(QStringLiteral("t"), QStringLiteral("x")));
    QCOMPARE(asker.show({base::BoxIcon::Warning, QStringLiteral("t"), QStringLiteral("x"), {base::BoxButton::Ok}}),
             base::BoxButton::Ok);
}

// With three answers, closing the box takes none of the other two.
void TestMessageBoxAsker::escapeIsCancelWhereThatIsOffered()
{
    const base::Box box{base::BoxIcon::Question,
                        QStringLiteral("t"),
                        QStringLiteral("x"),
                        {base::BoxButton::Yes, base::BoxButton::No, base::BoxButton::Cancel}};
    BoxDriver driver;
    base::MessageBoxAsker asker;
    driver.answers = QStringList{QString(), QStringLiteral("Cancel"), QStringLiteral("No"), QStringLiteral("Yes")};
    for (const base::BoxButton expected :
         {base::BoxButton::Cancel, base::BoxButton::Cancel, base::BoxButton::No, base::BoxButton::Yes})
        QCOMPARE(asker.show(box), expected);
    QCOMPARE(driver.seen.first().buttons.size(), 3);
}

void TestMessageBoxAsker::escapeIsNo()
{
    BoxDriver driver;
    base::MessageBoxAsker asker;
    driver.answers = QStringList{QString()};
    QCOMPARE(asker.show({base::BoxIcon::Question,
                         QStringLiteral("t"),
                         QStringLiteral("x"),
                         {base::BoxButton::Yes, base::BoxButton::No}}),
             base::BoxButton::No);
    QCOMPARE(driver.seen.size(), 1);
}

void TestMessageBoxAsker::escapeIsOkWithoutNo()
{
    BoxDriver driver;
    base::MessageBoxAsker asker;
    driver.answers = QStringList{QString()};
    QCOMPARE(
        asker.show({base::BoxIcon::Information, QStringLiteral("t"), QStringLiteral("x"), {base::BoxButton::Ok}}),
        base::BoxButton::Ok);
}

void TestMessageBoxAsker::returnIsTheFirstButton()
{
    QTimer presser;
    connect(&presser, &QTimer::timeout, [] {
        if (QWidget *box = QApplication::activeModalWidget())
            QTest::keyClick(box, Qt::Key_Return);
    });
    presser.start(1);
    base::MessageBoxAsker asker;
    QVERIFY(asker.confirm(QStringLiteral("t"), QStringLiteral("x")));
    QCOMPARE(asker.show({base::BoxIcon::Question,
                         QStringLiteral("t"),
                         QStringLiteral("x"),
                         {base::BoxButton::No, base::BoxButton::Yes}}),
             base::BoxButton::No);
}

void TestMessageBoxAsker::showsTextLiterally()
{
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    QTimer presser;
    connect(&presser, &QTimer::timeout, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        const auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
        if (label) {
            shown = label->text();
            format = label->textFormat();
        }
        box->button(QMessageBox::Ok)->click();
    });
    presser.start(1);
    base::MessageBoxAsker().inform(QStringLiteral("t"), QStringLiteral("<b>GR</b> & <script>"));
    QCOMPARE(shown, QStringLiteral("<b>GR</b> & <script>"));
    QCOMPARE(format, Qt::PlainText);
}

void TestMessageBoxAsker::isOverItsParent()
{
    QWidget window;
    window.show();
    QWidget *parent = nullptr;
    QTimer presser;
    connect(&presser, &QTimer::timeout, [&] {
        if (QWidget *box = QApplication::activeModalWidget()) {
            parent = box->parentWidget();
            QTest::keyClick(box, Qt::Key_Return);
        }
    });
    presser.start(1);
    base::MessageBoxAsker(&window).inform(QStringLiteral("t"), QStringLiteral("x"));
    QCOMPARE(parent, &window);
    QVERIFY(window.findChildren<QMessageBox *>().isEmpty());
}

// Closing a box leaves no window active for a moment; the next box must not bring the parent to the front.
void TestMessageBoxAsker::staysOverTheWindowOfTheBoxBefore()
{
    QWidget host;
    host.show();
    QPointer<QWidget> window = new QWidget;
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QVector<QWidget *> parents;
    QTimer presser;
    connect(&presser, &QTimer::timeout, [&] {
        if (QWidget *box = QApplication::activeModalWidget()) {
            parents.append(box->parentWidget());
            QTest::keyClick(box, Qt::Key_Return);
        }
    });
    presser.start(1);
    base::MessageBoxAsker asker(&host);
    asker.inform(QStringLiteral("t"), QStringLiteral("one"));
    QApplication::setActiveWindow(nullptr);
    asker.inform(QStringLiteral("t"), QStringLiteral("two"));
    window->hide();
    QApplication::setActiveWindow(nullptr);
    asker.inform(QStringLiteral("t"), QStringLiteral("three"));
    QCOMPARE(parents, (QVector<QWidget *>{window, window, &host}));
    delete window;
}

void TestMessageBoxAsker::survivesItsParent()
{
    BoxDriver driver;
    auto *window = new QWidget;
    base::MessageBoxAsker asker(window);
    delete window;
    driver.answers = QStringList{QStringLiteral("Yes")};
    QVERIFY(asker.confirm(QStringLiteral("t"), QStringLiteral("x")));
}

void TestMessageBoxAsker::survivesItsParentWhileTheBoxIsShown()
{
    QPointer<QWidget> window = new QWidget;
    base::MessageBoxAsker asker(window);
    QTimer killer;
    connect(&killer, &QTimer::timeout, [&] {
        if (QApplication::activeModalWidget())
            delete window;
    });
    killer.start(1);
    QVERIFY(!asker.confirm(QStringLiteral("t"), QStringLiteral("x")));
    QVERIFY(!window);
}

LORVA_TEST_MAIN(TestMessageBoxAsker)
#include "tst_messageboxasker.moc"
