// Reading the registry. Keys are written with their root, for example
// "HKEY_LOCAL_MACHINE\SOFTWARE\Valve\Steam". Synchronous; any thread.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace registry {

// Whether the key can be opened for reading.
bool keyExists(const QString &key);

// A text value; nothing when the key or the value does not exist, the value is
// no text or takes more than 520 bytes (259 characters and the NUL that ends
// them). An empty name reads the key's default value.
std::optional<QString> text(const QString &key, const QString &name);

// The same through the system's narrow call: at most 260 bytes in the system's
// code page, so that a longer text is nothing and letters that the code page
// lacks are lost. For what is handed on to a narrow call anyway.
std::optional<QString> narrowText(const QString &key, const QString &name);

// The names of the direct subkeys, in the registry's order.
QStringList subkeys(const QString &key);

} // namespace registry
