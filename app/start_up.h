// The program, from its first line to its exit code.
#pragma once

class Surroundings;

// Sets up log, language, font and names, takes the single-instance lock, shows
// the main window, or the notice of a second copy, and runs the event loop.
// Returns the exit code of the process. Once a process, from main().
int runAssistant(int argc, char **argv, Surroundings &surroundings);
