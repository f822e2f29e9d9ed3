#include "pc/feature_level.h"

#include "simpc/sim_pc.h"

namespace feature_level {

Answer probe(const std::vector<quint32> &levels)
{
    const SimDirect3D direct3D = SimPc::current().hardware().direct3D;
    if (direct3D.result != 0)
        return {direct3D.result, 0};
    for (const quint32 level : levels) {
        if (level <= direct3D.highestLevel)
            return {0, level};
    }
    constexpr quint32 unsupported = 0x887a0004;
    return {unsupported, 0};
}

} // namespace feature_level
