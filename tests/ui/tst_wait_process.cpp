#include "tests/support/eventually.h"
#include "tests/support/test_case.h"
#include "ui/wait_notice.h"

#include <QCoreApplication>

using long_wait::Choice;
using long_wait::Subject;

using namespace std::chrono_literals;

// What a process that waits and the one that says so have to say to each other.
class TestWaitProcess : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        qunsetenv("NOTICE_EXIT");
        qunsetenv("NOTICE_WAITS");
        TestCase::cleanup();
    }

    void whatWasAskedForIsRead_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("canEnd");
        QTest::addColumn<int>("lasted");
        QTest::newRow("SteamVR") << "steamvr" << true << 3050;
        QTest::newRow("cell") << "cell" << false << 0;
    }
    void whatWasAskedForIsRead()
    {
        QFETCH(QString, key);
        QFETCH(bool, canEnd);
        QFETCH(int, lasted);
        const auto request = wait_notice::request(
            wait_notice::arguments({{key, canEnd}, std::chrono::milliseconds(lasted)}));
        QVERIFY(request);
        QCOMPARE(request->subject.key, key);
        QCOMPARE(request->subject.canEnd, canEnd);
        QCOMPARE(request->lasted.count(), lasted);
    }

    void anyOtherCommandLineIsThatOfTheProgram_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList();
        QTest::newRow("the option alone") << QStringList{"--wait-notice"};
        QTest::newRow("another option") << QStringList{"--notice", "cell", "0", "keep"};
        QTest::newRow("too many") << QStringList{"--wait-notice", "cell", "0", "keep", "x"};
        QTest::newRow("no number") << QStringList{"--wait-notice", "cell", "x", "keep"};
        QTest::newRow("below zero") << QStringList{"--wait-notice", "cell", "-1", "keep"};
    }
    void anyOtherCommandLineIsThatOfTheProgram()
    {
        QFETCH(QStringList, arguments);
        QVERIFY(!wait_notice::request(arguments));
    }

    void theExitCodeIsTheChoice_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<Choice>("choice");
        QTest::newRow("closed") << QByteArray("0") << Choice::KeepWaiting;
        QTest::newRow("end") << QByteArray("10") << Choice::EndPrograms;
        QTest::newRow("go on") << QByteArray("11") << Choice::GoOn;
        QTest::newRow("it could not be shown") << QByteArray("255") << Choice::KeepWaiting;
    }
    void theExitCodeIsTheChoice()
    {
        QFETCH(QByteArray, code);
        qputenv("NOTICE_EXIT", code);
        const auto notice = tell(NOTICE_STAND_IN);
        QVERIFY(notice);
        std::optional<Choice> choice;
        QVERIFY(eventually([&] {
            choice = notice->choice();
            return choice.has_value();
        }));
        QTEST(*choice, "choice");
        QCOMPARE(notice->choice(), choice); // as often as it is asked
        QCOMPARE(loggedCount("[wait] cell lasts 3050 ms"), 1);
    }

    void untilThenThereIsNoneAndTheEndOfTheWaitEndsIt()
    {
        qputenv("NOTICE_EXIT", "11");
        qputenv("NOTICE_WAITS", "1");
        const auto notice = tell(NOTICE_STAND_IN);
        QVERIFY(notice);
        // More than a start takes.
        QVERIFY(!eventually([&] { return notice->choice().has_value(); }, 500));
    }

    void aProgramThatCannotBeStartedTellsNobody()
    {
        const QString nothing = path("nothing");
        announce("[wait] no notice can be shown by " + nothing);
        QVERIFY(!tell(nothing));
    }

private:
    static std::unique_ptr<long_wait::Telling> tell(const QString &program)
    {
        return wait_notice::byProcess(program)(Subject{"cell", false}, 3050ms);
    }
};

Q_DECLARE_METATYPE(Choice)

KOLM_TEST_MAIN(TestWaitProcess)
#include "tst_wait_process.moc"
