#include "controller/connection_state.h"

namespace connection {

State stateOf(const Facts &facts)
{
    if (!facts.server)
        return State::NoServer;
    if (facts.asked && facts.found)
        return State::AskingUser;
    if (facts.letGo)
        return State::LetGo;
    if (facts.connected)
        return State::Connected;
    if (facts.wanted)
        return State::Linking;
    if (facts.expected)
        return State::Lost;
    return facts.found ? State::AskingUser : State::Searching;
}

} // namespace connection
