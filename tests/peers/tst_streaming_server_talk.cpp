#include "tests/peers/control_link_ends.h"
#include "tests/support/test_case.h"

namespace {

const QByteArray request = "HMDInfoRequest";

} // namespace

class StreamingServerTalkTest : public TestCase
{
    Q_OBJECT

private slots:
    void reportsTheHeadsetsItWasGiven_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("none") << QStringList() << QByteArray("HMDINFOBACK\t");
        QTest::newRow("one") << QStringList{"--headset", "D3A=10.0.0.1"}
                             << QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100");
        QTest::newRow("two, in their order")
            << QStringList{"--headset", "D3B=10.0.0.2", "--headset", "D2A=10.0.0.1"}
            << QByteArray("HMDINFOBACK\tD3B;10.0.0.2;false;100~D2A;10.0.0.1;false;100");
        QTest::newRow("one that comes much later")
            << QStringList{"--headset", "D3A=10.0.0.1@500000"} << QByteArray("HMDINFOBACK\t");
        QTest::newRow("a device id")
            << QStringList{"--headset", "D3A=10.0.0.1", "--device-id", "D9"}
            << QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100~deviceId:D9");
        QTest::newRow("a device id in front")
            << QStringList{"--headset", "D3A=10.0.0.1", "--device-id", "D9", "--serial-first"}
            << QByteArray("HMDINFOBACK\tdeviceId:D9~D3A;10.0.0.1;false;100");
        QTest::newRow("a device id alone")
            << QStringList{"--device-id", "D9"} << QByteArray("HMDINFOBACK\tdeviceId:D9");
    }

    void reportsTheHeadsetsItWasGiven()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, report);
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), arguments));
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.ask(request), report);
    }

    void aLinkedHeadsetIsConnectedAndItsSerialTheDeviceId()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--headset",
                                                 "D2B=10.0.0.2", "--link-delay", "0.05"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D2B 10.0.0.2 ");
        QVERIFY(program.records("# D2B connected"));
        QCOMPARE(
            assistant.ask(request),
            QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100~D2B;10.0.0.2;true;100~deviceId:D2B"));
    }

    void aDeviceIdOnTheCommandLineStands()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--link-delay", "0",
                                                 "--device-id", "D9"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D3A 10.0.0.1 ");
        QCOMPARE(assistant.ask(request),
                 QByteArray("HMDINFOBACK\tD3A;10.0.0.1;true;100~deviceId:D9"));
    }

    void linkingSomethingThatIsNotThereDoesNothing_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("recorded");
        QTest::newRow("another serial")
            << QByteArray("LinkTo D3X 10.0.0.1 ") << "# no headset D3X at 10.0.0.1";
        QTest::newRow("another address")
            << QByteArray("LinkTo D3A 10.0.0.9 ") << "# no headset D3A at 10.0.0.9";
        QTest::newRow("the two swapped")
            << QByteArray("LinkTo 10.0.0.1 D3A ") << "# no headset 10.0.0.1 at D3A";
        QTest::newRow("one that is not there yet")
            << QByteArray("LinkTo D3B 10.0.0.2 ") << "# no headset D3B at 10.0.0.2";
        QTest::newRow("an end of line instead of the NUL alone")
            << QByteArray("LinkTo D3A 10.0.0.1\n") << "# no headset D3A at 10.0.0.1\\n";
    }

    void linkingSomethingThatIsNotThereDoesNothing()
    {
        QFETCH(QByteArray, command);
        QFETCH(QString, recorded);
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--headset",
                                                 "D3B=10.0.0.2@500000", "--link-delay", "0"}));
        QVERIFY(assistant.accept());
        assistant.say(command);
        QVERIFY(program.records(recorded));
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100"));
    }

    void disconnectingDisconnects()
    {
        Assistant assistant;
        Program program;
        QVERIFY(
            program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--link-delay", "0"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D3A 10.0.0.1 ");
        QVERIFY(assistant.ask(request).contains("true"));
        assistant.say("Disconnect D3A 10.0.0.9 ");
        QVERIFY(assistant.ask(request).contains("true"));
        assistant.say("Disconnect D3A 10.0.0.1 ");
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100"));
    }

    void disconnectingTakesBackALinkUnderWay()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--headset",
                                                 "D3B=10.0.0.2", "--link-delay", "0.2"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D3A 10.0.0.1 ");
        assistant.say("Disconnect D3A 10.0.0.1 ");
        // By the time a later link is through, the earlier one would be as well.
        assistant.say("LinkTo D3B 10.0.0.2 ");
        QVERIFY(program.records("# D3B connected"));
        QVERIFY(assistant.ask(request).contains("D3A;10.0.0.1;false"));
    }

    void aHeadsetJoinsLater()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1@0.1"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# D3A joins"));
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100"));
    }

    void aDroppedHeadsetIsGone()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(),
                              {"--headset", "D3A=10.0.0.1", "--headset", "D3B=10.0.0.2", "--drop",
                               "D3A@0.1", "--drop", "D3B@500000", "--return", "D3A@500000"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# D3A drops"));
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3B;10.0.0.2;false;100"));
    }

    void aHeadsetThatReturnsIsUnconnected()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--headset", "D3A=10.0.0.1", "--link-delay", "0",
                                                 "--drop", "D3A@1", "--return", "D3A@1.1"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D3A 10.0.0.1 ");
        QVERIFY(program.records("# D3A connected"));
        QVERIFY(program.records("# D3A drops"));
        QVERIFY(program.records("# D3A joins"));
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100"));
    }

    void aDropTakesBackALinkUnderWay()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(),
                              {"--headset", "D3A=10.0.0.1", "--headset", "D3B=10.0.0.2",
                               "--link-delay", "1", "--drop", "D3A@0.3", "--return", "D3A@0.4"}));
        QVERIFY(assistant.accept());
        assistant.say("LinkTo D3A 10.0.0.1 ");
        assistant.say("LinkTo D3B 10.0.0.2 ");
        QVERIFY(program.records("# D3B connected"));
        QVERIFY(assistant.ask(request).startsWith("HMDINFOBACK\tD3A;10.0.0.1;false"));
    }

    void aWiredConnectIsAnsweredByTheCable_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("no cable") << QStringList() << QByteArray("DeviceConnectBack\tfalse");
        QTest::newRow("cable") << QStringList{"--usb"} << QByteArray("DeviceConnectBack\ttrue");
    }

    void aWiredConnectIsAnsweredByTheCable()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, answer);
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), arguments));
        QVERIFY(assistant.accept());
        // The wireless counterpart has no answer.
        assistant.say("WirelessConnect");
        QCOMPARE(assistant.ask("WiredConnect"), answer);
    }

    void aHeadsetBehindAPortAnswersWhileItIsReached()
    {
        Assistant assistant;
        Program program;
        QTcpServer cable;
        QVERIFY(cable.listen(QHostAddress::LocalHost));
        QVERIFY(
            program.start(assistant.port(), {"--usb-port", QString::number(cable.serverPort())}));
        QVERIFY(assistant.accept());
        const QByteArray no = "DeviceConnectBack\tfalse";
        const QByteArray yes = "DeviceConnectBack\ttrue";
        QCOMPARE(assistant.ask("WiredConnect"), no);
        QVERIFY(cable.waitForNewConnection(5000));
        QTcpSocket *headset = cable.nextPendingConnection();
        QCOMPARE(assistant.ask("WiredConnect"), no); // it has not greeted yet
        headset->write("HEADSET\n");
        QVERIFY(headset->waitForBytesWritten(5000));
        QTRY_COMPARE(assistant.ask("WiredConnect"), yes);
        headset->close();
        QTRY_COMPARE(assistant.ask("WiredConnect"), no);
    }

    void asksOnceForARestart()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--restart-at", "0.2"}));
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\t"));
        QCOMPARE(assistant.line(), QByteArray("RESTARTSTEAMVR"));
        assistant.dropPeer();
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.ask(request), QByteArray("HMDINFOBACK\t"));
    }

    void asksForTheRestartWhenConnectedAtLast()
    {
        Assistant assistant;
        assistant.close();
        Program program;
        QVERIFY(program.start(assistant.port(), {"--restart-at", "0"}));
        QVERIFY(program.records("# nobody listens"));
        QVERIFY(assistant.listenAgain());
        QVERIFY(assistant.accept());
        QCOMPARE(assistant.line(), QByteArray("RESTARTSTEAMVR"));
    }

    void greetsOnEveryConnection()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--hello"}));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(assistant.accept());
            QCOMPARE(assistant.line(), QByteArray("Hello"));
            assistant.say("HHHH, You can see me!\n");
            QVERIFY(program.records("< HHHH, You can see me!\\n"));
            assistant.dropPeer();
            QCOMPARE(program.recorded(), QString("# disconnected"));
        }
    }

    void notesWhatNeedsNoAnswer()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port()));
        QVERIFY(assistant.accept());
        for (const char *command :
             {"RegisterFireWall", "WirelessConnect", "Bogus", "hmdinforequest"})
            assistant.say(command);
        assistant.say(request);
        QStringList record;
        while (record.isEmpty() || !record.last().startsWith("> "))
            record.append(program.recorded());
        QCOMPARE(record, QStringList({"# connected", "< RegisterFireWall",
                                      "# firewall rule registered", "< WirelessConnect", "< Bogus",
                                      "# unknown command", "< hmdinforequest", "# unknown command",
                                      "< HMDInfoRequest", "> HMDINFOBACK\\t"}));
    }

    void commandsMayComeInAnyPieces()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port()));
        QVERIFY(assistant.accept());
        assistant.send(QByteArray("HMDInfoRequest\0HMDInfoRequest\0Wired", 35));
        QCOMPARE(assistant.line(), QByteArray("HMDINFOBACK\t"));
        QCOMPARE(assistant.line(), QByteArray("HMDINFOBACK\t"));
        assistant.send(QByteArray("Connect\0", 8));
        QCOMPARE(assistant.line(), QByteArray("DeviceConnectBack\tfalse"));
    }

    void sendsInPiecesWhenAskedTo()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--split", "1", "--headset", "D3A=10.0.0.1"}));
        QVERIFY(assistant.accept());
        assistant.say(request);
        QByteArray all;
        int chunks = 0;
        while (!all.endsWith('\n')) {
            const QByteArray chunk = assistant.chunk();
            QVERIFY(chunk != "<closed>");
            all += chunk;
            ++chunks;
        }
        QCOMPARE(all, QByteArray("HMDINFOBACK\tD3A;10.0.0.1;false;100\n"));
        QVERIFY2(chunks > 1, "it all came at once");
    }

    void holdsRepliesBackAndSendsThemTogether()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--join", "2"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# connected"));
        assistant.say(request);
        QCOMPARE(program.recorded(), QString("< HMDInfoRequest"));
        assistant.say("WiredConnect");
        QCOMPARE(program.recorded(), QString("< WiredConnect"));
        QCOMPARE(program.recorded(), QString("> HMDINFOBACK\\t"));
        QCOMPARE(program.recorded(), QString("> DeviceConnectBack\\tfalse"));
        QCOMPARE(assistant.chunk(), QByteArray("HMDINFOBACK\t\nDeviceConnectBack\tfalse\n"));
    }

    void nothingIsCarriedOverIntoTheNextConnection()
    {
        Assistant assistant;
        Program program;
        QVERIFY(program.start(assistant.port(), {"--join", "2"}));
        QVERIFY(assistant.accept());
        QVERIFY(program.records("# connected"));
        assistant.send(request + '\0' + "HMDInfo");
        QCOMPARE(program.recorded(), QString("< HMDInfoRequest"));
        assistant.dropPeer();
        QCOMPARE(program.recorded(), QString("# disconnected"));
        QVERIFY(assistant.accept());
        QCOMPARE(program.recorded(), QString("# connected"));
        // Neither the half command nor the reply that waited for company is left.
        assistant.say("WiredConnect");
        QCOMPARE(program.recorded(), QString("< WiredConnect"));
        assistant.say("WiredConnect");
        QCOMPARE(program.recorded(), QString("< WiredConnect"));
        QCOMPARE(program.recorded(), QString("> DeviceConnectBack\\tfalse"));
        QCOMPARE(program.recorded(), QString("> DeviceConnectBack\\tfalse"));
    }
};

KOLM_TEST_MAIN(StreamingServerTalkTest)
#include "tst_streaming_server_talk.moc"
