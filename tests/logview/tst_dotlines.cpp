#include "logview/paper/dotlines.h"
#include "support/testmain.h"

#include <QLineF>

#include <cmath>

using namespace logview;

class tst_dotlines : public QObject
{
    Q_OBJECT

private slots:
    void idleCornersGo()
    {
        using Corners = QVector<QPointF>;
        QCOMPARE(withoutIdleCorners({}), Corners());
        QCOMPARE(withoutIdleCorners({{3, 4}}), (Corners{{3, 4}}));
        QCOMPARE(withoutIdleCorners({{3, 4}, {3, 4}, {3, 4}}), (Corners{{3, 4}}));
        QCOMPARE(withoutIdleCorners({{0, 0}, {0, 5}, {0, 10}, {0, 20}}), (Corners{{0, 0}, {0, 20}}));
        QCOMPARE(withoutIdleCorners({{0, 0}, {0, 10}, {0, 5}, {0, 20}}),
                 (Corners{{0, 0}, {0, 10}, {0, 5}, {0, 20}})); // it turns back
        QCOMPARE(withoutIdleCorners({{0, 0}, {10, 10}, {0, 20}}), (Corners{{0, 0}, {10, 10}, {0, 20}}));
    }

    void noCornerIsFartherThanHalfADotFromWhatIsLeft_data()
    {
        QTest::addColumn<QVector<QPointF>>("line");
        QVector<QPointF> noisy;
        QVector<QPointF> left;
        QVector<QPointF> right;
        QVector<QPointF> up;
        for (int i = 0; i < 5000; ++i) {
            noisy.append({std::round(50 * std::sin(i * 0.01) + (i * 7919 % 11 == 0 ? 3 : 0)), double(i)});
            left.append({std::round(-i * i * 1e-4), double(i)});
            right.append({std::round(i * i * 1e-4), double(i)});
            up.append({std::round(i * i * 1e-4), -double(i)});
        }
        QTest::newRow("noisy") << noisy;
        QTest::newRow("to the left") << left;
        QTest::newRow("to the right") << right;
        QTest::newRow("upwards") << up;
    }

    void noCornerIsFartherThanHalfADotFromWhatIsLeft()
    {
        QFETCH(QVector<QPointF>, line);
        const QVector<QPointF> kept = withoutIdleCorners(line);
        QVERIFY(kept.size() < line.size() * 3 / 4);
        QCOMPARE(kept.first(), line.first());
        QCOMPARE(kept.last(), line.last());
        int segment = 0;
        for (const QPointF &corner : line) {
            while (segment + 2 < kept.size() && std::abs(kept.at(segment + 1).y()) < std::abs(corner.y()))
                ++segment;
            const QLineF part(kept.at(segment), kept.at(segment + 1));
            const double across =
                std::abs((corner.x() - part.x1()) * part.dy() - (corner.y() - part.y1()) * part.dx()) / part.length();
            QVERIFY2(across <= 0.5 + 1e-9, qPrintable(QString::number(across)));
        }
    }
};

LORVA_TEST_MAIN(tst_dotlines)
#include "tst_dotlines.moc"
