// The program while it is attacked through its control port.
#pragma once

#include "tests/e2e/program.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

class QTcpSocket;

// A connection to the control port by somebody who means harm.
class Attacker
{
public:
    Attacker();
    ~Attacker();

    Attacker(const Attacker &) = delete;
    Attacker &operator=(const Attacker &) = delete;

    // False when nobody listens.
    bool connect();
    // As one piece if the system can; the other end may have closed by now.
    void send(const QByteArray &bytes);
    // As many pieces, each on its way before the next.
    void send(const std::vector<QByteArray> &pieces);
    // Whether the other end closes it in time. What it says is dropped.
    bool isClosed();
    // Goes without a good-bye.
    void reset();

private:
    std::unique_ptr<QTcpSocket> socket_;
};

// What is written of it: everything that the attacks below ask for has this in it.
constexpr char evilSerial[] = "D3EVIL";

class Attacked
{
public:
    // Started in `dir`, and its port is open.
    explicit Attacked(const QString &dir);

    // Whether the program still answers whoever asks as the streaming server does.
    bool answers();
    // How many restarts of SteamVR it began.
    int restarts() const;
    // Whether a foreign headset came into one of its files, or was heard of.
    bool knowsEvilHeadset() const;
    // What it wrote of connections and lines that mean nothing, in bytes.
    qint64 logOfNonsense() const;
    // Asks it to close and waits; how long that took, or -1 when it failed.
    qint64 millisecondsToClose();

    Program program;
    bool started = false;
};
