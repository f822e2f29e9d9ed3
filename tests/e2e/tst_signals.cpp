#include "tests/e2e/program.h"
#include "tests/support/eventually.h"
#include "tests/support/test_case.h"

#include <QFile>

#include <csignal>

namespace {

constexpr char noticeOfCrash[] = "orb.showToast(\"上次运行意外中断";

} // namespace

// Whoever is impatient with the program in a terminal, and what breaks it.
class TestSignals : public TestCase
{
    Q_OBJECT

    static constexpr int limit = 30000; // ms

    // Whether it has come so far that a signal does not end it as it stands.
    static bool heedsSignals(const Program &program)
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(program.pid()));
        if (!status.open(QIODevice::ReadOnly))
            return false;
        const QByteArray text = status.readAll();
        const int at = text.indexOf("SigCgt:");
        const quint64 caught = text.mid(at + 7, 18).trimmed().toULongLong(nullptr, 16);
        return at >= 0 && (caught & (1ULL << (SIGTERM - 1))) != 0;
    }

    static QJsonObject vrPaths(const Program &program)
    {
        return program.json(program.home() + "/AppData/Local/openvr/openvrpaths.vrpath");
    }

    // As a normal end leaves it.
    static void verifyOrder(const Program &program)
    {
        QVERIFY(vrPaths(program).value("external_drivers").isNull());
        QCOMPARE(program.json(program.dataDir() + "/set.json").value("wiredOrWireless").toInt(), 2);
        QVERIFY(!program.json(program.work() + "/session.json").isEmpty());
    }

private slots:
    void oneDuringTheStartEndsItInOrder_data()
    {
        QTest::addColumn<QString>("logged");
        QTest::newRow("at once") << QString();
        QTest::newRow("before the controller") << "json language: ";
        QTest::newRow("before the window") << "init end";
    }
    void oneDuringTheStartEndsItInOrder()
    {
        QFETCH(QString, logged);
        Program program(dir(), "one-headset");
        const QByteArray known = program.read(program.dataDir() + "/setting.inf");
        QVERIFY(program.start());
        if (logged.isEmpty())
            QVERIFY(eventually([&] { return heedsSignals(program); }, limit));
        else
            QVERIFY(eventually([&] { return program.log().contains(logged); }, limit));
        program.signal(SIGTERM);
        QCOMPARE(program.wait(), 0);
        verifyOrder(program);
        QCOMPARE(program.read(program.dataDir() + "/setting.inf"), known);
    }

    void moreOfThemWhileItClosesCostNothing_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("when");
        QTest::newRow("a headset is connected") << "one-headset"
                                                << "[x] headset connected";
        QTest::newRow("SteamVR has yet to load the driver") << "server-never-comes"
                                                            << "launch explorer";
    }
    void moreOfThemWhileItClosesCostNothing()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, when);
        Program program(dir(), scenario);
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput(when));
        while (program.isRunning()) {
            program.signal(SIGINT);
            program.signal(SIGTERM);
            program.waitForOutput("never", 1, 1);
        }
        QCOMPARE(program.wait(), 0);
        verifyOrder(program);
    }
    void aCrashIsToldByTheNextStartWhichPutsThingsRight()
    {
        Program program(dir(), "server-never-comes");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("launch explorer"));
        QVERIFY(!vrPaths(program).value("external_drivers").isNull());
        program.signal(SIGSEGV);
        while (program.isRunning())
            program.waitForOutput("never", 1, 1);
        // Nothing is done in a process that is broken.
        QVERIFY(!vrPaths(program).value("external_drivers").isNull());
        const QByteArray record = program.read(program.dataDir() + "/crash.txt");
        QVERIFY2(record.startsWith("signal 11 at "), record.constData());
        QVERIFY(record.contains("[steam] startSteamVR\n"));

        program.environment.insert("SIMPC_FACE", path("face"));
        QVERIFY(program.start());
        QVERIFY(eventually(
            [&] { return program.log().contains("The last run broke: signal 11 at "); }, limit));
        QCOMPARE(program.read(program.dataDir() + "/crash-last.txt"), record);
        QVERIFY(!QFile::exists(program.dataDir() + "/crash.txt"));
        QVERIFY(eventually([&] { return readFile("face").contains(noticeOfCrash); }, limit));
        QFile::remove(path("face"));
        QCOMPARE(program.close(), 0);
        verifyOrder(program);

        QVERIFY(program.start());
        QVERIFY(eventually([&] { return program.log().count("json language: ") == 3; }, limit));
        QCOMPARE(program.close(), 0);
        QCOMPARE(program.log().count("The last run broke"), 1);
        QVERIFY(!readFile("face").isEmpty());
        QVERIFY(!readFile("face").contains(noticeOfCrash));
    }
};

KOLM_TEST_MAIN(TestSignals)
#include "tst_signals.moc"
