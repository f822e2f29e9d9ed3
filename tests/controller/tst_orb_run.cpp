#include "tests/controller/controller_test.h"

#include <QJsonDocument>

// The beginning of a run, what it comes to, and its end.
class TestOrbRun : public ControllerTest
{
    Q_OBJECT

private slots:
    void withoutAStoredModeNothingIsPolledUntilTheUserChooses()
    {
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(!f.orb().isHideSelectPage());
        QVERIFY(!f.linkMade);
        f.clock.advance(60000);
        QVERIFY(f.emitted.isEmpty());
        QVERIFY(f.pc.journal.lines().isEmpty());
        QCOMPARE(loggedCount("getWiredOrWireless : 0"), 1);

        f.orb().setProperty("wired", false);
        QVERIFY(f.linkMade);
        QVERIFY(!f.orb().isHideSelectPage()); // of this run's start
        f.clock.advance(5000);
        QCOMPARE(f.count("handleEvent"), 1);
    }

    void aStoredModeIsTakenUpByItself()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().isHideSelectPage());
        QVERIFY(f.linkMade);
        QVERIFY(!f.orb().wired());
        QCOMPARE(loggedCount("getWiredOrWireless : 2"), 1);
        QCOMPARE(loggedCount("init end"), 1);
        QCOMPARE(f.orb().steamState(), ORBManager::Pass);
        QCOMPARE(f.pc.journal.lines(),
                 QStringList({"cell write 0", "launch explorer steam://rungameid/250820"}));
        QCOMPARE(f.events.size(), 1);
        QCOMPARE(f.events[0].first,
                 QString("streamingAssistant_streaming_streamingType_0_0_page_view"));
    }

    void aStoredWiredModeIsTakenUpToo()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().wired());
        QCOMPARE(loggedCount("getWiredOrWireless : 1"), 1);
    }

    void whatAnEarlierSessionLeftRunningIsStoppedFirst()
    {
        store(LinkKind::Wireless);
        SteamOptions options = steamRunning();
        options.steamVrRunning = true;
        ControllerFixture f(dir(), options);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        f.orb();
        QVERIFY(f.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(f.pc.journal.lines().last().contains("steam://rungameid/250820"));
    }

    void aRunBeginsInItsOrder()
    {
        ControllerFixture f(dir(), steamRunning());
        QStringList order;
        const auto note = [&](const char *what) {
            return [this, &order, &f, what] {
                order << what << (readFile("set.json").isEmpty() ? "unwritten" : "written")
                      << (f.linkMade ? "listening" : "deaf")
                      << (f.pc.journal.lines().isEmpty() ? "" : "SteamVR");
            };
        };
        QObject::connect(&f.orb(), &ORBManager::systemInfoChange, note("PC"));
        QObject::connect(&f.orb(), &ORBManager::steamStateChange, note("Steam"));
        QObject::connect(&f.orb(), &ORBManager::handleEvent, note("poll"));
        f.orb().setProperty("wired", false);
        QCOMPARE(order, QStringList({"PC", "written", "deaf", "", //
                                     "Steam", "written", "listening", "SteamVR"}));
        f.clock.advance(4999);
        QVERIFY(!order.contains("poll"));
        f.clock.advance(1);
        QVERIFY(order.contains("poll"));
    }

    void fromStartToConnectedOverWifi()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir());
        f.server.present = false;
        f.server.headsets = {{"D3A0123456", "10.0.0.7", false}};
        f.server.reportedId = "D3A0123456";
        f.pc.events.onLine(
            [&](const QString &) { f.server.present = f.pc.processes.isRunning("vrserver.exe"); });
        f.orb();
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        for (int i = 0; i < 90 && !f.orb().vrIsConnect(); ++i) {
            f.pass(1000);
            f.server.present = f.pc.processes.isRunning("vrserver.exe");
        }
        QVERIFY(f.orb().vrIsConnect());
        QVERIFY(f.orb().haslaunchSteam());
        QVERIFY(f.orb().haslaunchSteamVR());
        QCOMPARE(f.orb().vrName(), QString("眼镜ID：123456"));
        QVERIFY(f.orb().hasEnumdevices());
        QVERIFY(f.server.received.contains("LinkTo D3A0123456 10.0.0.7 "));
        f.pass(3000); // the streaming driver loads after SteamVR's server
        QVERIFY(f.vrPath().value("external_drivers").isNull()); // registered and removed again
        QCOMPARE(loggedCount("[steam] vrserver.exe detected, clearing VR config"), 1);
    }

    void stoppingSteamEndsThePollAndSteamVR()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(10000);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        f.orb().stopSteam();
        f.orb().stopSteam(); // harmless
        QVERIFY(!f.pc.processes.isRunning("vrserver.exe"));
        f.emitted.clear();
        f.pass(20000);
        QCOMPARE(f.count("handleEvent"), 0);
    }

    void closingStopsSteamVRAndStoresEverything()
    {
        store(LinkKind::Wireless);
        writeFile("setting.inf", "D1Z;;D2Y;");
        writeFile("session.json",
                  R"({"other":{"id":9007199254740993},"sessionSettings":{"headset":{"a":1}}})");
        ControllerFixture f(dir(), steamRunning());
        f.server.headsets = {{"D2NEW", "10.0.0.7", false}};
        f.orb();
        f.pass(20000);
        QVERIFY(f.orb().vrIsConnect());
        f.pc.journal.clear();
        const qint64 slept = f.clock.slept();
        f.close();
        QVERIFY(f.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!f.pc.processes.isRunning("vrserver.exe"));
        QVERIFY(f.clock.slept() - slept >= 1000 + 2500);
        const QJsonObject set = readJson("set.json");
        QCOMPARE(set.value("lastSn").toString(), QString("D2NEW"));
        QCOMPARE(set.value("wiredOrWireless").toInt(), 2);
        const QByteArray session = readFile("session.json");
        QCOMPARE(QJsonDocument::fromJson(session)
                     .object()["sessionSettings"]
                     .toObject()["headset"]
                     .toObject()["serialNumber"]
                     .toString(),
                 QString("D2NEW"));
        QVERIFY(session.contains("9007199254740993"));
        QCOMPARE(readFile("setting.inf"), QByteArray("D2NEW;D1Z;D2Y"));
    }

    void theEndOfTheSessionStoresEverythingAndLeavesSteamVRAlone()
    {
        store(LinkKind::Wireless);
        writeFile("setting.inf", "D1Z");
        writeFile("session.json", R"({"sessionSettings":{"headset":{"a":1}}})");
        ControllerFixture f(dir(), steamRunning());
        f.server.headsets = {{"D2NEW", "10.0.0.7", false}};
        f.orb();
        f.pass(20000);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        f.steam.startSteamVR(); // and it has not come up yet
        QVERIFY(!f.vrPath().value("external_drivers").isNull());
        f.pc.journal.clear();
        const qint64 slept = f.clock.slept();

        f.orb().endSession();
        QCOMPARE(f.clock.slept(), slept);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        QVERIFY(f.pc.journal.lines().isEmpty());
        QVERIFY(f.vrPath().value("external_drivers").isNull());
        QCOMPARE(readJson("set.json").value("lastSn").toString(), QString("D2NEW"));
        QCOMPARE(readFile("setting.inf"), QByteArray("D2NEW;D1Z"));
        QVERIFY(readFile("session.json").contains("D2NEW"));
    }

    void afterTheEndOfTheSessionSteamVRIsNeitherStartedNorStopped()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        f.steam.restartSteamVR(); // starts it in ten seconds
        f.pc.journal.clear();
        f.orb().endSession();
        for (const char *misses : {"1", "2", "3"})
            announce(QString("[steam] hasLaunchSteamVR:false; switch: ") + misses);
        f.pass(12000);
        f.close();
        QVERIFY(f.vrPath().value("external_drivers").isNull());
        QCOMPARE(f.pc.journal.lines().filter("launch"), QStringList());
    }

    void theRecentListIsReadWithoutItsEmptyEntries_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("serials");
        QTest::newRow("missing") << QByteArray() << QStringList();
        QTest::newRow("empty") << QByteArray("") << QStringList();
        QTest::newRow("doubled") << QByteArray("A;;B;") << QStringList({"A", "B"});
    }
    void theRecentListIsReadWithoutItsEmptyEntries()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, serials);
        if (!content.isNull())
            writeFile("setting.inf", content);
        ControllerFixture f(dir());
        f.orb();
        f.close();
        QCOMPARE(readFile("setting.inf"), serials.join(';').toUtf8());
    }

    void theRecentListThatWasHeldAtTheStartIsKept()
    {
        // Nobody can read a folder either.
        QVERIFY(QDir().mkdir(path("setting.inf")));
        ControllerFixture f(dir());
        f.orb();
        QVERIFY(QDir().rmdir(path("setting.inf")));
        writeFile("setting.inf", "A;B");
        f.close();
        QCOMPARE(readFile("setting.inf"), QByteArray("A;B"));
    }

    void theTimesOfOneRunAreReportedAtItsEnd()
    {
        ControllerFixture f(dir());
        f.orb();
        f.clock.advance(61999);
        f.orb().closeApp();
        QCOMPARE(f.events.last().first, QString("streamingAssistant_streaming_0_0_0_module_pend"));
        QCOMPARE(f.events.last().second, (QJsonObject{{"duration", 61}}));
    }

    void aSteamVRApplicationIsReportedWithTheSettingsOfTheStart()
    {
        writeFile("set.json",
                  R"({"wiredOrWireless":2,"D3":{"definitionIndex":0,"fps":"72","audio":true}})");
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().setEffects(2, 1, 1, false, false, false, false);
        emit f.steam.steamAppChange(5, "Game");
        const QJsonObject expected{
            {"duration", 5}, {"streamingApp", "Game"}, {"streamingType", "wireless"},
            {"fps", 72},     {"microphoneOn", true},   {"graphicsQuality", "High"}};
        QCOMPARE(f.events.last().second, expected);
    }
};

KOLM_TEST_MAIN(TestOrbRun)
#include "tst_orb_run.moc"
