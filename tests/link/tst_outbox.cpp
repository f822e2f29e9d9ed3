#include "link/outbox.h"
#include "link/poller.h"
#include "tests/support/test_case.h"

using namespace std::chrono_literals;

namespace {

std::vector<std::string> texts(const std::vector<Outbox::Message> &messages)
{
    std::vector<std::string> list;
    list.reserve(messages.size());
    for (const Outbox::Message &message : messages)
        list.push_back(message.text);
    return list;
}

using Texts = std::vector<std::string>;

// Whether the worker would be woken now.
bool wakes(const Outbox &outbox)
{
    Poller poller;
    poller.setWakeUp(outbox.wakeUpHandle());
    poller.wait(Poller::Readable, 0ms);
    return poller.wokenUp();
}

} // namespace

class OutboxTest : public TestCase
{
    Q_OBJECT

private slots:
    void keepsTheOrder()
    {
        Outbox outbox;
        outbox.post({1, "a"});
        outbox.post({2, "b"});
        outbox.post({1, ""});
        const std::vector<Outbox::Message> messages = outbox.take();
        QVERIFY(texts(messages) == (Texts{"a", "b", ""}));
        QCOMPARE(messages[0].client, quint64(1));
        QCOMPARE(messages[1].client, quint64(2));
    }

    void isEmptyAfterwards()
    {
        Outbox outbox;
        QVERIFY(outbox.take().empty());
        outbox.post({1, "a"});
        QCOMPARE(outbox.take().size(), std::size_t(1));
        QVERIFY(outbox.take().empty());
    }

    void holdsAThousandTexts()
    {
        Outbox outbox;
        for (int i = 0; i < 1500; ++i)
            outbox.post({1, std::to_string(i)});
        const Texts held = texts(outbox.take());
        QCOMPARE(held.size(), std::size_t(1000));
        QCOMPARE(held.front(), std::string("0"));
        QCOMPARE(held.back(), std::string("999"));
        outbox.post({1, "next"});
        QVERIFY(texts(outbox.take()) == Texts{"next"});
    }

    void isQuietUntilSomebodyWakes()
    {
        Outbox outbox;
        QVERIFY(outbox.open());
        QVERIFY(!wakes(outbox));
        outbox.post({1, "a"});
        QVERIFY(!wakes(outbox));
        outbox.wakeWorker();
        QVERIFY(wakes(outbox));
        // Looking does not change it, nor does taking.
        outbox.take();
        QVERIFY(wakes(outbox));
        outbox.acknowledge();
        QVERIFY(!wakes(outbox));
    }

    void wakesOnceForManyCalls()
    {
        Outbox outbox;
        QVERIFY(outbox.open());
        // More than any buffer of the system would hold.
        for (int i = 0; i < 100000; ++i)
            outbox.wakeWorker();
        char byte;
        QCOMPARE(socket_api::receive(outbox.wakeUpHandle(), &byte, 1), std::ptrdiff_t(1));
        QVERIFY(!wakes(outbox));
    }

    void wakesAgainAfterItWasAcknowledged()
    {
        Outbox outbox;
        QVERIFY(outbox.open());
        for (int round = 0; round < 3; ++round) {
            outbox.wakeWorker();
            QVERIFY(wakes(outbox));
            outbox.acknowledge();
            QVERIFY(!wakes(outbox));
        }
    }

    void opensOnce()
    {
        Outbox outbox;
        QCOMPARE(outbox.wakeUpHandle(), socket_api::invalidHandle);
        QVERIFY(outbox.open());
        const socket_api::Handle handle = outbox.wakeUpHandle();
        QVERIFY(outbox.open());
        QCOMPARE(outbox.wakeUpHandle(), handle);
    }

    void waitsUntilItIsWoken()
    {
        Outbox outbox;
        QVERIFY(outbox.open());
        outbox.wakeWorker();
        // Would take longer than the test may.
        outbox.waitWithoutSockets(1h);
        QVERIFY(wakes(outbox));
    }

    void waitsNoLongerThanAsked()
    {
        Outbox outbox;
        QVERIFY(outbox.open());
        outbox.waitWithoutSockets(1ms);
        QVERIFY(!wakes(outbox));
    }
};

KOLM_TEST_MAIN(OutboxTest)
#include "tst_outbox.moc"
