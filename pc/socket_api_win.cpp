// One socket more than the program's own sets hold: the wake-up socket.
#define FD_SETSIZE 65
#define WIN32_LEAN_AND_MEAN
#include <winsock2.h>
#include <ws2tcpip.h>

#include "pc/socket_api.h"

#include <climits>
#include <cstddef>

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
bool tame(SOCKET socket)
{
    SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
    u_long on = 1;
    return ioctlsocket(socket, static_cast<long>(FIONBIO), &on) == 0;
}

Handle tamedOrClosed(SOCKET socket)
{
    if (socket == INVALID_SOCKET || tame(socket))
        return socket;
    const int error = WSAGetLastError();
    closesocket(socket);
    WSASetLastError(error);
    return invalidHandle;
}

// A datagram socket on a loopback port of the system's choice.
SOCKET openDatagram(sockaddr_in *name)
{
    const SOCKET opened = tamedOrClosed(::socket(AF_INET, SOCK_DGRAM, 0));
    if (opened == INVALID_SOCKET)
        return INVALID_SOCKET;
    *name = sockaddr_in{};
    name->sin_family = AF_INET;
    name->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int length = sizeof *name;
    if (::bind(opened, reinterpret_cast<const sockaddr *>(name), length) == 0 &&
        ::getsockname(opened, reinterpret_cast<sockaddr *>(name), &length) == 0)
        return opened;
    closesocket(opened);
    return INVALID_SOCKET;
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

Handle openTcp()
{
    return tamedOrClosed(::socket(AF_INET, SOCK_STREAM, 0));
}

void close(Handle socket)
{
    closesocket(socket);
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

Handle accept(Handle listener, std::uint32_t *peerAddress)
{
    sockaddr_in peer{};
    int length = sizeof peer;
    const Handle client =
        tamedOrClosed(::accept(listener, reinterpret_cast<sockaddr *>(&peer), &length));
    if (client == invalidHandle)
        return invalidHandle;
    *peerAddress = peer.sin_addr.s_addr;
    // Commands are short and seldom: each goes out at once.
    const BOOL on = TRUE;
    ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on), sizeof on);
    return client;
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

bool makeWakeUpPair(Handle *sender, Handle *receiver)
{
    sockaddr_in senderName;
    sockaddr_in receiverName;
    const SOCKET from = openDatagram(&senderName);
    const SOCKET to = from != INVALID_SOCKET ? openDatagram(&receiverName) : INVALID_SOCKET;
    // Connected both ways, so that nobody else's datagrams arrive.
    if (to != INVALID_SOCKET &&
        ::connect(from, reinterpret_cast<const sockaddr *>(&receiverName), sizeof receiverName) ==
            0 &&
        ::connect(to, reinterpret_cast<const sockaddr *>(&senderName), sizeof senderName) == 0) {
        *sender = from;
        *receiver = to;
        return true;
    }
    const int error = WSAGetLastError();
    if (from != INVALID_SOCKET)
        closesocket(from);
    if (to != INVALID_SOCKET)
        closesocket(to);
    WSASetLastError(error);
    return false;
}

int wait(Set *set, const WaitOptions &options, bool *wokenUp)
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

    *wokenUp = false;
    timeval limit{options.timeoutMilliseconds / 1000, (options.timeoutMilliseconds % 1000) * 1000};
    if (::select(0, &readable, &writable, &exceptional,
                 options.timeoutMilliseconds < 0 ? nullptr : &limit) == SOCKET_ERROR)
        return -1;

    int ready = 0;
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
        ready += kinds;
        if (kinds > 0)
            set->sockets[kept++] = socket;
    }
    set->count = kept;
    *wokenUp = options.wakeUp != invalidHandle && FD_ISSET(options.wakeUp, &readable);
    return ready;
}

} // namespace socket_api
