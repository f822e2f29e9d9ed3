#include "tests/e2e/program.h"
#include "tests/link/peer.h"
#include "tests/support/test_case.h"

// What the program makes of other PCs.
class TestScenarios : public TestCase
{
    Q_OBJECT

private slots:
    void aConnectionThatEndsSaysWhere_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("missing");
        QTest::newRow("no Steam") << "no-steam"
                                  << "Steam runs";
        QTest::newRow("no server") << "server-never-comes"
                                   << "streaming server on the control port";
        QTest::newRow("too slow Steam") << "too-slow-steam"
                                        << "SteamVR runs";
        QTest::newRow("two headsets") << "two-headsets"
                                      << "headset connected";
    }
    void aConnectionThatEndsSaysWhere()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, missing);
        Program program(dir(), scenario);
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "45");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY2(program.output().contains("failed after 45 s, missing: " + missing),
                 qPrintable(program.output()));
    }

    void theseEndConnected_data()
    {
        QTest::addColumn<QString>("scenario");
        for (const char *name : {"steam-already-running", "leftover-steamvr", "slow-steam",
                                 "on-battery", "public-network"})
            QTest::newRow(name) << name;
    }
    void theseEndConnected()
    {
        QFETCH(QString, scenario);
        Program program(dir(), scenario);
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
    }

    void theVerdictOnThePcIsLoggedAndHoldsNothingUp_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("logged");
        QTest::addColumn<QString>("notLogged");
        QTest::newRow("good") << "laptop-with-two-adapters"
                              << "hardware: 4 8"
                              << "not match";
        QTest::newRow("not enough") << "card-not-listed"
                                    << "cpu or gpu not match"
                                    << "驱动程序版本";
        QTest::newRow("too old a system") << "windows-8-1"
                                          << "system not match"
                                          << "hardware: ";
        QTest::newRow("old driver") << "old-graphics-driver"
                                    << "[0]NVIDIA 驱动程序版本：31.0.15.3741"
                                    << "not match";
        QTest::newRow("a query that hangs") << "network-query-hangs"
                                            << "init end"
                                            << "powershellcmd";
    }
    void theVerdictOnThePcIsLoggedAndHoldsNothingUp()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, logged);
        QFETCH(QString, notLogged);
        Program program(dir(), scenario);
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
        QVERIFY2(program.log().contains(logged), qPrintable(program.log()));
        QVERIFY2(!program.log().contains(notLogged), qPrintable(program.log()));
    }

    void aHeadsetThatDropsReturns()
    {
        Program program(dir(), "headset-drops-and-returns");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("lost: headset connected"));
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QCOMPARE(program.close(), 0);
    }

    void theServersWishForARestartIsCarriedOut()
    {
        Program program(dir(), "steamvr-restart");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QVERIFY(program.waitForOutput("vrstartup.exe -shutdown"));
        QVERIFY(program.waitForOutput("lost: headset connected"));
        QCOMPARE(program.close(), 0);
        QVERIFY(program.log().contains("[steam] restartSteamVR"));
        QVERIFY(program.log().contains("[steam] stopSteamVR thread"));
    }

    void anOutsideServerCanConnect()
    {
        Program program(dir(), "external-server");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] SteamVR runs"));
        Peer server;
        QVERIFY(server.connectTo(9932));
        QVERIFY(server.isAnswered());
        QVERIFY(server.waitForText("HMDInfoRequest"));
        QVERIFY(server.send("HMDINFOBACK\tdeviceId:~D3OUT;10.0.0.5;false;0\n"));
        QVERIFY(server.waitForText("LinkTo D3OUT 10.0.0.5 "));
        QVERIFY(server.waitForText("HMDInfoRequest"));
        QVERIFY(server.send("HMDINFOBACK\tdeviceId:D3OUT~D3OUT;10.0.0.5;true;0\n"));
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QCOMPARE(program.close(), 0);
        QCOMPARE(program.json(program.dataDir() + "/set.json").value("lastSn").toString(),
                 QString("D3OUT"));
    }

    void withoutAStoredModeThePersonIsAskedAndNothingStarts()
    {
        Program program(dir(), "first-run");
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "20");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY(program.journal().isEmpty());
        QVERIFY(program.log().contains("getWiredOrWireless : 0"));
    }

    void aSecondCopyShowsItsNoticeAndEndsByItself()
    {
        Program program(dir(), "external-server");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("ControlSocket::Startup Successfully bound"));
        QProcess second;
        second.setProcessEnvironment(program.environment);
        second.setWorkingDirectory(program.work());
        second.start(PROGRAM, QStringList());
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(!QString::fromUtf8(second.readAllStandardOutput()).contains("ControlSocket"));
        QCOMPARE(program.close(), 0);
        QCOMPARE(program.log().count("json language: "), 1);
    }

    void closingWhileNothingIsConnectedStopsSteamVR()
    {
        Program program(dir(), "external-server");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("s  SteamVR runs"));
        QCOMPARE(program.close(), 0);
        QVERIFY(program.journal().value(program.journal().size() - 1).contains("vrstartup.exe"));
    }

    void anUnknownScenarioIsNamed()
    {
        Program program(dir(), "one-headset");
        program.environment.insert("SIMPC_SCENARIO", "no-such-scenario");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 2);
        QVERIFY(program.errors().contains("no-such-scenario"));
    }
};

KOLM_TEST_MAIN(TestScenarios)
#include "tst_scenarios.moc"
