// The link at the limits of the system: no descriptors left, high ones, a
// connection that is reset.
#include "base/console.h"
#include "link/ipc_sock.h"
#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

// While it lives, this process can open nothing more.
class NoDescriptorsLeft
{
public:
    NoDescriptorsLeft()
    {
        getrlimit(RLIMIT_NOFILE, &before_);
        const int next = dup(0);
        close(next);
        rlimit none = before_;
        none.rlim_cur = static_cast<rlim_t>(next);
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptorsLeft() { setrlimit(RLIMIT_NOFILE, &before_); }
    NoDescriptorsLeft(const NoDescriptorsLeft &) = delete;
    NoDescriptorsLeft &operator=(const NoDescriptorsLeft &) = delete;

private:
    rlimit before_;
};

// A client whose descriptor is there before it connects.
class PreparedPeer
{
public:
    PreparedPeer() : fd_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
    ~PreparedPeer()
    {
        if (fd_ >= 0)
            close(fd_);
    }
    PreparedPeer(const PreparedPeer &) = delete;
    PreparedPeer &operator=(const PreparedPeer &) = delete;

    bool connectTo(int port)
    {
        sockaddr_in name{};
        name.sin_family = AF_INET;
        name.sin_port = htons(static_cast<quint16>(port));
        name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return ::connect(fd_, reinterpret_cast<sockaddr *>(&name), sizeof name) == 0;
    }

    // Closes without the usual good-bye.
    void reset()
    {
        const linger none{1, 0};
        setsockopt(fd_, SOL_SOCKET, SO_LINGER, &none, sizeof none);
        close(fd_);
        fd_ = -1;
    }

    bool send(const QByteArray &bytes)
    {
        return ::send(fd_, bytes.constData(), static_cast<std::size_t>(bytes.size()),
                      MSG_NOSIGNAL) == bytes.size();
    }

    QByteArray receive(int size, std::chrono::milliseconds limit)
    {
        const timeval wait{limit.count() / 1000, (limit.count() % 1000) * 1000};
        setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
        QByteArray bytes(size, '\0');
        const ssize_t got = recv(fd_, bytes.data(), static_cast<std::size_t>(size), MSG_WAITALL);
        return bytes.left(static_cast<int>(std::max<ssize_t>(got, 0)));
    }

private:
    int fd_;
};

constexpr auto limit = 10s;

} // namespace

class LinkLimitsTest : public TestCase
{
    Q_OBJECT

private slots:
    // The undefined-behaviour sanitizer opens a pipe when it meets a class for the
    // first time: let it meet the streams while that works.
    void initTestCase()
    {
        const CapturedStreams streams;
        console::info(L"");
        console::error(L"");
        console::echo("");
    }

    void saysThatThereIsNoSocket()
    {
        const CapturedStreams streams;
        IPCSock socket(std::make_shared<Poller>());
        const NoDescriptorsLeft none;
        QVERIFY(!socket.startup());
        QCOMPARE(streams.error(),
                 QStringLiteral("ControlSocket::Startup socket error : %1\n").arg(EMFILE));
    }

    void saysThatThePortIsTaken()
    {
        const RunningLink first;
        const CapturedStreams streams;
        IPCSock socket(std::make_shared<Poller>());
        socket.setPort(first.port);
        QVERIFY(!socket.startup());
        QCOMPARE(streams.error(),
                 QStringLiteral("ControlSocket::Startup bind error : %1\n").arg(EADDRINUSE));
    }

