#pragma once

#include "support/testmain.h"

#include <QTemporaryDir>

#include <memory>

class uiMain;

/// The host's libraries in this process, with settings and data of their own. Made once, before everything else.
class OdProgram
{
public:
    OdProgram(int &argc, char **argv);
    ~OdProgram();

    /// The folder of surveys.
    static QString dataRoot();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<uiMain> m_application;
};

/// As LORVA_TEST_MAIN, for a program that runs the host's libraries.
#define OD_TEST_MAIN(TestClass)                                                                                      \
    int main(int argc, char *argv[])                                                                                 \
    {                                                                                                                \
        testing_support::prepare();                                                                                  \
        OdProgram program(argc, argv);                                                                               \
        TestClass test;                                                                                              \
        QTest::qInit(&test, argc, argv);                                                                             \
        testing_support::failOnWarnings();                                                                           \
        const int failures = QTest::qRun();                                                                          \
        QTest::qCleanup();                                                                                           \
        return failures;                                                                                             \
    }
