#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"
#include "tests/usb/adb_lines.h"

#include <QThread>

// The checks, and what is said of the headsets on the cable.
class AdbMangerTest : public TestCase
{
    Q_OBJECT

private slots:
    void hasItsSignalsInOrder()
    {
        const QMetaObject &meta = AdbManger::staticMetaObject;
        QList<QByteArray> methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods << meta.method(i).methodSignature();
        QCOMPARE(methods, (QList<QByteArray>{"checkdevice()", "showAdbTipToast()",
                                             "deviceConnect(bool,QString)", "checkDevice()"}));
        QCOMPARE(meta.method(meta.methodOffset() + 2).parameterNames(),
                 (QList<QByteArray>{"connect", "sn"}));
    }

    void aCheckAsksAfterAMoment()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.manager->checkDevice();
        clock_.advance(799);
        QCOMPARE(adb.lines, QStringList());
        clock_.advance(1);
        QCOMPARE(adb.lines, QStringList{list});
    }

    void aHeadsetIsReportedOnceAndGetsItsPorts()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        clearLog();
        adb.check(device("PA7910"), "\r\n");
        QCOMPARE(adb.said, QStringList{"connect PA7910"});
        QCOMPARE(adb.lines, QStringList{list});
        clock_.advance(199);
        QCOMPARE(adb.lines.size(), 1);
        clock_.advance(1);
        QCOMPARE(adb.lines, (QStringList{list, forward}));
        clock_.advance(999);
        QCOMPARE(adb.lines.size(), 2);
        clock_.advance(1);
        QCOMPARE(adb.lines, (QStringList{list, forward, listPorts}));
        QCOMPARE(logged(), (QStringList{"adb cmd: " + list, "forward tcp", "adb cmd: " + forward,
                                        "forward list", "adb cmd: " + listPorts}));
        // The list of ports is no list of devices.
        adb.manager->take("\r\n");
        clock_.advance(1200);
        QCOMPARE(adb.lines.size(), 3);

        adb.check(device("PA7910"), "PA7910 tcp:9943 tcp:9943\r\nPA7910 tcp:9944 tcp:9944\r\n\r\n");
        clock_.advance(5000);
        QCOMPARE(adb.said, QStringList{"connect PA7910"});
        QCOMPARE(adb.lines.size(), 4);
    }

    void whileThePortsAreListedACheckOnlyMakesItIdle()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.check(device("A"), "\r\n");
        adb.manager->checkDevice(); // while they wait to be set up
        clock_.advance(1200);       // now they are listed
        QCOMPARE(adb.lines, (QStringList{list, forward, listPorts}));
        adb.manager->take(device("B")); // no answer to a question of its own
        QCOMPARE(adb.said, QStringList{"connect A"});
        adb.manager->checkDevice();
        clock_.advance(800);
        QCOMPARE(adb.lines.size(), 3);
        adb.manager->checkDevice();
        clock_.advance(800);
        QCOMPARE(adb.lines.size(), 4);
        QCOMPARE(adb.lines.last(), list);
    }

    void aHeadsetThatIsThereAgainIsReportedAgain()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        const QByteArray forwards = "A tcp:9943 tcp:9943\r\n\r\n";
        for (const QByteArray &answer : {device("A"), noDevice, noDevice, device("A")}) {
            adb.check(answer, forwards);
            clock_.advance(600);
        }
        QCOMPARE(adb.said, (QStringList{"connect A", "gone ", "connect A"}));
    }

    void aSecondHeadsetReplacesTheFirst()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.check(device("A"), "A tcp:9943 tcp:9943\r\n\r\n");
        clock_.advance(600);
        adb.check(device("B"), "\r\n");
        QCOMPARE(adb.said, (QStringList{"connect A", "connect B"}));
        clock_.advance(200);
        QCOMPARE(adb.lines.last(), forward); // the first one's ports went with it
    }

    void twoHeadsetsAreReportedAsOneText()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.check("List of devices attached\r\nA\tdevice\r\nB\tdevice\r\n\r\n", "x");
        QCOMPARE(adb.said, QStringList{"connect A\tdevice\r\nB"});
    }

    void theFirstEmptyListIsNews()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.check(noDevice, "x");
        clock_.advance(600);
        adb.check(noDevice, "x");
        QCOMPARE(adb.said, QStringList{"gone "});
    }

    void anOfflineHeadsetRestartsAdbAndTellsTheUser()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        pc.processes.start("adb.exe", "C:/adb.exe");
        adb.check("List of devices attached\r\nA\toffline\r\n\r\n", "x");
        QCOMPARE(adb.said, QStringList{"tip"});
        QCOMPARE(pc.journal.lines(), QStringList{"terminate adb.exe"});
        clock_.advance(600);
        adb.check(device("A"), "x");
        QCOMPARE(adb.said, (QStringList{"tip", "connect A"}));
    }

    void anAdbThatNeverAnswersIsAskedAgainAfterThreeChecks()
    {
        SimPc pc(clock_);
        // One command at a time, as the interpreter does it.
        bool isBusy = false;
        int started = 0;
        AdbManger manager({clock_,
                           [&](const QString &, const QString &) {
                               started += !isBusy;
                               isBusy = true;
                           },
                           [&isBusy] { isBusy = false; }});
        manager.take("Android Debug Bridge version 1.0.41\r\n");
        clock_.advance(600);
        isBusy = false;
        started = 0;
        QList<int> asked;
        for (int poll = 0; poll < 9; ++poll) {
            manager.checkDevice();
            clock_.advance(5000);
            asked << started;
        }
        QCOMPARE(asked, (QList<int>{1, 1, 1, 1, 2, 2, 2, 2, 3}));
    }

    void everyOutputMakesItIdleAMomentLater()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.manager->checkDevice();
        adb.manager->take("whatever"); // the state is two now
        clock_.advance(599);
        adb.manager->checkDevice(); // counts as unanswered
        clock_.advance(1);
        adb.manager->checkDevice(); // idle: asks
        clock_.advance(800);
        QCOMPARE(adb.lines, (QStringList{list, list}));
    }

    void outputCountsUpToANul()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        adb.check(device("A") + QByteArray("\0junk", 5), "x");
        QCOMPARE(adb.said, QStringList{"connect A"});
        clock_.advance(600);
        adb.check("List of devices attached\r\n\xe9\tdevice\r\n\r\n", "x");
        QCOMPARE(adb.said.last(), QString("connect ") + QChar(0xe9));
    }

    void aPluggedHeadsetMakesItCheckOnItsOwnThread()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        QThread *thread = nullptr;
        connect(adb.manager.get(), &AdbManger::checkdevice, adb.manager.get(),
                [&thread] { thread = QThread::currentThread(); });
        pc.usb.changeInterface(headsetPath);
        QTRY_VERIFY(thread);
        QCOMPARE(thread, QThread::currentThread());
        clock_.advance(800);
        QCOMPARE(adb.lines, QStringList{list});
    }

    void otherDevicesMakeItDoNothing()
    {
        SimPc pc(clock_);
        Adb adb(clock_);
        adb.settle();
        int checks = 0;
        connect(adb.manager.get(), &AdbManger::checkdevice, adb.manager.get(),
                [&checks] { ++checks; });
        pc.usb.changeInterface(
            R"(\\?\USBSTOR#Disk&Ven_Acme#0123&0#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})");
        pc.usb.changeInterface(
            R"(\\?\PCI#VEN_8086&DEV_15B8#3&1#{ad498944-762f-11d0-8dcb-00c04fc3358c})");
        pc.usb.changeInterface(headsetPath); // the last one of the three
        QTRY_COMPARE(checks, 1);
        QCoreApplication::processEvents();
        QCOMPARE(checks, 1);
    }

private:
    ManualClock clock_;
};

KOLM_TEST_MAIN(AdbMangerTest)
#include "tst_adb_manger.moc"
