#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"
#include "tests/usb/adb_lines.h"

#include <QDir>

// Which adb is used, from the start to the end.
class AdbInUseTest : public TestCase
{
    Q_OBJECT

private slots:
    void killsEveryAdb()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        pc.processes.start("adb.exe", "C:/a/adb.exe");
        pc.processes.start("ADB.EXE", "C:/b/ADB.EXE");
        pc.processes.start("steam.exe", "C:/Steam/steam.exe");
        pc.processes.start("adb.exe", "D:/b c/adb.exe");
        adb.manager->killAdb();
        QVERIFY(!pc.processes.isRunning("adb.exe"));
        QStringList left;
        for (const processes::Entry &process : pc.processes.list())
            left << process.name;
        QCOMPARE(left, (QStringList{"ADB.EXE", "steam.exe"}));
    }

    void killsNothingWithoutAdb()
    {
        SimPc pc(clock_);
        pc.processes.start("steam.exe", "C:/Steam/steam.exe");
        Adb adb(clock_);
        adb.manager->killAdb();
        QCOMPARE(pc.journal.lines(), QStringList());
        QVERIFY(pc.processes.isRunning("steam.exe"));
    }

    void asksTheAdbOnTheSearchPathForItsVersion()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        QCOMPARE(adb.lines, QStringList{version});
        adb.manager->take("Android Debug Bridge version 1.0.41\r\n");
        clock_.advance(600);
        adb.check(noDevice, "");
        QCOMPARE(adb.lines, (QStringList{version, list}));
        QCOMPARE(adb.folders, (QStringList{"", ""}));
        QCOMPARE(logged(),
                 (QStringList{"adb cmd: " + version, "use local adb", "adb cmd: " + list}));
    }

    void takesTheAdbThatRunsAlready()
    {
        SimPc pc(clock_);
        pc.processes.start("adb.exe", "D:/tools/adb.exe");
        Adb adb(clock_);
        QCOMPARE(adb.lines, QStringList());
        adb.check(noDevice, "");
        QCOMPARE(adb.lines,
                 QStringList{"D:/tools/adb.exe devices && D:/tools/adb.exe forward --list"});
        QCOMPARE(adb.folders, QStringList{""});
        QCOMPARE(logged(), (QStringList{"use started adb", "adb ORB: " + list}));
    }

    void takesTheFirstOfSeveral()
    {
        SimPc pc(clock_);
        pc.processes.start("ADB.EXE", "C:/zero/adb.exe");
        pc.processes.start("adb.exe", "C:/one/adb.exe");
        pc.processes.start("adb.exe", "C:/two/adb.exe");
        Adb adb(clock_);
        adb.check(noDevice, "");
        QCOMPARE(adb.lines, QStringList{"C:/one/adb.exe devices && C:/one/adb.exe forward --list"});
    }

    void takesARunningAdbInAFolderWithABlank()
    {
        SimPc pc(clock_);
        pc.processes.start("adb.exe", "D:\\my tools\\adb.exe");
        Adb adb(clock_);
        adb.check(device("A"), "\r\n");
        clock_.advance(1200);
        QCOMPARE(adb.lines, (QStringList{list, forward, listPorts}));
        for (const QString &folder : qAsConst(adb.folders))
            QCOMPARE(folder, QString("D:\\my tools\\"));
    }

    void usesItsOwnAdbWhenNoneAnswers()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.lines.clear();
        adb.manager->checkDevice(); // begins the grace
        clock_.advance(399);
        adb.manager->checkDevice(); // within it
        clock_.advance(1);
        clock_.advance(5000);
        QCOMPARE(adb.lines, QStringList());
        adb.manager->checkDevice(); // after it
        QCOMPARE(loggedCount("use ORBHelper adb"), 1);
        clock_.advance(799);
        QCOMPARE(adb.lines, QStringList());
        clock_.advance(1);
        // The test's folder has blanks in its name.
        QCOMPARE(adb.lines, QStringList{list});
        QCOMPARE(adb.folders.last(), QDir::currentPath() + "/ADB/");
        QCOMPARE(loggedCount("adb ORB: " + list), 1);
    }

    void usesItsOwnAdbInAFolderWithoutBlanks()
    {
        SimPc pc(clock_);
        QVERIFY(QDir::setCurrent("/"));
        Adb adb(clock_);
        adb.lines.clear();
        adb.manager->checkDevice();
        clock_.advance(400);
        adb.check(noDevice, "");
        QCOMPARE(adb.lines, QStringList{"//ADB/adb.exe devices && //ADB/adb.exe forward --list"});
        QCOMPARE(adb.folders.last(), QString());
    }

    void aVersionThatComesWithinTheGraceLetsTheCheckThrough()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.lines.clear();
        adb.manager->checkDevice();
        clock_.advance(100);
        adb.manager->take("Android Debug Bridge version 1.0.41\r\n");
        clock_.advance(300); // the check that was put off
        clock_.advance(800);
        QCOMPARE(adb.lines, QStringList{list});
        QCOMPARE(loggedCount("use ORBHelper adb"), 0);
    }

    void aVersionThatComesAfterTheShippedAdbWasTakenIsOutput()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.manager->checkDevice();
        clock_.advance(400);
        adb.manager->checkDevice();
        adb.manager->take("Android Debug Bridge version 1.0.41\r\n");
        QCOMPARE(loggedCount("use local adb"), 0);
        QCOMPARE(adb.said, QStringList());
    }

    void atItsEndItEndsAdb_data()
    {
        QTest::addColumn<bool>("shipped");
        QTest::newRow("the one on the search path") << false;
        QTest::newRow("the shipped one") << true;
    }

    void atItsEndItEndsAdb()
    {
        QFETCH(bool, shipped);
        SimPc pc(clock_);
        Adb adb(clock_);
        if (shipped) {
            adb.manager->checkDevice();
            clock_.advance(400);
            adb.manager->checkDevice();
        } else {
            adb.settle();
        }
        pc.processes.start("adb.exe", "C:/adb.exe");
        adb.lines.clear();
        adb.manager.reset();
        QVERIFY(!pc.processes.isRunning("adb.exe"));
        QCOMPARE(adb.lines, QStringList());
        clock_.advance(10000); // nothing runs on
        QCOMPARE(adb.lines, QStringList());
        pc.usb.changeInterface(headsetPath); // nobody listens any more
    }

    void atItsEndItLeavesARunningServerWithoutPorts()
    {
        SimPc pc(clock_);
        pc.processes.start("adb.exe", "C:/adb.exe");
        Adb adb(clock_);
        adb.manager.reset();
        QVERIFY(pc.processes.isRunning("adb.exe"));
        QCOMPARE(pc.journal.lines(), QStringList());
        QCOMPARE(adb.lines,
                 QStringList{"C:/adb.exe forward --remove-all && C:/adb.exe reverse --remove-all"});
        QCOMPARE(loggedCount("adb ORB: " + removePorts), 1);
    }

    void forwardsOfOthersAreToldBeforeTheyGo_data()
    {
        QTest::addColumn<bool>("isTheirs");
        QTest::newRow("adb was there before") << true;
        QTest::newRow("adb is ours") << false;
    }
    void forwardsOfOthersAreToldBeforeTheyGo()
    {
        QFETCH(bool, isTheirs);
        SimPc pc(clock_);
        if (isTheirs)
            pc.processes.start("adb.exe", "C:/adb.exe");
        Adb adb(clock_);
        if (!isTheirs) {
            adb.settle();
            pc.processes.start("adb.exe", "C:/adb.exe");
        }
        adb.check(device("PA7910"), "PA7910 tcp:8081 tcp:8080\r\nPA7910 tcp:9943 tcp:9943\r\n");
        adb.check(device("PA7910"), "PA7910 tcp:1 localabstract:x\r\n");
        QVERIFY(adb.lost.isEmpty());
        const QStringList lines = adb.lines;
        QList<QStringList> *const lost = &adb.lost;
        adb.manager.reset();
        QCOMPARE(*lost, QList<QStringList>{{"PA7910 tcp:1 localabstract:x"}});
        QCOMPARE(adb.lines.size(), lines.size() + (isTheirs ? 1 : 0));
    }

private:
    ManualClock clock_;
};

KOLM_TEST_MAIN(AdbInUseTest)
#include "tst_adb_in_use.moc"
