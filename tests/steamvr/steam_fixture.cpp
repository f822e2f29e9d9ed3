#include "tests/steamvr/steam_fixture.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString vrPathFolder = QStringLiteral("/AppData/Local/openvr");

} // namespace

SteamFixture::SteamFixture(const QString &dir)
    : home(dir + "/home"), pc(clock), config(dir, [] { return false; })
{
    QDir().mkpath(home + vrPathFolder);
    writeVrPath(R"({"runtime":["C:\\SteamVR"],"external_drivers":null})");
}

SteamFixture::~SteamFixture() = default;

SteamManager &SteamFixture::steam()
{
    if (!steam_) {
        steam_ = std::make_unique<SteamManager>(SteamManager::Dependencies{
            clock, config, QStringLiteral("C:/KOLM"), home,
            [this](std::function<void()> work) { pool.push_back(std::move(work)); }});
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

void SteamFixture::writeVrPath(const QByteArray &json)
{
    QFile file(home + vrPathFolder + "/openvrpaths.vrpath");
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
        qFatal("the OpenVR paths file cannot be written");
}

QJsonObject SteamFixture::vrPath() const
{
    QFile file(home + vrPathFolder + "/openvrpaths.vrpath");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}
