#include "link/ipc_sock.h"

#include "base/console.h"
#include "link/http_line.h"

#include <QDebug>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace {

constexpr char loopback[] = "127.0.0.1";
constexpr int defaultPort = 9932;
constexpr int backlog = 10;
constexpr std::size_t receiveUnit = 999;

} // namespace

IPCSock::IPCSock(std::shared_ptr<Poller> poller) : poller_(std::move(poller)) {}

IPCSock::~IPCSock()
{
    close();
}

bool IPCSock::startup()
{
    close(); // what an earlier attempt left behind
    socket_api::initialise();
    listening_ = socket_api::openTcp();
    if (!listening_)
        return failStartup(L"socket");
    socket_api::allowAddressReuse(listening_.get());
    const int port = port_ > 0 ? port_ : defaultPort;
    if (!socket_api::bindTo(listening_.get(), address_ ? address_ : loopback,
                            static_cast<std::uint16_t>(port)))
        return failStartup(L"bind");
    if (!socket_api::listenOn(listening_.get(), backlog))
        return failStartup(L"listen");
    // Always the defaults, whatever was set: whoever reads the log looks for
    // this line.
    console::info(L"ControlSocket::Startup Successfully bound to 127.0.0.1 " +
                  std::to_wstring(defaultPort));
    poller_->add(listening_.get());
    return true;
}

bool IPCSock::failStartup(const wchar_t *step)
{
    startupError_ = socket_api::lastError();
    console::error(std::wstring(L"ControlSocket::Startup ") + step + L" error : " +
                   std::to_wstring(startupError_));
    return false;
}

bool IPCSock::acceptClient()
{
    if (!listening_ || !poller_->isSet(listening_.get(), Poller::Readable))
        return false;
    std::optional<socket_api::Connection> accepted = socket_api::accept(listening_.get());
    if (!accepted) {
        const int error = socket_api::lastError();
        if (!socket_api::isWouldBlock(error) && !socket_api::isLostConnection(error)) {
            // Most likely there are no descriptors left. The connection goes
            // on waiting, and so does the readiness.
            poller_->remove(listening_.get());
            acceptingPaused_ = true;
        }
        return false;
    }
    if (accepted->peerAddress != socket_api::parseAddress(loopback))
        return false;
    if (hasClient()) {
        console::info(L"Closing old control client");
        closeClient();
    }
    client_ = std::move(accepted->socket);
    clientPort_ = accepted->peerPort;
    poller_->add(client_.get());
    clientNumber_.store(++clientsSeen_, std::memory_order_release);
    return true;
}

void IPCSock::resumeAccepting()
{
    acceptingPaused_ = false;
    if (listening_)
        poller_->add(listening_.get());
}

bool IPCSock::receiveLines(std::vector<std::string> *lines)
{
    if (!hasClient() || !poller_->isSet(client_.get(), Poller::Readable))
        return false;
    char chunk[receiveUnit];
    const std::ptrdiff_t size = socket_api::receive(client_.get(), chunk, sizeof chunk);
    if (size == 0) {
        console::info(L"Control connection has closed");
        closeClient();
        return false;
    }
    int error = 0;
    const std::size_t before = lines->size();
    if (size < 0) {
        error = socket_api::lastError();
        if (socket_api::isWouldBlock(error))
            return false;
    } else if (!received_.append(chunk, static_cast<std::size_t>(size), lines)) {
        error = socket_api::messageTooLongError();
    }
    if (error != 0) {
        console::info(L"Error on recv. close control client: " + std::to_wstring(error));
        closeClient();
        return false;
    }
    if (isBrowsers(*lines, before)) {
        qWarning("control port: a connection that speaks HTTP is closed, nothing of it is obeyed");
        lines->resize(before);
        closeClient();
        return false;
    }
    return !lines->empty();
}

// Whether one of the new lines, or what has come of the next one, is.
bool IPCSock::isBrowsers(const std::vector<std::string> &lines, std::size_t first) const
{
    return http_line::isBrowsers(received_.rest()) ||
           std::any_of(lines.begin() + static_cast<std::ptrdiff_t>(first), lines.end(),
                       http_line::isBrowsers);
}

void IPCSock::send(const char *text)
{
    // Half a text followed by another one would be a command that nobody gave.
    if (!hasClient() || !unsent_.empty())
        return;
    const std::size_t size = std::strlen(text) + 1;
    const std::ptrdiff_t sent = socket_api::send(client_.get(), text, size);
    if (sent > 0 && static_cast<std::size_t>(sent) < size) {
        unsent_.assign(text + sent, size - static_cast<std::size_t>(sent));
        poller_->setWriteTo(client_.get());
    }
}

void IPCSock::continueSending()
{
    if (unsent_.empty())
        return;
    const std::ptrdiff_t sent = socket_api::send(client_.get(), unsent_.data(), unsent_.size());
    if (sent > 0)
        unsent_.erase(0, static_cast<std::size_t>(sent));
    else if (sent < 0 && !socket_api::isWouldBlock(socket_api::lastError()))
        unsent_.clear(); // the next receive will find the client broken
    if (unsent_.empty())
        poller_->setWriteTo(socket_api::invalidHandle);
}

void IPCSock::closeClient()
{
    if (!client_)
        return;
    clientNumber_.store(0, std::memory_order_release);
    poller_->remove(client_.get());
    poller_->setWriteTo(socket_api::invalidHandle);
    unsent_.clear();
    received_.clear(); // what it began to say dies with it
    client_.reset();
}

void IPCSock::close()
{
    closeClient();
    acceptingPaused_ = false;
    if (!listening_)
        return;
    poller_->remove(listening_.get());
    listening_.reset();
}
