#pragma once

#include "support/legibletexts.h"
#include "support/tidywindows.h"

#include <QCoreApplication>
#include <QTest>

/// Fails where a text of the window cannot be read, where something lies on something else, or where fewer than \a atLeast of
/// either were found to look at.
inline void expectLegible(QWidget *window, int atLeast)
{
    QCoreApplication::processEvents();
    int count = 0;
    const QStringList found = legible::illegibleTexts(window, &count);
    QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
    QVERIFY2(count >= atLeast, qPrintable(QString::number(count)));
    count = 0;
    const QStringList untidy = tidy::faults(window, &count);
    QVERIFY2(untidy.isEmpty(), qPrintable(untidy.join('\n')));
    QVERIFY2(count >= atLeast, qPrintable(QString::number(count)));
}
