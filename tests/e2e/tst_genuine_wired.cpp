#include "tests/e2e/program.h"
#include "tests/support/genuine_adb.h"
#include "tests/support/test_case.h"

#include <QDir>

// The way over the cable through the genuine adb, with a headset that speaks adb's
// protocol at its other end.
class TestGenuineWired : public TestCase
{
    Q_OBJECT

private slots:
    void aHeadsetConnectsIsLostConnectsAgainAndNothingIsLeftOver()
    {
        Program program(dir(), "wired-plugged-later");
        GenuineAdb adb(dir());
        use(adb, dir(), &program);
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("on the USB cable: PA7910SIM1"));
        const QString serial = adb.plugIn();
        QVERIFY(!serial.isEmpty());
        QVERIFY(program.waitForOutput("[x] headset found"));
        QVERIFY(program.waitForOutput("[x] headset connected"));
        const QStringList asked = adb.asked();
        QCOMPARE(asked.filter("reverse:forward:"),
                 (QStringList{"open reverse:forward:tcp:50000;tcp:50000",
                              "open reverse:forward:tcp:50001;tcp:50001"}));
        QVERIFY(program.serverLog().contains("DeviceConnectBack\\ttrue"));

        adb.pullOut();
        QVERIFY(program.waitForOutput("lost: headset connected"));
        QVERIFY(program.waitForOutput("terminate adb.exe"));
        QVERIFY(!adb.plugIn().isEmpty());
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QCOMPARE(program.close(), 0);
        QVERIFY(!adb.serverRuns());
    }

    void aKilledProgramsServerIsTakenOverAndLeftWithoutPorts()
    {
        Program program(dir(), "wired-headset-at-start");
        GenuineAdb adb(dir());
        use(adb, dir(), &program);
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] streaming server on the control port"));
        const QString serial = adb.plugIn();
        QVERIFY(program.waitForOutput("[x] headset connected"));
        program.kill();
        QVERIFY(adb.serverRuns());
        QVERIFY(adb.call({"forward", "--list"}).contains(serial + " tcp:9943 tcp:9943"));

        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("[x] headset connected", 2));
        QVERIFY(program.log().contains("use started adb"));
        QCOMPARE(program.close(), 0);
        QVERIFY(adb.serverRuns());
        QCOMPARE(adb.call({"forward", "--list"}), QString("\n"));
        QCOMPARE(adb.call({"reverse", "--list"}), QString("\n"));
    }

private:
    // adb takes its own real time, so the program must not live too fast.
    static void use(const GenuineAdb &adb, const QString &dir, Program *program)
    {
        program->environment.insert("SIMPC_SPEED", "5");
        program->environment.insert("SIMPC_ADB", GenuineAdb::folder());
        program->environment.insert("ANDROID_ADB_SERVER_PORT", adb.port());
        program->environment.insert("ADB_SIM_FOLDER", dir + "/cable");
        program->environment.insert("TMPDIR", dir);
    }
};

KOLM_TEST_MAIN(TestGenuineWired)
#include "tst_genuine_wired.moc"
