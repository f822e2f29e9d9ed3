#include "pc/memory.h"

#include "simpc/sim_pc.h"

namespace memory {

quint64 totalPhysical()
{
    return SimPc::current().totalMemory();
}

} // namespace memory
