#include "mainwin/projecttreeitems.h"
#include "mainwin/projecttreesync.h"
#include "support/testmain.h"

#include <QSignalSpy>
#include <QTreeWidget>

namespace {

QStringList texts(const QTreeWidgetItem *parent)
{
    QStringList result;
    for (int i = 0; i < parent->childCount(); ++i)
        result.append(parent->child(i)->text(0));
    return result;
}

QStringList list(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class tst_projecttreesync : public QObject
{
    Q_OBJECT

private slots:
    void childrenAgreeWithTheList_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("fill") << ""
                              << "a b c";
        QTest::newRow("empty") << "a b c"
                               << "";
        QTest::newRow("same") << "a b c"
                              << "a b c";
        QTest::newRow("insert") << "a c"
                                << "a b c";
        QTest::newRow("remove") << "a b c"
                                << "a c";
        QTest::newRow("reorder") << "a b c d"
                                 << "d b a c";
        QTest::newRow("double names") << "a a b"
                                      << "a b a b";
        QTest::newRow("fewer doubles") << "a a a"
                                       << "a";
        QTest::newRow("all at once") << "a b c d e"
                                     << "x e c y a";
    }

    void childrenAgreeWithTheList()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree);
        parent->addChild(makeProjectItem(HeadingType, QStringLiteral("fixed")));
        syncChildren(parent, 1, list(qPrintable(before)), LogType);
        syncChildren(parent, 1, list(qPrintable(after)), LogType);
        QCOMPARE(texts(parent), QStringList{QStringLiteral("fixed")} + list(qPrintable(after)));
    }

    void whatStaysIsTheSameItemWithItsState()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree);
        parent->setExpanded(true);
        syncChildren(parent, 0, list("a b c"), MarkerType);
        QTreeWidgetItem *b = parent->child(1);
        b->addChild(makeProjectItem(LogType, QStringLiteral("below")));
        b->setCheckState(0, Qt::Checked);
        b->setExpanded(true);
        syncChildren(parent, 0, list("x c b"), MarkerType);
        QCOMPARE(parent->child(2), b);
        QCOMPARE(b->checkState(0), Qt::Checked);
        QVERIFY(b->isExpanded());
        QCOMPARE(parent->child(0)->checkState(0), Qt::Unchecked);
    }

    void aMovedItemKeepsWhatIsExpandedInItAndTheCurrentItem()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree);
        parent->setExpanded(true);
        syncChildren(parent, 0, list("a b"), HeadingType);
        QTreeWidgetItem *b = parent->child(1);
        QTreeWidgetItem *branch = makeProjectItem(HeadingType, QStringLiteral("branch"));
        QTreeWidgetItem *leaf = makeProjectItem(LogType, QStringLiteral("leaf"));
        QTreeWidgetItem *closed = makeProjectItem(HeadingType, QStringLiteral("closed"));
        b->addChildren({branch, closed});
        branch->addChild(leaf);
        closed->addChild(makeProjectItem(LogType, QStringLiteral("leaf")));
        b->setExpanded(true);
        branch->setExpanded(true);
        tree.setCurrentItem(leaf);
        syncChildren(parent, 0, list("b a"), HeadingType);
        QCOMPARE(parent->child(0), b);
        QVERIFY(b->isExpanded());
        QVERIFY(branch->isExpanded());
        QVERIFY(!closed->isExpanded());
        QCOMPARE(tree.currentItem(), leaf);
    }

    void anotherCurrentItemStays()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree);
        syncChildren(parent, 0, list("a b c"), LogType);
        QTreeWidgetItem *a = parent->child(0);
        tree.setCurrentItem(a);
        syncChildren(parent, 0, list("c b a"), LogType);
        QCOMPARE(tree.currentItem(), a);
    }

    // Each notice makes the view lay itself out anew.
    void theViewHearsOfChangesOnly()
    {
        QTreeWidget tree;
        auto *parent = new QTreeWidgetItem(&tree);
        QSignalSpy inserted(tree.model(), &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(tree.model(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(tree.model(), &QAbstractItemModel::dataChanged);
        syncChildren(parent, 0, list("a b c d"), MarkerType);
        QCOMPARE(inserted.size(), 1); // all at once
        inserted.clear();
        syncChildren(parent, 0, list("a b c d"), MarkerType);
        QCOMPARE(inserted.size() + removed.size() + changed.size(), 0);
        syncChildren(parent, 0, list("x a b c d"), MarkerType);
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(removed.size() + changed.size(), 0);
        inserted.clear();
        syncChildren(parent, 0, list("x a b d"), MarkerType);
        QCOMPARE(removed.size(), 1);
        QCOMPARE(inserted.size() + changed.size(), 0);
    }
};

LORVA_TEST_MAIN(tst_projecttreesync)
#include "tst_projecttreesync.moc"
