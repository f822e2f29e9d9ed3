#include "link/command_dispatcher.h"
#include "tests/support/test_case.h"

using Lines = std::vector<std::string>;
Q_DECLARE_METATYPE(Lines)

// A dispatcher and what it asked its callbacks for.
struct Dispatched
{
    void process(const Lines &lines) { dispatcher.processBatch(lines); }

    QStringList done;
    CommandDispatcher dispatcher{
        {[this](const QString &text) { done << "send " + text; }, [this] { done << "restart"; }}};
};

class CommandDispatcherTest : public TestCase
{
    Q_OBJECT

private slots:
    void startsWithNothing()
    {
        Dispatched link;
        QVERIFY(!link.dispatcher.isDeviceConnected());
        QCOMPARE(link.dispatcher.deviceId(), QString());
        QCOMPARE(link.dispatcher.headsets(), HeadsetList());
    }

    void remembersWhetherTheDeviceIsConnected_data()
    {
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<bool>("connected");
        QTest::newRow("true") << Lines{"DeviceConnectBack\ttrue"} << true;
        QTest::newRow("nottrue") << Lines{"DeviceConnectBack\tnottrue"} << true;
        QTest::newRow("TRUE") << Lines{"DeviceConnectBack\ttrue", "DeviceConnectBack\tTRUE"}
                              << false;
        QTest::newRow("no argument")
            << Lines{"DeviceConnectBack\ttrue", "DeviceConnectBack"} << false;
        QTest::newRow("other command")
            << Lines{"DeviceConnectBack\ttrue", "deviceconnectback\tfalse"} << true;
        QTest::newRow("carriage return in the argument")
            << Lines{"DeviceConnectBack\ttrue\r"} << true;
        QTest::newRow("carriage return in the command")
            << Lines{"DeviceConnectBack\r\ttrue"} << false;
    }

    void remembersWhetherTheDeviceIsConnected()
    {
        Dispatched link;
        QFETCH(Lines, lines);
        link.process(lines);
        QTEST(link.dispatcher.isDeviceConnected(), "connected");
        QCOMPARE(link.done, QStringList());
    }

