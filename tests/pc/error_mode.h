// What the system does about a process that breaks.
#pragma once

#include <QString>

// This process ends without the system's debugger or a dialog when it breaks.
void beQuietAboutCrashes();

// How the record of a wrong address, and of a full stack, begins here.
QString wrongAddress();
QString fullStack(); // empty: nobody is told of one (Wine ends the process itself)
// Whether the system can write a process down for a debugger.
bool dumpsAreWritten();
