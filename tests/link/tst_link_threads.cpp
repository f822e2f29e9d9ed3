#include "tests/link/running_link.h"
#include "tests/link/semaphore.h"
#include "tests/support/test_case.h"

#include <QRegularExpression>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

// Runs until it is destroyed, then is waited for.
class Running
{
public:
    template <typename Action>
    explicit Running(Action action) : thread_(action)
    {
    }
    ~Running() { thread_.join(); }
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

private:
    std::thread thread_;
};

// Sets the flag at the end of its scope, also when a check fails before.
class SetAtEnd
{
public:
    explicit SetAtEnd(std::atomic<bool> *flag) : flag_(flag) {}
    ~SetAtEnd() { *flag_ = true; }
    SetAtEnd(const SetAtEnd &) = delete;
    SetAtEnd &operator=(const SetAtEnd &) = delete;

private:
    std::atomic<bool> *flag_;
};

} // namespace

// Many threads at the same link; most of its worth is under a thread sanitizer.
class LinkThreadsTest : public TestCase
{
    Q_OBJECT

private slots:
    void sendInTheOrderOfTheEcho()
    {
        constexpr int rounds = 50; // the orders differ seldom when they may
        constexpr int threads = 4;
        constexpr int texts = 200; // so few at a time that none is lost
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        for (int round = 0; round < rounds; ++round) {
            const int before = link.echoed().size();
            {
                std::vector<std::unique_ptr<Running>> running;
                running.reserve(threads);
                for (int thread = 0; thread < threads; ++thread)
                    running.push_back(std::make_unique<Running>([&link, thread] {
                        for (int i = 0; i < texts; ++i)
                            link.manager->sendRaw(QStringLiteral("%1 %2").arg(thread).arg(i));
                    }));
            }
            const QStringList echoed = link.echoed().mid(before);
            QCOMPARE(echoed.size(), threads * texts);
            QStringList received;
            for (int i = 0; i < threads * texts; ++i)
                received << peer.receiveText();
            QCOMPARE(received, echoed);
            for (int thread = 0; thread < threads; ++thread) {
                const QString prefix = QString::number(thread) + ' ';
                const QStringList own = received.filter(QRegularExpression('^' + prefix));
                for (int i = 0; i < texts; ++i)
                    QCOMPARE(own[i], prefix + QString::number(i));
            }
        }
    }

    void sendWhileClientsComeAndGo()
    {
        const RunningLink link;
        std::atomic<bool> stop{false};
        {
            std::vector<std::unique_ptr<Running>> running;
            running.reserve(3);
            for (int thread = 0; thread < 3; ++thread)
                running.push_back(std::make_unique<Running>([&] {
                    while (!stop) {
                        link.manager->requestHmdInfo();
                        link.manager->sendWiredConnect(false);
                        link.manager->linkTo("S", "A");
                        link.manager->disconnect("S", "A");
                        link.manager->setRegisterFirewallPending();
                    }
                }));
            const SetAtEnd end(&stop);
            for (int i = 0; i < 100; ++i) {
                Peer peer;
                QVERIFY(peer.connectTo(link.port));
                if (i % 2)
                    QVERIFY(peer.send("Hello\nHMDINFOBACK\tS;N;true;x\n"));
                if (i % 4)
                    QVERIFY(!peer.receiveText().isNull());
                peer.close();
            }
        }
        const QStringList known{"HMDInfoRequest",
                                "WirelessConnect",
                                "LinkTo S A ",
                                "Disconnect S A ",
                                "RegisterFireWall",
                                "HHHH, You can see me!",
                                ""};
        for (const QString &text : link.echoed())
            QVERIFY2(known.contains(text), qPrintable(text));
        Peer last;
        QVERIFY(last.connectTo(link.port));
        QVERIFY(last.send("Hello\n"));
        QByteArray text;
        do {
            text = last.receiveText();
            QVERIFY(!text.isNull());
        } while (text != "HHHH, You can see me!\n");
    }

    void readWhileTheServerReports()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        std::atomic<bool> stop{false};
        std::atomic<int> torn{0};
        {
            std::vector<std::unique_ptr<Running>> running;
            running.reserve(2);
            for (int thread = 0; thread < 2; ++thread)
                running.push_back(std::make_unique<Running>([&] {
                    while (!stop) {
                        // One report is either there whole or not at all.
                        const HeadsetList list = link.manager->hmdInfoList();
                        for (const HeadsetRecord &headset : list) {
                            if (headset.serial != list[0].serial)
                                ++torn;
                        }
                        if (link.manager->deviceId().size() > 10 ||
                            (link.manager->isDeviceConnected() && !link.manager->hasClient()))
                            ++torn;
                    }
                }));
            const SetAtEnd end(&stop);
            for (int i = 0; i < 300; ++i) {
                const QByteArray serial = QByteArray::number(i);
                const QByteArray item = '~' + serial + ";A;true;x";
                QVERIFY(peer.send("HMDINFOBACK\tdeviceId:" + serial + item.repeated(5) + '\n'));
                if (i % 10 == 0)
                    QVERIFY(peer.greet());
            }
            QVERIFY(peer.greet());
        }
        QCOMPARE(torn.load(), 0);
        QCOMPARE(link.manager->deviceId(), QString("299"));
    }

    // Of what came in one go with a restart, and of what came after it.
    void nothingIsObeyedOnceItEnds()
    {
        Semaphore begun;
        Semaphore mayEnd;
        int restarts = 0;
        RunningLink link([&] {
            ++restarts;
            begun.release();
            mayEnd.acquire();
        });
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(
            peer.send("RESTARTSTEAMVR\nHello\n" + QByteArray("RESTARTSTEAMVR\n").repeated(200)));
        QVERIFY(begun.acquire());
        std::thread end([&link] { link.manager.reset(); });
        // Enough for the end to begin; it cannot get far.
        const bool silent = peer.isSilentFor(50);
        mayEnd.release();
        end.join();
        QVERIFY(silent);
        QVERIFY(peer.waitForEnd());
        QCOMPARE(restarts, 1);
        QCOMPARE(link.echoed().filter("HHHH"), QStringList());
    }
};

KOLM_TEST_MAIN(LinkThreadsTest)
#include "tst_link_threads.moc"
