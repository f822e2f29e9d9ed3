#include "controller/connection_stages.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

class TestConnectionStages : public TestCase
{
    Q_OBJECT

private slots:
    void stagesAreAnnouncedInTheirOrderAndOnce()
    {
        ConnectionStages stages;
        QSignalSpy changes(&stages, &ConnectionStages::stageChanged);
        const QDateTime start({2024, 1, 1}, {12, 0});
        stages.update({}, start);
        QVERIFY(changes.isEmpty());
        QCOMPARE(stages.firstMissing(), int(Stage::Steam));
        QCOMPARE(stages.since(Stage::Steam), start);

        stages.update({true, true, false, false, false}, start.addSecs(5));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(changes[0][0].toInt(), int(Stage::Steam));
        QCOMPARE(changes[1][0].toInt(), int(Stage::SteamVR));
        QCOMPARE(stages.firstMissing(), int(Stage::Server));
        stages.update({true, true, false, false, false}, start.addSecs(10));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(stages.since(Stage::SteamVR), start.addSecs(5));

        stages.update({true, true, true, true, true}, start.addSecs(15));
        QCOMPARE(stages.firstMissing(), stageCount);
    }

    void aStageThatIsLostIsAnnouncedToo()
    {
        ConnectionStages stages;
        const QDateTime start({2024, 1, 1}, {12, 0});
        stages.update({true, true, true, true, true}, start);
        QSignalSpy changes(&stages, &ConnectionStages::stageChanged);
        stages.update({true, true, false, true, true}, start.addSecs(1));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes[0][0].toInt(), int(Stage::Server));
        QCOMPARE(changes[0][1].toBool(), false);
        QCOMPARE(stages.since(Stage::Server), start.addSecs(1));
        QCOMPARE(stages.firstMissing(), int(Stage::Server));
    }

    void newsOfAnUpdateIsToldOnceAndOnlyWhenThereIsSome()
    {
        ConnectionStages stages;
        QSignalSpy updates(&stages, &ConnectionStages::updated);
        const QDateTime start({2024, 1, 1}, {12, 0});
        stages.update({}, start);
        QCOMPARE(updates.size(), 1);
        stages.update({}, start.addSecs(5));
        QCOMPARE(updates.size(), 1);
        stages.update({true, true, false, false, false}, start.addSecs(10));
        QCOMPARE(updates.size(), 2);
    }

    void everyStageHasItsWords()
    {
        QSet<QString> words;
        for (int stage = 0; stage < stageCount; ++stage)
            words.insert(ConnectionStages::describe(Stage(stage)));
        QCOMPARE(words.size(), stageCount);
        QVERIFY(!words.contains(QString()));
    }
};

KOLM_TEST_MAIN(TestConnectionStages)
#include "tst_connection_stages.moc"
