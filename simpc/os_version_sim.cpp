#include "pc/os_version.h"

#include "simpc/sim_pc.h"

namespace os_version {

QString product()
{
    return SimPc::current().osVersion();
}

} // namespace os_version
