// What the control link and the USB watcher write to the standard streams.
//
// Each call writes one whole line and flushes it; lines of several threads
// never mix. Wide and narrow lines may follow each other on the same stream if
// the program has called std::ios::sync_with_stdio(false). Any thread.
#pragma once

#include <string>

namespace console {

// To std::wcout, std::wcerr and std::cout, without the line end.
void info(const std::wstring &line);
void error(const std::wstring &line);
void echo(const std::string &line);

// From here on nobody waits for whoever reads the standard output and the standard
// error stream, also at the end of the process but for a moment. What they are too
// slow for is lost. Once, at the beginning of main().
void neverWait();

} // namespace console
