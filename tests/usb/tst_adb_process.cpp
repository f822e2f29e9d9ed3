#include "base/manual_clock.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"
#include "tests/usb/adb_pc.h"
#include "usb/adb_manger.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int limit = 30000; // ms

// A folder whose own name is harmless, so that the one in it decides.
class Base
{
public:
    Base() { folder_.setAutoRemove(false); }
    ~Base()
    {
        // The system may hold a program that has just ended a moment longer.
        QElapsedTimer timer;
        timer.start();
        while (!QDir(folder_.path()).removeRecursively() && !timer.hasExpired(limit)) {
        }
    }
    QString path(const QString &name) const { return folder_.filePath(name); }

private:
    QTemporaryDir folder_{QDir::tempPath() + "/kolm-XXXXXX"};
};

QString lookedUp(const QString &path)
{
    return QFileInfo(path).canonicalFilePath();
}

} // namespace

// The manager, the system's command interpreter and a real program adb.
class AdbProcessTest : public TestCase
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

    void aServerIsUsedFromWhereverItLies_data() { folders(); }

    void aServerIsUsedFromWhereverItLies()
    {
        QFETCH(QString, folder);
        const Base base;
        const QString adb = AdbPc::install(base.path(folder));
        pc_->plug("PA7910\tdevice\n");
        QVERIFY(pc_->startServer(adb));
        start();
        QCOMPARE(loggedCount("use started adb"), 1);
        look(2);
        const QString program = lookedUp(adb);
        QCOMPARE(pc_->calls(),
                 (QStringList{program + " [devices]", program + " [forward] [--list]"}));
        theHeadsetWasReported();
        manager_.reset();
        QVERIFY(pc_->serverRuns());
        pc_.reset(); // ends the program before its folder goes
    }

    void theShippedAdbIsUsedFromWhereverItLies_data() { folders(); }

    void theShippedAdbIsUsedFromWhereverItLies()
    {
        QFETCH(QString, folder);
        const Base base;
        const QString adb = AdbPc::install(base.path(folder) + "/ADB");
        QVERIFY(QDir::setCurrent(base.path(folder)));
        pc_->plug("PA7910\tdevice\n");
        start();
        manager_->checkDevice();
        clock_->advance(400);
        look(2); // there is none on the search path
        QCOMPARE(loggedCount("use ORBHelper adb"), 1);
        const QString program = lookedUp(adb);
        QCOMPARE(pc_->calls(),
                 (QStringList{program + " [devices]", program + " [forward] [--list]"}));
        theHeadsetWasReported();
        manager_.reset();
        QVERIFY(!pc_->serverRuns());
        QVERIFY(QDir::setCurrent(dir()));
    }

    void theAdbOnTheSearchPathIsFound_data() { folders(); }

    void theAdbOnTheSearchPathIsFound()
    {
        QFETCH(QString, folder);
        if (folder.contains(';'))
            QSKIP("It ends a folder of the search path.");
        const Base base;
        const QString adb = AdbPc::install(base.path(folder));
        pc_->setSearchPath(base.path(folder));
        pc_->plug("PA7910\tdevice\n");
        start();
        QTRY_COMPARE_WITH_TIMEOUT(loggedCount("use local adb"), 1, limit);
        clock_->advance(600);
        look(3);
        const QString program = lookedUp(adb);
        QCOMPARE(pc_->calls(), (QStringList{program + " [--version]", program + " [devices]",
                                            program + " [forward] [--list]"}));
        theHeadsetWasReported();
        manager_.reset(); // ends the server, which holds the folder
    }

    void theEndRemovesThePortsOfAnEarlierServer()
    {
        const QString adb = AdbPc::install(path("tools"));
        pc_->plug("PA7910\tdevice\n");
        QVERIFY(pc_->startServer(adb));
        pc_->ask({"forward", "tcp:0", "tcp:9943"});
        pc_->ask({"reverse", "tcp:50000", "tcp:50000"});
        QVERIFY(pc_->ask({"forward", "--list"}).contains("tcp:9943"));
        start();
        manager_.reset();
        QVERIFY(pc_->serverRuns());
        QCOMPARE(pc_->ask({"forward", "--list"}), QString("\n"));
        QCOMPARE(pc_->ask({"reverse", "--list"}), QString("\n"));
        const QString program = lookedUp(adb);
        QCOMPARE(pc_->calls(), (QStringList{program + " [forward] [--remove-all]",
                                            program + " [reverse] [--remove-all]"}));
    }

    void theEndEndsTheAdbThatWasStarted()
    {
        const Base base;
        AdbPc::install(base.path("tools"));
        pc_->setSearchPath(base.path("tools"));
        start();
        QTRY_COMPARE_WITH_TIMEOUT(loggedCount("use local adb"), 1, limit);
        clock_->advance(600);
        look(3);
        QVERIFY(pc_->serverRuns());
        manager_.reset();
        QVERIFY(!pc_->serverRuns());
        QCOMPARE(pc_->calls().size(), 3);
    }

private:
    void folders() const
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("plain") << "tools";
        QTest::newRow("blank") << "my tools";
        QTest::newRow("ampersand") << "q&a";
        QTest::newRow("caret") << "a^b";
        QTest::newRow("Chinese") << QString::fromUtf8("工具");
        QTest::newRow("parentheses") << "a(b)c";
        QTest::newRow("a variable") << "100%OS%";
        QTest::newRow("comma and equals sign") << "a,b=c";
        QTest::newRow("semicolon") << "a;b";
        QTest::newRow("harmless marks") << "!a[b]{c}'+~$#@`";
        QTest::newRow("everything") << QString::fromUtf8("a & b (工具) é");
    }

    void start()
    {
        manager_ = std::make_unique<AdbManger>(AdbManger::Dependencies{*clock_});
        connect(manager_.get(), &AdbManger::deviceConnect, this,
                [this](bool connect, const QString &serial) {
                    said_ << (connect ? "connect " : "gone ") + serial;
                });
    }

    // Looks once, and waits until what adb says to that has arrived.
    void look(int calls)
    {
        const auto *process = manager_->findChild<QProcess *>();
        // An earlier command may have answered and not yet ended.
        QTRY_COMPARE_WITH_TIMEOUT(process->state(), QProcess::NotRunning, limit);
        manager_->checkDevice();
        clock_->advance(800);
        QTRY_VERIFY_WITH_TIMEOUT(pc_->calls().size() >= calls, limit);
        QTRY_COMPARE_WITH_TIMEOUT(process->state(), QProcess::NotRunning, limit);
    }

    // The list of forwards may have come in one piece with that of devices.
    void theHeadsetWasReported() const
    {
        QCOMPARE(said_.size(), 1);
        QVERIFY(said_[0] == "connect PA7910" || said_[0] == "connect PA7910\r\n");
    }

    std::unique_ptr<AdbPc> pc_;
    std::unique_ptr<ManualClock> clock_;
    std::unique_ptr<AdbManger> manager_;
    QStringList said_;
};

KOLM_TEST_MAIN(AdbProcessTest)
#include "tst_adb_process.moc"
