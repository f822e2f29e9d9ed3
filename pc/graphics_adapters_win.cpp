#include "pc/graphics_adapters.h"

#include "pc/handles_win.h"

#include <dxgi.h>

namespace graphics_adapters {

std::vector<Adapter> list()
{
    std::vector<Adapter> adapters;
    ComPointer<IDXGIFactory> factory;
    if (FAILED(CreateDXGIFactory(__uuidof(IDXGIFactory), reinterpret_cast<void **>(factory.put()))))
        return adapters;
    for (UINT index = 0;; ++index) {
        ComPointer<IDXGIAdapter> adapter;
        if (FAILED(factory->EnumAdapters(index, adapter.put())))
            return adapters;
        DXGI_ADAPTER_DESC description = {};
        if (SUCCEEDED(adapter->GetDesc(&description))) {
            adapters.push_back({description.VendorId, description.DeviceId,
                                QString::fromWCharArray(description.Description),
                                description.DedicatedVideoMemory});
        }
    }
}

} // namespace graphics_adapters
