#include "pc/registry.h"

#include "pc/handles_win.h"
#include "pc/wide_text_win.h"

namespace registry {

namespace {

constexpr DWORD wideLimit = 520; // bytes
constexpr DWORD narrowLimit = 260;

// Null for a root that nobody asks for.
HKEY rootOf(const QString &key)
{
    const QString root = key.section(QLatin1Char('\\'), 0, 0);
    if (root == QLatin1String("HKEY_LOCAL_MACHINE"))
        return HKEY_LOCAL_MACHINE;
    if (root == QLatin1String("HKEY_CURRENT_USER"))
        return HKEY_CURRENT_USER;
    return nullptr;
}

QString pathOf(const QString &key)
{
    return key.section(QLatin1Char('\\'), 1);
}

// Empty when the key cannot be opened.
RegistryKey open(const QString &key)
{
    RegistryKey opened;
    if (const HKEY root = rootOf(key))
        RegOpenKeyExW(root, wide(pathOf(key)), 0, KEY_READ, opened.put());
    return opened;
}

RegistryKey openNarrow(const QString &key)
{
    RegistryKey opened;
    if (const HKEY root = rootOf(key))
        RegOpenKeyExA(root, pathOf(key).toLocal8Bit().constData(), 0, KEY_READ, opened.put());
    return opened;
}

bool isText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// Whoever wrote the value may or may not have ended it with a NUL.
QString untilNul(const QString &value)
{
    return value.left(value.indexOf(QChar(0)));
}

} // namespace

bool keyExists(const QString &key)
{
    return bool(open(key));
}

std::optional<QString> text(const QString &key, const QString &name)
{
    const RegistryKey opened = open(key);
    if (!opened)
        return std::nullopt;
    wchar_t buffer[wideLimit / sizeof(wchar_t)];
    DWORD bytes = wideLimit;
    DWORD type = 0;
    if (RegQueryValueExW(opened.get(), wide(name), nullptr, &type, reinterpret_cast<BYTE *>(buffer),
                         &bytes) != ERROR_SUCCESS ||
        !isText(type))
        return std::nullopt;
    return untilNul(QString::fromWCharArray(buffer, static_cast<int>(bytes / sizeof(wchar_t))));
}

std::optional<QString> narrowText(const QString &key, const QString &name)
{
    const RegistryKey opened = openNarrow(key);
    if (!opened)
        return std::nullopt;
    char buffer[narrowLimit];
    DWORD bytes = narrowLimit;
    DWORD type = 0;
    if (RegQueryValueExA(opened.get(), name.toLocal8Bit().constData(), nullptr, &type,
                         reinterpret_cast<BYTE *>(buffer), &bytes) != ERROR_SUCCESS ||
        !isText(type))
        return std::nullopt;
    return untilNul(QString::fromLocal8Bit(buffer, static_cast<int>(bytes)));
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
