#include "tests/cloud/cloud_peer.h"
#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QImage>
#include <QJsonArray>
#include <QRegularExpression>

// The main job from end to end: one headset on Wi-Fi, from start-up to
// "connected" and back.
class TestWireless : public TestCase
{
    Q_OBJECT

private slots:
    void aHeadsetConnectsAndEverythingIsLeftInOrder()
    {
        // The test's folder holds blanks, an ampersand, an accent and Chinese.
        Program program(dir(), "one-headset");
        const QJsonObject sessionBefore = program.json(program.work() + "/session.json");
        QVERIFY(!sessionBefore.isEmpty());
        const QByteArray pathsBefore =
            program.read(program.home() + "/AppData/Local/openvr/openvrpaths.vrpath");
        QVERIFY(pathsBefore.contains("external_drivers"));
        const QByteArray known = program.read(program.dataDir() + "/setting.inf");
        QVERIFY(!known.isEmpty());
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);

        // Stage by stage in its order.
        QStringList stages = program.progress().filter("[x]");
        QCOMPARE(stages, QStringList({"[x] Steam runs", "[x] SteamVR runs",
                                      "[x] streaming server on the control port",
                                      "[x] headset found", "[x] headset connected"}));
        QVERIFY(program.serverLog().contains("HMDInfoRequest"));
        QVERIFY(program.serverLog().contains("LinkTo D3"));

        // What was done to the PC, in its order.
        const QStringList journal = program.journal();
        QCOMPARE(journal.size(), 4);
        QVERIFY(journal[0].startsWith("launch ") && journal[0].contains("steam.exe -silent"));
        QCOMPARE(journal[1], QString("cell write 0"));
        QCOMPARE(journal[2], QString("launch explorer steam://rungameid/250820"));
        QVERIFY(journal[3].contains("vrstartup.exe -shutdown"));

        // The files as they should be afterwards.
        const QJsonObject set = program.json(program.dataDir() + "/set.json");
        QCOMPARE(set.value("wiredOrWireless").toInt(), 2);
        const QString serial = set.value("lastSn").toString();
        QVERIFY(serial.startsWith("D3"));
        QCOMPARE(set.value("D3").toObject().value("codec").toString(), QString("HEVC"));
        QVERIFY(known.startsWith(serial.toUtf8() + ';')); // it was connected before
        QCOMPARE(program.read(program.dataDir() + "/setting.inf"), known);

        const QJsonObject session = program.json(program.work() + "/session.json");
        QJsonObject expected = sessionBefore;
        QJsonObject settings = expected.value("sessionSettings").toObject();
        QJsonObject video = settings.value("video").toObject();
        video.insert("preferredFps", 90);
        settings.insert("video", video);
        if (settings.contains("audio")) {
            QJsonObject audio = settings.value("audio").toObject();
            QJsonObject microphone = audio.value("microphone").toObject();
            microphone.insert("enabled", false);
            audio.insert("microphone", microphone);
            settings.insert("audio", audio);
        }
        // A list of clients is emptied instead of writing the serial.
        if (sessionBefore.value("clientConnections").toObject().isEmpty()) {
            QJsonObject headset = settings.value("headset").toObject();
            headset.insert("serialNumber", serial);
            settings.insert("headset", headset);
        } else {
            expected.insert("clientConnections", QJsonObject());
        }
        expected.insert("sessionSettings", settings);
        if (expected.contains("openvr_config")) {
            QJsonObject config = expected.value("openvr_config").toObject();
            config.insert("refresh_rate", 90);
            expected.insert("openvr_config", config);
        }
        QCOMPARE(session, expected);

        const QJsonObject paths =
            program.json(program.home() + "/AppData/Local/openvr/openvrpaths.vrpath");
        QVERIFY(paths.value("external_drivers").isNull());
        QVERIFY(program.log().contains("Successfully set external_drivers to:"));
        QVERIFY(program.log().contains("[steam] vrserver.exe detected, clearing VR config"));

        const QImage window(program.screenshot());
        QCOMPARE(window.size(), QSize(1360, 875));
    }

    void theDetailsSayWhichProgramIsConnected()
    {
        Program program(dir(), "one-headset");
        program.environment.insert("SIMPC_DIRECTED", "1");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QCOMPARE(program.tell("until shown drawerTab"), QString("ok"));
        QCOMPARE(program.tell("click drawerTab"), QString("ok"));
        QCOMPARE(program.tell("until shown serverProgram"), QString("ok"));
        QCOMPARE(program.close(), 0);
    }

    void everyLineOfTheLogIsWhole()
    {
        CloudPeer cloud; // without one the lack of it would be logged
        QVERIFY(cloud.isUp());
        cloud.begin();
        Program program(dir(), "one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        // The cloud takes its own real time, so the program must not live too
        // fast.
        program.environment.insert("SIMPC_SPEED", "2");
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
        QVERIFY(cloud.receivedCount() > 0);
        // A debug build says where in the code, the product does not.
        const QRegularExpression line("^\\[(Debug|Info|Warning|Critical|Fatal):"
                                      "\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d  "
                                      "\"[^\"]*\\(\\d+\\)\"\\]:");
        QStringList lines = program.log().split("\r\n");
        QCOMPARE(lines.takeLast(), QString());
        QVERIFY(lines.size() > 30);
        for (const QString &text : qAsConst(lines)) {
            if (text.contains('\n')) // a message of several lines: its first one counts
                continue;
            QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
        }
        // Nothing unforeseen was logged: neither by us nor by the pages.
        const QStringList warnings =
            lines.filter(QRegularExpression("^\\[(Warning|Critical|Fatal)"));
        for (const QString &text : warnings)
            QVERIFY2(text.contains("[steam] hasLaunchSteamVR:false") ||
                         text.contains("english load fail"),
                     qPrintable(text));
    }

    void theNextRunKnowsTheHeadset()
    {
        Program program(dir(), "one-headset");
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
        const QByteArray known = program.read(program.dataDir() + "/setting.inf");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
        QCOMPARE(program.read(program.dataDir() + "/setting.inf"), known);
    }

    void aKilledProgramLeavesFilesThatTheNextRunUses()
    {
        Program program(dir(), "one-headset");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        program.kill();
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
    }
};

KOLM_TEST_MAIN(TestWireless)
#include "tst_wireless.moc"
