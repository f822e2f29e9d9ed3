#include "tests/simpc/steam_world_fixture.h"
#include "tests/support/test_case.h"

class SteamVrStartTest : public TestCase
{
    Q_OBJECT

private slots:
    void withoutSteamRunningTheUrlDoesNothing()
    {
        SteamWorldFixture w(dir());
        w.registerDrivers({"C:\\Assistant"});
        w.install();
        QVERIFY(w.openUrl().started);
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList());
        QCOMPARE(w.pc.events.lines(), QStringList());
    }

    void anotherUrlDoesNothing()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        QVERIFY(w.openUrl("steam://rungameid/1").started);
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
    }

    void withoutSteamVrInstalledTheUrlDoesNothing()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrInstalled = false;
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
    }

    void steamVrComesUpProcessByProcess()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrAppears = 3000;
        w.options.steamVrGap = 200;
        w.options.driverLoads = 500;
        w.installReady();
        w.openUrl();
        QCOMPARE(w.pc.events.lines(), QStringList("SteamVR starts"));
        w.clock.advance(2999);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        w.clock.advance(1);
        QCOMPARE(w.running(), QStringList({"steam.exe", "vrmonitor.exe"}));
        w.clock.advance(200);
        QCOMPARE(w.running(), QStringList({"steam.exe", "vrmonitor.exe", "vrserver.exe"}));
        w.clock.advance(499);
        QCOMPARE(w.server(), QStringList());
        w.clock.advance(1);
        w.pc.timeline.settle();
        QCOMPARE(w.server(), QStringList("start"));
        w.clock.advance(100);
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.pc.events.lines(), QStringList({"SteamVR starts", "streaming server starts",
                                                   "the cell says 1", "SteamVR runs"}));
    }

    void steamVrIsNotStartedTwice()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(1000);
        w.openUrl();
        w.clock.advance(2300);
        w.openUrl();
        w.clock.advance(60000);
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.server(), QStringList("start"));
    }

    void theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QByteArray>("paths");
        QTest::addColumn<bool>("loaded");
        const QByteArray none;
        QTest::newRow("any, one there")
            << "" << QByteArray(R"({"external_drivers":["C:\\x"]})") << true;
        QTest::newRow("any, none there") << "" << QByteArray(R"({"external_drivers":[]})") << false;
        QTest::newRow("any, null") << "" << QByteArray(R"({"external_drivers":null})") << false;
        QTest::newRow("any, member missing") << "" << QByteArray("{}") << false;
        QTest::newRow("any, no file") << "" << none << false;
        QTest::newRow("any, not JSON") << "" << QByteArray("{\"external_drivers\":[") << false;
        QTest::newRow("ours there")
            << "/opt/app" << QByteArray(R"({"external_drivers":["/opt/app"]})") << true;
        QTest::newRow("ours among others")
            << "/opt/app" << QByteArray(R"({"external_drivers":["/x","/opt/app"]})") << true;
        QTest::newRow("ours with a slash at the end")
            << "/opt/app" << QByteArray(R"({"external_drivers":["/opt/app/"]})") << true;
        QTest::newRow("ours with backslashes")
            << "C:/app" << QByteArray(R"({"external_drivers":["C:\\app"]})") << true;
        QTest::newRow("another only")
            << "/opt/app" << QByteArray(R"({"external_drivers":["/opt"]})") << false;
    }
    void theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp()
    {
        SteamWorldFixture w(dir());
        QFETCH(QString, wanted);
        QFETCH(QByteArray, paths);
        QFETCH(bool, loaded);
        w.options.steamRunning = true;
        w.options.driverFolder = wanted;
        if (!paths.isEmpty())
            w.writePaths(paths);
        w.install();
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.server(), loaded ? QStringList("start") : QStringList());
        quint32 value = 0;
        QCOMPARE(w.pc.cell().read(&value), loaded);
        QCOMPARE(w.pc.events.lines().contains("SteamVR finds no streaming driver"), !loaded);
    }

    void theDriversAreReadWhenTheServerComesUpAndNotBefore()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrAppears = 3000;
        w.options.steamVrGap = 200;
        w.installReady();
        w.openUrl();
        w.clock.advance(3199);
        w.pc.timeline.settle();
        w.registerDrivers({});
        w.clock.advance(60000);
        w.pc.timeline.settle();
        QCOMPARE(w.server(), QStringList());

        // And once they are read, it is of no use to take one away.
        w.shutDown();
        w.clock.advance(60000);
        w.pc.timeline.settle();
        w.registerDrivers({"C:\\Assistant"});
        w.openUrl();
        w.clock.advance(3200);
        w.pc.timeline.settle();
        w.registerDrivers({});
        w.clock.advance(60000);
        w.pc.timeline.settle();
        QCOMPARE(w.server(), QStringList("start"));
    }

    void theCellIsSetByThisPcOnlyWhenAskedTo_data()
    {
        QTest::addColumn<bool>("asked");
        QTest::newRow("asked") << true;
        QTest::newRow("the server does it") << false;
    }
    void theCellIsSetByThisPcOnlyWhenAskedTo()
    {
        SteamWorldFixture w(dir());
        QFETCH(bool, asked);
        w.options.setsCell = asked;
        w.installReady();
        w.pc.cell().write(0);
        w.openUrl();
        w.clock.advance(60000);
        quint32 value = 77;
        QVERIFY(w.pc.cell().read(&value));
        QCOMPARE(value, asked ? 1u : 0u);
    }

    void aKilledSteamVrCanBeStartedAgain()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.pc.timeline.settle();
        for (const QString &name : allOfSteamVr)
            w.pc.processes.endAll(name);
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.server(), QStringList({"start", "stop", "start"}));

        // Killed before the driver was loaded: then it is not loaded.
        w.pc.processes.endAll("vrserver.exe");
        w.shutDown();
        w.clock.advance(60000);
        w.openUrl();
        w.clock.advance(3300);
        QVERIFY(w.pc.processes.isRunning("vrserver.exe"));
        w.pc.processes.endAll("vrserver.exe");
        w.clock.advance(60000);
        w.pc.timeline.settle();
        QCOMPARE(w.server(), QStringList({"start", "stop", "start", "stop"}));
    }
};

KOLM_TEST_MAIN(SteamVrStartTest)
#include "tst_steam_vr_start.moc"
