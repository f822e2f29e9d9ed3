#include "link/poller.h"
#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"

#include <chrono>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

using socket_api::Handle;

// A socket that is always writable, and readable once it was poked.
class Pair
{
public:
    Pair()
    {
        socket_api::initialise();
        if (auto made = socket_api::makeWakeUpPair())
            pair_ = std::move(*made);
    }

    bool isMade() const { return bool(pair_.sender); }
    Handle end() const { return pair_.receiver.get(); }
    void poke() { socket_api::send(pair_.sender.get(), "", 1); }

private:
    socket_api::WakeUpPair pair_;
};

constexpr auto limit = 10s;

class PollerTest : public TestCase
{
    Q_OBJECT

private slots:
    void seesNothingAtFirst()
    {
        const Pair pair;
        QVERIFY(pair.isMade());
        const Poller poller;
        for (int kind : {0, 1, 2, 3, 4, 7})
            QVERIFY(!poller.isSet(pair.end(), kind));
        QVERIFY(!poller.wokenUp());
    }

    void seesWhichSocketIsReadable()
    {
        Pair poked;
        const Pair quiet;
        Poller poller;
        poller.add(quiet.end());
        poller.add(poked.end());
        QCOMPARE(poller.wait(Poller::Readable, 0ms), 0);
        QVERIFY(!poller.isSet(poked.end(), Poller::Readable));
        poked.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 1);
        QVERIFY(poller.isSet(poked.end(), Poller::Readable));
        QVERIFY(!poller.isSet(quiet.end(), Poller::Readable));
    }

    void forgetsTheLastWait()
    {
        Pair pair;
        Poller poller;
        poller.add(pair.end());
        pair.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 1);
        char byte;
        QCOMPARE(socket_api::receive(pair.end(), &byte, 1), std::ptrdiff_t(1));
        QVERIFY(poller.isSet(pair.end(), Poller::Readable));
        QCOMPARE(poller.wait(Poller::Readable, 0ms), 0);
        QVERIFY(!poller.isSet(pair.end(), Poller::Readable));
    }

    void holdsASocketOnce()
    {
        Pair pair;
        const Pair other;
        Poller poller;
        poller.add(other.end());
        poller.add(pair.end());
        poller.add(pair.end());
        pair.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 1);
        poller.remove(pair.end());
        QCOMPARE(poller.wait(Poller::Readable, 0ms), 0);
        QVERIFY(!poller.isSet(pair.end(), Poller::Readable));
    }

    void keepsTheOthersWhenOneIsRemoved()
    {
        Pair first;
        Pair second;
        Pair third;
        Poller poller;
        for (Pair *pair : {&first, &second, &third}) {
            poller.add(pair->end());
            pair->poke();
        }
        poller.remove(first.end());
        QCOMPARE(poller.wait(Poller::Readable, limit), 2);
        QVERIFY(!poller.isSet(first.end(), Poller::Readable));
        QVERIFY(poller.isSet(second.end(), Poller::Readable));
        QVERIFY(poller.isSet(third.end(), Poller::Readable));
    }

    void ignoresTheRemovalOfAStranger()
    {
        Pair pair;
        const Pair stranger;
        Poller poller;
        poller.remove(stranger.end());
        poller.add(pair.end());
        poller.remove(stranger.end());
        pair.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 1);
    }

    void ignoresTheSixtyFifthSocket()
    {
        std::vector<std::unique_ptr<Pair>> pairs;
        Poller poller;
        for (int i = 0; i < 65; ++i) {
            pairs.push_back(std::make_unique<Pair>());
            QVERIFY(pairs.back()->isMade());
            poller.add(pairs.back()->end());
            pairs.back()->poke();
        }
        QCOMPARE(poller.wait(Poller::Readable, limit), 64);
        QVERIFY(poller.isSet(pairs[0]->end(), Poller::Readable));
        QVERIFY(poller.isSet(pairs[63]->end(), Poller::Readable));
        QVERIFY(!poller.isSet(pairs[64]->end(), Poller::Readable));

        poller.remove(pairs[0]->end());
        poller.add(pairs[64]->end());
        QCOMPARE(poller.wait(Poller::Readable, limit), 64);
        QVERIFY(!poller.isSet(pairs[0]->end(), Poller::Readable));
        QVERIFY(poller.isSet(pairs[64]->end(), Poller::Readable));
    }

    void answersForEachKind_data()
    {
        QTest::addColumn<int>("asked");
        QTest::addColumn<bool>("poked");
        QTest::addColumn<QList<int>>("kindsSet");
        QTest::newRow("readable, no") << 1 << false << QList<int>{};
        QTest::newRow("readable, yes") << 1 << true << QList<int>{1};
        QTest::newRow("writable") << 2 << false << QList<int>{2};
        QTest::newRow("exceptional") << 4 << true << QList<int>{};
        QTest::newRow("readable and writable share one result") << 3 << false << QList<int>{1, 2};
        QTest::newRow("readable and exceptional share one result") << 5 << true << QList<int>{1, 4};
        QTest::newRow("all kinds share one result") << 7 << false << QList<int>{1, 2, 4};
    }

    void answersForEachKind()
    {
        QFETCH(int, asked);
        QFETCH(bool, poked);
        QFETCH(QList<int>, kindsSet);
        Pair pair;
        Poller poller;
        poller.add(pair.end());
        // The results of an earlier wait must not shine through.
        pair.poke();
        poller.wait(Poller::Readable | Poller::Writable | Poller::Exceptional, limit);
        char byte;
        QCOMPARE(socket_api::receive(pair.end(), &byte, 1), std::ptrdiff_t(1));

        if (poked)
            pair.poke();
        poller.wait(asked, 0ms);
        for (int kind : {0, 1, 2, 3, 4, 8})
            QCOMPARE(poller.isSet(pair.end(), kind), kindsSet.contains(kind));
    }

    void countsEachKindOfReadiness()
    {
        Pair pair;
        const Pair other;
        Poller poller;
        poller.add(pair.end());
        poller.add(other.end());
        pair.poke();
        QCOMPARE(poller.wait(Poller::Readable | Poller::Writable, limit), 3);
    }

    void isWokenUpFromOutsideTheSet()
    {
        const Pair quiet;
        Pair waker;
        Poller poller;
        poller.add(quiet.end());
        poller.setWakeUp(waker.end());
        QCOMPARE(poller.wait(Poller::Readable, 0ms), 0);
        QVERIFY(!poller.wokenUp());
        waker.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 0);
        QVERIFY(poller.wokenUp());
        QVERIFY(!poller.isSet(waker.end(), Poller::Readable));
    }

    void isWokenUpWithAFullSet()
    {
        std::vector<std::unique_ptr<Pair>> pairs;
        Pair waker;
        Poller poller;
        poller.setWakeUp(waker.end());
        for (int i = 0; i < 64; ++i) {
            pairs.push_back(std::make_unique<Pair>());
            poller.add(pairs.back()->end());
        }
        waker.poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 0);
        QVERIFY(poller.wokenUp());
        pairs[63]->poke();
        QCOMPARE(poller.wait(Poller::Readable, limit), 1);
    }

    void isWokenUpByRoomForWriting()
    {
        const Pair quiet;
        const Pair writable;
        Poller poller;
        poller.add(quiet.end());
        poller.setWriteTo(writable.end());
        QCOMPARE(poller.wait(Poller::Readable), 0);
        QVERIFY(!poller.wokenUp());
        QVERIFY(!poller.isSet(writable.end(), Poller::Writable));
    }

    void reportsABrokenSocketAndCallsAllReady()
    {
        const CapturedStreams streams;
        const Pair quiet;
        const Handle broken = socket_api::openTcp().get(); // closed at once
        char byte;
        QCOMPARE(socket_api::receive(broken, &byte, 1), std::ptrdiff_t(-1));
        const int error = socket_api::lastError();

        Poller poller;
        poller.add(quiet.end());
        poller.add(broken);
        QCOMPARE(poller.wait(Poller::Readable, limit), -1);
        QCOMPARE(streams.error(), QStringLiteral("select error :%1\n").arg(error));
        QCOMPARE(streams.info(), QString());
        QVERIFY(poller.isSet(broken, Poller::Readable));
        QVERIFY(poller.isSet(quiet.end(), Poller::Readable));
        QVERIFY(!poller.isSet(broken, Poller::Writable));
    }
};

KOLM_TEST_MAIN(PollerTest)
#include "tst_poller.moc"
