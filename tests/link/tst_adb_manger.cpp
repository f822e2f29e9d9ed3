#include "base/manual_clock.h"
#include "link/adb_manger.h"
#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

class AdbMangerTest : public TestCase
{
    Q_OBJECT

private slots:
    void isOneObject();
    void killsEveryAdb();
    void killsNothingWithoutAdb();
    void findsNoHeadsetYet();
    void hasItsSignalsInOrder();

private:
    ManualClock clock_;
};

void AdbMangerTest::isOneObject()
{
    const SimPc pc(clock_);
    QCOMPARE(&AdbManger::instance(), &AdbManger::instance());
}

void AdbMangerTest::killsEveryAdb()
{
    SimPc pc(clock_);
    pc.startProcess("adb.exe", "C:/a/adb.exe");
    pc.startProcess("ADB.EXE", "C:/b/ADB.EXE");
    pc.startProcess("steam.exe", "C:/Steam/steam.exe");
    pc.startProcess("adb.exe", "D:/b c/adb.exe");
    AdbManger adb;
    adb.killAdb();
    QVERIFY(!pc.isRunning("adb.exe"));
    QStringList left;
    for (const SimProcess &process : pc.processes())
        left << process.name;
    QCOMPARE(left, (QStringList{"ADB.EXE", "steam.exe"}));
}

void AdbMangerTest::killsNothingWithoutAdb()
{
    SimPc pc(clock_);
    pc.startProcess("steam.exe", "C:/Steam/steam.exe");
    AdbManger adb;
    adb.killAdb();
    QCOMPARE(pc.journal(), QStringList());
    QVERIFY(pc.isRunning("steam.exe"));
}

void AdbMangerTest::findsNoHeadsetYet()
{
    SimPc pc(clock_);
    AdbManger adb;
    const QSignalSpy connects(&adb, &AdbManger::deviceConnect);
    const QSignalSpy tips(&adb, &AdbManger::showAdbTipToast);
    adb.checkDevice();
    QCOMPARE(connects.count(), 0);
    QCOMPARE(tips.count(), 0);
    QCOMPARE(pc.journal(), QStringList());
}

void AdbMangerTest::hasItsSignalsInOrder()
{
    const QMetaObject &meta = AdbManger::staticMetaObject;
    QList<QByteArray> methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << meta.method(i).methodSignature();
    QCOMPARE(methods, (QList<QByteArray>{"checkdevice()", "showAdbTipToast()",
                                         "deviceConnect(bool,QString)", "checkDevice()"}));
}

KOLM_TEST_MAIN(AdbMangerTest)
#include "tst_adb_manger.moc"
