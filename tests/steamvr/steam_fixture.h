// A PC with Steam on it and a SteamManager that looks after it.
#pragma once

#include "base/manual_clock.h"
#include "config/config_manager.h"
#include "simpc/sim_pc.h"
#include "steamvr/steam_manager.h"
#include "tests/support/vr_path_file.h"

#include <QString>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

struct SteamFixture
{
    explicit SteamFixture(const QString &dir,
                          std::unique_ptr<SimCell> cell = std::make_unique<SimCell>());
    ~SteamFixture();

    // The object under test; made on first use, so that a test can set up the
    // PC before it.
    SteamManager &steam();
    void dropSteam() { steam_.reset(); }

    // Runs the work that was handed to the pool, on the calling thread.
    void runPool();

    void installSteam(const QString &path = QStringLiteral("C:\\Steam"));
    void installSteamVR(const QString &path = QStringLiteral("C:\\SteamVR"));
    // Makes hasLaunchSteam() true from now on.
    void steamRuns();

    void writeVrPath(const QByteArray &json) { vr_path_file::write(home, json); }
    QJsonObject vrPath() const { return vr_path_file::read(home); }

    QString home;
    ManualClock clock;
    SimPc pc;
    ConfigManager config;
    long_wait::Tell tell; // before the object is made
    std::deque<std::function<void()>> pool;
    bool poolIsFull = false; // there is no thread to be had

private:
    std::unique_ptr<SteamManager> steam_;
};
