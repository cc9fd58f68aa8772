#include "base/largepages.h"

#include "support/memorymap.h"

#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sys/mman.h>
#include <vector>

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

    void areThereBeforeTheyAreFilled()
    {
#ifndef MADV_POPULATE_WRITE
        QSKIP("this system gives pages out one by one");
#else
        constexpr size_t page = 4096;
        constexpr size_t size = 8 << 20;
        void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        QVERIFY(memory != MAP_FAILED);
        if (madvise(memory, page, MADV_POPULATE_WRITE) != 0) {
            munmap(memory, size);
            QSKIP("this system gives pages out one by one");
        }
        base::wishForLargePages(memory, size);
        std::vector<unsigned char> states(size / page);
        const bool isKnown = mincore(memory, size, states.data()) == 0;
        munmap(memory, size);
        QVERIFY(isKnown);
        QVERIFY(std::all_of(states.begin(), states.end(), [](unsigned char state) { return (state & 1) != 0; }));
#endif
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
