#include "pc/display_drivers.h"

#include "simpc/sim_pc.h"

namespace display_drivers {

std::optional<std::vector<Device>> list()
{
    const SimHardware hardware = SimPc::current().hardware();
    if (!hardware.displayDevices)
        return std::nullopt;
    std::vector<Device> devices;
    for (const SimDisplayDevice &device : *hardware.displayDevices) {
        Device copy;
        copy.listed = device.listsDrivers;
        for (const SimDriver &driver : device.drivers)
            copy.drivers.push_back({driver.manufacturer, driver.version});
        devices.push_back(copy);
    }
    return devices;
}

} // namespace display_drivers
