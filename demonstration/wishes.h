// What the environment asks of a run of the program.
#pragma once

#include <QString>

// The variables are told in demonstration/README.md.
struct Wishes
{
    bool printProgress = false;  // SIMPC_PROGRESS: any text but "0"
    QString screenshot;          // SIMPC_SCREENSHOT: PNG file, when connected
    bool untilConnected = false; // SIMPC_UNTIL=connected: then the program closes
    int limitSeconds = 0;        // SIMPC_LIMIT: longest wait for that; 0: none
    bool scripted = false;       // SIMPC_DIRECTED: any number but 0
    bool noThreads = false;      // SIMPC_NO_THREADS: any number but 0

    static Wishes fromEnvironment();
};
