// What tells a web browser from a streaming server.
#pragma once

#include <string_view>

// A web page may have the browser connect to any port of this PC and send a text
// of the page's choice to it. It cannot choose how the browser begins: with the line of
// a request, and with headers.
namespace http_line {

// Whether a line, or what has come of one so far, begins as a browser's do: as the
// line of an HTTP request, as one of the headers that go with it, or as the TLS
// handshake in front of an HTTPS request. No command of the control link does.
//
// Time does not depend on how long the line is. Pure, any thread.
[[nodiscard]] bool isBrowsers(std::string_view line);

} // namespace http_line
