#include "base/manual_clock.h"
#include "controller/connection_stages.h"
#include "demonstration/scripted_user.h"
#include "tests/demonstration/fake_screen.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

// A user with all that he hangs on. Two items called `close` are shown.
struct Seat
{
    Seat() { screen.items = {{"close 1", {10, 20}}, {"close 2", {10, 40}}}; }

    // What has been answered since this was asked before.
    QStringList answers() { return std::exchange(said, {}); }

    ManualClock clock;
    FakeScreen screen;
    ConnectionStages stages;
    QStringList said;
    ScriptedUser user{clock, {screen, &stages}, [this](const QString &line) { said.append(line); }};
    QSignalSpy closed{&user, &ScriptedUser::closeRequested};
};

const QString ok = "directed: ok";

} // namespace

class TestScriptedUser : public TestCase
{
    Q_OBJECT

private slots:
    void lineIsAnsweredWhenWhatItCausedHasHappened()
    {
        Seat seat;
        seat.user.hear("click close 2\n");
        QCOMPARE(seat.screen.deeds, QStringList("click close 2"));
        seat.clock.advance(49);
        QCOMPARE(seat.answers(), QStringList());
        seat.clock.advance(1);
        QCOMPARE(seat.answers(), QStringList(ok));
        QCOMPARE(seat.user.result(), 0);
        QCOMPARE(seat.closed.count(), 0);
    }

    void linesAreCarriedOutOneAfterAnother()
    {
        Seat seat;
        seat.user.hear("click close\nkey Tab\n");
        seat.user.hear("hide\n");
        QCOMPARE(seat.screen.deeds, QStringList("click close 1"));
        seat.clock.advance(50);
        QCOMPARE(seat.screen.deeds, QStringList({"click close 1", "key Tab"}));
        seat.clock.advance(50);
        QCOMPARE(seat.screen.deeds, QStringList({"click close 1", "key Tab", "hide"}));
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList({ok, ok, ok}));
        // Somebody who had nothing to do is there for the next line.
        seat.user.hear("show\n");
        QCOMPARE(seat.screen.deeds.last(), QString("show"));
    }

    void answerMayTellSomething()
    {
        Seat seat;
        seat.screen.frames = 3;
        seat.user.hear("where close\nframes\n");
        seat.clock.advance(100);
        QCOMPARE(seat.answers(), QStringList({"directed: at 10 20", "directed: frames 3"}));
    }

    void pauseIsExact()
    {
        Seat seat;
        seat.user.hear("wait 1.5\nhide\n");
        seat.clock.advance(1499);
        QCOMPARE(seat.answers(), QStringList());
        seat.clock.advance(1);
        QCOMPARE(seat.answers(), QStringList(ok));
        QCOMPARE(seat.screen.deeds, QStringList("hide"));
    }

    void conditionIsWaitedFor()
    {
        Seat seat;
        seat.user.hear("until dialog SettingPage\n");
        seat.clock.advance(100000);
        QCOMPARE(seat.answers(), QStringList());
        seat.screen.openDialog = "SettingPage";
        // It is looked at twenty times a second.
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList());
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList(ok));
    }

    void conditionThatHoldsIsNotWaitedFor()
    {
        Seat seat;
        seat.user.hear("until nodialog\n");
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList(ok));
    }

    void whatNeverHappensIsGivenUp()
    {
        Seat seat;
        seat.user.hear("until linked\n");
        seat.clock.advance(120000);
        QCOMPARE(seat.answers(), QStringList());
        QCOMPARE(seat.closed.count(), 0);
        seat.clock.advance(50);
        QCOMPARE(seat.answers(),
                 QStringList("directed: failed: until linked: that did not happen"));
        QCOMPARE(seat.closed.count(), 1);
        QCOMPARE(seat.user.result(), 5);
        QVERIFY(seat.clock.idle());
    }

    void pictureWaitsForTheWindows()
    {
        Seat seat;
        seat.screen.complete = false;
        seat.user.hear("picture a.png\n");
        seat.clock.advance(1000);
        QCOMPARE(seat.screen.deeds, QStringList());
        seat.screen.complete = true;
        seat.clock.advance(50);
        QCOMPARE(seat.screen.deeds, QStringList("picture a.png"));
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList(ok));
    }

    void programIsClosedAfterTheAnswer()
    {
        Seat seat;
        int answered = 0;
        connect(&seat.user, &ScriptedUser::closeRequested, this,
                [&] { answered = seat.said.count(ok); });
        seat.user.hear("close\n");
        QCOMPARE(answered, 1);
        QCOMPARE(seat.closed.count(), 1);
        QCOMPARE(seat.user.result(), 0);
    }

    void lineThatFailsEndsTheRun_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no such word") << QByteArray("dance") << "there is no such word";
        QTest::newRow("no such condition")
            << QByteArray("until toste") << "there is no such condition";
        QTest::newRow("not shown") << QByteArray("click dim") << "nothing of that name is shown";
        QTest::newRow("no number") << QByteArray("wait soon") << "it has to be \"wait SECONDS\"";
        QTest::newRow("percent") << QByteArray("click %1") << "nothing of that name is shown";
    }

    void lineThatFailsEndsTheRun()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, reason);
        Seat seat;
        seat.user.hear(line + '\n');
        QCOMPARE(seat.answers(), QStringList("directed: failed: " + line + ": " + reason));
        QCOMPARE(seat.closed.count(), 1);
        QCOMPARE(seat.user.result(), 5);
    }

    void whatWasStillToComeIsForgotten()
    {
        Seat seat;
        seat.user.hear("click dim\nhide\nshow\n");
        seat.clock.advance(10000);
        QCOMPARE(seat.screen.deeds, QStringList("click dim 1"));
        QCOMPARE(seat.closed.count(), 1);
        seat.user.hear("activate\n");
        seat.clock.advance(10000);
        QCOMPARE(seat.screen.deeds, QStringList({"click dim 1", "activate"}));
    }

    void lineCountsWhenItsEndHasCome()
    {
        Seat seat;
        seat.user.hear("hi");
        seat.user.hear("de");
        QCOMPARE(seat.screen.deeds, QStringList());
        seat.user.hear("\r\n");
        QCOMPARE(seat.screen.deeds, QStringList("hide"));
    }

    void textMayBeCutAnywhere()
    {
        const QByteArray line = "type 清晰 é\n";
        for (int cut = 0; cut < line.size(); ++cut) {
            Seat seat;
            seat.user.hear(line.left(cut));
            seat.user.hear(line.mid(cut));
            QCOMPARE(seat.screen.deeds, QStringList(QString::fromUtf8("type 清晰 é")));
        }
    }

    void emptyLinesAndRemarksArePassedOver()
    {
        Seat seat;
        seat.user.hear("\n   \n# click close\n  # hide\n  show  \n");
        QCOMPARE(seat.screen.deeds, QStringList("show"));
        seat.clock.advance(50);
        QCOMPARE(seat.answers(), QStringList(ok));
    }

    void nothingBeginsAfterTheEnd()
    {
        Seat seat;
        seat.user.hear("hide\nshow\n");
        seat.user.stop();
        seat.clock.advance(10000);
        QCOMPARE(seat.screen.deeds, QStringList("hide"));
    }
};

KOLM_TEST_MAIN(TestScriptedUser)
#include "tst_scripted_user.moc"
