// How a session ends where there is no Windows to say so, for the tests.
#pragma once

namespace session_end::sim {

// Event type under which read() takes its argument for a Message.
extern const char messageType[];

} // namespace session_end::sim
