#include "link/sys_manager.h"
#include "tests/link/peer.h"
#include "tests/link/semaphore.h"
#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"

namespace {

constexpr int controlPort = 9932;

} // namespace

// The only test program that takes the real port.
class ControlPortTest : public TestCase
{
    Q_OBJECT

private slots:
    void isTheDefault()
    {
        const CapturedStreams streams;
        SysManager manager({});
        QVERIFY2(manager.start(), "somebody else has port 9932");
        Peer peer;
        QVERIFY(peer.connectTo(controlPort));
        QVERIFY(peer.greet());
        QCOMPARE(streams.info(),
                 QString("ControlSocket::Startup Successfully bound to 127.0.0.1 9932\n"));
    }

    void isFreeAgainAtOnce()
    {
        for (int round = 0; round < 3; ++round) {
            const CapturedStreams streams;
            SysManager manager({});
            QVERIFY(manager.start());
            Peer peer;
            QVERIFY(peer.connectTo(controlPort));
            QVERIFY(peer.greet());
        }
    }

    // Last, as the instance lives until the program ends; its streams are captured
    // as long.
    void isServedByTheProductsInstance()
    {
        static const CapturedStreams streams;
        static Semaphore restarts;
        SysManager::setRestartHandler([] { restarts.release(); });
        SysManager &manager = SysManager::instance();
        QCOMPARE(logged(), QStringList{"This is the construction of singleton"});
        QCOMPARE(streams.info(),
                 QString("ControlSocket::Startup Successfully bound to 127.0.0.1 9932\n"));
        QCOMPARE(&SysManager::instance(), &manager);
        QCOMPARE(logged().size(), 1);

        Peer peer;
        QVERIFY(peer.connectTo(controlPort));
        QVERIFY(peer.send("RESTARTSTEAMVR\n"));
        QVERIFY(restarts.acquire());
        QVERIFY(peer.greet());
        QVERIFY(manager.hasClient());
    }
};

KOLM_TEST_MAIN(ControlPortTest)
#include "tst_control_port.moc"
