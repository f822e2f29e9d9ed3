#include "pc/registry.h"

#include "simpc/sim_pc.h"

namespace registry {

bool keyExists(const QString &key)
{
    return SimPc::current().registry.keyExists(key);
}

namespace {

constexpr int longest = 259; // and the NUL that ends it

} // namespace

std::optional<QString> text(const QString &key, const QString &name)
{
    const std::optional<QString> value = SimPc::current().registry.text(key, name);
    return value && value->size() <= longest ? value : std::nullopt;
}

std::optional<QString> narrowText(const QString &key, const QString &name)
{
    const std::optional<QString> value = text(key, name);
    return value && value->toUtf8().size() <= longest ? value : std::nullopt;
}

QStringList subkeys(const QString &key)
{
    return SimPc::current().registry.subkeys(key);
}

} // namespace registry
