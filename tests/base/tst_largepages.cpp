#include "base/largepages.h"

#include "support/memorymap.h"

#include <QTest>

#include <cstdlib>
#include <memory>

class tst_largepages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!memorymap::hasLargePages())
            QSKIP("this system has no large pages");
    }

    void areWishedForFromEndToEnd()
    {
        constexpr size_t page = 4096;
        constexpr size_t size = 8 << 20;
        const std::unique_ptr<char, void (*)(void *)> memory(static_cast<char *>(std::aligned_alloc(page, size)),
                                                             free);
        char *begin = memory.get() + page + 8;
        constexpr size_t bytes = size - 3 * page;
        QVERIFY(!memorymap::isWishedLarge(memory.get() + size / 2));
        base::wishForLargePages(begin, bytes);
        QVERIFY(memorymap::isWishedLarge(begin));
        QVERIFY(memorymap::isWishedLarge(memory.get() + size / 2));
        QVERIFY(memorymap::isWishedLarge(begin + bytes - 1));
        QVERIFY(!memorymap::isWishedLarge(memory.get()));
        QVERIFY(!memorymap::isWishedLarge(begin + bytes + page));
    }

    void shortArraysAreLeftAlone()
    {
        constexpr size_t size = 2 << 20;
        const std::unique_ptr<char, void (*)(void *)> memory(static_cast<char *>(std::aligned_alloc(4096, size)),
                                                             free);
        base::wishForLargePages(memory.get(), size - 1);
        QVERIFY(!memorymap::isWishedLarge(memory.get() + size / 2));
        base::wishForLargePages(memory.get(), size);
        QVERIFY(memorymap::isWishedLarge(memory.get() + size / 2));
    }
};

QTEST_GUILESS_MAIN(tst_largepages)
#include "tst_largepages.moc"
