#include "peers/streaming_server_sim/server.h"

#include <QTimer>

#include <utility>

namespace {

constexpr int neverConnected = 3;

} // namespace

Server::Server(const Options &options, Record &record)
    : options_(options), record_(record), connection_(options, record), usb_(options)
{
    connect(&connection_, &Connection::opened, this, &Server::opened);
    connect(&connection_, &Connection::received, this, &Server::answer);
    connect(&connection_, &Connection::ended, this,
            [this] { emit finished(wasConnected_ ? 0 : neverConnected); });
}

void Server::start()
{
    for (const HeadsetOption &headset : options_.headsets)
        planHeadset(headset);
    if (options_.restartAt >= 0)
        at(options_.restartAt, [this] { wantRestart(); });
    connection_.open();
}

void Server::planHeadset(const HeadsetOption &headset)
{
    const QString serial = headset.serial;
    headsets_.announce(serial, headset.address);
    const auto join = [this, serial] {
        headsets_.join(serial);
        record_.did(serial + QStringLiteral(" joins"));
    };
    const auto drop = [this, serial] {
        headsets_.drop(serial);
        record_.did(serial + QStringLiteral(" drops"));
    };
    at(headset.joins, join);
    for (const int time : headset.drops)
        at(time, drop);
    for (const int time : headset.returns)
        at(time, join);
}

void Server::at(int milliseconds, const std::function<void()> &action)
{
    if (milliseconds <= 0)
        action();
    else
        QTimer::singleShot(options_.real(milliseconds), Qt::PreciseTimer, this, action);
}

void Server::opened()
{
    wasConnected_ = true;
    if (options_.hello)
        connection_.send("Hello");
    if (restartWanted_)
        wantRestart();
}

void Server::wantRestart()
{
    restartWanted_ = !connection_.isOpen();
    connection_.send("RESTARTSTEAMVR");
}

void Server::answer(const QByteArray &text)
{
    const QString words = QString::fromUtf8(text);
    const QString command = words.section(' ', 0, 0);
    const QString serial = words.section(' ', 1, 1);
    const QString address = words.section(' ', 2, 2);
    if (words == QStringLiteral("HMDInfoRequest"))
        connection_.reply("HMDINFOBACK\t" +
                          headsets_.report(options_.deviceId, options_.serialFirst).toUtf8());
    else if (words == QStringLiteral("WiredConnect"))
        connection_.reply(usb_.ask() ? "DeviceConnectBack\ttrue" : "DeviceConnectBack\tfalse");
    else if (words == QStringLiteral("RegisterFireWall"))
        record_.did(QStringLiteral("firewall rule registered"));
    else if (command == QStringLiteral("LinkTo"))
        link(serial, address);
    else if (command == QStringLiteral("Disconnect"))
        unlink(serial, address);
    else if (words != QStringLiteral("WirelessConnect") &&
             words != QStringLiteral("HHHH, You can see me!\n"))
        record_.did(QStringLiteral("unknown command"));
}

void Server::link(const QString &serial, const QString &address)
{
    const int attempt = headsets_.beginLink(serial, address);
    if (attempt < 0) {
        record_.did(QStringLiteral("no headset %1 at %2").arg(serial, address));
        return;
    }
    at(options_.linkDelay, [this, serial, attempt] {
        if (headsets_.finishLink(serial, attempt))
            record_.did(serial + QStringLiteral(" connected"));
    });
}

void Server::unlink(const QString &serial, const QString &address)
{
    if (headsets_.unlink(serial, address))
        record_.did(serial + QStringLiteral(" disconnected"));
    else
        record_.did(QStringLiteral("no headset %1 at %2").arg(serial, address));
}
