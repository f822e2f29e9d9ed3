// A port that a program of a test is to listen on.
#pragma once

#include <QCoreApplication>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>

// Nobody listens on it now, another one each time. It lies below the ports that
// systems give to connections, so what else runs does not take it before the
// program does. 0 when there is none.
inline quint16 freePort()
{
    constexpr int first = 20000;
    constexpr int count = 12000;
    // Far from where tests begin that run at the same time.
    static int next = static_cast<int>(QCoreApplication::applicationPid() * 97 % count);
    for (int tried = 0; tried < count; ++tried) {
        const auto port = static_cast<quint16>(first + next);
        next = (next + 1) % count;
        QTcpServer server;
        server.setProxy(QNetworkProxy::NoProxy);
        if (server.listen(QHostAddress(QHostAddress::LocalHost), port))
            return port;
    }
    return 0;
}
