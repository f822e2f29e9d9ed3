// What the stand-ins for Steam's and SteamVR's programs share. Windows only.
#pragma once

#include <windows.h>

#include <string>

namespace stand_in {

// The order in which the processes of SteamVR go when it closes, 250 ms apart.
enum class Turn { Dashboard, WebHelper, Compositor, Server, Monitor };

// Signalled to close SteamVR; exists exactly as long as any part of it runs.
constexpr wchar_t closeEvent[] = L"KOLM_StandIn_SteamVR_Close";
// Signalled to ask the running Steam for SteamVR; exists while Steam runs.
constexpr wchar_t steamEvent[] = L"KOLM_StandIn_Steam_Open";

// Full path of the folder of this program, without a backslash at the end.
std::wstring ownFolder();

// What stands on the command line after the program's name.
bool hasArgument(const wchar_t *text);

// Starts a program that lives on by itself; its process, to be closed by the
// caller, or null.
HANDLE startProgram(const std::wstring &path, const std::wstring &arguments = {});

bool exists(const wchar_t *event);

// Writes the environment into the file that the variable STAND_IN_ENVIRONMENT
// names, if there is one: UTF-16, a variable a line.
void noteEnvironment();

// A part of SteamVR, from its start on. The main function of one makes it first.
class Part
{
public:
    Part();
    // Returns when it is this part's turn to go.
    void untilClosed(Turn turn) const;
    // The same, `milliseconds` at most; true when SteamVR closes.
    bool closesWithin(DWORD milliseconds) const;

private:
    HANDLE close_; // the system closes it with the process
};

} // namespace stand_in
