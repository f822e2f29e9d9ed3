#include "controller/connection_state.h"
#include "tests/support/test_case.h"

#include <QMetaEnum>

using connection::Facts;
using connection::State;
using connection::stateOf;

Q_DECLARE_METATYPE(connection::Facts)

// The state as a function of the facts, and nothing else.
class TestConnectionState : public TestCase
{
    Q_OBJECT

    static Facts at(bool Facts::*only)
    {
        Facts facts;
        facts.server = true;
        facts.*only = true;
        return facts;
    }
    static Facts with(Facts facts, bool Facts::*more)
    {
        facts.*more = true;
        return facts;
    }
    // Every combination of facts, one a bit.
    static Facts combination(int bits)
    {
        bool Facts::*const members[] = {&Facts::wired,    &Facts::server, &Facts::connected,
                                        &Facts::asked,    &Facts::letGo,  &Facts::wanted,
                                        &Facts::expected, &Facts::found};
        Facts facts;
        for (bool Facts::*const member : members) {
            facts.*member = (bits & 1) != 0;
            bits >>= 1;
        }
        return facts;
    }
    static constexpr int combinations = 256;

private slots:
    void theFactsTellTheState_data()
    {
        QTest::addColumn<Facts>("facts");
        QTest::addColumn<State>("state");
        const Facts server = at(&Facts::server);
        const Facts found = at(&Facts::found);
        const Facts wanted = with(found, &Facts::wanted);
        const Facts expected = at(&Facts::expected);
        const Facts linked = with(with(wanted, &Facts::expected), &Facts::connected);

        QTest::newRow("nothing yet") << Facts() << State::NoServer;
        QTest::newRow("the server is there") << server << State::Searching;
        QTest::newRow("one that nobody chose") << found << State::AskingUser;
        QTest::newRow("several, the user was asked")
            << with(found, &Facts::asked) << State::AskingUser;
        QTest::newRow("asked, and all are gone") << at(&Facts::asked) << State::Searching;
        QTest::newRow("asked, and let go before")
            << with(with(found, &Facts::asked), &Facts::letGo) << State::AskingUser;
        QTest::newRow("the one that was chosen") << wanted << State::Linking;
        QTest::newRow("the one that is back") << with(wanted, &Facts::expected) << State::Linking;
        QTest::newRow("connected") << linked << State::Connected;
        QTest::newRow("connected, though nobody found it")
            << at(&Facts::connected) << State::Connected;
        QTest::newRow("dropped out") << expected << State::Lost;
        QTest::newRow("dropped out, others are there")
            << with(expected, &Facts::found) << State::Lost;
        QTest::newRow("let go") << with(linked, &Facts::letGo) << State::LetGo;
        QTest::newRow("let go and out of sight") << at(&Facts::letGo) << State::LetGo;
        Facts dead = linked;
        dead.server = false;
        QTest::newRow("the server is gone") << dead << State::NoServer;
    }
    void theFactsTellTheState()
    {
        QFETCH(Facts, facts);
        QTEST(stateOf(facts), "state");
    }

    void onTheCableItIsTheSame()
    {
        for (int bits = 0; bits < combinations; ++bits) {
            Facts facts = combination(bits);
            facts.wired = false;
            const State wireless = stateOf(facts);
            facts.wired = true;
            QCOMPARE(stateOf(facts), wireless);
        }
    }

    void withoutAServerNothingElseCounts()
    {
        for (int bits = 0; bits < combinations; ++bits) {
            const Facts facts = combination(bits);
            QCOMPARE(stateOf(facts) == State::NoServer, !facts.server);
        }
    }

    void nobodyIsConnectedUnlessTheServerSaysSo()
    {
        for (int bits = 0; bits < combinations; ++bits) {
            const Facts facts = combination(bits);
            if (stateOf(facts) == State::Connected)
                QVERIFY(facts.server && facts.connected && !facts.letGo);
        }
    }

    void theUserIsAskedOnlyAboutWhatIsThere()
    {
        for (int bits = 0; bits < combinations; ++bits) {
            const Facts facts = combination(bits);
            if (stateOf(facts) == State::AskingUser)
                QVERIFY(facts.found);
        }
    }

    void everyStateHasItsFacts()
    {
        QSet<int> seen;
        for (int bits = 0; bits < combinations; ++bits)
            seen.insert(static_cast<int>(stateOf(combination(bits))));
        QCOMPARE(seen.size(), QMetaEnum::fromType<State>().keyCount());
    }
};

KOLM_TEST_MAIN(TestConnectionState)
#include "tst_connection_state.moc"
