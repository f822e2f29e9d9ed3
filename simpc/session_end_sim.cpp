#include "simpc/session_end_sim.h"

#include "pc/session_end.h"

#include <cstdlib>

namespace session_end {

const long yes = 1;

namespace sim {

const char messageType[] = "sim_session_message";

} // namespace sim

Message read(const QByteArray &eventType, const void *message)
{
    return eventType == sim::messageType ? *static_cast<const Message *>(message) : Message::Other;
}

void endProcess()
{
    std::_Exit(0);
}

} // namespace session_end
