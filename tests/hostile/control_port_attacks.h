// What may be done to the control port by a web page or a program on the PC.
#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

class Attacked;

struct ControlPortAttack
{
    const char *name;
    // False when it could not be carried out.
    std::function<bool(Attacked &)> carryOut;
    // What it may reach at most. Nothing it says is obeyed by default.
    int mostRestarts = 0;
    bool mayNameHeadsets = false;
    qint64 mostLog = 1000; // bytes of the log that speak of it
};

const std::vector<ControlPortAttack> &controlPortAttacks();
