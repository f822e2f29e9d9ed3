#include "tests/hostile/control_port_attacks.h"

#include "tests/hostile/attacked.h"
#include "tests/link/peer.h"

#include <memory>

#include <sys/socket.h>

namespace {

using Pieces = std::vector<QByteArray>;

// Somebody who means harm; each piece goes out at once.
bool connect(Peer &attacker)
{
    if (!attacker.connectTo(9932))
        return false;
    attacker.socket().setSocketOption(QAbstractSocket::LowDelayOption, 1);
    return true;
}

// As much as the other end lets in before it closes the connection.
void send(Peer &attacker, const Pieces &pieces)
{
    for (const QByteArray &piece : pieces) {
        if (attacker.socket().state() == QAbstractSocket::ConnectedState)
            attacker.send(piece);
    }
}

// Whether the other end closes it; who is still writing may find another error.
bool isClosed(Peer &attacker)
{
    return attacker.waitForEnd() || attacker.socket().state() == QAbstractSocket::UnconnectedState;
}

// Goes without a good-bye.
void reset(Peer &attacker)
{
    const linger none{1, 0};
    setsockopt(static_cast<int>(attacker.socket().socketDescriptor()), SOL_SOCKET, SO_LINGER, &none,
               sizeof none);
    attacker.close();
}

// Commands that would show.
const QByteArray commands = QByteArray("RESTARTSTEAMVR\n").repeated(9) +
                            "HMDINFOBACK\tdeviceId:D3EVIL~D3EVIL;10.0.0.66;true;x\n"
                            "DeviceConnectBack\ttrue\nHello\n";

// The head of what a browser sends.
QByteArray request(const QByteArray &method, const QByteArray &more = {})
{
    return method +
           " / HTTP/1.1\r\nHost: 127.0.0.1:9932\r\nConnection: keep-alive\r\n"
           "Content-Length: " +
           QByteArray::number(commands.size()) +
           "\r\nsec-ch-ua-platform: \"Windows\"\r\nUser-Agent: Mozilla/5.0\r\n"
           "Content-Type: text/plain;charset=UTF-8\r\nAccept: */*\r\n"
           "Origin: http://example.com\r\nSec-Fetch-Site: cross-site\r\n" +
           more + "\r\n";
}

// One connection that says this and has to be closed for it.
std::function<bool(Attacked &)> says(const Pieces &pieces)
{
    return [pieces](Attacked &) {
        Peer attacker;
        if (!connect(attacker))
            return false;
        send(attacker, pieces);
        return isClosed(attacker);
    };
}

// The same, and the connection may be kept.
std::function<bool(Attacked &)> pours(const QByteArray &bytes)
{
    return [bytes](Attacked &) {
        Peer attacker;
        if (!connect(attacker))
            return false;
        send(attacker, {bytes});
        return true;
    };
}

Pieces byteByByte(const QByteArray &bytes)
{
    Pieces pieces;
    for (const char byte : bytes)
        pieces.emplace_back(1, byte);
    return pieces;
}

bool splitAnywhere(Attacked &)
{
    const QByteArray post = request("POST") + commands;
    for (int size = 1; size < post.size(); ++size) {
        Peer attacker;
        if (!connect(attacker))
            return false;
        send(attacker, {post.left(size), post.mid(size)});
        if (!isClosed(attacker))
            return false;
    }
    return true;
}

std::function<bool(Attacked &)> manyTimes(int times, const QByteArray &bytes)
{
    return [times, bytes](Attacked &) {
        for (int i = 0; i < times; ++i) {
            Peer attacker;
            if (!connect(attacker))
                return false;
            send(attacker, {bytes});
            if (!isClosed(attacker))
                return false;
        }
        return true;
    };
}

bool resets(Attacked &)
{
    for (int i = 0; i < 100; ++i) {
        Peer attacker;
        if (!connect(attacker))
            return false;
        send(attacker, {"HMDINFOBACK\tdeviceId:D3EVIL"});
        reset(attacker);
    }
    return true;
}

bool silentCrowd(Attacked &)
{
    std::vector<std::unique_ptr<Peer>> crowd;
    for (int i = 0; i < 200; ++i) {
        crowd.push_back(std::make_unique<Peer>());
        if (!connect(*crowd.back()))
            return false;
    }
    return true;
}

QByteArray manyKinds()
{
    QByteArray lines;
    for (int i = 0; lines.size() < 1024 * 1024; ++i)
        lines += "kind" + QByteArray::number(i) + '\n';
    return lines;
}

// The first record of an HTTPS connection, long enough for several reads, with
// commands where a page can have a say.
QByteArray tlsHandshake()
{
    return QByteArray("\x16\x03\x01\x07\xf0\x01\x00\x07\xec\x03\x03", 11) + QByteArray(1000, 'r') +
           '\n' + commands;
}

} // namespace

const std::vector<ControlPortAttack> &controlPortAttacks()
{
    static const std::vector<ControlPortAttack> attacks = {
        // A web page, through its reader's browser.
        {"a POST", says({request("POST") + commands})},
        {"a POST in two pieces, cut anywhere", splitAnywhere, 0, false, 200000},
        {"a POST byte by byte", says(byteByByte(request("POST") + commands))},
        {"head and body apart", says({request("POST"), commands})},
        {"a GET with a body", says({request("GET") + commands})},
        {"a PUT", says({request("PUT") + commands})},
        {"the question before a request", says({request("OPTIONS") + commands})},
        {"a method of the page's own", says({request("EVIL") + commands})},
        {"a WebSocket",
         says({request("GET", "Upgrade: websocket\r\nSec-WebSocket-Key: eA==\r\n") + commands})},
        {"a head longer than a read",
         says({request("POST", "Cookie: " + QByteArray(5000, 'c') + "\r\n") + commands})},
        {"a target longer than a read",
         says({"GET /" + QByteArray(5000, 'x') + " HTTP/1.1\r\n\r\n" + commands})},
        {"a request line without an end", says({"POST /" + QByteArray(3000, 'x')})},
        {"empty lines before it", says({"\r\n\r\n\n" + request("POST") + commands}), 0, false},
        {"headers without a request", says({"x\r\nHost: 127.0.0.1\r\n\r\n" + commands})},
        {"HTTP/2", says({"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n" + commands})},
        {"HTTPS", says({tlsHandshake()})},
        {"commands in front of it", says({"RESTARTSTEAMVR\n" + request("POST") + commands})},
        {"fifty requests in one connection", says({(request("POST") + commands).repeated(50)})},
        {"a hundred connections", manyTimes(100, request("POST") + commands), 0, false, 20000},

        // A program on the PC. What is a command is obeyed; harm is bounded.
        {"5 MB of lines that mean nothing", pours(QByteArray("a\n").repeated(2621440))},
        {"5 MB without a line's end", pours(QByteArray(5 * 1024 * 1024, 'a'))},
        {"a thousand kinds of nonsense", pours(manyKinds()), 0, false, 1200},
        {"a megabyte of NUL", pours(QByteArray(1024 * 1024, '\0'))},
        {"a megabyte of high bytes", pours(QByteArray("\xFF\xFE\n").repeated(300000))},
        {"66 restarts in one go", pours(QByteArray("RESTARTSTEAMVR\n").repeated(66)), 2, false,
         10000},
        {"half a line, and a reset, a hundred times", resets},
        {"two hundred who say nothing", silentCrowd},
    };
    return attacks;
}
