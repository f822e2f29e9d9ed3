#include "demonstration/wishes.h"
#include "tests/support/test_case.h"

class TestWishes : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        for (const char *name :
             {"SIMPC_PROGRESS", "SIMPC_SCREENSHOT", "SIMPC_UNTIL", "SIMPC_LIMIT", "SIMPC_DIRECTED"})
            qunsetenv(name);
        TestCase::cleanup();
    }

    void nothingIsWishedForByItself()
    {
        const Wishes wishes = Wishes::fromEnvironment();
        QVERIFY(!wishes.printProgress);
        QCOMPARE(wishes.screenshot, QString());
        QVERIFY(!wishes.untilConnected);
        QCOMPARE(wishes.limitSeconds, 0);
        QVERIFY(!wishes.scripted);
    }

    void eachVariableIsRead()
    {
        qputenv("SIMPC_PROGRESS", "yes");
        QVERIFY(Wishes::fromEnvironment().printProgress);
        qputenv("SIMPC_SCREENSHOT", "/tmp/a b.png");
        QCOMPARE(Wishes::fromEnvironment().screenshot, QString("/tmp/a b.png"));
        qputenv("SIMPC_UNTIL", "connected");
        QVERIFY(Wishes::fromEnvironment().untilConnected);
        qputenv("SIMPC_LIMIT", "45");
        QCOMPARE(Wishes::fromEnvironment().limitSeconds, 45);
        qputenv("SIMPC_DIRECTED", "1");
        QVERIFY(Wishes::fromEnvironment().scripted);
    }

    void someWordsMeanNo_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("no progress") << QByteArray("SIMPC_PROGRESS") << QByteArray("0");
        QTest::newRow("until something else") << QByteArray("SIMPC_UNTIL") << QByteArray("linked");
        QTest::newRow("a limit that is no number")
            << QByteArray("SIMPC_LIMIT") << QByteArray("soon");
        QTest::newRow("no script") << QByteArray("SIMPC_DIRECTED") << QByteArray("0");
    }

    void someWordsMeanNo()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        qputenv(variable.constData(), value);
        const Wishes wishes = Wishes::fromEnvironment();
        QVERIFY(!wishes.printProgress);
        QVERIFY(!wishes.untilConnected);
        QCOMPARE(wishes.limitSeconds, 0);
        QVERIFY(!wishes.scripted);
    }
};

KOLM_TEST_MAIN(TestWishes)
#include "tst_wishes.moc"
