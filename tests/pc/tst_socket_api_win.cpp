#include <winsock2.h>

#include "pc/socket_api.h"
#include "tests/support/test_case.h"

#include <functional>
#include <utility>

using namespace std::chrono_literals;
using socket_api::Socket;

namespace {

// What children get: the sockets are made so, and nothing is changed about them
// later that could come too late.
bool isInheritable(const Socket &socket)
{
    DWORD flags = HANDLE_FLAG_INHERIT;
    GetHandleInformation(reinterpret_cast<HANDLE>(socket.get()), &flags);
    return (flags & HANDLE_FLAG_INHERIT) != 0;
}

int typeOf(const Socket &socket)
{
    int type = 0;
    int size = sizeof type;
    getsockopt(socket.get(), SOL_SOCKET, SO_TYPE, reinterpret_cast<char *>(&type), &size);
    return type;
}

bool wakes(const Socket &receiver)
{
    socket_api::Set none;
    socket_api::WaitOptions options;
    options.wakeUp = receiver.get();
    options.limit = 0ms;
    return socket_api::wait(&none, options).wokenUp;
}

} // namespace

class SocketApiWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { socket_api::initialise(); }

    void noSocketIsForChildren()
    {
        const Socket listener = socket_api::openTcp();
        QVERIFY(listener);
        QVERIFY(!isInheritable(listener));
        const std::optional<socket_api::WakeUpPair> pair = socket_api::makeWakeUpPair();
        QVERIFY(pair);
        QVERIFY(!isInheritable(pair->sender));
        QVERIFY(!isInheritable(pair->receiver));
    }

    // The filters of security programs drop datagrams, but not a part of a
    // connection.
    void aWakeUpIsNothingThatGetsLost()
    {
        const std::optional<socket_api::WakeUpPair> pair = socket_api::makeWakeUpPair();
        QVERIFY(pair);
        QCOMPARE(typeOf(pair->sender), SOCK_STREAM);
        QCOMPARE(typeOf(pair->receiver), SOCK_STREAM);
    }

    void whatIsSentWakesOnceItIsThere()
    {
        const std::optional<socket_api::WakeUpPair> pair = socket_api::makeWakeUpPair();
        QVERIFY(pair);
        for (int round = 0; round < 3; ++round) {
            QVERIFY(!wakes(pair->receiver));
            QCOMPARE(socket_api::send(pair->sender.get(), "", 1), std::ptrdiff_t(1));
            QTRY_VERIFY(wakes(pair->receiver));
            char got = 1;
            QCOMPARE(socket_api::receive(pair->receiver.get(), &got, 1), std::ptrdiff_t(1));
        }
        char got = 1;
        QCOMPARE(socket_api::receive(pair->receiver.get(), &got, 1), std::ptrdiff_t(-1));
        QVERIFY(socket_api::isWouldBlock(socket_api::lastError()));
    }

    // One port of the listener is all that a pair takes while it is made.
    void manyPairsHaveNothingToDoWithEachOther()
    {
        std::vector<socket_api::WakeUpPair> pairs;
        for (int i = 0; i < 20; ++i) {
            std::optional<socket_api::WakeUpPair> made = socket_api::makeWakeUpPair();
            QVERIFY(made);
            pairs.push_back(std::move(*made));
        }
        QCOMPARE(socket_api::send(pairs[7].sender.get(), "", 1), std::ptrdiff_t(1));
        QTRY_VERIFY(wakes(pairs[7].receiver));
        for (std::size_t i = 0; i < pairs.size(); ++i)
            QCOMPARE(wakes(pairs[i].receiver), i == 7);
    }
};

KOLM_TEST_MAIN(SocketApiWinTest)
#include "tst_socket_api_win.moc"
