// A simulated PC that runs by itself, and its streaming server.
#pragma once

#include "base/manual_clock.h"
#include "simpc/sim_host.h"
#include "tests/link/semaphore.h"
#include "tests/peers/control_link_ends.h"
#include "tests/support/test_case.h"
#include "tests/support/vr_path_file.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <mutex>
#include <thread>

// The events as they come, on whichever thread.
class EventWatcher
{
public:
    explicit EventWatcher(SimPc &pc)
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

class SimHostFixture : public TestCase
{
protected:
    // A PC on which SteamVR can be started at once.
    const QByteArray ready = R"({"title":"t","steam":{"running":true}})";

    static Scenario from(const QByteArray &text)
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
        vr_path_file::writeDrivers(dir(), {folder});
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
