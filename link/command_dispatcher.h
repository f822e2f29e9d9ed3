// What the streaming server reported, and what is done about its commands.
#pragma once

#include "base/mutex.h"
#include "link/command_protocol.h"
#include "link/headset_record.h"
#include "link/unknown_lines.h"

#include <functional>
#include <string>
#include <vector>

// Knows nothing of sockets: lines come in through processBatch(), on one thread
// (the link's worker); answers and the restart go out through the dependencies,
// on that thread and without any lock held. Everything else: any thread.
class CommandDispatcher
{
public:
    struct Dependencies
    {
        std::function<void(const QString &)> send;
        std::function<void()> restartSteamVR; // may block for seconds
        // Whether the link is to end: then nothing more is acted on. May be empty.
        std::function<bool()> isEnding = {};
    };

    explicit CommandDispatcher(Dependencies dependencies);

    // What a batch told.
    struct Reported
    {
        bool usb = false;  // whether the USB headset is connected
        bool list = false; // which headsets there are
    };

    // Acts on the lines that were received in one go, in their order; wishes for a
    // restart that come together are one. After ten batches in a row without a list
    // of headsets the last list is forgotten.
    Reported processBatch(const std::vector<std::string> &lines);

    // The next batch is another client's, if there ever is one. On the thread of the
    // batches.
    void nextClient() { unknown_.nextClient(); }

    // The next list of headsets is answered with "RegisterFireWall", once.
    void setRegisterFirewallPending();

    bool isDeviceConnected() const;
    // The id reported last.
    QString deviceId() const;
    // The list reported last.
    HeadsetList headsets() const;

private:
    void actOn(const command_protocol::Line &line, Reported *reported);
    void log(const command_protocol::Line &line);
    void act(const command_protocol::Unknown &) {}
    void act(const command_protocol::DeviceConnectBack &report);
    void act(command_protocol::HmdInfoBack &report);
    void act(const command_protocol::RestartSteamVR &);
    void act(const command_protocol::Hello &);

    const Dependencies dependencies_;
    // On the thread of the batches.
    UnknownLines unknown_;
    bool restarted_ = false; // in this batch
    mutable Mutex mutex_;
    HeadsetList hmdInfoBack_ GUARDED_BY(mutex_);
    QString deviceId_ GUARDED_BY(mutex_);
    quint32 idleBatches_ GUARDED_BY(mutex_) = 0;
    bool deviceConnected_ GUARDED_BY(mutex_) = false;
    bool registerFirewallPending_ GUARDED_BY(mutex_) = false;
};
