#pragma once

#include <QApplication>
#include <QTest>

namespace testing_support {
/// Sets up what every widget test needs: no settings of the user, and Qt warnings that fail the test.
void prepare();
/// Makes every warning of Qt or of the product fatal, but for those of the offscreen platform itself.
void failOnWarnings();
} // namespace testing_support

/// As QTEST_MAIN, with warnings that fail.
#define LORVA_TEST_MAIN(TestClass)                                                                                   \
    int main(int argc, char *argv[])                                                                                 \
    {                                                                                                                \
        testing_support::prepare();                                                                                  \
        QApplication application(argc, argv);                                                                        \
        TestClass test;                                                                                              \
        QTest::qInit(&test, argc, argv);                                                                             \
        testing_support::failOnWarnings();                                                                           \
        const int failures = QTest::qRun();                                                                          \
        QTest::qCleanup();                                                                                           \
        return failures;                                                                                             \
    }
