#include "checks/assessment.h"
#include "tests/support/test_case.h"

using namespace checks;
using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

Found portsTaken(const Facts &facts)
{
    if (!facts.portHolders)
        return std::nullopt;
    std::vector<Evidence> evidence;
    for (const QString &name : *facts.portHolders)
        evidence.push_back({"holder", name});
    return evidence;
}

Found always(const Facts &)
{
    return std::vector<Evidence>();
}

Found never(const Facts &)
{
    return std::nullopt;
}

Check row(const char *id, Found (*find)(const Facts &))
{
    Check check;
    check.id = id;
    check.find = find;
    return check;
}

Check row(const char *id, const std::vector<const char *> &causes,
          Found (*find)(const Facts &) = always)
{
    Check check = row(id, find);
    check.causes = causes;
    return check;
}

Check row(const char *id, Stage blocks, Severity severity = Severity::Warning)
{
    Check check = row(id, always);
    check.blocks = blocks;
    check.severity = severity;
    return check;
}

QStringList ids(const Assessment &assessment)
{
    QStringList result;
    for (const Finding &finding : assessment.findings)
        result.append(finding.check->id);
    return result;
}

QStringList found(const Table &table, const Facts &facts = {})
{
    return ids(assess(table, facts, {}, 0ms));
}

} // namespace

class TestAssessment : public TestCase
{
    Q_OBJECT

private slots:
    void aRowSpeaksWhenItFindsSomethingAndSaysByWhat()
    {
        const Table table = {row("ports", portsTaken)};
        QCOMPARE(found(table), QStringList());
        Facts facts;
        facts.portHolders.emplace(QStringList{"node.exe", "nginx.exe"});
        const Assessment assessment = assess(table, facts, {}, 0ms);
        QCOMPARE(ids(assessment), QStringList{"ports"});
        QCOMPARE(assessment.findings[0].check, &table[0]);
        const std::vector<Evidence> &evidence = assessment.findings[0].evidence;
        QCOMPARE(evidence.size(), size_t(2));
        QCOMPARE(QString(evidence[1].label), QString("holder"));
        QCOMPARE(evidence[1].value, QString("nginx.exe"));
    }

    void whatIsExplainedStaysSilent_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("cause and effect") << "cause+effect" << QStringList{"cause"};
        QTest::newRow("the effect alone") << "effect" << QStringList{"effect"};
        QTest::newRow("of a chain the first") << "cause+effect+farther" << QStringList{"cause"};
        QTest::newRow("a chain without its first") << "effect+farther" << QStringList{"effect"};
        QTest::newRow("a chain with a gap") << "cause+farther" << QStringList({"cause", "farther"});
        QTest::newRow("one of two causes") << "other+effect" << QStringList{"other"};
    }
    void whatIsExplainedStaysSilent()
    {
        QFETCH(QString, which);
        const QStringList there = which.split('+');
        const auto finds = [&](const char *id) { return there.contains(id) ? always : never; };
        const Table table = {row("cause", finds("cause")), row("other", finds("other")),
                             row("effect", {"cause", "other"}, finds("effect")),
                             row("farther", {"effect"}, finds("farther"))};
        QTEST(found(table), "shown");
    }

    void nobodyIsBotheredBeforeItHasHeld()
    {
        Check check = row("ports", portsTaken);
        check.hold = 10s;
        const Table table = {check};
        Facts taken;
        taken.portHolders.emplace();

        Assessment now = assess(table, taken, {}, 5s);
        QCOMPARE(now.heldSince[0], std::optional<milliseconds>(5s));
        QCOMPARE(ids(now), QStringList());
        now = assess(table, taken, now.heldSince, 14999ms);
        QCOMPARE(ids(now), QStringList());
        now = assess(table, taken, now.heldSince, 15s);
        QCOMPARE(ids(now), QStringList{"ports"});
        now = assess(table, Facts(), now.heldSince, 16s);
        QCOMPARE(ids(now), QStringList());
        QCOMPARE(now.heldSince[0], std::optional<milliseconds>());
        // From the beginning.
        now = assess(table, taken, now.heldSince, 17s);
        QCOMPARE(ids(now), QStringList());
        QCOMPARE(ids(assess(table, taken, now.heldSince, 27s)), QStringList{"ports"});
    }

    // Otherwise it would come up at the moment in which its cause is removed.
    void anEffectBeginsToHoldWhenItsCauseIsGone()
    {
        Check effect = row("effect", {"ports"});
        effect.hold = 10s;
        const Table table = {row("ports", portsTaken), effect};
        Facts facts;
        facts.portHolders.emplace();
        Assessment now = assess(table, facts, {}, 0s);
        now = assess(table, facts, now.heldSince, 60s);
        QCOMPARE(ids(now), QStringList{"ports"});
        facts.portHolders.reset();
        now = assess(table, facts, now.heldSince, 61s);
        QCOMPARE(ids(now), QStringList());
        QCOMPARE(ids(assess(table, facts, now.heldSince, 71s)), QStringList{"effect"});
    }

    // A cause that has not held long enough to be shown explains already.
    void aCauseExplainsBeforeItIsShown()
    {
        Check cause = row("cause", always);
        cause.hold = 10s;
        const Table table = {cause, row("effect", {"cause"})};
        const Assessment now = assess(table, {}, {}, 0s);
        QCOMPARE(ids(now), QStringList());
        QCOMPARE(ids(assess(table, {}, now.heldSince, 10s)), QStringList{"cause"});
    }

    void theFirstCauseComesFirst_data()
    {
        QTest::addColumn<int>("reached"); // below 0: nobody knows
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("nothing known")
            << -1 << QStringList({"steam", "server", "server-too", "linked", "grave", "any"});
        QTest::newRow("nothing reached")
            << 0 << QStringList({"steam", "server", "server-too", "linked", "grave", "any"});
        // What blocks a stage that is reached keeps the connection from nothing.
        QTest::newRow("Steam runs")
            << 1 << QStringList({"server", "server-too", "linked", "grave", "any", "steam"});
        QTest::newRow("the server is there")
            << 3 << QStringList({"linked", "server", "grave", "server-too", "any", "steam"});
        QTest::newRow("connected")
            << 5 << QStringList({"server", "grave", "linked", "server-too", "any", "steam"});
    }
    void theFirstCauseComesFirst()
    {
        QFETCH(int, reached);
        const Table table = {row("linked", Stage::Linked),
                             row("server-too", Stage::Server),
                             row("server", Stage::Server, Severity::Error),
                             row("any", always),
                             row("steam", Stage::Steam, Severity::Hint),
                             row("grave", Stage::Steam, Severity::Error)};
        Table withoutStage = table;
        withoutStage[5].blocks.reset();
        Facts facts;
        if (reached >= 0)
            facts.reached = reached;
        QTEST(found(withoutStage, facts), "shown");
    }

    void factsSayHowFarItIs()
    {
        Facts facts;
        QVERIFY(!facts.has(Stage::Steam));
        facts.reached = 0;
        QVERIFY(!facts.has(Stage::Steam));
        facts.reached = 2;
        QVERIFY(facts.has(Stage::Steam));
        QVERIFY(facts.has(Stage::SteamVR));
        QVERIFY(!facts.has(Stage::Server));
        facts.reached = stageCount;
        QVERIFY(facts.has(Stage::Linked));
    }
};

KOLM_TEST_MAIN(TestAssessment)
#include "tst_assessment.moc"
