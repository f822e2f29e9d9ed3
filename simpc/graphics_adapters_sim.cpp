#include "pc/graphics_adapters.h"

#include "simpc/sim_pc.h"

namespace graphics_adapters {

std::vector<Adapter> list()
{
    std::vector<Adapter> adapters;
    const SimHardware hardware = SimPc::current().hardware();
    for (const SimAdapter &adapter : hardware.adapters)
        adapters.push_back({adapter.vendorId, adapter.deviceId, adapter.name, adapter.memory});
    return adapters;
}

} // namespace graphics_adapters
