#include "logview/geometry/nameshifts.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace logview;

namespace {

// Of names without room.
constexpr double noRoom = -1e9;

QVector<double> shiftsOf(const QVector<NameSpan> &names)
{
    QVector<double> shifts;
    for (const std::optional<double> &shift : nameShifts(names))
        shifts.append(shift.value_or(noRoom));
    return shifts;
}

} // namespace

/// Where names stand whose lines are close together.
class tst_nameshifts : public QObject
{
    Q_OBJECT

private slots:
    void namesMoveApart()
    {
        QCOMPARE(shiftsOf({}), QVector<double>());
        // Far enough apart, touching: nothing moves.
        QCOMPARE(shiftsOf({{100, 112}, {112, 124}, {50, 62}}), QVector<double>({0, 0, 0}));
        // Both move by half of what lies over the other, in whatever order they come.
        QCOMPARE(shiftsOf({{104, 116}, {100, 112}}), QVector<double>({4, -4}));
        // At one place: the first given stays above.
        QCOMPARE(shiftsOf({{100, 112}, {100, 112}}), QVector<double>({-6, 6}));
        // A block that grows meets the next name; heights differ.
        const QVector<NameSpan> names{{100, 112}, {101, 125}, {128, 140}};
        const QVector<double> shifts = shiftsOf(names);
        for (int i = 1; i < names.size(); ++i)
            QVERIFY(names.at(i).top + shifts.at(i) >= names.at(i - 1).bottom + shifts.at(i - 1) - 1e-9);
        QVERIFY(std::abs(shifts.at(0) + shifts.at(1) + shifts.at(2)) < 1e-9);
        QVERIFY(shifts.at(2) > 0);
    }

    void namesStayBesideTheirLines()
    {
        const auto atOnePlace = [](int count) { return QVector<NameSpan>(count, NameSpan{100, 112}); };
        QCOMPARE(shiftsOf(atOnePlace(11)).first(), -farthestNameShift);
        QCOMPARE(shiftsOf(atOnePlace(11)).last(), farthestNameShift);
        // The first would move by 66: the last one has no room, and the others stand as if it were not there.
        QCOMPARE(shiftsOf(atOnePlace(12)), shiftsOf(atOnePlace(11)) + QVector<double>{noRoom});
        QVector<NameSpan> crowdAndPair = atOnePlace(12);
        crowdAndPair += {NameSpan{500, 512}, NameSpan{500, 512}};
        QCOMPARE(shiftsOf(crowdAndPair).mid(12), QVector<double>({-6, 6}));
    }

    void aCrowdOfNamesIsThinnedEvenly()
    {
        QVector<NameSpan> names;
        for (int i = 0; i < 300; ++i)
            names.append({i * 2.0, i * 2.0 + 12});
        const QVector<double> shifts = shiftsOf(names);
        // 600 pixels of lines, and the reach of the first and of the last: at most 60 names.
        const auto shown = names.size() - shifts.count(noRoom);
        QVERIFY2(shown >= 50 && shown <= 60, qPrintable(QString::number(shown)));
        for (int part = 0; part < 3; ++part)
            QVERIFY(100 - shifts.mid(part * 100, 100).count(noRoom) >= 12);
    }

    void namesNeverCoverEachOther()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 300; ++round) {
            QVector<NameSpan> names(1 + random.bounded(80));
            for (NameSpan &name : names) {
                name.top = random.bounded(50 + round * 4);
                name.bottom = name.top + (random.bounded(3) == 0 ? 36 : 12);
            }
            const QVector<double> shifts = shiftsOf(names);
            QVector<NameSpan> shown;
            for (int i = 0; i < names.size(); ++i) {
                if (shifts.at(i) == noRoom)
                    continue;
                QVERIFY(std::abs(shifts.at(i)) <= farthestNameShift);
                shown.append({names.at(i).top + shifts.at(i), names.at(i).bottom + shifts.at(i)});
            }
            QVERIFY(!shown.isEmpty());
            std::sort(shown.begin(), shown.end(), [](const NameSpan &a, const NameSpan &b) { return a.top < b.top; });
            for (int i = 1; i < shown.size(); ++i)
                QVERIFY(shown.at(i).top >= shown.at(i - 1).bottom - 1e-6);
        }
    }
};

QTEST_APPLESS_MAIN(tst_nameshifts)
#include "tst_nameshifts.moc"
