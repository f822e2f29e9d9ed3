#include "pc/tcp_table.h"
#include "simpc/server_process.h"
#include "tests/simpc/sim_host_fixture.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <csignal>

class SimHostServerTest : public SimHostFixture
{
    Q_OBJECT

private slots:
    void theStreamingServerComesWithSteamVrAndGoesWithIt()
    {
        registerDriver();
        Assistant assistant;
        ManualClock clock;
        SimHost host(from(ready), options(clock, assistant.port()));
        host.start();
        QCOMPARE(host.serverPid(), qint64(0));
        QVERIFY(host.pc().cell().write(0));
        for (int round = 0; round < 2; ++round) {
            startSteamVr(host, clock);
            QVERIFY(assistant.accept());
            QVERIFY(runningServer(host) > 0);
            quint32 value = 0;
            QVERIFY(host.pc().cell().read(&value));
            QCOMPARE(value, 1u);
            QCOMPARE(assistant.ask("HMDInfoRequest"),
                     QByteArray("HMDINFOBACK\tD3SIM00001;192.168.1.31;false;100"));
            stopSteamVr(host, clock);
            QCOMPARE(assistant.line(), QByteArray("<closed>"));
        }
    }

    void itsConnectionIsOneOfSteamVrsServer()
    {
        registerDriver();
        Assistant assistant;
        ManualClock clock;
        SimHost host(from(ready), options(clock, assistant.port()));
        host.start();
        QVERIFY(tcp_table::read().rows.empty());
        startSteamVr(host, clock);
        QVERIFY(assistant.accept());
        QVERIFY(runningServer(host) > 0);
        const std::vector<tcp_table::Row> rows = tcp_table::read().rows;
        QCOMPARE(rows.size(), std::size_t(1));
        QCOMPARE(rows[0].remotePort, assistant.port());
        QVERIFY(rows[0].localPort != 0);
        QString name;
        for (const processes::Entry &process : processes::list()) {
            if (process.pid == rows[0].pid)
                name = process.name;
        }
        QCOMPARE(name, QString("vrserver.exe"));
        stopSteamVr(host, clock);
        QCOMPARE(assistant.line(), QByteArray("<closed>"));
    }

    void withoutTheProgramsOwnDriverNoServerComes()
    {
        registerDriver("/somewhere/else");
        ManualClock clock;
        SimHost host(from(ready), options(clock));
        host.start();
        startSteamVr(host, clock);
        QVERIFY(host.pc().events.lines().contains("SteamVR finds no streaming driver"));
        QVERIFY(!host.pc().events.lines().contains("streaming server starts"));
        QCOMPARE(host.serverPid(), qint64(0));
    }

    void theServerMaySitBesideTheProgramOrElsewhere()
    {
        registerDriver("D:\\driver");
        Assistant assistant;
        ManualClock clock;
        SimHost::Options with = options(clock, assistant.port());
        // All programs are built into one folder.
        with.settings.serverProgram.clear();
        with.driverFolder = "D:/driver";
        SimHost host(from(ready), with);
        host.start();
        startSteamVr(host, clock);
        QVERIFY(assistant.accept());
    }

