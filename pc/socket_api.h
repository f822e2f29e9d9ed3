// TCP over IPv4, as thin as the two systems' socket calls allow.
//
// Sockets made here never block: a call that would have to wait fails with an
// error for which isWouldBlock() holds. Programs that we start do not inherit
// them. A call that fails leaves its reason in lastError(), which belongs to
// the calling thread and is only good until the next call. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace socket_api {

// The system's handle of a socket. Owned by whoever got it from here, who gives
// it back with close().
using Handle = std::uintptr_t;
constexpr Handle invalidHandle = ~Handle(0);

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

Handle openTcp();
void close(Handle socket);

// Lets the port be bound although connections of an earlier run still linger.
void allowAddressReuse(Handle socket);
// `address` in dotted form, `port` in host order.
bool bindTo(Handle socket, const char *address, std::uint16_t port);
bool listenOn(Handle socket, int backlog);

// Takes one waiting connection; `peerAddress` gets the other end's address as
// parseAddress() gives it.
Handle accept(Handle listener, std::uint32_t *peerAddress);
// A dotted address in network order; 0 when it is none.
std::uint32_t parseAddress(const char *address);

// Number of bytes moved, 0 when the other end has closed, -1 on failure.
std::ptrdiff_t receive(Handle socket, char *buffer, std::size_t size);
// Never raises a signal. May take only the first part of `data`.
std::ptrdiff_t send(Handle socket, const char *data, std::size_t size);

// Two connected datagram sockets: a byte sent into the one wakes a wait() on
// the other.
bool makeWakeUpPair(Handle *sender, Handle *receiver);

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
    int kinds = Readable;           // asked for every socket of the set
    Handle wakeUp = invalidHandle;  // also ends the wait, by being readable
    Handle writeTo = invalidHandle; // also ends the wait, by being writable
    int timeoutMilliseconds = -1;   // below 0: without a limit
};

// Sleeps until a socket is ready or the time is over. Afterwards `set` holds
// the sockets that are ready for at least one of the kinds, in their order.
// Returns how many readinesses there are, a socket counting once for every
// kind, and 0 when something else ended the wait; -1 on failure, with `set`
// untouched. `wokenUp` says whether the wake-up socket was readable.
int wait(Set *set, const WaitOptions &options, bool *wokenUp);

} // namespace socket_api
