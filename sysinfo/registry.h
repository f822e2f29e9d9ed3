// Reading the registry. Keys are written with their root, for example
// "HKEY_LOCAL_MACHINE\SOFTWARE\Valve\Steam". Synchronous; any thread.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace registry {

// Whether the key can be opened for reading.
bool keyExists(const QString &key);

// A text value; nothing when the key or the value does not exist or the value
// is no text. An empty name reads the key's default value.
std::optional<QString> text(const QString &key, const QString &name);

// The names of the direct subkeys, in the registry's order.
QStringList subkeys(const QString &key);

} // namespace registry
