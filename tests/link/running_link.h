// A control link that runs on a port of its own.
#pragma once

#include "link/sys_manager.h"
#include "tests/link/peer.h"
#include "tests/support/captured_streams.h"
#include "tests/support/eventually.h"

#include <memory>

struct RunningLink
{
    explicit RunningLink(const std::function<void()> &restartSteamVR = {})
    {
        // Somebody else may take the port between the look and the use.
        for (int attempt = 0; attempt < 10 && !started; ++attempt) {
            port = freePort();
            manager = std::make_unique<SysManager>(restartSteamVR, port);
            started = manager->start();
        }
    }

    // Connects and waits until the link answers.
    bool join(Peer *peer) const { return peer->connectTo(port) && peer->greet(); }

    // What was echoed so far, without the prefix; other lines as they are.
    QStringList echoed() const
    {
        QStringList texts = QString::fromUtf8(streams.echo()).split('\n');
        texts.removeLast();
        for (QString &text : texts) {
            const QString prefix = QStringLiteral("Send data exchange command response: ");
            if (text.startsWith(prefix))
                text.remove(0, prefix.size());
        }
        return texts;
    }

    CapturedStreams streams;
    int port = 0;
    bool started = false;
    std::unique_ptr<SysManager> manager;
};
