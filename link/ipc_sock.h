// The control link's sockets: one that listens, and one client at most.
#pragma once

#include "link/line_splitter.h"
#include "link/poller.h"

#include <QtGlobal>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

// Everything happens on one thread (the link's worker) except hasClient() and
// clientNumber(), which any thread may call. The wait for something to do is
// the shared Poller's; nothing here blocks. Failures are written to the wide
// console streams and are never fatal.
class IPCSock
{
public:
    explicit IPCSock(std::shared_ptr<Poller> poller);
    ~IPCSock(); // as close()

    IPCSock(const IPCSock &) = delete;
    IPCSock &operator=(const IPCSock &) = delete;

    // Where startup() will listen. A port below 1 and a null address stand for
    // 9932 and "127.0.0.1"; the text has to outlive startup().
    void setPort(int port) { port_ = port; }
    void setAddress(const char *address) { address_ = address; }

    // Binds and listens. False when that fails; a socket made on the way stays
    // until close().
    [[nodiscard]] bool startup();
    // The system's error number of a startup() that failed.
    int startupError() const { return startupError_; }

    // Takes a waiting connection, if the last wait saw one. Only this PC may
    // connect, and the newest client replaces the one before. True when there
    // is a new client.
    bool acceptClient();
    // When the system has no room for another connection, the listening socket
    // is no longer waited for (the worker would spin otherwise) until this is
    // called.
    void resumeAccepting();
    bool isAcceptingPaused() const { return acceptingPaused_; }

    // Reads once, if the last wait saw something to read, and appends the lines
    // completed by it. True when `lines` holds any. A client that has closed or
    // failed, whose line grows beyond all bounds, or that is a web browser, is
    // dropped with what it left unfinished; of a browser not even the lines before
    // those that give it away are handed out.
    bool receiveLines(std::vector<std::string> *lines);

    // Sends the text with its terminating NUL. Texts arrive whole or not at
    // all: one that the system takes only a part of is finished by and by
    // (continueSending()), and whatever is sent meanwhile is lost.
    void send(const char *text);
    // Sends more of an unfinished text. To be called after every wait.
    void continueSending();

    bool hasClient() const { return clientNumber() != 0; }
    // Which client is connected: 0 for none, another number for each.
    quint64 clientNumber() const { return clientNumber_.load(std::memory_order_acquire); }

    // The port that the client connected from; on the worker's thread.
    quint16 clientPort() const { return clientPort_; }

    void closeClient();
    // The client, then the listening socket.
    void close();

private:
    bool failStartup(const wchar_t *step);
    bool isBrowsers(const std::vector<std::string> &lines, std::size_t first) const;

    const std::shared_ptr<Poller> poller_;
    socket_api::Socket listening_;
    socket_api::Socket client_;
    LineSplitter received_;
    int port_ = -1;
    const char *address_ = nullptr;
    int startupError_ = 0;

    std::string unsent_; // what is left of a text that was sent in part
    bool acceptingPaused_ = false;
    quint64 clientsSeen_ = 0;
    quint16 clientPort_ = 0;
    std::atomic<quint64> clientNumber_{0};
};
