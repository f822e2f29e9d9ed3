// How adb is on the simulated PC.
#pragma once

#include <QString>

class SimPc;

// What a scenario says about it.
struct AdbPlan
{
    bool onPath = true; // the command interpreter finds one
    bool hangs = false; // no call ever ends
    // The name of a folder; from an adb.exe in it a server runs already. Empty:
    // none runs.
    QString runsFrom;
};

// Real programs play adb, as real as the streaming server: the stand-in of
// peers/ or the genuine one. These say where its world is.
struct AdbPlace
{
    QString programFolder; // of a program "adb"
    QString stateFolder;   // what the stand-in reads and writes; made if missing
    quint16 port = 0;      // of the server; 0: a free one
    // The world ends with this process, so that no server of the stand-in
    // outlives it.
    bool endsWithUs = false;
};

// Puts adb onto the PC, and with it what is on its USB cable from now on. Sets
// ANDROID_ADB_SERVER_PORT and ADB_SIM_FOLDER for the processes to come. Says
// what went wrong, in a sentence; empty when all is well.
QString installAdb(const AdbPlan &plan, const AdbPlace &place, SimPc &pc);
