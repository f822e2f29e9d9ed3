#include "pc/tcp_table.h"
#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

#include <QSet>

class SimFactsTest : public TestCase
{
    Q_OBJECT

private slots:
    void everyKeyIsThereOnceAndSaysWhatItMeans()
    {
        const SimFacts facts; // nobody's
        QSet<QString> keys;
        for (const AnyFact *fact : facts.all()) {
            const KeyRow &row = fact->row();
            if (row.key.isEmpty())
                continue;
            QVERIFY2(!keys.contains(row.key), qPrintable(row.key));
            keys.insert(row.key);
            QVERIFY2(!row.type.isEmpty(), qPrintable(row.key));
            QVERIFY2(!row.otherwise.isEmpty(), qPrintable(row.key));
            QVERIFY2(!row.meaning.isEmpty(), qPrintable(row.key));
        }
        QVERIFY(keys.contains("acLine"));
        QVERIFY(keys.contains("adapters"));
    }

    void whatIsDueHappensBeforeAFactIsTold()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.timeline.after(10, [&pc] { pc.facts.osVersion.set("8.1"); });
        QCOMPARE(pc.facts.osVersion.get(), QString("10"));
        clock.advance(10);
        QCOMPARE(pc.facts.osVersion.get(), QString("8.1"));
    }

    void aScenarioSetsTheFactsOfThePcThatIsBuilt()
    {
        const Scenario scenario = parsed(R"("pc":{"osVersion":"7sp1"})");
        for (int i = 0; i < 2; ++i)
            QCOMPARE(ScenarioPc(scenario).pc.facts.osVersion.get(), QString("7sp1"));
        QCOMPARE(ScenarioPc(parsed("")).pc.facts.osVersion.get(), QString("10"));
    }

    void onlyAFactThatMayChangeIsOfAMoment_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::addColumn<bool>("may");
        QTest::newRow("power line") << QByteArray(R"("acLine":"fails")") << true;
        QTest::newRow("network") << QByteArray(R"("network":[])") << true;
        QTest::newRow("TCP table") << QByteArray(R"("tcpTable":"fails")") << false;
        QTest::newRow("memory") << QByteArray(R"("memoryBytes":1)") << false;
    }
    void onlyAFactThatMayChangeIsOfAMoment()
    {
        QFETCH(QByteArray, member);
        QFETCH(bool, may);
        QString error;
        parsed("\"at\":[{\"seconds\":1," + member + "}]", &error);
        QCOMPARE(error.isEmpty(), may);
        parsed("\"pc\":{" + member + '}', &error);
        QCOMPARE(error, QString());
    }

    void theTcpTableAnswersOrFails_data()
    {
        QTest::addColumn<QByteArray>("word");
        QTest::addColumn<int>("failure");
        QTest::newRow("answers") << QByteArray("answers") << int(tcp_table::Table::None);
        QTest::newRow("no memory") << QByteArray("no memory") << int(tcp_table::Table::NoMemory);
        QTest::newRow("fails") << QByteArray("fails") << int(tcp_table::Table::NotAnswered);
    }
    void theTcpTableAnswersOrFails()
    {
        QFETCH(QByteArray, word);
        QFETCH(int, failure);
        const ScenarioPc world(parsed("\"pc\":{\"tcpTable\":\"" + word +
                                      "\",\"start\":[{\"name\":\"a\",\"ports\":[80]}]}"));
        const tcp_table::Table table = tcp_table::read();
        QCOMPARE(int(table.failure), failure);
        QCOMPARE(table.rows.size(),
                 table.failure == tcp_table::Table::None ? size_t(1) : size_t(0));
    }
};

KOLM_TEST_MAIN(SimFactsTest)
#include "tst_sim_facts.moc"
