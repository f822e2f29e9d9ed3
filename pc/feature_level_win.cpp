#include "pc/feature_level.h"

#include "pc/handles_win.h"

#include <d3d11.h>

namespace feature_level {

Answer probe(const std::vector<quint32> &levels)
{
    std::vector<D3D_FEATURE_LEVEL> wanted;
    for (const quint32 level : levels)
        wanted.push_back(static_cast<D3D_FEATURE_LEVEL>(level));
    ComPointer<ID3D11Device> device;
    ComPointer<ID3D11DeviceContext> context;
    auto reached = static_cast<D3D_FEATURE_LEVEL>(0);
    const HRESULT result = D3D11CreateDevice(
        nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, wanted.data(),
        static_cast<UINT>(wanted.size()), D3D11_SDK_VERSION, device.put(), &reached, context.put());
    return {static_cast<quint32>(result), static_cast<quint32>(reached)};
}

} // namespace feature_level
