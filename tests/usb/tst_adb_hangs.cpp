#include "base/manual_clock.h"
#include "tests/support/test_case.h"
#include "tests/usb/adb_pc.h"
#include "usb/adb_manger.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int limit = 30000; // ms
constexpr int pollInterval = 5000;

} // namespace

// An adb that hangs, as a real process under the system's command interpreter.
class AdbHangsTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        pc_ = std::make_unique<AdbPc>();
        clock_ = std::make_unique<ManualClock>();
        said_.clear();
    }

    void cleanup()
    {
        manager_.reset();
        clock_.reset();
        pc_.reset();
        TestCase::cleanup();
    }

    void aQuestionThatHangsIsEndedAndTheNextOneReallyAsked()
    {
        startWithAdbOnTheSearchPath();
        askInVain(2);
        for (int unanswered = 1; unanswered <= 2; ++unanswered) {
            manager_->checkDevice();
            clock_->advance(pollInterval);
        }
        QCOMPARE(process()->state(), QProcess::Running);
        manager_->checkDevice(); // the third
        QTRY_COMPARE_WITH_TIMEOUT(process()->state(), QProcess::NotRunning, limit);
        QTRY_COMPARE_WITH_TIMEOUT(AdbPc::processes(), 0, limit);
        QCOMPARE(pc_->calls().size(), 2); // nor did the interpreter go on

        pc_->hang(false);
        clock_->advance(pollInterval);
        manager_->checkDevice();
        clock_->advance(800);
        QTRY_COMPARE_WITH_TIMEOUT(said_, QStringList{"connect PA7910"}, limit);
    }

    void whatHasOnlyJustBegunIsNotEnded()
    {
        startWithAdbOnTheSearchPath();
        pc_->hang(true);
        manager_->checkDevice();
        clock_->advance(800);
        QTRY_COMPARE_WITH_TIMEOUT(pc_->calls().size(), 2, limit);
        // A headset's devices arrive together.
        for (int message = 0; message < 3; ++message)
            manager_->checkDevice();
        pc_->hang(false);
        QTRY_COMPARE_WITH_TIMEOUT(process()->state(), QProcess::NotRunning, limit);
        QCOMPARE(pc_->calls().size(), 3); // the rest of its line, too
    }

    void aVersionQueryThatHangsMakesRoomForTheShippedAdb()
    {
        AdbPc::install(path("tools"));
        pc_->setSearchPath(path("tools"));
        AdbPc::install(path("ADB"));
        pc_->hang(true);
        start();
        QTRY_COMPARE_WITH_TIMEOUT(pc_->calls().size(), 1, limit);
        manager_->checkDevice();
        clock_->advance(400);
        pc_->plug("PA7910\tdevice\n");
        manager_->checkDevice();
        QTRY_COMPARE_WITH_TIMEOUT(AdbPc::processes(), 0, limit);
        QTRY_COMPARE_WITH_TIMEOUT(process()->state(), QProcess::NotRunning, limit);
        pc_->hang(false);
        clock_->advance(800);
        QTRY_COMPARE_WITH_TIMEOUT(said_, QStringList{"connect PA7910"}, limit);
        QCOMPARE(pc_->calls().value(1),
                 QFileInfo(path("ADB/adb.exe")).canonicalFilePath() + " [devices]");
    }

    void theServerOfOthersStaysWhenACommandIsEnded()
    {
        QVERIFY(pc_->startServer(AdbPc::install(path("tools"))));
        start();
        askInVain(1);
        QCOMPARE(AdbPc::processes(), 2);
        for (int unanswered = 1; unanswered <= 3; ++unanswered) {
            manager_->checkDevice();
            clock_->advance(pollInterval);
        }
        QTRY_COMPARE_WITH_TIMEOUT(AdbPc::processes(), 1, limit);
        QVERIFY(pc_->serverRuns());
    }

    void theEndLeavesNothingThatHangs_data()
    {
        QTest::addColumn<bool>("others");
        QTest::newRow("an adb of our own") << false;
        QTest::newRow("beside the server of others") << true;
    }

    void theEndLeavesNothingThatHangs()
    {
        QFETCH(bool, others);
        if (others) {
            QVERIFY(pc_->startServer(AdbPc::install(path("tools"))));
            start();
            askInVain(1);
        } else {
            startWithAdbOnTheSearchPath();
            askInVain(2);
        }
        manager_.reset();
        QTRY_COMPARE_WITH_TIMEOUT(AdbPc::processes(), others ? 1 : 0, limit);
        QCOMPARE(pc_->serverRuns(), others);
    }

private:
    void start()
    {
        manager_ = std::make_unique<AdbManger>(AdbManger::Dependencies{*clock_});
        connect(manager_.get(), &AdbManger::deviceConnect, this,
                [this](bool connect, const QString &serial) {
                    said_ << (connect ? "connect " : "gone ") + serial.trimmed();
                });
    }

    // A manager that has had the answer to its version query.
    void startWithAdbOnTheSearchPath()
    {
        AdbPc::install(path("tools"));
        pc_->setSearchPath(path("tools"));
        pc_->plug("PA7910\tdevice\n");
        start();
        QTRY_COMPARE_WITH_TIMEOUT(loggedCount("use local adb"), 1, limit);
        QTRY_COMPARE_WITH_TIMEOUT(process()->state(), QProcess::NotRunning, limit);
        clock_->advance(600);
    }

    // Asks, and returns when the question hangs.
    void askInVain(int calls)
    {
        pc_->hang(true);
        manager_->checkDevice();
        clock_->advance(pollInterval);
        QTRY_COMPARE_WITH_TIMEOUT(pc_->calls().size(), calls, limit);
        QCOMPARE(process()->state(), QProcess::Running);
    }

    const QProcess *process() const { return manager_->findChild<QProcess *>(); }

    std::unique_ptr<AdbPc> pc_;
    std::unique_ptr<ManualClock> clock_;
    std::unique_ptr<AdbManger> manager_;
    QStringList said_;
};

KOLM_TEST_MAIN(AdbHangsTest)
#include "tst_adb_hangs.moc"
