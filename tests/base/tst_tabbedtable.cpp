#include "base/stillcombobox.h"
#include "base/tabbedtable.h"
#include "support/testmain.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

/// A table of two rows between a line and a button; its second column holds choosers.
class Form : public QWidget
{
public:
    Form()
        : m_before(new QLineEdit)
        , m_table(new base::TabbedTable(0, 2))
        , m_behind(new QPushButton)
    {
        auto *column = new QVBoxLayout(this);
        column->addWidget(m_before);
        column->addWidget(m_table);
        column->addWidget(m_behind);
    }
    void addRow()
    {
        const int row = m_table->rowCount();
        m_table->insertRow(row);
        m_table->setItem(row, 0, new QTableWidgetItem);
        auto *box = new base::StillComboBox;
        box->setFocusPolicy(Qt::ClickFocus);
        m_table->setCellWidget(row, 1, box);
    }
    bool showIt()
    {
        show();
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }
    /// Where the keyboard is: "before", "behind", "table" or "box", and the current cell inside the table.
    QString place() const
    {
        const QWidget *focus = QApplication::focusWidget();
        if (focus == m_before || focus == m_behind)
            return focus == m_before ? QStringLiteral("before") : QStringLiteral("behind");
        const QString what = focus == m_table ? QStringLiteral("table") : QStringLiteral("box");
        return QStringLiteral("%1 %2,%3").arg(what).arg(m_table->currentRow()).arg(m_table->currentColumn());
    }
    QString after(Qt::Key key) const
    {
        QTest::keyClick(QApplication::focusWidget(), key);
        return place();
    }

    QLineEdit *m_before;
    base::TabbedTable *m_table;
    QPushButton *m_behind;
};

} // namespace

class tst_tabbedtable : public QObject
{
    Q_OBJECT

private slots:
    void tabWalksThroughAndOut()
    {
        Form form;
        form.addRow();
        form.addRow();
        QVERIFY(form.showIt());
        form.m_before->setFocus();
        const QStringList cells{"table 0,0", "box 0,1", "table 1,0", "box 1,1"};
        for (int round = 0; round < 2; ++round) { // every time from the first cell
            for (const QString &cell : cells)
                QCOMPARE(form.after(Qt::Key_Tab), cell);
            QCOMPARE(form.after(Qt::Key_Tab), QString("behind"));
            QCOMPARE(form.after(Qt::Key_Tab), QString("before")); // the choosers stand nowhere else
        }
        QCOMPARE(form.after(Qt::Key_Backtab), QString("behind"));
        for (int i = cells.size() - 1; i >= 0; --i)
            QCOMPARE(form.after(Qt::Key_Backtab), cells.at(i));
        QCOMPARE(form.after(Qt::Key_Backtab), QString("before"));
    }

    void anEmptyTableIsPassedThrough()
    {
        Form form;
        QVERIFY(form.showIt());
        form.m_before->setFocus();
        QVERIFY(form.after(Qt::Key_Tab).startsWith(QLatin1String("table")));
        QCOMPARE(form.after(Qt::Key_Tab), QString("behind"));
        form.after(Qt::Key_Backtab);
        QCOMPARE(form.after(Qt::Key_Backtab), QString("before"));
    }

    void aClickLeavesTheCurrentCellWhereItIs()
    {
        Form form;
        form.addRow();
        form.addRow();
        QVERIFY(form.showIt());
        form.m_before->setFocus();
        form.m_table->setCurrentCell(1, 0);
        form.m_table->setFocus(Qt::MouseFocusReason);
        QCOMPARE(form.place(), QString("table 1,0"));
    }

    // "Kestrane Upper Sst" and "Kestrane Lower Sst" look the same when their middle is left out.
    void theListOfANarrowChooserShowsItsEntriesWhole()
    {
        Form form;
        form.addRow();
        QVERIFY(form.showIt());
        auto *box = qobject_cast<QComboBox *>(form.m_table->cellWidget(0, 1));
        const QString name = QStringLiteral("A name that is much longer than its cell");
        box->addItems({QStringLiteral("short"), name});
        form.m_table->setColumnWidth(1, 60);
        box->showPopup();
        QVERIFY(box->view()->width() >= QFontMetrics(box->view()->font()).horizontalAdvance(name));
        box->hidePopup();
        box->removeItem(1);
        box->showPopup();
        QVERIFY(box->view()->width() < QFontMetrics(box->view()->font()).horizontalAdvance(name));
        box->hidePopup();
    }
};

LORVA_TEST_MAIN(tst_tabbedtable)
#include "tst_tabbedtable.moc"
