#include "tests/e2e/program.h"
#include "tests/support/free_port.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>

#include <csignal>

namespace {

const QString list = QStringLiteral("adb devices && adb forward --list");

// The stand-in adb of one test: its folder and its server's port are known, so
// that one can look at them afterwards.
struct Adb
{
    explicit Adb(Program &program, const QString &dir)
        : folder(dir + "/adb"), port(QString::number(freePort()))
    {
        QDir().mkpath(folder);
        environment = program.environment;
        environment.insert("ADB_SIM_FOLDER", folder);
        environment.insert("ANDROID_ADB_SERVER_PORT", port);
        // A command that takes 3 s counts as one that hangs: on a busy machine a real
        // process may need a good part of a second.
        environment.insert("SIMPC_SPEED", "5");
        program.environment = environment;
    }
    ~Adb()
    {
        QFile::remove(folder + "/hang");
        call({"kill-server"});
    }

    QString call(const QStringList &arguments) const
    {
        QProcess adb;
        adb.setProcessEnvironment(environment);
        adb.start(ADB, arguments);
        adb.waitForFinished(20000);
        return QString::fromUtf8(adb.readAllStandardOutput());
    }
    // Whether a server can be reached; asking starts none.
    bool serverRuns() const
    {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", static_cast<quint16>(port.toInt()));
        return socket.waitForConnected(5000);
    }
    // The real processes called adb or adb.exe on this port.
    QList<qint64> processes() const
    {
        QList<qint64> pids;
        for (const QString &entry : QDir("/proc").entryList(QDir::Dirs)) {
            const qint64 pid = entry.toLongLong();
            const QString name =
                QFileInfo(QFile::symLinkTarget("/proc/" + entry + "/exe")).fileName();
            QFile settings("/proc/" + entry + "/environ");
            if (pid > 0 && (name == "adb" || name == "adb.exe") &&
                settings.open(QIODevice::ReadOnly) &&
                settings.readAll().split('\0').contains("ANDROID_ADB_SERVER_PORT=" + port.toUtf8()))
                pids << pid;
        }
        return pids;
    }
    // The arguments of every call so far, joined by blanks.
    QStringList calls() const
    {
        QStringList lines;
        QFile file(folder + "/calls");
        if (!file.open(QIODevice::ReadOnly))
            return lines;
        for (const QByteArray &line : file.readAll().split('\n')) {
            QStringList words;
            for (const QJsonValue &word :
                 QJsonDocument::fromJson(line).object().value("arguments").toArray())
                words << word.toString();
            if (!words.isEmpty())
                lines << words.join(' ');
        }
        return lines;
    }

    QString folder;
    QString port;
    QProcessEnvironment environment;
};

// Real processes have to keep up with what happens on the cable meanwhile.
void slowly(Program *program)
{
    program->environment.insert("SIMPC_SPEED", "5");
}

} // namespace

// A headset on the USB cable, from the plug to "connected" and back.
class TestWired : public TestCase
{
    Q_OBJECT

private slots:
    void aHeadsetOnTheCableConnectsAndNothingIsLeftOver()
    {
        Program program(dir(), "wired-headset-at-start");
        const Adb adb(program, dir());
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);

        QStringList calls = adb.calls();
        QVERIFY(!calls.isEmpty());
        QCOMPARE(calls.takeFirst(), QString("--version"));
        const int ports = calls.indexOf("forward tcp:9943 tcp:9943");
        QVERIFY(ports > 1);
        QCOMPARE(calls.mid(ports - 2, 6),
                 (QStringList{"devices", "forward --list", "forward tcp:9943 tcp:9943",
                              "forward tcp:9944 tcp:9944", "reverse tcp:50000 tcp:50000",
                              "reverse tcp:50001 tcp:50001"}));
        QCOMPARE(calls.count("forward tcp:9943 tcp:9943"), 1);
        QVERIFY(program.log().contains("use local adb"));
        QVERIFY(program.serverLog().contains("DeviceConnectBack\\ttrue"));
        // On a busy machine the lists of devices and forwards come in one piece, and
        // all of it counts as the serial.
        QVERIFY(program.json(program.dataDir() + "/set.json")
                    .value("lastSn")
                    .toString()
                    .startsWith("PA7910SIM1"));

