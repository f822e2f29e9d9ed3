#include "controller/connection_road.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

class TestConnectionRoad : public TestCase
{
    Q_OBJECT

private slots:
    void stagesAreAnnouncedInTheirOrderAndOnce()
    {
        ConnectionRoad road;
        QSignalSpy changes(&road, &ConnectionRoad::stageChanged);
        const QDateTime start({2024, 1, 1}, {12, 0});
        road.update({}, start);
        QVERIFY(changes.isEmpty());
        QCOMPARE(road.firstMissing(), int(ConnectionRoad::Steam));
        QCOMPARE(road.since(ConnectionRoad::Steam), start);

        road.update({true, true, false, false, false}, start.addSecs(5));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(changes[0][0].toInt(), int(ConnectionRoad::Steam));
        QCOMPARE(changes[1][0].toInt(), int(ConnectionRoad::SteamVR));
        QCOMPARE(road.firstMissing(), int(ConnectionRoad::Server));
        road.update({true, true, false, false, false}, start.addSecs(10));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(road.since(ConnectionRoad::SteamVR), start.addSecs(5));

        road.update({true, true, true, true, true}, start.addSecs(15));
        QCOMPARE(road.firstMissing(), ConnectionRoad::stageCount);
    }

    void aStageThatIsLostIsAnnouncedToo()
    {
        ConnectionRoad road;
        const QDateTime start({2024, 1, 1}, {12, 0});
        road.update({true, true, true, true, true}, start);
        QSignalSpy changes(&road, &ConnectionRoad::stageChanged);
        road.update({true, true, false, true, true}, start.addSecs(1));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes[0][0].toInt(), int(ConnectionRoad::Server));
        QCOMPARE(changes[0][1].toBool(), false);
        QCOMPARE(road.since(ConnectionRoad::Server), start.addSecs(1));
        QCOMPARE(road.firstMissing(), int(ConnectionRoad::Server));
    }

    void newsOfAnUpdateIsToldOnceAndOnlyWhenThereIsSome()
    {
        ConnectionRoad road;
        QSignalSpy updates(&road, &ConnectionRoad::updated);
        const QDateTime start({2024, 1, 1}, {12, 0});
        road.update({}, start);
        QCOMPARE(updates.size(), 1);
        road.update({}, start.addSecs(5));
        QCOMPARE(updates.size(), 1);
        road.update({true, true, false, false, false}, start.addSecs(10));
        QCOMPARE(updates.size(), 2);
    }

    void everyStageHasItsWords()
    {
        QSet<QString> words;
        for (int stage = 0; stage < ConnectionRoad::stageCount; ++stage)
            words.insert(ConnectionRoad::describe(ConnectionRoad::Stage(stage)));
        QCOMPARE(words.size(), ConnectionRoad::stageCount);
        QVERIFY(!words.contains(QString()));
    }
};

KOLM_TEST_MAIN(TestConnectionRoad)
#include "tst_connection_road.moc"
