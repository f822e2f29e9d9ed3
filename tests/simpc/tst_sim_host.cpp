#include "simpc/server_process.h"
#include "simpc/sim_host.h"

#include "base/manual_clock.h"
#include "tests/link/semaphore.h"
#include "tests/peers/control_link_ends.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <atomic>
#include <mutex>
#include <thread>

namespace {

const QByteArray ready = R"({"title":"t","steam":{"running":true}})";

// The happenings as they come, on whichever thread.
class Watcher
{
public:
    explicit Watcher(SimPc &pc)
    {
        pc.events.onLine([this](const QString &line) {
            {
                const std::lock_guard<std::mutex> lock(mutex_);
                lines_.append(line);
            }
            arrived_.release();
        });
    }
    // What has come already; nobody is asked.
    QStringList lines()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return lines_;
    }
    bool waitFor(const QString &line)
    {
        while (!lines().contains(line)) {
            if (!arrived_.acquire())
                return false;
        }
        return true;
    }

private:
    std::mutex mutex_;
    QStringList lines_;
    Semaphore arrived_;
};

// Counts what is waited for.
class CountingClock final : public Clock
{
public:
    ManualClock &manual() { return manual_; }
    int waits() const { return waits_; }

    QDateTime now() const override { return manual_.now(); }
    qint64 epochMilliseconds() const override { return manual_.epochMilliseconds(); }
    qint64 elapsed() const override { return manual_.elapsed(); }
    void sleep(int milliseconds) override { manual_.sleep(milliseconds); }
    void singleShot(int milliseconds, QObject *context, std::function<void()> action) override
    {
        ++waits_;
        manual_.singleShot(milliseconds, context, std::move(action));
    }
    int startTimer(int milliseconds, QObject *receiver, Qt::TimerType type) override
    {
        return manual_.startTimer(milliseconds, receiver, type);
    }
    void killTimer(int id, QObject *receiver) override { manual_.killTimer(id, receiver); }

private:
    ManualClock manual_;
    std::atomic<int> waits_{0};
};

} // namespace

class SimHostTest : public TestCase
{
    Q_OBJECT

private slots:
    void theEnvironmentIsRead();
    void anEmptyEnvironmentGivesTheDefaults();
    void aSenselessSpeedIsToldAndNotTaken_data();
    void aSenselessSpeedIsToldAndNotTaken();
    void thingsHappenWithoutAnybodyAsking();
    void anIdlePcWaitsForNothing();
    void whatIsPlannedLaterButDueEarlierComesInTime();
    void planningSomethingLaterAddsNoWait();
    void beforeTheStartThingsHappenOnlyWhenAskedFor();
    void afterTheEndNothingHappensByItself();
    void inRealTimeThingsHappenToo();
    void theStreamingServerComesWithSteamVrAndGoesWithIt();
    void withoutTheProgramsOwnDriverNoServerComes();
    void theServerMaySitBesideTheProgramOrElsewhere();
    void aSecondServerHearsOnlyOfWhatIsStillToCome();
    void theServerIsToldSpeedAndRecord();
    void aServerThatCannotBeStartedIsNoted();
    void anExternalServerIsNotStartedButTheCellIsSet();
    void aServerThatNeverComesLeavesTheCellAlone();
    void endingTheHostEndsTheServer_data();
    void endingTheHostEndsTheServer();
    void aServerThatIsStartedAgainReplacesTheFirst();
    void aKilledProgramLeavesNoServerBehind();
    void theJournalFileHoldsDeedsAndHappenings();

private:
    Scenario from(const QByteArray &text) const
    {
        QString error;
        const Scenario scenario = scenario::parse(text, "test", &error);
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
        return scenario;
    }
    SimHost::Options options(Clock &clock, quint16 port = 0) const
    {
        SimHost::Options options;
        options.clock = &clock;
        options.homeDir = dir();
        options.settings.serverProgram = STREAMING_SERVER_SIM;
        if (port > 0)
            options.serverArguments = QStringList{"--port", QString::number(port)};
        return options;
    }
    void registerDriver(const QString &folder = QCoreApplication::applicationDirPath()) const
    {
        QVERIFY(QDir(dir()).mkpath("AppData/Local/openvr"));
        const QJsonObject paths{{"external_drivers", QJsonArray{folder}}};
        writeFile("AppData/Local/openvr/openvrpaths.vrpath", QJsonDocument(paths).toJson());
    }
    // The server may have connected before its start was noted.
    static pid_t runningServer(const SimHost &host)
    {
        QElapsedTimer timer;
        timer.start();
        while (host.serverPid() == 0 && !timer.hasExpired(patience))
            std::this_thread::yield();
        return static_cast<pid_t>(host.serverPid());
    }
    static void startSteamVr(SimHost &host, ManualClock &clock)
    {
        QVERIFY(host.pc().launches.start({"explorer", "steam://rungameid/250820", false}).started);
        clock.advance(30000);
        QVERIFY(host.pc().processes.isRunning("vrserver.exe"));
    }
    static void stopSteamVr(SimHost &host, ManualClock &clock)
    {
        const QString tool = SteamOptions().steamVrPath + "\\bin\\win64\\vrstartup.exe";
        QVERIFY(host.pc().launches.start({tool, "-shutdown", true}).started);
        clock.advance(30000);
        QVERIFY(!host.pc().processes.isRunning("vrserver.exe"));
    }
};

