#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

// What an earlier server said stays known; who said it does as well.
class TestWhoReported : public TestCase
{
    Q_OBJECT

    static constexpr bool usb = true;
    static constexpr bool list = false;

private slots:
    void nobodyReportedWithoutAServer()
    {
        const RunningLink link;
        QVERIFY(!link.manager->hasReported(usb));
        QVERIFY(!link.manager->hasReported(list));
    }

    void eachKindOfReportCountsForItself()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        QVERIFY(!link.manager->hasReported(usb));
        QVERIFY(!link.manager->hasReported(list));
        QVERIFY(peer.send("DeviceConnectBack\tfalse\n"));
        QVERIFY(eventually([&] { return link.manager->hasReported(usb); }));
        QVERIFY(!link.manager->hasReported(list));
        QVERIFY(peer.send("HMDINFOBACK\n"));
        QVERIFY(eventually([&] { return link.manager->hasReported(list); }));
        QVERIFY(link.manager->hasReported(usb));
    }

    void aServerThatLeftReportsNoMore()
    {
        const RunningLink link;
        {
            Peer peer;
            QVERIFY(link.join(&peer));
            QVERIFY(peer.send("DeviceConnectBack\ttrue\nHMDINFOBACK\tS;N;true;x\n"));
            QVERIFY(eventually([&] { return link.manager->hasReported(list); }));
            peer.close();
        }
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        QVERIFY(!link.manager->hasReported(usb));
        QVERIFY(!link.manager->hasReported(list));
    }

    void theNextServerHasToReportItself()
    {
        const RunningLink link;
        Peer first;
        QVERIFY(link.join(&first));
        QVERIFY(first.send("DeviceConnectBack\ttrue\nHMDINFOBACK\tS;N;true;x\n"));
        QVERIFY(eventually([&] { return link.manager->hasReported(list); }));

        Peer next; // replaces the first
        QVERIFY(link.join(&next));
        QVERIFY(link.manager->isDeviceConnected()); // kept
        QVERIFY(!link.manager->hasReported(usb));
        QVERIFY(!link.manager->hasReported(list));
        QVERIFY(next.send("HMDINFOBACK\n"));
        QVERIFY(eventually([&] { return link.manager->hasReported(list); }));
        QVERIFY(!link.manager->hasReported(usb));
    }
};

KOLM_TEST_MAIN(TestWhoReported)
#include "tst_who_reported.moc"
