// The name under which a downloaded installer is kept.
#pragma once

#include <QString>

class QUrl;

// The last component of the address's path, decoded, and
// "KOLM_Streaming_Assistant.exe" if there is none. Whatever the address says,
// the result is one plain name that Windows takes as it stands: no separator,
// drive, stream or wildcard, no device, no quotation mark, nothing invisible,
// no blank or dot at an end, at most 120 characters.
QString installerName(const QUrl &address);