        QVERIFY(program.journal().contains("terminate adb.exe"));
        QVERIFY(!adb.serverRuns());
        QCOMPARE(adb.processes(), QList<qint64>());
    }

    void theseCablesConnect_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::newRow("plugged later") << "wired-plugged-later";
        QTest::newRow("another's server") << "wired-adb-already-running";
        QTest::newRow("offline at first") << "wired-offline-headset";
    }

    void theseCablesConnect()
    {
        QFETCH(QString, scenario);
        Program program(dir(), scenario);
        const Adb adb(program, dir());
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
    }

    void aHeadsetThatIsPulledOffIsLostAndComesBack()
    {
        Program program(dir(), "wired-unplugged-and-back");
        const Adb adb(program, dir());
        slowly(&program);
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QVERIFY(program.waitForOutput("lost: headset connected"));
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QVERIFY(adb.calls().count("forward tcp:9943 tcp:9943") >= 2);
        QCOMPARE(program.close(), 0);
    }

    void anotherHeadsetTakesThePlace()
    {
        Program program(dir(), "wired-second-headset");
        const Adb adb(program, dir());
        slowly(&program);
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QVERIFY(program.waitForOutput("on the USB cable: D2USBSIM02"));
        QTRY_VERIFY_WITH_TIMEOUT(adb.call({"forward", "--list"}).contains("D2USBSIM02 tcp:9943"),
                                 20000);
        QCOMPARE(program.close(), 0);
        QCOMPARE(program.json(program.dataDir() + "/set.json").value("D2").isObject(), true);
    }

    void anOfflineHeadsetRestartsAdb()
    {
        Program program(dir(), "wired-offline-headset");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("terminate adb.exe", 2));
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QCOMPARE(program.close(), 0);
    }

    void aRunningServerIsUsedAndLeftWithoutPorts()
    {
        Program program(dir(), "wired-adb-already-running");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        const QList<qint64> server = adb.processes();
        QVERIFY(adb.call({"forward", "--list"}).contains("PA7910SIM1 tcp:9944 tcp:9944"));
        QVERIFY(adb.call({"reverse", "--list"}).contains("tcp:50001 tcp:50001"));
        QCOMPARE(program.close(), 0);

        QVERIFY(program.log().contains("use started adb"));
        QVERIFY(program.journal().filter("terminate").isEmpty());
        QVERIFY(adb.serverRuns());
        QCOMPARE(adb.processes().size(), 1);
        QVERIFY(server.contains(adb.processes().first())); // the same one
        QCOMPARE(adb.call({"forward", "--list"}), QString("\n"));
        QCOMPARE(adb.call({"reverse", "--list"}), QString("\n"));
    }

    void withoutAdbTheWindowGoesOnAndTheShippedOneIsTried()
    {
        Program program(dir(), "wired-no-adb");
        const Adb adb(program, dir());
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "40");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY(program.output().contains("failed after 40 s, missing: headset found"));
        QCOMPARE(program.log().count("use ORBHelper adb"), 1);
        QVERIFY(program.log().count("adb ORB: " + list) >= 2); // it does not give up
        QCOMPARE(adb.calls(), QStringList());
    }

    void anAdbThatHangsHoldsNothingUp()
    {
        Program program(dir(), "wired-adb-hangs");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QTRY_VERIFY_WITH_TIMEOUT(!adb.processes().isEmpty(), 60000);
        QVERIFY(program.waitForOutput("[x] streaming server on the control port"));
        // Polls go on in their time, and ask the streaming server each time.
        QVERIFY(program.waitForOutput("Send data exchange command response: WiredConnect", 8));
        // Given up long ago, with the interpreter that waited for it.
        QCOMPARE(adb.processes(), QList<qint64>());
        QCOMPARE(program.close(), 0);
        QCOMPARE(adb.processes(), QList<qint64>());
    }

    void theShippedAdbIsUsedFromTheWorkingFolder()
    {
        Program program(dir(), "wired-no-adb");
        const Adb adb(program, dir());
        QVERIFY(QDir().mkpath(program.work() + "/ADB"));
        QVERIFY(QFile::copy(ADB, program.work() + "/ADB/adb.exe"));
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 0);
        QVERIFY(program.log().contains("use ORBHelper adb"));
        QCOMPARE(adb.processes(), QList<qint64>());
    }

    void changingToUsbAndBackLeavesNoAdb()
    {
        Program program(dir(), "wired-and-wireless");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        QVERIFY(program.waitForOutput("the person chooses USB"));
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QVERIFY(adb.serverRuns());
        QVERIFY(program.waitForOutput("the person chooses Wi-Fi"));
        QVERIFY(program.waitForOutput("terminate adb.exe"));
        QTRY_COMPARE_WITH_TIMEOUT(program.serverLog().count("< LinkTo D3SIM00001"), 2, 60000);
        QCOMPARE(adb.processes(), QList<qint64>());
        QCOMPARE(program.close(), 0);
        QVERIFY(program.serverLog().contains("WiredConnect"));
        QCOMPARE(adb.processes(), QList<qint64>());
        QCOMPARE(program.json(program.dataDir() + "/set.json").value("wiredOrWireless").toInt(), 2);
    }

    // Nothing is connected any more, and that is said before SteamVR is started
    // again, let alone a headset found.
    void fromACableThatConnectsToAnEmptyWifi()
    {
        writeFile("scenario.json", R"({"title":"USB to Wi-Fi","pc":{"usb":"PA7910SIM1"},
        "steam":{"running":true},"streamingServer":{"usb":"adb","headsets":[]},
        "files":{"set.json":{"wiredOrWireless":1}},
        "at":[{"seconds":60,"personChooses":"wifi"}]})");
        Program program(dir(), dir() + "/scenario.json");
        const Adb adb(program, dir());
        program.environment.insert("SIMPC_DIRECTED", "1");
        QVERIFY(program.start());
        QCOMPARE(program.tell("until shown stopStreaming"), QString("ok"));
        QVERIFY(program.waitForOutput("the person chooses Wi-Fi"));
        QCOMPARE(program.tell("until hidden stopStreaming"), QString("ok"));
        QVERIFY(program.waitForOutput("launch explorer", 2));
        const QStringList progress = program.progress();
        const int again = progress.lastIndexOf("launch explorer steam://rungameid/250820");
        for (const char *stage : {"SteamVR runs", "streaming server on the control port",
                                  "headset found", "headset connected"}) {
            const int lost = progress.indexOf(QStringLiteral("[ ] lost: ") + stage);
            QVERIFY2(lost >= 0 && lost < again, stage);
        }
        // It stays like that.
        QVERIFY(program.waitForOutput("[x] streaming server on the control port", 2));
        QCOMPARE(program.tell("wait 30"), QString("ok"));
        QCOMPARE(program.tell("until hidden stopStreaming"), QString("ok"));
        QCOMPARE(program.progress().filter("[x] headset").size(), 2);
        QCOMPARE(program.close(), 0);
    }

    void toAnEmptyCableForTheSecondTime()
    {
        writeFile("scenario.json", R"({"title":"twice to an empty cable","steam":{"running":true},
        "at":[{"seconds":20,"personChooses":"usb"},{"seconds":50,"personChooses":"wifi"},
              {"seconds":100,"personChooses":"usb"}]})");
        Program program(dir(), dir() + "/scenario.json");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected", 2)); // Wi-Fi, before and after
        QVERIFY(program.waitForOutput("the person chooses USB", 2));
        QVERIFY(program.waitForOutput("lost: headset found", 2));
        // adb is asked and has nothing new to say; the server is polled.
        const int polls = program.serverLog().count("WiredConnect");
        QTRY_VERIFY_WITH_TIMEOUT(program.serverLog().count("WiredConnect") > polls + 2, 60000);
        QCOMPARE(program.progress().filter("[x] headset found").size(), 2);
        QCOMPARE(program.close(), 0);
    }

    void aKilledProgramsServerIsTakenOverByTheNext()
    {
        Program program(dir(), "wired-headset-at-start");
        const Adb adb(program, dir());
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected"));
        program.kill();
        QVERIFY(adb.serverRuns());
        QVERIFY(adb.call({"forward", "--list"}).contains("tcp:9943"));

        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QVERIFY(program.log().contains("use started adb"));
        QCOMPARE(program.close(), 0);
        // It was there before, so it stays; what was set up is taken back.
        QCOMPARE(adb.processes().size(), 1);
        QCOMPARE(adb.call({"forward", "--list"}), QString("\n"));
        QCOMPARE(adb.call({"reverse", "--list"}), QString("\n"));
    }
};

KOLM_TEST_MAIN(TestWired)
#include "tst_wired.moc"
