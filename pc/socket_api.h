// TCP over IPv4, as thin as the two systems' socket calls allow.
//
// Sockets made here never block: a call that would have to wait fails with an
// error for which isWouldBlock() holds. Programs that we start do not inherit
// them, whenever they are started. A call that fails leaves its reason in lastError(), which
// belongs to the calling thread and is only good until the next call. Any thread.
#pragma once

#include "pc/owned.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace socket_api {

// The system's handle of a socket, for whoever does not own it.
using Handle = std::uintptr_t;
constexpr Handle invalidHandle = ~Handle(0);

// Leaves lastError() as it is. The owner below calls it.
void close(Handle socket);

struct SocketKind
{
    using Handle = socket_api::Handle;
    static constexpr Handle none() { return invalidHandle; }
    static bool isValid(Handle socket) { return socket != invalidHandle; }
    static void close(Handle socket) { socket_api::close(socket); }
};

// Closes its socket with itself.
using Socket = Owned<SocketKind>;

// To be called before anything else; more than once does no harm.
void initialise();

// The system's error number of the last call that failed.
int lastError();
bool isWouldBlock(int error);
// Whether a failed accept() says nothing about the next one: the connection
// was gone before it could be taken.
bool isLostConnection(int error);
// The system's number for "message too long".
int messageTooLongError();

// Empty when the system refuses.
[[nodiscard]] Socket openTcp();

// Lets the port be bound although connections of an earlier run still linger.
void allowAddressReuse(Handle socket);
// `address` in dotted form, `port` in host order.
[[nodiscard]] bool bindTo(Handle socket, const char *address, std::uint16_t port);
[[nodiscard]] bool listenOn(Handle socket, int backlog);

struct Connection
{
    Socket socket;
    std::uint32_t peerAddress = 0; // as parseAddress() gives it
    std::uint16_t peerPort = 0;    // in host order
};

// Takes one waiting connection; nothing on failure.
[[nodiscard]] std::optional<Connection> accept(Handle listener);
// A dotted address in network order; 0 when it is none.
std::uint32_t parseAddress(const char *address);

// Number of bytes moved, 0 when the other end has closed, -1 on failure.
std::ptrdiff_t receive(Handle socket, char *buffer, std::size_t size);
// Never raises a signal. May take only the first part of `data`.
std::ptrdiff_t send(Handle socket, const char *data, std::size_t size);

// Two sockets that are connected with each other and lose nothing: a byte sent
// into the one wakes a wait() on the other.
struct WakeUpPair
{
    Socket sender;
    Socket receiver;
};

// Nothing when the system refuses.
[[nodiscard]] std::optional<WakeUpPair> makeWakeUpPair();

constexpr std::uint32_t setCapacity = 64;

// Laid out as a Winsock fd_set.
struct Set
{
    std::uint32_t count = 0;
    Handle sockets[setCapacity] = {};
};

enum Kind { Readable = 1, Writable = 2, Exceptional = 4 };

struct WaitOptions
{
    int kinds = Readable;                                // asked for every socket of the set
    Handle wakeUp = invalidHandle;                       // also ends the wait, by being readable
    Handle writeTo = invalidHandle;                      // also ends the wait, by being writable
    std::optional<std::chrono::milliseconds> limit = {}; // none: for ever
};

struct WaitOutcome
{
    // How many readinesses there are, a socket counting once for every kind; 0
    // when something else ended the wait; -1 on failure.
    int ready = -1;
    bool wokenUp = false; // whether the wake-up socket is readable
};

// Sleeps until a socket is ready or the time is over. Afterwards `set` holds
// the sockets that are ready for at least one of the kinds, in their order; on
// failure it is untouched.
WaitOutcome wait(Set *set, const WaitOptions &options);

} // namespace socket_api
