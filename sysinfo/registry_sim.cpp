#include "sysinfo/registry.h"

#include "simpc/sim_pc.h"

namespace registry {

bool keyExists(const QString &key)
{
    return SimPc::current().hasRegistryKey(key);
}

std::optional<QString> text(const QString &key, const QString &name)
{
    return SimPc::current().registryText(key, name);
}

QStringList subkeys(const QString &key)
{
    return SimPc::current().registrySubkeys(key);
}

} // namespace registry
