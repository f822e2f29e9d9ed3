// One socket more than the program's own sets hold: the wake-up socket.
#define FD_SETSIZE 65
#define WIN32_LEAN_AND_MEAN
#include <winsock2.h>

#include <mswsock.h>
#include <ws2tcpip.h>

#include "pc/handles_win.h"
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

// For the two ends of the wake-up pair to meet, each.
constexpr std::chrono::seconds pairLimit = 5s;

int clamped(std::size_t size)
{
    return size > INT_MAX ? INT_MAX : static_cast<int>(size);
}

// A socket that cannot be kept from blocking is none.
Socket nonBlocking(SOCKET handle)
{
    Socket socket(handle);
    u_long on = 1;
    if (socket && ioctlsocket(handle, static_cast<long>(FIONBIO), &on) != 0)
        socket.reset();
    return socket;
}

// Commands are short and seldom: each goes out at once.
void sendAtOnce(const Socket &socket)
{
    const BOOL on = TRUE;
    ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on),
                 sizeof on);
}

// A waiting connection. It comes into the world as something that children
// inherit, whatever the listener is. One that is started just then keeps a client,
// which harms nobody.
Socket take(Handle listener, sockaddr_in *peer)
{
    int length = sizeof *peer;
    const SOCKET handle = ::accept(listener, reinterpret_cast<sockaddr *>(peer), &length);
    if (handle != INVALID_SOCKET)
        SetHandleInformation(reinterpret_cast<HANDLE>(handle), HANDLE_FLAG_INHERIT, 0);
    return nonBlocking(handle);
}

// A socket that listens on a loopback port of the system's choice, and its name.
struct Listener
{
    Socket socket;
    sockaddr_in name = {};
};

std::optional<Listener> listenSomewhere()
{
    Listener opened{openTcp()};
    opened.name.sin_family = AF_INET;
    opened.name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *const name = reinterpret_cast<sockaddr *>(&opened.name);
    int length = sizeof opened.name;
    if (!opened.socket || ::bind(opened.socket.get(), name, length) != 0 ||
        ::getsockname(opened.socket.get(), name, &length) != 0 ||
        ::listen(opened.socket.get(), 1) != 0)
        return std::nullopt;
    return opened;
}

bool beginToConnect(const Socket &socket, const sockaddr_in &name)
{
    return ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0 ||
           WSAGetLastError() == WSAEWOULDBLOCK;
}

// Waits until the connection of a socket is made.
bool isConnectedInTime(const Socket &socket)
{
    fd_set writable;
    FD_ZERO(&writable);
    FD_SET(socket.get(), &writable);
    timeval limit{static_cast<long>(pairLimit.count()), 0};
    const int ready = ::select(0, nullptr, &writable, nullptr, &limit);
    if (ready == 0)
        WSASetLastError(WSAETIMEDOUT);
    return ready == 1;
}

// Takes a connection into a socket that was made before, and so is not for
// children either.
bool takeInto(const Socket &made, const Socket &listener)
{
    constexpr DWORD room = sizeof(sockaddr_in) + 16; // as the call wants it
    char names[2 * room];
    DWORD received = 0;
    const KernelHandle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    OVERLAPPED taking = {};
    taking.hEvent = done.get();
    if (!AcceptEx(listener.get(), made.get(), names, 0, room, room, &received, &taking) &&
        WSAGetLastError() != ERROR_IO_PENDING)
        return false;
    const auto limit = std::chrono::milliseconds(pairLimit).count();
    const bool taken = WaitForSingleObject(done.get(), static_cast<DWORD>(limit)) == WAIT_OBJECT_0;
    const auto handle = reinterpret_cast<HANDLE>(listener.get());
    if (!taken)
        CancelIoEx(handle, &taking);
    // What it writes to lies on this stack.
    if (!GetOverlappedResult(handle, &taking, &received, TRUE))
        return false;
    const SOCKET from = listener.get();
    return ::setsockopt(made.get(), SOL_SOCKET, SO_UPDATE_ACCEPT_CONTEXT,
                        reinterpret_cast<const char *>(&from), sizeof from) == 0;
}

// The other end of our own connection; somebody else's are let go.
Socket acceptFrom(const Socket &listener, const Socket &wanted)
{
    sockaddr_in own{};
    int length = sizeof own;
    if (::getsockname(wanted.get(), reinterpret_cast<sockaddr *>(&own), &length) != 0)
        return {};
    for (Socket made = openTcp(); made && takeInto(made, listener); made = openTcp()) {
        sockaddr_in peer{};
        length = sizeof peer;
        if (::getpeername(made.get(), reinterpret_cast<sockaddr *>(&peer), &length) == 0 &&
            peer.sin_port == own.sin_port && peer.sin_addr.s_addr == own.sin_addr.s_addr)
            return made;
    }
    return {};
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

// Not for children from its birth on: one that is started meanwhile and lives
// long would keep the port after our end.
Socket openTcp()
{
    return nonBlocking(::WSASocketW(AF_INET, SOCK_STREAM, 0, nullptr, 0,
                                    WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT));
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
    Socket client = take(listener, &peer);
    if (!client)
        return std::nullopt;
    sendAtOnce(client);
    return Connection{std::move(client), peer.sin_addr.s_addr, ntohs(peer.sin_port)};
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
    // A connection and not datagrams, which a filter of the system may drop: then
    // the wake-up would be lost, and all that waits for it.
    const std::optional<Listener> listener = listenSomewhere();
    Socket sender = openTcp();
    if (!listener || !sender || !beginToConnect(sender, listener->name))
        return std::nullopt;
    Socket receiver;
    if (isConnectedInTime(sender))
        receiver = acceptFrom(listener->socket, sender);
    if (!receiver)
        return std::nullopt;
    sendAtOnce(sender);
    return WakeUpPair{std::move(sender), std::move(receiver)};
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
