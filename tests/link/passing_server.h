// The link's sockets on a port of their own, driven by the test's thread.
#pragma once

#include "link/ipc_sock.h"
#include "tests/link/peer.h"
#include "tests/support/captured_streams.h"

struct PassingServer
{
    using Lines = std::vector<std::string>;

    PassingServer()
    {
        for (int attempt = 0; attempt < 10 && !started; ++attempt) {
            port = freePort();
            socket.setPort(port);
            started = socket.startup();
        }
    }

    // One pass as the worker makes it; what was received is in `lines`.
    bool pass()
    {
        lines.clear();
        poller->wait(Poller::Readable, std::chrono::milliseconds(Peer::limit));
        accepted = socket.acceptClient();
        return socket.receiveLines(&lines);
    }

    // Passes until there is a new client.
    bool accept()
    {
        accepted = false;
        for (int attempt = 0; attempt < 10 && !accepted; ++attempt)
            pass();
        return accepted;
    }

    // The line that is written when the server listens.
    const QString bound =
        QStringLiteral("ControlSocket::Startup Successfully bound to 127.0.0.1 9932\n");

    CapturedStreams streams;
    int port = 0;
    bool started = false;
    bool accepted = false;
    Lines lines;
    std::shared_ptr<Poller> poller = std::make_shared<Poller>();
    IPCSock socket{poller};
};