    void saysThatTheClientWasReset()
    {
        const RunningLink link;
        PreparedPeer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("Hello\nhalf a line"));
        QCOMPARE(peer.receive(23, limit).size(), 23);
        const QString before = link.streams.info();
        peer.reset();
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        QCOMPARE(link.streams.info(),
                 before +
                     QStringLiteral("Error on recv. close control client: %1\n").arg(ECONNRESET));
        QCOMPARE(link.streams.error(), QString());
    }

    void survivesSendingToAClientThatIsGone()
    {
        const CapturedStreams streams;
        const auto poller = std::make_shared<Poller>();
        IPCSock socket(poller);
        const int port = freePort();
        // Qt's own sockets take the signal out of everybody's way.
        const auto before = std::signal(SIGPIPE, SIG_DFL);
        socket.setPort(port);
        QVERIFY(socket.startup());
        PreparedPeer peer;
        QVERIFY(peer.connectTo(port));
        QCOMPARE(poller->wait(Poller::Readable, limit), 1);
        QVERIFY(socket.acceptClient());
        peer.reset();
        // The first is told of the reset, the next ones of the broken pipe.
        for (int i = 0; i < 3; ++i)
            socket.send("X");
        QVERIFY(socket.hasClient());
        std::signal(SIGPIPE, before);
    }

    void doesNotWatchWhatItCannotAccept()
    {
        const CapturedStreams streams;
        const auto poller = std::make_shared<Poller>();
        IPCSock socket(poller);
        const int port = freePort();
        socket.setPort(port);
        QVERIFY(socket.startup());
        PreparedPeer peer;
        {
            const NoDescriptorsLeft none;
            QVERIFY(peer.connectTo(port));
            QCOMPARE(poller->wait(Poller::Readable, limit), 1);
            QVERIFY(!socket.acceptClient());
            QVERIFY(socket.isAcceptingPaused());
            QCOMPARE(poller->wait(Poller::Readable, 0ms), 0);
            socket.resumeAccepting();
            QVERIFY(!socket.isAcceptingPaused());
            QCOMPARE(poller->wait(Poller::Readable, limit), 1);
            QVERIFY(!socket.acceptClient());
            QVERIFY(socket.isAcceptingPaused());
        }
        socket.resumeAccepting();
        QCOMPARE(poller->wait(Poller::Readable, limit), 1);
        QVERIFY(socket.acceptClient());
    }

    void sleepsWhileItCannotAccept()
    {
        const RunningLink link;
        PreparedPeer peer;
        {
            const NoDescriptorsLeft none;
            QVERIFY(peer.connectTo(link.port));
            QVERIFY(peer.send("Hello\n"));
            QCOMPARE(peer.receive(1, 500ms), QByteArray());
            QCOMPARE(errno, EAGAIN);
            // Two for every try, five tries a second.
            QVERIFY2(link.manager->wakeUps() < 20,
                     qPrintable(QString::number(link.manager->wakeUps())));
        }
        QCOMPARE(peer.receive(23, limit), QByteArray("HHHH, You can see me!\n\0", 23));
    }

    void givesUpWhenThereIsNothingToWakeIt()
    {
        const CapturedStreams streams;
        SysManager manager({}, freePort());
        {
            const NoDescriptorsLeft none;
            QVERIFY(!manager.start());
            QCOMPARE(streams.error(),
                     QStringLiteral("ControlSocket::Startup socket error : %1\n").arg(EMFILE));
        }
        QCOMPARE(manager.controlPort().error, EMFILE);
        QVERIFY(manager.start());
        QVERIFY(manager.controlPort().listening);
    }

    void backsOffWhenItCannotWait()
    {
        RunningLink link;
        PreparedPeer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("Hello\n"));
        QCOMPARE(peer.receive(23, limit).size(), 23);
        {
            // poll() refuses to look at more descriptors than may be open.
            rlimit before;
            getrlimit(RLIMIT_NOFILE, &before);
            rlimit none = before;
            none.rlim_cur = 0;
            setrlimit(RLIMIT_NOFILE, &none);
            const quint64 wakeUps = link.manager->wakeUps();
            QVERIFY(peer.send("Hello\n"));
            QCOMPARE(peer.receive(23, limit).size(), 23);
            link.manager->sendRaw("x");
            QCOMPARE(peer.receive(2, limit), QByteArray("x\0", 2));
            QVERIFY(peer.send("Hello\n"));
            QCOMPARE(peer.receive(23, limit).size(), 23);
            QCOMPARE(peer.receive(1, 500ms), QByteArray());
            QVERIFY2(link.manager->wakeUps() - wakeUps < 20,
                     qPrintable(QString::number(link.manager->wakeUps() - wakeUps)));
            setrlimit(RLIMIT_NOFILE, &before);
        }
        QVERIFY(link.streams.error().startsWith(QStringLiteral("select error :%1\n").arg(EINVAL)));
        QVERIFY(peer.send("Hello\n"));
        QCOMPARE(peer.receive(23, limit).size(), 23);
        QVERIFY(link.manager->hasClient());
    }

    void takesDescriptorsBeyondTheUsualThousand()
    {
        rlimit before;
        getrlimit(RLIMIT_NOFILE, &before);
        rlimit more = before;
        more.rlim_cur = std::min<rlim_t>(more.rlim_max, 4096);
        if (more.rlim_cur < 4096)
            QSKIP("this system does not allow as many descriptors");
        setrlimit(RLIMIT_NOFILE, &more);
        std::vector<int> fillers;
        while (fillers.empty() || fillers.back() < 1100)
            fillers.push_back(dup(0));

        const RunningLink link;
        QVERIFY(link.started);
        Peer peer;
        QVERIFY(link.join(&peer));

        for (int fd : fillers)
            close(fd);
        setrlimit(RLIMIT_NOFILE, &before);
    }
};

KOLM_TEST_MAIN(LinkLimitsTest)
#include "tst_link_limits.moc"