    void aSecondServerHearsOnlyOfWhatIsStillToCome()
    {
        registerDriver();
        writeFile("server",
                  "#!/bin/sh\necho \"$@\" >> arguments\nexec '" STREAMING_SERVER_SIM "' \"$@\"\n");
        QVERIFY(QFile::setPermissions(path("server"), QFile::ReadOwner | QFile::ExeOwner));
        Assistant assistant;
        ManualClock clock;
        SimHost::Options with = options(clock, assistant.port());
        with.settings.serverProgram = path("server");
        SimHost host(from(R"({"title":"t","steam":{"running":true},"streamingServer":{
                          "restartAt":20,"headsets":[{"serial":"D3A","address":"1",
                          "joinsAt":10,"dropsAt":500,"returnsAt":600}]}})"),
                     with);
        host.start();
        startSteamVr(host, clock);
        QVERIFY(assistant.accept());
        stopSteamVr(host, clock);
        startSteamVr(host, clock);
        QVERIFY(assistant.accept());
        const QList<QByteArray> runs = readFile("arguments").split('\n');
        QCOMPARE(runs.size(), 3);
        QVERIFY2(runs[0].startsWith("--headset D3A=1@10 --drop D3A@500 --return D3A@600"), runs[0]);
        QVERIFY(runs[0].contains("--restart-at 20"));
        // A minute of the PC's time later.
        QVERIFY2(runs[1].startsWith("--headset D3A=1@0 --drop D3A@440 --return D3A@540"), runs[1]);
        QVERIFY(!runs[1].contains("--restart-at"));
    }

    void theServerIsToldSpeedAndRecord()
    {
        registerDriver();
        Assistant assistant;
        ManualClock clock;
        SimHost::Options with = options(clock, assistant.port());
        with.settings.speed = 1000;
        with.settings.serverLog = path("record");
        SimHost host(from(R"({"title":"t","steam":{"running":true},
                          "streamingServer":{"restartAt":10}})"),
                     with);
        host.start();
        startSteamVr(host, clock);
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.line(), QByteArray("RESTARTSTEAMVR"));
        host.stop();
        const QByteArray record = readFile("record");
        QVERIFY(record.contains("# the cell says 1\n"));
        QVERIFY(record.contains("> RESTARTSTEAMVR\n"));
        QVERIFY(record.endsWith("# ends\n"));
    }

    void aServerThatCannotBeStartedIsNoted()
    {
        registerDriver();
        ManualClock clock;
        SimHost::Options with = options(clock);
        with.settings.serverProgram = path("none");
        SimHost host(from(ready), with);
        EventWatcher watcher(host.pc());
        host.start();
        startSteamVr(host, clock);
        QVERIFY(watcher.waitFor("the streaming server could not be started"));
        QCOMPARE(host.serverPid(), qint64(0));
        stopSteamVr(host, clock);
    }

    void anExternalServerIsNotStartedButTheCellIsSet()
    {
        registerDriver();
        ManualClock clock;
        SimHost::Options with = options(clock);
        with.settings.serverProgram = path("none");
        SimHost host(from(R"({"title":"t","steam":{"running":true},"streamingServer":"external"})"),
                     with);
        host.start();
        QVERIFY(host.pc().cell().write(0));
        startSteamVr(host, clock);
        quint32 value = 0;
        QVERIFY(host.pc().cell().read(&value));
        QCOMPARE(value, 1u);
        QVERIFY(!host.pc().events.lines().contains("streaming server starts"));
    }

    void aServerThatNeverComesLeavesTheCellAlone()
    {
        registerDriver();
        ManualClock clock;
        SimHost host(from(R"({"title":"t","steam":{"running":true},"streamingServer":"never"})"),
                     options(clock));
        host.start();
        QVERIFY(host.pc().cell().write(0));
        startSteamVr(host, clock);
        quint32 value = 77;
        QVERIFY(host.pc().cell().read(&value));
        QCOMPARE(value, 0u);
        QCOMPARE(host.pc().events.lines(), QStringList({"SteamVR starts", "SteamVR runs"}));
    }

    void endingTheHostEndsTheServer_data()
    {
        QTest::addColumn<bool>("stopped");
        QTest::newRow("stopped") << true;
        QTest::newRow("destroyed") << false;
    }
    void endingTheHostEndsTheServer()
    {
        QFETCH(bool, stopped);
        registerDriver();
        Assistant assistant;
        ManualClock clock;
        auto host = std::make_unique<SimHost>(from(ready), options(clock, assistant.port()));
        host->start();
        startSteamVr(*host, clock);
        QVERIFY(assistant.accept());
        const pid_t pid = runningServer(*host);
        QVERIFY(pid > 0);
        if (stopped)
            host->stop();
        else
            host.reset();
        // It is gone at once, not some time later.
        QCOMPARE(::kill(pid, 0), -1);
        QCOMPARE(assistant.line(), QByteArray("<closed>"));
        if (stopped) {
            QCOMPARE(host->serverPid(), qint64(0));
            QVERIFY(host->pc().processes.isRunning("vrserver.exe"));
        }
    }

    void aServerThatIsStartedAgainReplacesTheFirst()
    {
        Assistant assistant;
        ServerProcess server;
        const QStringList arguments{"--port", QString::number(assistant.port())};
        QVERIFY(server.begin(STREAMING_SERVER_SIM, arguments));
        QVERIFY(assistant.accept());
        const auto first = static_cast<pid_t>(server.runningPid());
        QVERIFY(server.begin(STREAMING_SERVER_SIM, arguments));
        QCOMPARE(::kill(first, 0), -1);
        QVERIFY(server.runningPid() > 0 && server.runningPid() != first);
        QVERIFY(!server.begin(path("none"), {}));
        QCOMPARE(server.runningPid(), qint64(0));
    }

    void aKilledProgramLeavesNoServerBehind()
    {
        registerDriver(QFileInfo(HOST_VICTIM).path());
        Assistant assistant;
        QProcess victim;
        victim.start(HOST_VICTIM, {dir(), STREAMING_SERVER_SIM, QString::number(assistant.port())});
        QVERIFY(victim.waitForStarted(patience));
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.ask("WiredConnect"), QByteArray("DeviceConnectBack\tfalse"));
        victim.kill();
        QVERIFY(victim.waitForFinished(patience));
        QCOMPARE(assistant.line(), QByteArray("<closed>"));
    }
};

KOLM_TEST_MAIN(SimHostServerTest)
#include "tst_sim_host_server.moc"
