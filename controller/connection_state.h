// Where the connection to the headset stands, as one value.
#pragma once

#include <QObject>

namespace connection {
Q_NAMESPACE

enum class State {
    NoServer,   // SteamVR has not loaded the streaming server yet, or it is gone
    Searching,  // no headset is known of
    AskingUser, // there are headsets, and it is for the user to choose one
    Linking,    // one is being connected
    Connected,  // there is a picture in the headset
    Lost,       // it dropped out, and is connected again as soon as it is back
    LetGo,      // the user disconnected it; only the user connects again
};
Q_ENUM_NS(State)

// What the state follows from. All but the first two speak of the link of the
// moment, and of what was reported since it or SteamVR changed: what is said
// of a connection that we ended ourselves counts no more.
struct Facts
{
    bool wired = false;     // on the cable; otherwise by Wi-Fi
    bool server = false;    // the streaming server is on the control port
    bool connected = false; // it says that the headset is connected
    bool asked = false;     // the user was asked which of several it shall be
    bool letGo = false;     // the user let it go
    bool wanted = false;    // the headset that is to be connected can be reached
    bool expected = false;  // one that was connected is to come back by itself
    bool found = false;     // there are headsets: on the cable, or listed
};

// Pure.
[[nodiscard]] State stateOf(const Facts &facts);

} // namespace connection
