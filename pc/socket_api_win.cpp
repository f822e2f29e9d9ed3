// One socket more than the program's own sets hold: the wake-up socket.
#define FD_SETSIZE 65
#define WIN32_LEAN_AND_MEAN
#include <winsock2.h>
#include <ws2tcpip.h>

#include "pc/socket_api.h"

#include <climits>
#include <cstddef>
#include <utility>

using namespace std::chrono_literals;

namespace socket_api {

static_assert(sizeof(Handle) == sizeof(SOCKET) && invalidHandle == INVALID_SOCKET,
              "a handle is a Winsock socket");
static_assert(sizeof(Set::count) == sizeof(fd_set::fd_count) &&
                  offsetof(Set, sockets) == offsetof(fd_set, fd_array),
              "a set is laid out as Winsock's");

namespace {

int clamped(std::size_t size)
{
    return size > INT_MAX ? INT_MAX : static_cast<int>(size);
}

// Never blocks and stays in this process: a long-lived child that inherited
// the listening socket would keep the port after our end.
bool configure(SOCKET socket)
{
    SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
    u_long on = 1;
    return ioctlsocket(socket, static_cast<long>(FIONBIO), &on) == 0;
}

// A socket that cannot be configured is none.
Socket configured(SOCKET handle)
{
    Socket socket(handle);
    if (socket && !configure(handle))
        socket.reset();
    return socket;
}

// A datagram socket on a loopback port of the system's choice, and its name.
struct Datagram
{
    Socket socket;
    sockaddr_in name = {};
};

std::optional<Datagram> openDatagram()
{
    Datagram opened{configured(::socket(AF_INET, SOCK_DGRAM, 0))};
    opened.name.sin_family = AF_INET;
    opened.name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *const name = reinterpret_cast<sockaddr *>(&opened.name);
    int length = sizeof opened.name;
    if (!opened.socket || ::bind(opened.socket.get(), name, length) != 0 ||
        ::getsockname(opened.socket.get(), name, &length) != 0)
        return std::nullopt;
    return opened;
}

bool connectTo(const Socket &socket, const sockaddr_in &name)
{
    return ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0;
}

void fill(fd_set *to, const Set &from)
{
    to->fd_count = from.count;
    for (std::uint32_t i = 0; i < from.count; ++i)
        to->fd_array[i] = from.sockets[i];
}

} // namespace

void initialise()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 0), &data);
}

int lastError()
{
    return WSAGetLastError();
}

bool isWouldBlock(int error)
{
    return error == WSAEWOULDBLOCK || error == WSAEINTR;
}

bool isLostConnection(int error)
{
    return error == WSAECONNRESET || error == WSAECONNABORTED;
}

int messageTooLongError()
{
    return WSAEMSGSIZE;
}

Socket openTcp()
{
    return configured(::socket(AF_INET, SOCK_STREAM, 0));
}

void close(Handle socket)
{
    const int error = WSAGetLastError();
    closesocket(socket);
    WSASetLastError(error);
}

void allowAddressReuse(Handle socket)
{
    const int on = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char *>(&on), sizeof on);
}

bool bindTo(Handle socket, const char *address, std::uint16_t port)
{
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(port);
    // An address that is none must not end as "every address of this PC".
    if (::inet_pton(AF_INET, address, &name.sin_addr) != 1) {
        WSASetLastError(WSAEINVAL);
        return false;
    }
    return ::bind(socket, reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0;
}

bool listenOn(Handle socket, int backlog)
{
    return ::listen(socket, backlog) == 0;
}

std::optional<Connection> accept(Handle listener)
{
    sockaddr_in peer{};
    int length = sizeof peer;
    Socket client = configured(::accept(listener, reinterpret_cast<sockaddr *>(&peer), &length));
    if (!client)
        return std::nullopt;
    // Commands are short and seldom: each goes out at once.
    const BOOL on = TRUE;
    ::setsockopt(client.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on),
                 sizeof on);
    return Connection{std::move(client), peer.sin_addr.s_addr};
}

std::uint32_t parseAddress(const char *address)
{
    in_addr parsed{};
    return ::inet_pton(AF_INET, address, &parsed) == 1 ? parsed.s_addr : 0;
}

std::ptrdiff_t receive(Handle socket, char *buffer, std::size_t size)
{
    return ::recv(socket, buffer, clamped(size), 0);
}

std::ptrdiff_t send(Handle socket, const char *data, std::size_t size)
{
    return ::send(socket, data, clamped(size), 0);
}

std::optional<WakeUpPair> makeWakeUpPair()
{
    std::optional<Datagram> sender = openDatagram();
    if (!sender)
        return std::nullopt;
    std::optional<Datagram> receiver = openDatagram();
    // Connected both ways, so that nobody else's datagrams arrive.
    if (!receiver || !connectTo(sender->socket, receiver->name) ||
        !connectTo(receiver->socket, sender->name))
        return std::nullopt;
    return WakeUpPair{std::move(sender->socket), std::move(receiver->socket)};
}

WaitOutcome wait(Set *set, const WaitOptions &options)
{
    fd_set readable;
    fd_set writable;
    fd_set exceptional;
    FD_ZERO(&readable);
    FD_ZERO(&writable);
    FD_ZERO(&exceptional);
    if (options.kinds & Readable)
        fill(&readable, *set);
    if (options.kinds & Writable)
        fill(&writable, *set);
    if (options.kinds & Exceptional)
        fill(&exceptional, *set);
    if (options.wakeUp != invalidHandle)
        FD_SET(options.wakeUp, &readable);
    if (options.writeTo != invalidHandle)
        FD_SET(options.writeTo, &writable);

    const auto milliseconds = static_cast<long>(options.limit.value_or(0ms).count());
    timeval limit{milliseconds / 1000, (milliseconds % 1000) * 1000};
    if (::select(0, &readable, &writable, &exceptional, options.limit ? &limit : nullptr) ==
        SOCKET_ERROR)
        return {};

    WaitOutcome outcome{0};
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; i < set->count; ++i) {
        const SOCKET socket = set->sockets[i];
        int kinds = 0;
        if ((options.kinds & Readable) && FD_ISSET(socket, &readable))
            ++kinds;
        if ((options.kinds & Writable) && FD_ISSET(socket, &writable))
            ++kinds;
        if ((options.kinds & Exceptional) && FD_ISSET(socket, &exceptional))
            ++kinds;
        outcome.ready += kinds;
        if (kinds > 0)
            set->sockets[kept++] = socket;
    }
    set->count = kept;
    outcome.wokenUp = options.wakeUp != invalidHandle && FD_ISSET(options.wakeUp, &readable);
    return outcome;
}

} // namespace socket_api
