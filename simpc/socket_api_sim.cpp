#include "pc/socket_api.h"

#include <array>
#include <cerrno>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace socket_api {

namespace {

int fd(Handle socket)
{
    return static_cast<int>(static_cast<std::intptr_t>(socket));
}

Handle handle(int fd)
{
    return static_cast<Handle>(static_cast<std::intptr_t>(fd));
}

constexpr short hungUp = POLLHUP | POLLERR;

// What select() would say about the outcome of poll().
int readyKinds(short events, int asked)
{
    int kinds = 0;
    if (events & (POLLIN | hungUp))
        kinds |= Readable;
    if (events & (POLLOUT | POLLERR))
        kinds |= Writable;
    if (events & POLLPRI)
        kinds |= Exceptional;
    return kinds & asked;
}

int countKinds(int kinds)
{
    return ((kinds & Readable) ? 1 : 0) + ((kinds & Writable) ? 1 : 0) +
           ((kinds & Exceptional) ? 1 : 0);
}

} // namespace

void initialise() {}

int lastError()
{
    return errno;
}

bool isWouldBlock(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

bool isLostConnection(int error)
{
    return error == ECONNABORTED || error == EPROTO || error == ECONNRESET;
}

int messageTooLongError()
{
    return EMSGSIZE;
}

Socket openTcp()
{
    return Socket(handle(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)));
}

void close(Handle socket)
{
    const int error = errno;
    ::close(fd(socket));
    errno = error;
}

void allowAddressReuse(Handle socket)
{
    const int on = 1;
    ::setsockopt(fd(socket), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

bool bindTo(Handle socket, const char *address, std::uint16_t port)
{
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(port);
    // An address that is none must not end as "every address of this PC".
    if (::inet_pton(AF_INET, address, &name.sin_addr) != 1) {
        errno = EINVAL;
        return false;
    }
    return ::bind(fd(socket), reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0;
}

bool listenOn(Handle socket, int backlog)
{
    return ::listen(fd(socket), backlog) == 0;
}

std::optional<Connection> accept(Handle listener)
{
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    const int client = ::accept4(fd(listener), reinterpret_cast<sockaddr *>(&peer), &length,
                                 SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (client < 0)
        return std::nullopt;
    // Commands are short and seldom: each goes out at once.
    const int on = 1;
    ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return Connection{Socket(handle(client)), peer.sin_addr.s_addr, ntohs(peer.sin_port)};
}

std::uint32_t parseAddress(const char *address)
{
    in_addr parsed{};
    return ::inet_pton(AF_INET, address, &parsed) == 1 ? parsed.s_addr : 0;
}

std::ptrdiff_t receive(Handle socket, char *buffer, std::size_t size)
{
    return ::recv(fd(socket), buffer, size, 0);
}

std::ptrdiff_t send(Handle socket, const char *data, std::size_t size)
{
    return ::send(fd(socket), data, size, MSG_NOSIGNAL);
}

std::optional<WakeUpPair> makeWakeUpPair()
{
    int pair[2];
    if (::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, pair) != 0)
        return std::nullopt;
    return WakeUpPair{Socket(handle(pair[0])), Socket(handle(pair[1]))};
}

// poll() and not select(): descriptors above 1023 are as good as any.
WaitOutcome wait(Set *set, const WaitOptions &options)
{
    std::array<pollfd, setCapacity + 2> entries;
    nfds_t used = 0;
    const auto append = [&](Handle socket, int events) {
        entries[used++] = {fd(socket), static_cast<short>(events), 0};
    };
    const int events = ((options.kinds & Readable) ? POLLIN : 0) |
                       ((options.kinds & Writable) ? POLLOUT : 0) |
                       ((options.kinds & Exceptional) ? POLLPRI : 0);
    for (std::uint32_t i = 0; i < set->count; ++i)
        append(set->sockets[i], events);
    const nfds_t wakeUpAt = used;
    if (options.wakeUp != invalidHandle)
        append(options.wakeUp, POLLIN);
    if (options.writeTo != invalidHandle)
        append(options.writeTo, POLLOUT);

    const int limit = options.limit ? static_cast<int>(options.limit->count()) : -1;
    int result;
    do {
        result = ::poll(entries.data(), used, limit);
    } while (result < 0 && errno == EINTR);
    if (result < 0)
        return {};
    for (std::uint32_t i = 0; i < set->count; ++i) {
        if (entries[i].revents & POLLNVAL) {
            errno = EBADF;
            return {};
        }
    }

    WaitOutcome outcome{0};
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; i < set->count; ++i) {
        const int kinds = readyKinds(entries[i].revents, options.kinds);
        if (kinds == 0)
            continue;
        outcome.ready += countKinds(kinds);
        set->sockets[kept++] = set->sockets[i];
    }
    set->count = kept;
    outcome.wokenUp = options.wakeUp != invalidHandle && entries[wakeUpAt].revents != 0;
    return outcome;
}

} // namespace socket_api
