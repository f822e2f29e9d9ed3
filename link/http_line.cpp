#include "link/http_line.h"

#include <algorithm>
#include <cstring>

namespace http_line {

namespace {

// Those of HTTP and WebDAV; they are written in capitals.
constexpr std::string_view methods[] = {
    "GET",  "HEAD", "POST",     "PUT",       "DELETE", "CONNECT", "OPTIONS", "TRACE",  "PATCH",
    "COPY", "MOVE", "PROPFIND", "PROPPATCH", "MKCOL",  "LOCK",    "UNLOCK",  "REPORT", "SEARCH",
};

// What browsers send of themselves or at a page's wish, in any letter case.
constexpr std::string_view headers[] = {
    "Accept",
    "Accept-Encoding",
    "Accept-Language",
    "Authorization",
    "Cache-Control",
    "Connection",
    "Content-Length",
    "Content-Type",
    "Cookie",
    "DNT",
    "Forwarded",
    "Host",
    "Keep-Alive",
    "Last-Event-ID",
    "Origin",
    "Pragma",
    "Range",
    "Referer",
    "Transfer-Encoding",
    "Upgrade",
    "User-Agent",
    "Via",
};
// Beginnings of whole families of headers.
constexpr std::string_view families[] = {"Sec-", "Access-Control-", "If-", "Proxy-", "Upgrade-"};

// By which the first line of a request ends, its method being whatever it is.
constexpr std::string_view version = " HTTP/1.1";
// Nothing longer is looked at as a method or as a header's name.
constexpr std::size_t longestWord = 40;

// The first bytes of every TLS connection: a handshake, version 3.something.
constexpr std::string_view tlsHandshake = "\x16\x03";

bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Of ASCII letters; other bytes have no letter case.
char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool beginsWith(std::string_view line, std::string_view with)
{
    return line.substr(0, with.size()) == with;
}

bool beginsInAnyCaseWith(std::string_view line, std::string_view with)
{
    return line.size() >= with.size() &&
           std::equal(with.begin(), with.end(), line.begin(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isTokenCharacter(char c)
{
    return isAsciiLetter(c) || isDigit(c) || (c && std::strchr("!#$%&'*+-.^_`|~", c));
}

bool beginsWithKnownMethod(std::string_view line)
{
    return std::any_of(std::begin(methods), std::end(methods), [line](std::string_view method) {
        return beginsWith(line, method) && line.size() > method.size() &&
               line[method.size()] == ' ';
    });
}

// As it does when a page has invented the method.
bool endsWithVersion(std::string_view line)
{
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    if (line.size() < version.size())
        return false;
    const std::string_view end = line.substr(line.size() - version.size());
    return beginsWith(end, version.substr(0, 6)) && isDigit(end[6]) && end[7] == '.' &&
           isDigit(end[8]);
}

bool beginsWithAnyMethod(std::string_view line)
{
    const std::string_view start = line.substr(0, longestWord + 1);
    const auto end = std::find_if_not(start.begin(), start.end(), isTokenCharacter);
    return end != start.begin() && end != start.end() && *end == ' ';
}

bool beginsWithHeader(std::string_view line)
{
    const bool known =
        std::any_of(std::begin(headers), std::end(headers), [line](std::string_view header) {
            return beginsInAnyCaseWith(line, header) && line.size() > header.size() &&
                   line[header.size()] == ':';
        });
    if (known)
        return true;
    const bool related =
        std::any_of(std::begin(families), std::end(families),
                    [line](std::string_view family) { return beginsInAnyCaseWith(line, family); });
    const std::string_view start = line.substr(0, longestWord + 1);
    const auto end = std::find_if_not(start.begin(), start.end(), isTokenCharacter);
    return related && end != start.end() && *end == ':';
}

} // namespace

bool isBrowsers(std::string_view line)
{
    return beginsWithKnownMethod(line) || beginsWithHeader(line) ||
           (endsWithVersion(line) && beginsWithAnyMethod(line)) || beginsWith(line, tlsHandshake);
}

} // namespace http_line