    void keepsTheReportedHeadsets()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tdeviceId:ABC~S1;Name1;true;x~S2;Name2;false;y"});
        QCOMPARE(link.dispatcher.deviceId(), QString("ABC"));
        QCOMPARE(link.dispatcher.headsets(),
                 (HeadsetList{{"S1", "Name1", true}, {"S2", "Name2", false}}));
        link.process({"HMDINFOBACK\tS3;Name3;true;x"});
        QCOMPARE(link.dispatcher.deviceId(), QString("ABC"));
        QCOMPARE(link.dispatcher.headsets(), (HeadsetList{{"S3", "Name3", true}}));
    }

    void emptiesTheListOnAReportWithoutArgument()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tdeviceId:ABC~S1;Name1;true;x"});
        link.process({"HMDINFOBACK"});
        QCOMPARE(link.dispatcher.headsets(), HeadsetList());
        QCOMPARE(link.dispatcher.deviceId(), QString("ABC"));
    }

    void answersHello_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("answered");
        QTest::newRow("Hello") << "Hello" << true;
        QTest::newRow("with an argument") << "Hello\tthere" << true;
        QTest::newRow("with a carriage return") << "Hello\r" << false;
        QTest::newRow("with a blank") << "Hello " << false;
        QTest::newRow("lower case") << "hello" << false;
        QTest::newRow("more than that") << "Hello there" << false;
    }

    void answersHello()
    {
        Dispatched link;
        QFETCH(QString, line);
        QFETCH(bool, answered);
        link.process({line.toStdString()});
        QCOMPARE(link.done, answered ? QStringList{"send HHHH, You can see me!\n"} : QStringList());
    }

    void asksForARestart()
    {
        Dispatched link;
        link.process({"RESTARTSTEAMVR"});
        QCOMPARE(link.done, QStringList{"restart"});
    }

    void survivesARestartThatNobodyCarriesOut()
    {
        CommandDispatcher alone({[](const QString &) {}, {}});
        alone.processBatch({"RESTARTSTEAMVR"});
        QCOMPARE(logged(), QStringList{"\"RESTARTSTEAMVR\" \"\" 0"});
    }

    void ignoresOtherCommands_data()
    {
        QTest::addColumn<QString>("line");
        for (const char *line : {"", "\t", "restartsteamvr", "RESTARTSTEAMVR\r", " RESTARTSTEAMVR",
                                 "hmdinfoback\tS;N;true;x", "HMDINFOBACK \tS;N;true;x",
                                 "XHMDINFOBACK\tS;N;true;x", "WiredConnect", "\tHello"})
            QTest::newRow(line) << line;
    }

    void ignoresOtherCommands()
    {
        Dispatched link;
        QFETCH(QString, line);
        link.process({"HMDINFOBACK\tdeviceId:A~S1;N1;true;x", "DeviceConnectBack\ttrue"});
        clearLog();
        link.process({line.toStdString()});
        QCOMPARE(link.done, QStringList());
        QCOMPARE(link.dispatcher.headsets(), (HeadsetList{{"S1", "N1", true}}));
        QCOMPARE(link.dispatcher.deviceId(), QString("A"));
        QVERIFY(link.dispatcher.isDeviceConnected());
        QCOMPARE(logged().size(), 1);
    }

    void asksForTheFirewallRuleOnce()
    {
        Dispatched link;
        link.dispatcher.setRegisterFirewallPending();
        link.process({"Hello", "DeviceConnectBack\ttrue"});
        QCOMPARE(link.done, QStringList{"send HHHH, You can see me!\n"});
        link.done.clear();
        link.process({"HMDINFOBACK\tS;N;true;x", "HMDINFOBACK"});
        link.process({"HMDINFOBACK"});
        QCOMPARE(link.done, QStringList{"send RegisterFireWall"});
        QCOMPARE(loggedCount("RegisterFireWall"), 1);
    }

    void asksForTheFirewallRuleAgainWhenToldAgain()
    {
        Dispatched link;
        link.dispatcher.setRegisterFirewallPending();
        link.dispatcher.setRegisterFirewallPending();
        link.process({"HMDINFOBACK"});
        link.dispatcher.setRegisterFirewallPending();
        link.process({"HMDINFOBACK", "HMDINFOBACK"});
        QCOMPARE(link.done, (QStringList{"send RegisterFireWall", "send RegisterFireWall"}));
    }

    void forgetsTheListAfterTenBatchesWithoutAReport()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tdeviceId:A~S;N;true;x", "DeviceConnectBack\ttrue"});
        for (int batch = 1; batch <= 9; ++batch) {
            link.process({"Hello"});
            QCOMPARE(link.dispatcher.headsets().size(), 1);
        }
        link.process({"Hello"});
        QCOMPARE(link.dispatcher.headsets(), HeadsetList());
        QCOMPARE(link.dispatcher.deviceId(), QString("A"));
        QVERIFY(link.dispatcher.isDeviceConnected());
    }

    void countsBatchesAndNotLines()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tS;N;true;x"});
        link.process(Lines(100, "Hello"));
        QCOMPARE(link.dispatcher.headsets().size(), 1);
    }

    void startsCountingAnewAfterForgetting()
    {
        Dispatched link;
        for (int batch = 0; batch < 10; ++batch)
            link.process({"x"});
        clearLog();
        link.process({"y"});
        QCOMPARE(logged(), QStringList{"\"y\" \"\" 0"});
    }

    void resetsTheCountWithAReportAnywhereInABatch()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tS;N;true;x"});
        for (int round = 0; round < 3; ++round) {
            for (int batch = 0; batch < 9; ++batch)
                link.process({"x"});
            link.process({"x", "HMDINFOBACK\tS;N;true;x", "x"});
        }
        QCOMPARE(link.dispatcher.headsets().size(), 1);
    }

    void doesNotCountAnEmptyBatch()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tS;N;true;x"});
        for (int batch = 0; batch < 20; ++batch)
            link.process({});
        QCOMPARE(link.dispatcher.headsets().size(), 1);
    }

    void logsEveryLineAfterActingOnIt()
    {
        Dispatched link;
        link.process({"x"});
        link.process({"y\tz"});
        link.dispatcher.setRegisterFirewallPending();
        link.process({"Hello", "HMDINFOBACK\tS;N;true;x~T;N;true;x", "Hello\r\t\"q\""});
        QCOMPARE(logged(), (QStringList{
                               "\"x\" \"\" 0",
                               "\"y\" \"z\" 1",
                               "\"Hello\" \"\" 2",
                               "m_hmd_info_back vector size: 2",
                               "RegisterFireWall",
                               "\"HMDINFOBACK\" \"S;N;true;x~T;N;true;x\" 0",
                               "\"Hello\\r\" \"\\\"q\\\"\" 0",
                           }));
    }

    void actsOnTheLinesInTheirOrder()
    {
        Dispatched link;
        link.dispatcher.setRegisterFirewallPending();
        link.process({"Hello", "RESTARTSTEAMVR", "HMDINFOBACK", "Hello"});
        QCOMPARE(link.done, (QStringList{"send HHHH, You can see me!\n", "restart",
                                         "send RegisterFireWall", "send HHHH, You can see me!\n"}));
    }

    void restartsOnceForAllWishesOfABatch()
    {
        Dispatched link;
        link.process(Lines(66, "RESTARTSTEAMVR"));
        QCOMPARE(link.done, QStringList{"restart"});
        QCOMPARE(loggedCount("\"RESTARTSTEAMVR\" \"\" 0"), 66);
        link.process({"RESTARTSTEAMVR", "Hello", "RESTARTSTEAMVR"});
        QCOMPARE(link.done, (QStringList{"restart", "restart", "send HHHH, You can see me!\n"}));
    }

    void actsOnNothingMoreWhenTheLinkEnds()
    {
        bool ending = false;
        QStringList done;
        CommandDispatcher dispatcher({[&](const QString &text) { done << text; },
                                      [&] {
                                          done << "restart";
                                          ending = true;
                                      },
                                      [&] { return ending; }});
        dispatcher.processBatch({"Hello", "RESTARTSTEAMVR", "DeviceConnectBack\ttrue", "Hello"});
        QCOMPARE(done, (QStringList{"HHHH, You can see me!\n", "restart"}));
        QVERIFY(!dispatcher.isDeviceConnected());
    }

    void saysWhatABatchReported_data()
    {
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<bool>("usb");
        QTest::addColumn<bool>("list");
        QTest::newRow("nothing") << Lines{} << false << false;
        QTest::newRow("others") << Lines{"Hello", "RESTARTSTEAMVR", "x"} << false << false;
        QTest::newRow("a list") << Lines{"Hello", "HMDINFOBACK"} << false << true;
        QTest::newRow("no headset") << Lines{"DeviceConnectBack\tfalse"} << true << false;
        QTest::newRow("both") << Lines{"DeviceConnectBack\ttrue", "HMDINFOBACK"} << true << true;
    }

    void saysWhatABatchReported()
    {
        Dispatched link;
        QFETCH(Lines, lines);
        const CommandDispatcher::Reported reported = link.dispatcher.processBatch(lines);
        QTEST(reported.usb, "usb");
        QTEST(reported.list, "list");
    }

    void survivesBrokenUtf8()
    {
        Dispatched link;
        link.process({"HMDINFOBACK\tS\xFF;\xE5\xA4;true;x~deviceId:\xC0", "\xFE\xFF\t\x80"});
        QCOMPARE(link.dispatcher.headsets().size(), 1);
        QCOMPARE(link.dispatcher.headsets()[0].serial, 'S' + QString(QChar::ReplacementCharacter));
        QCOMPARE(link.dispatcher.deviceId(), QString(QChar::ReplacementCharacter));
    }

    // The GUI thread asks while the restart sleeps on the worker: no lock may be
    // held then.
    void canBeAskedFromItsCallbacks()
    {
        int asked = 0;
        CommandDispatcher *dispatcher = nullptr;
        const auto ask = [&] {
            dispatcher->setRegisterFirewallPending();
            asked += dispatcher->headsets().size() + dispatcher->deviceId().size() +
                     (dispatcher->isDeviceConnected() ? 1 : 0);
        };
        CommandDispatcher asking({[&](const QString &) { ask(); }, ask});
        dispatcher = &asking;
        asking.processBatch({"DeviceConnectBack\ttrue", "HMDINFOBACK\tS;N;true;x~deviceId:AB",
                             "Hello", "RESTARTSTEAMVR", "HMDINFOBACK\tS;N;true;x"});
        QCOMPARE(asked, 3 * (1 + 2 + 1));
    }
};

KOLM_TEST_MAIN(CommandDispatcherTest)
#include "tst_command_dispatcher.moc"
