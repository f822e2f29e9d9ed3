#include "simpc/sim_host.h"
#include "tests/support/test_case.h"

class SimSettingsTest : public TestCase
{
    Q_OBJECT

private slots:
    void theEnvironmentIsRead()
    {
        const char *const names[] = {"SIMPC_SCENARIO", "SIMPC_SPEED", "SIMPC_SERVER_PROGRAM",
                                     "SIMPC_SERVER_LOG", "SIMPC_JOURNAL"};
        const char *const values[] = {"no-steam", "12.5", "/opt/server", "/tmp/log",
                                      "/tmp/journal"};
        for (int i = 0; i < 5; ++i)
            qputenv(names[i], values[i]);
        QString error = "untouched";
        const SimSettings settings = SimSettings::fromEnvironment(&error);
        for (const char *name : names)
            qunsetenv(name);
        QCOMPARE(error, QString());
        QCOMPARE(settings.scenario, QString("no-steam"));
        QCOMPARE(settings.speed, 12.5);
        QCOMPARE(settings.serverProgram, QString("/opt/server"));
        QCOMPARE(settings.serverLog, QString("/tmp/log"));
        QCOMPARE(settings.journal, QString("/tmp/journal"));
    }

    void anEmptyEnvironmentGivesTheDefaults()
    {
        QString error = "untouched";
        const SimSettings settings = SimSettings::fromEnvironment(&error);
        QCOMPARE(error, QString());
        QCOMPARE(settings.scenario, QString("one-headset"));
        QCOMPARE(settings.speed, 1.0);
        QVERIFY(settings.serverProgram.isEmpty());
        QVERIFY(settings.serverLog.isEmpty());
        QVERIFY(settings.journal.isEmpty());
    }

    void aSenselessSpeedIsToldAndNotTaken_data()
    {
        QTest::addColumn<QByteArray>("speed");
        QTest::newRow("a word") << QByteArray("fast");
        QTest::newRow("zero") << QByteArray("0");
        QTest::newRow("negative") << QByteArray("-2");
        QTest::newRow("too fast") << QByteArray("1001");
        QTest::newRow("no number at all") << QByteArray("nan");
    }
    void aSenselessSpeedIsToldAndNotTaken()
    {
        QFETCH(QByteArray, speed);
        qputenv("SIMPC_SPEED", speed);
        QString error;
        const SimSettings settings = SimSettings::fromEnvironment(&error);
        qunsetenv("SIMPC_SPEED");
        QCOMPARE(error, QString("SIMPC_SPEED must be a number from 0.01 to 1000, not \"%1\"")
                            .arg(QString::fromLatin1(speed)));
        QCOMPARE(settings.speed, 1.0);
    }
};

KOLM_TEST_MAIN(SimSettingsTest)
#include "tst_sim_settings.moc"
