// Which sockets of the control link have something to do.
#pragma once

#include "pc/socket_api.h"

#include <chrono>
#include <optional>

// A set of at most 64 sockets and what the last wait said about them. Does not
// own the sockets. One thread.
class Poller
{
public:
    enum Kind {
        Readable = socket_api::Readable,
        Writable = socket_api::Writable,
        Exceptional = socket_api::Exceptional
    };

    // Adds a socket that is not there yet; silently nothing when the set is
    // full.
    void add(socket_api::Handle socket);
    void remove(socket_api::Handle socket);

    // Sleeps until a socket is ready for one of `kinds` (Kind values added up),
    // or something outside the set ends the wait, or the limit is over. Returns as select() does.
    // All kinds asked for share one result: a socket that is ready for one of them counts as ready
    // for each. A failure is written to the error stream; then every socket
    // counts as ready, so that its owner finds out which one is broken.
    int wait(int kinds, std::optional<std::chrono::milliseconds> limit = std::nullopt);

    // What the last wait said; false for any other kind.
    bool isSet(socket_api::Handle socket, int kind) const;

    // Sockets outside the set that end a wait: one by becoming readable, one by
    // becoming writable. The invalid handle for none.
    void setWakeUp(socket_api::Handle socket) { wakeUp_ = socket; }
    void setWriteTo(socket_api::Handle socket) { writeTo_ = socket; }
    // Whether the wake-up socket was readable at the end of the last wait.
    bool wokenUp() const { return wokenUp_; }

private:
    socket_api::Set master_;
    socket_api::Set readable_;
    socket_api::Set writable_;
    socket_api::Set exceptional_;
    socket_api::Handle wakeUp_ = socket_api::invalidHandle;
    socket_api::Handle writeTo_ = socket_api::invalidHandle;
    bool wokenUp_ = false;
};
