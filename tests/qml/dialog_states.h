// The dialogs in all their states, to be measured and to be looked at.
#pragma once

#include "tests/qml/interface.h"

#include <vector>

struct DialogState
{
    const char *name;
    // Brings the loaded main window to show it.
    void (*show)(Interface &pages);
};

const std::vector<DialogState> &dialogStates();

// Loads the main window and has it show the dialog so. The calls so far are
// forgotten.
void showDialog(Interface &pages, const QString &state);

// The rows of a test of every dialog: a column "state" with its name.
void dialogRows();

// What the controller has to say about a PC, in the language of the interface.
QString systemInfoText();
