#include "link/poller.h"

#include "base/console.h"

#include <algorithm>

namespace {

bool contains(const socket_api::Set &set, socket_api::Handle socket)
{
    const auto end = set.sockets + set.count;
    return std::find(set.sockets, end, socket) != end;
}

} // namespace

void Poller::add(socket_api::Handle socket)
{
    if (master_.count < socket_api::setCapacity && !contains(master_, socket))
        master_.sockets[master_.count++] = socket;
}

void Poller::remove(socket_api::Handle socket)
{
    const auto end = master_.sockets + master_.count;
    master_.count =
        static_cast<std::uint32_t>(std::remove(master_.sockets, end, socket) - master_.sockets);
}

int Poller::wait(int kinds, std::optional<std::chrono::milliseconds> limit)
{
    socket_api::Set scratch = master_;
    socket_api::WaitOptions options;
    options.kinds = kinds;
    options.wakeUp = wakeUp_;
    options.writeTo = writeTo_;
    options.limit = limit;
    const socket_api::WaitOutcome outcome = socket_api::wait(&scratch, options);
    wokenUp_ = outcome.wokenUp;
    if (outcome.ready == -1)
        console::error(L"select error :" + std::to_wstring(socket_api::lastError()));

    const auto keep = [&](Kind kind, socket_api::Set *set) {
        if (kinds & kind)
            *set = scratch;
        else
            set->count = 0;
    };
    keep(Readable, &readable_);
    keep(Writable, &writable_);
    keep(Exceptional, &exceptional_);
    return outcome.ready;
}

bool Poller::isSet(socket_api::Handle socket, int kind) const
{
    switch (kind) {
    case Readable:
        return contains(readable_, socket);
    case Writable:
        return contains(writable_, socket);
    case Exceptional:
        return contains(exceptional_, socket);
    default:
        return false;
    }
}
