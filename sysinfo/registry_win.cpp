#include "sysinfo/registry.h"

#include "sysinfo/handles_win.h"
#include "sysinfo/wide_text_win.h"

#include <vector>

namespace registry {

namespace {

// Null when the key cannot be opened.
RegistryKey open(const QString &key)
{
    const QString root = key.section(QLatin1Char('\\'), 0, 0);
    HKEY parent = nullptr;
    if (root == QLatin1String("HKEY_LOCAL_MACHINE"))
        parent = HKEY_LOCAL_MACHINE;
    else if (root == QLatin1String("HKEY_CURRENT_USER"))
        parent = HKEY_CURRENT_USER;
    else
        return nullptr;
    HKEY opened = nullptr;
    const QString path = key.section(QLatin1Char('\\'), 1);
    if (RegOpenKeyExW(parent, wide(path), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return nullptr;
    return RegistryKey(opened);
}

} // namespace

bool keyExists(const QString &key)
{
    return open(key) != nullptr;
}

std::optional<QString> text(const QString &key, const QString &name)
{
    const RegistryKey opened = open(key);
    if (!opened)
        return std::nullopt;
    // The value may grow between the two calls.
    std::vector<wchar_t> buffer(260);
    for (;;) {
        DWORD type = 0;
        auto bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
        const LONG result = RegQueryValueExW(opened.get(), wide(name), nullptr, &type,
                                             reinterpret_cast<BYTE *>(buffer.data()), &bytes);
        if (result == ERROR_MORE_DATA) {
            buffer.resize(bytes / sizeof(wchar_t) + 1);
            continue;
        }
        if (result != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ))
            return std::nullopt;
        // Whoever wrote the value may or may not have ended it with a NUL.
        QString value =
            QString::fromWCharArray(buffer.data(), static_cast<int>(bytes / sizeof(wchar_t)));
        const int end = value.indexOf(QChar(0));
        return end < 0 ? value : value.left(end);
    }
}

QStringList subkeys(const QString &key)
{
    QStringList names;
    const RegistryKey opened = open(key);
    if (!opened)
        return names;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256] = {}; // the longest name that a key can have
        DWORD length = 256;
        const LONG result =
            RegEnumKeyExW(opened.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (result != ERROR_SUCCESS)
            return names;
        names.append(QString::fromWCharArray(name, static_cast<int>(length)));
    }
}

} // namespace registry
