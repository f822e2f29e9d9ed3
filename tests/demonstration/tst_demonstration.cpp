#include "base/manual_clock.h"
#include "demonstration/demonstration.h"
#include "tests/demonstration/small_window.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

const QByteArray redWindow = R"(Window { width: 40; height: 30
    Rectangle { anchors.fill: parent; color: "red" } })";

// A demonstration with what it hangs on.
struct Run
{
    explicit Run(const Wishes &wishes, QQuickWindow *window = nullptr)
        : demonstration(wishes, clock, stages, window,
                        [this](const QString &line) { said.append(line); })
    {
    }

    void reach(int count) { stages.update(upTo(count), clock.now()); }
    static ConnectionStages::Reached upTo(int count)
    {
        return {count > 0, count > 1, count > 2, count > 3, count > 4};
    }

    ManualClock clock;
    ConnectionStages stages;
    QStringList said;
    Demonstration demonstration;
    QSignalSpy closed{&demonstration, &Demonstration::closeRequested};
};

Wishes untilConnected(int limitSeconds = 0, const QString &screenshot = {})
{
    Wishes wishes;
    wishes.untilConnected = true;
    wishes.limitSeconds = limitSeconds;
    wishes.screenshot = screenshot;
    return wishes;
}

constexpr int all = stageCount;

} // namespace

class TestDemonstration : public TestCase
{
    Q_OBJECT

private slots:
    void stagesAreSaidAsTheyComeAndGo()
    {
        Run run({});
        run.reach(2);
        QCOMPARE(run.said, QStringList({"[x] Steam runs", "[x] SteamVR runs"}));
        run.said.clear();
        run.reach(all);
        run.reach(4);
        QCOMPARE(run.said,
                 QStringList({"[x] streaming server on the control port", "[x] headset found",
                              "[x] headset connected", "[ ] lost: headset connected"}));
    }

    void firstFrameIsSaidOnce()
    {
        const SmallWindow small(redWindow);
        Run run({}, &small.window());
        emit small.window().frameSwapped();
        emit small.window().frameSwapped();
        QTRY_COMPARE(run.said, QStringList("first frame"));
        QCoreApplication::processEvents();
        QCOMPARE(run.said, QStringList("first frame"));
    }

    void nobodyHasToListen()
    {
        ManualClock clock;
        ConnectionStages stages;
        const Demonstration demonstration(untilConnected(1), clock, stages, nullptr, {});
        stages.update(Run::upTo(1), clock.now());
        clock.advance(1000);
        QCOMPARE(demonstration.result(), 3);
    }

    void connectedRunClosesWhenTheWindowShowsIt()
    {
        Run run(untilConnected());
        run.reach(all);
        run.clock.advance(1499);
        QCOMPARE(run.closed.count(), 0);
        run.clock.advance(1);
        QCOMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 0);
    }

    void connectedRunStaysUnlessItIsToClose()
    {
        Run run({});
        run.reach(all);
        run.clock.advance(3600000);
        QCOMPARE(run.closed.count(), 0);
        QCOMPARE(run.demonstration.result(), 0);
    }

    void secondConnectionIsNotWaitedFor()
    {
        Run run(untilConnected());
        run.reach(all);
        run.reach(4);
        run.reach(all);
        run.clock.advance(10000);
        QCOMPARE(run.closed.count(), 1);
    }

    void limitEndsARunThatDoesNotConnect_data()
    {
        QTest::addColumn<int>("stages");
        QTest::addColumn<QString>("missing");
        QTest::newRow("nothing") << 0 << "Steam runs";
        QTest::newRow("Steam") << 1 << "SteamVR runs";
        QTest::newRow("SteamVR") << 2 << "streaming server on the control port";
        QTest::newRow("server") << 3 << "headset found";
        QTest::newRow("headset") << 4 << "headset connected";
    }

    void limitEndsARunThatDoesNotConnect()
    {
        QFETCH(int, stages);
        QFETCH(QString, missing);
        Run run(untilConnected(45));
        run.reach(stages);
        run.clock.advance(44999);
        QCOMPARE(run.closed.count(), 0);
        QCOMPARE(run.demonstration.result(), 0);
        run.clock.advance(1);
        QCOMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 3);
        QCOMPARE(run.said.last(), "failed after 45 s, missing: " + missing);
    }

    void limitMeansNothingOnceConnected()
    {
        Run run(untilConnected(45));
        run.clock.advance(44000);
        // The window still has its time to show it.
        run.reach(all);
        run.clock.advance(1400);
        QCOMPARE(run.closed.count(), 0);
        run.clock.advance(100);
        QCOMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 0);
    }

    void withoutALimitNothingIsWaitedFor()
    {
        const Run run(untilConnected());
        QVERIFY(run.clock.idle());
    }

    void pictureIsTakenWhenConnected()
    {
        const SmallWindow small(redWindow);
        Run run(untilConnected(0, path("window.png")), &small.window());
        run.reach(all);
        run.clock.advance(1499);
        QVERIFY(!QFile::exists(path("window.png")));
        run.clock.advance(1);
        QTRY_COMPARE(run.closed.count(), 1);
        QCOMPARE(QImage(path("window.png")).pixelColor(20, 15), QColor("red"));
        QVERIFY(run.said.contains("screenshot saved as " + path("window.png")));
        QCOMPARE(run.demonstration.result(), 0);
    }

    void pictureIsTakenAtTheLimit()
    {
        const SmallWindow small(redWindow);
        Run run(untilConnected(10, path("window.png")), &small.window());
        run.clock.advance(10000);
        QTRY_COMPARE(run.closed.count(), 1);
        QCOMPARE(QImage(path("window.png")).size(), QSize(40, 30));
    }

    void pictureThatCannotBeSavedIsAFailure()
    {
        const SmallWindow small(redWindow);
        const QString nowhere = path("no such folder/window.png");
        Run run(untilConnected(0, nowhere), &small.window());
        run.reach(all);
        run.clock.advance(1500);
        QTRY_COMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 4);
        QVERIFY(run.said.contains("no screenshot could be saved as " + nowhere));
    }

    void missedConnectionCountsMoreThanThePicture()
    {
        const SmallWindow small(redWindow);
        Run run(untilConnected(10, path("no such folder/window.png")), &small.window());
        run.clock.advance(10000);
        QTRY_COMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 3);
    }

    void runWithoutAWindowTakesNoPicture()
    {
        Run run(untilConnected(0, path("window.png")));
        run.reach(all);
        run.clock.advance(1500);
        QCOMPARE(run.closed.count(), 1);
        QCOMPARE(run.demonstration.result(), 0);
        QVERIFY(!QFile::exists(path("window.png")));
    }
};

KOLM_GUI_TEST_MAIN(TestDemonstration)
#include "tst_demonstration.moc"