void SimHostTest::theEnvironmentIsRead()
{
    const char *const names[] = {"SIMPC_SCENARIO", "SIMPC_SPEED", "SIMPC_SERVER_PROGRAM",
                                 "SIMPC_SERVER_LOG", "SIMPC_JOURNAL"};
    const char *const values[] = {"no-steam", "12.5", "/opt/server", "/tmp/log", "/tmp/journal"};
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

void SimHostTest::anEmptyEnvironmentGivesTheDefaults()
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

void SimHostTest::aSenselessSpeedIsToldAndNotTaken_data()
{
    QTest::addColumn<QByteArray>("speed");
    QTest::newRow("a word") << QByteArray("fast");
    QTest::newRow("zero") << QByteArray("0");
    QTest::newRow("negative") << QByteArray("-2");
    QTest::newRow("too fast") << QByteArray("1001");
    QTest::newRow("no number at all") << QByteArray("nan");
}

void SimHostTest::aSenselessSpeedIsToldAndNotTaken()
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

void SimHostTest::thingsHappenWithoutAnybodyAsking()
{
    ManualClock clock;
    SimHost host(from(R"({"title":"t","at":[{"seconds":20,"acLine":"offline"},
                                            {"seconds":30,"acLine":"online"}]})"),
                 options(clock));
    Watcher watcher(host.pc());
    host.start();
    clock.advance(19999);
    QCOMPARE(watcher.lines(), QStringList());
    clock.advance(1);
    QCOMPARE(watcher.lines(), QStringList("power line: offline"));
    clock.advance(10000);
    QCOMPARE(watcher.lines(), QStringList({"power line: offline", "power line: online"}));
}

void SimHostTest::anIdlePcWaitsForNothing()
{
    ManualClock clock;
    SimHost host(from(R"({"title":"t","at":[{"seconds":20,"acLine":"offline"}]})"), options(clock));
    host.start();
    QVERIFY(!clock.idle());
    clock.advance(20000);
    QVERIFY(clock.idle());
    host.pc().timeline.after(100, [] {});
    QVERIFY(!clock.idle());
    clock.advance(100);
    QVERIFY(clock.idle());
}

void SimHostTest::whatIsPlannedLaterButDueEarlierComesInTime()
{
    ManualClock clock;
    SimHost host(from(R"({"title":"t"})"), options(clock));
    Watcher watcher(host.pc());
    host.start();
    for (const int due : {500, 100, 300, 100})
        host.pc().timeline.after(due, [&host, due] { host.pc().events.add(QString::number(due)); });
    clock.advance(100);
    QCOMPARE(watcher.lines(), QStringList({"100", "100"}));
    clock.advance(200);
    QCOMPARE(watcher.lines(), QStringList({"100", "100", "300"}));
    clock.advance(200);
    QCOMPARE(watcher.lines(), QStringList({"100", "100", "300", "500"}));
    QVERIFY(clock.idle());
}

