#include "simpc/sim_cell.h"
#include "tests/peers/control_link_ends.h"
#include "tests/support/test_case.h"

#include <QElapsedTimer>

namespace {

const QByteArray request = "HMDInfoRequest";

} // namespace

class StreamingServerProgramTest : public TestCase
{
    Q_OBJECT

private slots:
    void connectsAnewWheneverItCan()
    {
        Assistant assistant;
        assistant.close();
        Program program;
        QVERIFY(program.start(assistant.port()));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(program.records("# nobody listens"));
            QVERIFY(assistant.listenAgain());
            QVERIFY(assistant.accept());
            QCOMPARE(program.recorded(), QString("# connected"));
            QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\t"));
            assistant.close();
        }
    }

    void endsWithTheConnectionWhenAskedTo()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--exit-after-disconnect"}));
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\t"));
        assistant.dropPeer();
        QVERIFY(program.records("# disconnected"));
        QCOMPARE(program.recorded(), QString("# ends"));
        QCOMPARE(program.exitCode(), 0);
    }

    void givesUpWhenLeftAlone_data()
    {
        QTest::addColumn<bool>("connects");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("after a connection") << true << 0;
        QTest::newRow("never connected") << false << 3;
    }

    void givesUpWhenLeftAlone()
    {
        QFETCH(bool, connects);
        QFETCH(int, exitCode);
        Assistant assistant;
        if (!connects)
            assistant.close();
        Program program;
        QVERIFY(program.start(assistant.port(), {"--give-up", "0.3"}));
        if (connects) {
            QVERIFY(assistant.accept());
            QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\t"));
            assistant.close();
        }
        QVERIFY(program.records("# gave up"));
        QCOMPARE(program.exitCode(), exitCode);
    }

    void givingUpCountsFromTheLastConnection()
    {
        Assistant assistant;
        Program program;
        // The headset tells that the program has run for longer than its patience.
        QVERIFY(
            program.start(assistant.port(), {"--give-up", "2", "--headset", "D3A=10.0.0.1@2.1"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# D3A joins"));
        assistant.close();
        QVERIFY(program.records("# nobody listens"));
        QVERIFY(assistant.listenAgain());
        QVERIFY(assistant.accept());
    }

    void endsCleanlyOnASignal_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("connected");
        QTest::newRow("told to end") << SIGTERM << true;
        QTest::newRow("told to end while it looks for the assistant") << SIGTERM << false;
        QTest::newRow("interrupted") << SIGINT << true;
    }

    void endsCleanlyOnASignal()
    {
        QFETCH(int, number);
        QFETCH(bool, connected);
        Assistant assistant;
        if (!connected)
            assistant.close();
        Program program;
        QVERIFY(program.start(assistant.port()));
        QVERIFY(program.records(connected ? "# connected" : "# nobody listens"));
        if (connected)
            QVERIFY(assistant.accept());
        program.signal(number);
        QVERIFY(program.records("# ends"));
        QCOMPARE(program.exitCode(), 0);
        if (connected)
            QCOMPARE(assistant.line(), QByteArray("<closed>"));
    }

    void setsTheCell()
    {
        SimCell cell(path("cell"));
        QVERIFY(cell.write(0));
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--cell", path("cell")}));
        QVERIFY(assistant.accept());
        quint32 value = 0;
        QVERIFY(cell.read(&value));
        QCOMPARE(value, 1u);
    }

    void leavesTheCellAloneUnlessTold()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port()));
        QVERIFY(assistant.accept());
        QCOMPARE(program.recorded(), QString("# connected"));
    }

    void theRecordIsAppendedAndHoldsOneLineAText()
    {
        writeFile("log", "before\n");
        Assistant assistant;
        Program program;
        QVERIFY(
            program.startWith({"--port", QString::number(assistant.port()), "--log", path("log"),
                               "--exit-after-disconnect", "--headset", "D3A=10.0.0.1"}));
        QVERIFY(assistant.accept());
        assistant.say("a\tb\\c\r\n\x01 \xe4\xb8\xad");
        assistant.say("LinkTo D3X 1 ");
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100"));
        assistant.dropPeer();
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(readFile("log"), QByteArray("before\n"
                                             "# D3A joins\n"
                                             "# connected\n"
                                             "< a\\tb\\\\c\\r\\n\\x01 \xe4\xb8\xad\n"
                                             "# unknown command\n"
                                             "< LinkTo D3X 1 \n"
                                             "# no headset D3X at 1\n"
                                             "< HMDInfoRequest\n"
                                             "> HMDINFOBACK\\tD3A;10.0.0.1;false;100\n"
                                             "# disconnected\n"
                                             "# ends\n"));
    }

    void refusesWhatItDoesNotUnderstand_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("complaint");
        QTest::newRow("unknown option")
            << QStringList{"--headsets", "x"} << QByteArray("Unknown option 'headsets'.");
        QTest::newRow("value missing")
            << QStringList{"--port"} << QByteArray("Missing value after '--port'.");
        QTest::newRow("stray word")
            << QStringList{"stray"} << QByteArray("no idea what to do with \"stray\"");
        QTest::newRow("port") << QStringList{"--port", "70000"}
                              << QByteArray("--port wants a number from 1 to 65535, not \"70000\"");
        QTest::newRow("port as word")
            << QStringList{"--port", "http"}
            << QByteArray("--port wants a number from 1 to 65535, not \"http\"");
        QTest::newRow("headset without address")
            << QStringList{"--headset", "D3A"}
            << QByteArray("--headset wants SERIAL=IP[@SECONDS], not \"D3A\"");
        QTest::newRow("headset without serial")
            << QStringList{"--headset", "=1@3"}
            << QByteArray("--headset wants SERIAL=IP[@SECONDS], not \"=1@3\"");
        QTest::newRow("headset at no time")
            << QStringList{"--headset", "D3A=1@soon"}
            << QByteArray("--headset wants a number from 0 to 1000000, not \"soon\"");
        QTest::newRow("drop without time")
            << QStringList{"--headset", "D3A=1", "--drop", "D3A"}
            << QByteArray("--drop wants SERIAL@SECONDS, not \"D3A\"");
        QTest::newRow("drop of a stranger") << QStringList{"--headset", "D3A=1", "--drop", "D3B@1"}
                                            << QByteArray("--drop names no --headset: \"D3B@1\"");
        QTest::newRow("return of a stranger")
            << QStringList{"--return", "D3B@1"}
            << QByteArray("--return names no --headset: \"D3B@1\"");
        QTest::newRow("negative delay")
            << QStringList{"--link-delay=-1"}
            << QByteArray("--link-delay wants a number from 0 to 1000000, not \"-1\"");
        QTest::newRow("no pieces")
            << QStringList{"--split", "0"}
            << QByteArray("--split wants a number from 1 to 1000000, not \"0\"");
        QTest::newRow("joining none")
            << QStringList{"--join", "0"}
            << QByteArray("--join wants a number from 1 to 1000, not \"0\"");
        QTest::newRow("standing still")
            << QStringList{"--speed", "0"}
            << QByteArray("--speed wants a number from 0.01 to 1000, not \"0\"");
        QTest::newRow("no such log folder")
            << QStringList{"--log", "no/such/log"} << QByteArray("cannot write no/such/log");
        QTest::newRow("no such cell folder") << QStringList{"--cell", "no/such/cell"}
                                             << QByteArray("cannot set the cell no/such/cell");
    }

    void refusesWhatItDoesNotUnderstand()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, complaint);
        Program program;
        QVERIFY(program.startWith(arguments));
        QCOMPARE(program.exitCode(), 2);
        QCOMPARE(program.errors(), "streaming-server-sim: " + complaint + '\n');
        QCOMPARE(program.output(), QByteArray());
    }

    void helpNamesEveryOption()
    {
        Program program;
        QVERIFY(program.startWith({"--help"}));
        QCOMPARE(program.exitCode(), 0);
        const QByteArray help = program.output();
        for (const char *name :
             {"--port", "--cell", "--headset", "--link-delay", "--drop", "--return", "--restart-at",
              "--hello", "--split", "--join", "--speed", "--log", "--serial-first", "--usb",
              "--exit-after-disconnect", "--device-id", "--give-up", "--help"})
            QVERIFY2(help.contains(name), name);
    }

    void speedShortensTheTimes()
    {
        Assistant assistant;
        Program program;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(program.start(assistant.port(), {"--speed", "1000", "--headset", "D3A=10.0.0.1@300",
                                                 "--restart-at", "320", "--link-delay", "100"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# D3A joins"));
        QVERIFY2(timer.elapsed() >= 300, "the headset came too early");
        assistant.say("LinkTo D3A 10.0.0.1 ");
        QVERIFY(program.records("# D3A connected"));
        QVERIFY2(timer.elapsed() < 100000, "that was not faster");
    }
};

KOLM_TEST_MAIN(StreamingServerProgramTest)
#include "tst_streaming_server_program.moc"
