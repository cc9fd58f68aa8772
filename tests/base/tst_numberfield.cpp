#include "base/numberfield.h"
#include "base/numbervalidator.h"

#include "support/testmain.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QVBoxLayout>

using base::NumberField;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// A field beside another one, to which the Tab key goes.
struct Form
{
    Form()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(other);
        field->showText(text("12"));
        window.show();
        QApplication::setActiveWindow(&window);
        field->setFocus();
        field->selectAll();
    }

    QWidget window;
    NumberField *field = new NumberField;
    QLineEdit *other = new QLineEdit;
    QSignalSpy edited{field, &NumberField::edited};
};

} // namespace

class tst_numberfield : public QObject
{
    Q_OBJECT

private slots:
    void accepts_data();
    void accepts();
    void commaBecomesPointAsItIsTyped();
    void groupsCannotBePasted();
    void visitIsNoEdit();
    void eachEditIsToldOnce();
    void whatIsNoNumberIsPutBack();
    void windowChangeLeavesAnUnfinishedText();
};

void tst_numberfield::accepts_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *typed, QValidator::State state, const char *shown) {
        QTest::newRow(typed) << text(typed) << static_cast<int>(state) << text(shown);
    };
    row("25", QValidator::Acceptable, "25");
    row("25.5", QValidator::Acceptable, "25.5");
    row("25,5", QValidator::Acceptable, "25.5");
    row("-0,25", QValidator::Acceptable, "-0.25");
    row("1e3", QValidator::Acceptable, "1e3");
    row("", QValidator::Intermediate, "");
    row("-", QValidator::Intermediate, "-");
    row("1,234.5", QValidator::Invalid, "1.234.5");
    row("1.234,5", QValidator::Invalid, "1.234.5");
    row("12 m", QValidator::Invalid, "12 m");
    row("top", QValidator::Invalid, "top");
}

void tst_numberfield::accepts()
{
    QFETCH(QString, typed);
    QFETCH(int, state);
    QFETCH(QString, shown);
    for (const QLocale &desktop : {QLocale(QLocale::German), QLocale(QLocale::English), QLocale::c()}) {
        QLocale::setDefault(desktop);
        const base::NumberValidator validator;
        QString input = typed;
        int position = input.size();
        QCOMPARE(static_cast<int>(validator.validate(input, position)), state);
        QCOMPARE(input, shown);
        QCOMPARE(position, typed.size());
    }
    QLocale::setDefault(QLocale::c());
}

void tst_numberfield::commaBecomesPointAsItIsTyped()
{
    Form form;
    QTest::keyClicks(form.field, text("25,5"));
    QCOMPARE(form.field->text(), text("25.5"));
    form.field->setCursorPosition(1);
    QTest::keyClicks(form.field, text(",")); // a second one
    QCOMPARE(form.field->text(), text("25.5"));
}

void tst_numberfield::groupsCannotBePasted()
{
    Form form;
    QApplication::clipboard()->setText(text("1,234.5"));
    form.field->paste();
    QCOMPARE(form.field->text(), text("12"));
    QApplication::clipboard()->setText(text("1234,5"));
    form.field->paste();
    QCOMPARE(form.field->text(), text("1234.5"));
}

void tst_numberfield::visitIsNoEdit()
{
    Form form;
    QTest::keyClick(form.field, Qt::Key_Return);
    QTest::keyClick(form.field, Qt::Key_Tab);
    QVERIFY(form.other->hasFocus());
    QTest::keyClick(form.other, Qt::Key_Backtab);
    QTest::keyClicks(form.field, text("12"));
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(form.edited.size(), 0);
}

void tst_numberfield::eachEditIsToldOnce()
{
    Form form;
    QTest::keyClicks(form.field, text("13"));
    QCOMPARE(form.edited.size(), 0);
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(form.edited.size(), 1);
    QTest::keyClick(form.field, Qt::Key_Tab);
    QCOMPARE(form.edited.size(), 1);
    form.field->showText(text("12"));
    QCOMPARE(form.edited.size(), 1);
    form.field->setText(text("13"));
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(form.edited.size(), 2);
}

void tst_numberfield::whatIsNoNumberIsPutBack()
{
    Form form;
    for (const char *typed : {"", "-", "1e"}) {
        form.field->selectAll();
        QTest::keyClick(form.field, Qt::Key_Delete);
        QTest::keyClicks(form.field, text(typed));
        QCOMPARE(form.field->text(), text(typed));
        QTest::keyClick(form.field, Qt::Key_Return);
        QCOMPARE(form.field->text(), text(typed));
        QTest::keyClick(form.field, Qt::Key_Tab);
        QCOMPARE(form.field->text(), text("12"));
        form.field->setFocus();
    }
    QCOMPARE(form.edited.size(), 0);
}

void tst_numberfield::windowChangeLeavesAnUnfinishedText()
{
    Form form;
    QTest::keyClicks(form.field, text("-"));
    QFocusEvent leaving(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(form.field, &leaving);
    QCOMPARE(form.field->text(), text("-"));
}

LORVA_TEST_MAIN(tst_numberfield)
#include "tst_numberfield.moc"