void SimHostTest::planningSomethingLaterAddsNoWait()
{
    CountingClock clock;
    SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"}]})"), options(clock));
    host.start();
    QCOMPARE(clock.waits(), 1);
    for (int i = 0; i < 10; ++i)
        host.pc().timeline.after(2000, [] {});
    QCOMPARE(clock.waits(), 1);
    clock.manual().advance(1000);
    QCOMPARE(clock.waits(), 2);
    clock.manual().advance(1000);
    QCOMPARE(clock.waits(), 2);
}

void SimHostTest::beforeTheStartThingsHappenOnlyWhenAskedFor()
{
    ManualClock clock;
    SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"},
                                            {"seconds":3,"acLine":"online"}]})"),
                 options(clock));
    Watcher watcher(host.pc());
    clock.advance(1000);
    QCOMPARE(watcher.lines(), QStringList());
    QCOMPARE(host.pc().facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
    QCOMPARE(watcher.lines().size(), 1);
    // The time runs from the beginning, not from the start.
    host.start();
    clock.advance(2000);
    QCOMPARE(watcher.lines().size(), 2);
}

void SimHostTest::afterTheEndNothingHappensByItself()
{
    ManualClock clock;
    SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"}]})"), options(clock));
    Watcher watcher(host.pc());
    host.start();
    host.stop();
    host.stop();
    clock.advance(5000);
    QCOMPARE(watcher.lines(), QStringList());
    QCOMPARE(host.pc().facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
}

void SimHostTest::inRealTimeThingsHappenToo()
{
    SimHost host(from(R"({"title":"t","at":[{"seconds":0.05,"acLine":"offline"},
                                            {"seconds":0.1,"acLine":"online"}]})"),
                 options(Clock::system()));
    Watcher watcher(host.pc());
    host.start();
    QVERIFY(watcher.waitFor("power line: online"));
    QCOMPARE(watcher.lines(), QStringList({"power line: offline", "power line: online"}));
}

void SimHostTest::theStreamingServerComesWithSteamVrAndGoesWithIt()
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

void SimHostTest::withoutTheProgramsOwnDriverNoServerComes()
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

void SimHostTest::theServerMaySitBesideTheProgramOrElsewhere()
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

void SimHostTest::aSecondServerHearsOnlyOfWhatIsStillToCome()
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

void SimHostTest::theServerIsToldSpeedAndRecord()
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

void SimHostTest::aServerThatCannotBeStartedIsNoted()
{
    registerDriver();
    ManualClock clock;
    SimHost::Options with = options(clock);
    with.settings.serverProgram = path("none");
    SimHost host(from(ready), with);
    Watcher watcher(host.pc());
    host.start();
    startSteamVr(host, clock);
    QVERIFY(watcher.waitFor("the streaming server could not be started"));
    QCOMPARE(host.serverPid(), qint64(0));
    stopSteamVr(host, clock);
}

void SimHostTest::anExternalServerIsNotStartedButTheCellIsSet()
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

void SimHostTest::aServerThatNeverComesLeavesTheCellAlone()
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

void SimHostTest::endingTheHostEndsTheServer_data()
{
    QTest::addColumn<bool>("stopped");
    QTest::newRow("stopped") << true;
    QTest::newRow("destroyed") << false;
}

void SimHostTest::endingTheHostEndsTheServer()
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

void SimHostTest::aServerThatIsStartedAgainReplacesTheFirst()
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

void SimHostTest::aKilledProgramLeavesNoServerBehind()
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

void SimHostTest::theJournalFileHoldsDeedsAndHappenings()
{
    ManualClock clock;
    clock.advance(5000);
    SimHost::Options with = options(clock);
    with.settings.journal = path("journal");
    SimHost host(from(R"({"title":"t","at":[{"seconds":1.25,"acLine":"offline"}]})"), with);
    host.start();
    clock.advance(2000);
    host.pc().journal.add("cell write 0");
    QCOMPARE(readFile("journal"), QByteArray("    1.250 pc     : power line: offline\n"
                                             "    2.000 program: cell write 0\n"));
}

KOLM_TEST_MAIN(SimHostTest)
#include "tst_sim_host.moc"
