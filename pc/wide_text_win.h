// Texts for the files that touch Win32.
#pragma once

#include <QString>

// The text as the system's wide functions take it; valid as long as `text`.
inline const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}
