#pragma once

#include <QString>

// A text of the interface, which is Chinese in the source.
inline QString zh(const char *text)
{
    return QString::fromUtf8(text);
}
