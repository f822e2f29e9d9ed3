#include "tests/steamvr/steam_fixture.h"

SteamFixture::SteamFixture(const QString &dir, std::unique_ptr<SimCell> cell)
    : home(dir + "/home"), pc(clock, std::move(cell)), config(dir, [] { return false; })
{
    vr_path_file::writeWithoutDrivers(home);
}

SteamFixture::~SteamFixture() = default;

SteamManager &SteamFixture::steam()
{
    if (!steam_) {
        steam_ = std::make_unique<SteamManager>(
            SteamManager::Dependencies{clock, config, QStringLiteral("C:/KOLM"), home,
                                       [this](std::function<void()> work) {
                                           if (poolIsFull)
                                               return false;
                                           pool.push_back(std::move(work));
                                           return true;
                                       },
                                       tell});
    }
    return *steam_;
}

void SteamFixture::runPool()
{
    while (!pool.empty()) {
        const std::function<void()> work = std::move(pool.front());
        pool.pop_front();
        work();
    }
}

void SteamFixture::installSteam(const QString &path)
{
    pc.registry.setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam", "InstallPath",
                        path);
}

void SteamFixture::installSteamVR(const QString &path)
{
    pc.registry.setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\"
                        "Uninstall\\Steam App 250820",
                        "InstallLocation", path);
}

void SteamFixture::steamRuns()
{
    pc.processes.start("steam.exe");
    for (int i = 0; i < 4; ++i)
        steam().hasLaunchSteam();
}
