#include "pc/display_drivers.h"

#include "pc/handles_win.h"

#include <cfgmgr32.h>
#include <setupapi.h>

namespace display_drivers {

namespace {

constexpr GUID displayAdapters = {
    0x4d36e968, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

struct DeviceInfoList : PointerKind<HDEVINFO>
{
    static bool isValid(HDEVINFO set) { return set && set != INVALID_HANDLE_VALUE; }
    static void close(HDEVINFO set) { SetupDiDestroyDeviceInfoList(set); }
};
using DeviceSet = Owned<DeviceInfoList>;

bool saysWhichItIs(DEVINST device)
{
    ULONG size = 0;
    if (CM_Get_Device_ID_Size(&size, device, 0) != CR_SUCCESS)
        return false;
    std::vector<wchar_t> id(size + 1);
    return CM_Get_Device_IDW(device, id.data(), size + 1, 0) == CR_SUCCESS;
}

Device driversOf(HDEVINFO set, SP_DEVINFO_DATA *data)
{
    Device device;
    device.listed = SetupDiBuildDriverInfoList(set, data, SPDIT_COMPATDRIVER) != FALSE;
    if (!device.listed)
        return device;
    SP_DRVINFO_DATA_V2_W driver = {};
    driver.cbSize = sizeof driver;
    for (DWORD index = 0; SetupDiEnumDriverInfoW(set, data, SPDIT_COMPATDRIVER, index,
                                                 reinterpret_cast<PSP_DRVINFO_DATA_W>(&driver));
         ++index) {
        device.drivers.push_back({QString::fromWCharArray(driver.MfgName), driver.DriverVersion});
        driver.cbSize = sizeof driver;
    }
    SetupDiDestroyDriverInfoList(set, data, SPDIT_COMPATDRIVER);
    return device;
}

} // namespace

std::optional<std::vector<Device>> list()
{
    const DeviceSet set(SetupDiGetClassDevsW(&displayAdapters, nullptr, nullptr, DIGCF_PRESENT));
    if (!set)
        return std::nullopt;
    std::vector<Device> devices;
    SP_DEVINFO_DATA data = {};
    data.cbSize = sizeof data;
    for (DWORD index = 0; SetupDiEnumDeviceInfo(set.get(), index, &data); ++index) {
        if (saysWhichItIs(data.DevInst))
            devices.push_back(driversOf(set.get(), &data));
    }
    return devices;
}

} // namespace display_drivers
