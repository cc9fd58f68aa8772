#include "base/nestedevents.h"
#include "support/testmain.h"

#include <memory>

using base::NestedEvents;

class TestNestedEvents : public QObject
{
    Q_OBJECT

private slots:
    void atOnceWhenNoneStands()
    {
        QObject context;
        int calls = 0;
        QVERIFY(!NestedEvents::areHandled());
        NestedEvents::whenDone(&context, [&calls] { ++calls; });
        QCOMPARE(calls, 1);
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
    }

    void waitsUntilTheCodeHasReturned()
    {
        QObject context;
        int calls = 0;
        {
            const NestedEvents outer;
            {
                const NestedEvents inner;
                NestedEvents::whenDone(&context, [&calls] { ++calls; });
                QCoreApplication::processEvents();
            }
            QCoreApplication::processEvents();
            QVERIFY(NestedEvents::areHandled());
            QCOMPARE(calls, 0);
        }
        // The code goes on behind the box, and may show another.
        QCOMPARE(calls, 0);
        {
            const NestedEvents second;
            QCoreApplication::processEvents();
            QCOMPARE(calls, 0);
        }
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
    }

    void aContextThatIsGoneIsNotCalled()
    {
        auto context = std::make_unique<QObject>();
        int calls = 0;
        {
            const NestedEvents events;
            NestedEvents::whenDone(context.get(), [&calls] { ++calls; });
            context.reset();
        }
        QCoreApplication::processEvents();
        context = std::make_unique<QObject>();
        {
            const NestedEvents events;
            NestedEvents::whenDone(context.get(), [&calls] { ++calls; });
        }
        context.reset();
        QCoreApplication::processEvents();
        QCOMPARE(calls, 0);
    }

    void severalWaitInTheirOrder()
    {
        QObject context;
        QStringList calls;
        {
            const NestedEvents events;
            NestedEvents::whenDone(&context, [&calls] { calls.append(QStringLiteral("a")); });
            NestedEvents::whenDone(&context, [&calls] { calls.append(QStringLiteral("b")); });
        }
        QCoreApplication::processEvents();
        QCOMPARE(calls, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    }

    void handledEventsAreNested()
    {
        QObject context;
        QVector<bool> nested;
        QMetaObject::invokeMethod(
            &context, [&nested] { nested.append(NestedEvents::areHandled()); }, Qt::QueuedConnection);
        base::handleEvents();
        QCOMPARE(nested, QVector<bool>{true});
        QVERIFY(!NestedEvents::areHandled());
    }
};

LORVA_TEST_MAIN(TestNestedEvents)
#include "tst_nestedevents.moc"
