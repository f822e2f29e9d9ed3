// The program while it is attacked through its control port.
#pragma once

#include "tests/e2e/program.h"

#include <QString>

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
