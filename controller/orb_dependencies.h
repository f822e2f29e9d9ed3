// What the controller works with.
#pragma once

#include <QString>

#include <functional>

class AdbManger;
class Clock;
class ConfigManager;
class HeadsetLink;
class QJsonObject;
class QUrl;
class SteamManager;
class SystemInfo;

// Whoever puts the program together says by name where each of these comes
// from. What is handed out outlives the controller. GUI thread.
class OrbDependencies
{
public:
    virtual ~OrbDependencies() = default;

    virtual Clock &clock() = 0;
    virtual ConfigManager &config() = 0;
    virtual SteamManager &steam() = 0;
    virtual SystemInfo &system() = 0;

    // Asked for when they are needed first: the link begins to listen then,
    // and adb to watch the cable.
    virtual HeadsetLink &link() = 0;
    virtual AdbManger &adb() = 0;

    // Where the program lies, without a slash at the end.
    virtual QString applicationDir() const = 0;
    // Of the files that the program keeps for itself.
    virtual QString dataDir() const = 0;

    // In the browser, or wherever else the system opens such an address.
    virtual void openUrl(const QUrl &url) = 0;

    // A usage event, kept until it is sent.
    virtual void report(const QString &eventId, const QJsonObject &extraData) = 0;
    // Sends the events reported so far, and returns when that is over.
    virtual void sendEvents() = 0;
    // Sends the file at `path` to the vendor cloud under the name `fileName`,
    // in the background. `done` is called once, with whether the cloud has taken it.
    virtual void upload(const QString &path, const QString &fileName,
                        std::function<void(bool taken)> done) = 0;
};
