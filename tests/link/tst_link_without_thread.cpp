#include "base/threads.h"
#include "link/sys_manager.h"
#include "tests/link/running_link.h"
#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"

#include <QTcpSocket>

// The link where the system has no thread for its worker.
class TestLinkWithoutThread : public TestCase
{
    Q_OBJECT

    static bool isListenedOn(int port)
    {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", static_cast<quint16>(port));
        return socket.waitForConnected();
    }

private slots:
    void itIsSilentAndNobodyIsLeftWaitingAtTheDoor()
    {
        const CapturedStreams streams;
        const int port = freePort();
        SysManager manager({}, port);
        {
            const threads::NoneToHave none;
            announce("no thread for the link to the streaming server: Resource temporarily "
                     "unavailable");
            QVERIFY(!manager.start());
        }
        QVERIFY(!manager.controlPort().listening);
        QVERIFY(manager.controlPort().error != 0);
        QCOMPARE(threads::missing(), QStringList("the link to the streaming server"));
        QVERIFY(!isListenedOn(port));
        manager.requestHmdInfo();
        QVERIFY(!manager.hasClient());
        QCOMPARE(manager.hmdInfoList().size(), 1);
    }

    void itCanBeStartedWhenThereIsOne()
    {
        const CapturedStreams streams;
        const int port = freePort();
        SysManager manager({}, port);
        {
            const threads::NoneToHave none;
            announce("no thread for the link to the streaming server: Resource temporarily "
                     "unavailable");
            QVERIFY(!manager.start());
        }
        QVERIFY(manager.start());
        QVERIFY(manager.controlPort().listening);
        QVERIFY(isListenedOn(port));
        QCOMPARE(threads::missing(), QStringList());
    }

    void cleanup()
    {
        threads::noteBegun("the link to the streaming server");
        TestCase::cleanup();
    }
};

KOLM_TEST_MAIN(TestLinkWithoutThread)
#include "tst_link_without_thread.moc"
