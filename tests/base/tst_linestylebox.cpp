#include "base/linestylebox.h"

#include "support/testmain.h"

#include <QImage>

namespace {

QImage iconOf(const QComboBox &box, int item)
{
    return box.itemIcon(item).pixmap(box.iconSize()).toImage().convertToFormat(QImage::Format_RGB32);
}

// Black pixels in one column of the icon.
int blackRows(const QImage &icon, int column)
{
    int count = 0;
    for (int y = 0; y < icon.height(); ++y)
        if (icon.pixel(column, y) == qRgb(0, 0, 0))
            ++count;
    return count;
}

// Where a line that is black or white starts and stops, from left to right: "####  ##".
QString dashes(const QImage &icon)
{
    QString text;
    for (int x = 0; x < icon.width(); ++x)
        text += blackRows(icon, x) > 0 ? '#' : ' ';
    return text;
}

int runs(const QString &dashes)
{
    return dashes.simplified().split(' ', Qt::SkipEmptyParts).size();
}

} // namespace

class tst_linestylebox : public QObject
{
    Q_OBJECT

private slots:
    void theBoxesTellWhatTheyAre()
    {
        QCOMPARE(base::LineStyleBox().toolTip(), QString("Line style"));
        QCOMPARE(base::LineWidthBox().toolTip(), QString("Line width"));
    }

    void theBoxesBelongToTheirParent()
    {
        QWidget parent;
        QCOMPARE((new base::LineStyleBox(&parent))->parentWidget(), &parent);
        QCOMPARE((new base::LineWidthBox(&parent))->parentWidget(), &parent);
    }

    void theDataAreTheNumbersOneToFive()
    {
        const base::LineStyleBox styles;
        const base::LineWidthBox widths;
        QCOMPARE(styles.count(), 5);
        QCOMPARE(widths.count(), 5);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(styles.itemData(i), QVariant(i + 1));
            QCOMPARE(widths.itemData(i), QVariant(i + 1));
            QCOMPARE(styles.itemText(i), QString());
            QCOMPARE(widths.itemText(i), QString());
        }
        QCOMPARE(styles.itemData(0).toInt(), int(Qt::SolidLine));
        QCOMPARE(styles.itemData(1).toInt(), int(Qt::DashLine));
        QCOMPARE(styles.itemData(2).toInt(), int(Qt::DotLine));
        QCOMPARE(styles.itemData(3).toInt(), int(Qt::DashDotLine));
        QCOMPARE(styles.itemData(4).toInt(), int(Qt::DashDotDotLine));
        QCOMPARE(styles.findData(3), 2);
    }

    void iconsAreBlackOnWhiteAndFourteenPixelsHigh()
    {
        const base::LineStyleBox styles;
        const base::LineWidthBox widths;
        for (const QComboBox *box :
             {static_cast<const QComboBox *>(&styles), static_cast<const QComboBox *>(&widths)}) {
            QCOMPARE(box->iconSize().height(), 14);
            for (int item = 0; item < 5; ++item) {
                const QImage icon = iconOf(*box, item);
                QCOMPARE(icon.size(), box->iconSize());
                int black = 0;
                for (int y = 0; y < icon.height(); ++y) {
                    for (int x = 0; x < icon.width(); ++x) {
                        const QRgb pixel = icon.pixel(x, y);
                        QVERIFY(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255));
                        black += pixel == qRgb(0, 0, 0) ? 1 : 0;
                    }
                }
                QVERIFY(black > 0);
            }
        }
    }

    void aStyleIsDrawnOnePixelWideInItsPattern()
    {
        const base::LineStyleBox box;
        QStringList patterns;
        for (int item = 0; item < 5; ++item) {
            const QImage icon = iconOf(box, item);
            for (int x = 0; x < icon.width(); ++x)
                QVERIFY(blackRows(icon, x) <= 1);
            patterns.append(dashes(icon));
        }
        QCOMPARE(patterns.at(0), QString(box.iconSize().width(), '#'));
        QCOMPARE(patterns.at(1).left(12), QString("####  ####  ")); // dash 4, gap 2
        QCOMPARE(patterns.at(2).left(9), QString("#  #  #  "));
        QCOMPARE(patterns.at(3).left(18), QString("####  #  ####  #  "));
        QCOMPARE(patterns.at(4).left(13), QString("####  #  #  #"));
        QCOMPARE(patterns.removeDuplicates(), 0);
        QVERIFY(runs(patterns.at(1)) >= 3);
    }

    void aWidthIsDrawnAsManyPixelsHigh()
    {
        const base::LineWidthBox box;
        for (int item = 0; item < 5; ++item) {
            const QImage icon = iconOf(box, item);
            for (int x = 0; x < icon.width(); ++x)
                QCOMPARE(blackRows(icon, x), item + 1);
        }
    }

    void aChoiceIsMadeWithTheKeyboard()
    {
        base::LineStyleBox box;
        QCOMPARE(box.currentData().toInt(), 1);
        QTest::keyClick(&box, Qt::Key_Down);
        QCOMPARE(box.currentData().toInt(), 2);
        QTest::keyClick(&box, Qt::Key_End);
        QCOMPARE(box.currentData().toInt(), 5);
    }
};

LORVA_TEST_MAIN(tst_linestylebox)
#include "tst_linestylebox.moc"
