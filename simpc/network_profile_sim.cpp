#include "pc/network_profile.h"

#include "simpc/sim_pc.h"

namespace network_profile {

Query query()
{
    // A real child process with real output; only its text is the simulated
    // PC's.
    SimPc &pc = SimPc::current();
    switch (pc.networkQuery()) {
    case SimNetworkQuery::Missing:
        return {QStringLiteral("no-such-program"), {}};
    case SimNetworkQuery::Hangs:
        return {QStringLiteral("cat"), {}}; // for input that never comes
    case SimNetworkQuery::Answers:
        break;
    }
    return {QStringLiteral("printf"), {QStringLiteral("%s\\n"), pc.networkProfileText()}};
}

} // namespace network_profile
