#include "support/legibletexts.h"
#include "support/testmain.h"
#include "workbench/legiblestyle.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeWidget>

#include <cmath>

/// Boxes that are not checked can be seen on a dark desktop.
class TestLegibleStyle : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_before = QApplication::palette();
        QApplication::setStyle(new workbench::LegibleStyle(QStringLiteral("fusion")));
    }
    void cleanup() { QApplication::setPalette(m_before); }

    void boxesStandOut()
    {
        QApplication::setPalette(legible::darkPalette());
        QCheckBox box;
        QVERIFY(contrast(&box) > 60);
        QRadioButton radio;
        QVERIFY(contrast(&radio) > 60);
        QTreeWidget tree;
        tree.setHeaderHidden(true);
        (new QTreeWidgetItem(&tree, QStringList(QString())))->setCheckState(0, Qt::Unchecked);
        tree.resize(100, 60);
        QVERIFY(contrast(tree.viewport()) > 60);
    }

    void crossesOfTabsStandOut()
    {
        QApplication::setPalette(legible::darkPalette());
        QTabBar bar;
        bar.setTabsClosable(true);
        bar.addTab(QString());
        bar.resize(bar.sizeHint());
        QWidget *cross = bar.tabButton(0, QTabBar::RightSide);
        QVERIFY(cross);
        const QImage picture = bar.grab(cross->geometry()).toImage();
        int lightest = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                lightest = qMax(lightest, picture.pixelColor(x, y).lightness());
        QVERIFY(lightest - picture.pixelColor(0, 0).lightness() > 60);
    }

    void lightDesktopsStayAsTheyAre()
    {
        QCheckBox box;
        box.resize(box.sizeHint());
        const QImage ours = box.grab().toImage();
        QApplication::setStyle(QStringLiteral("fusion"));
        QCOMPARE(box.grab().toImage(), ours);
    }

    void lightTabsStayAsTheyAre()
    {
        const auto picture = [] {
            QTabBar bar;
            bar.setTabsClosable(true);
            bar.addTab(QString());
            bar.resize(bar.sizeHint());
            return bar.grab().toImage();
        };
        const QImage ours = picture();
        QApplication::setStyle(QStringLiteral("fusion"));
        QCOMPARE(picture(), ours);
    }

private:
    // Between the lightest pixel of the picture and its background.
    static int contrast(QWidget *widget)
    {
        if (widget->size().isEmpty() || !widget->parentWidget())
            widget->resize(widget->sizeHint());
        const QImage picture = widget->grab().toImage();
        int lightest = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                lightest = qMax(lightest, picture.pixelColor(x, y).lightness());
        return lightest - picture.pixelColor(picture.width() - 1, picture.height() - 1).lightness();
    }

    QPalette m_before;
};

LORVA_TEST_MAIN(TestLegibleStyle)
#include "tst_legiblestyle.moc"
