#include "tests/cloud/cloud_peer.h"
#include "tests/e2e/window_fixture.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>

// What the window has to say, and what the user says to that.
class TestWindowNotices : public WindowFixture
{
    Q_OBJECT

private slots:
    void eachNoticeIsReadAndClosed_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("file");
        QTest::newRow("power") << "on-battery"
                               << "PowerDownPage";
        QTest::newRow("network") << "public-network"
                                 << "NetworkSetting";
        QTest::newRow("ports") << "ports-taken"
                               << "UsePortProcessTips";
        QTest::newRow("driver") << "old-graphics-driver"
                                << "UpdateGpuDriverTips";
    }

    void eachNoticeIsReadAndClosed()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, file);

        QVERIFY(start(scenario).start());
        QCOMPARE(tell("until dialog " + file), QString("ok"));
        QCOMPARE(tell("until shown dim"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QCOMPARE(tell("until hidden dim"), QString("ok"));
        // It was a notice, not an obstacle.
        QCOMPARE(tell("until linked"), QString("ok"));
    }

    void blockingNoticeOutlastsAnother()
    {
        writeFile("both.json", R"({ "title": "taken ports, and then the power fails",
        "pc": { "start": [{ "name": "node.exe", "path": "C:\\node.exe", "ports": [9943] }] },
        "at": [{ "seconds": 25, "acLine": "offline" }] })");
        QVERIFY(start(path("both.json")).start());
        QCOMPARE(tell("until dialog UsePortProcessTips"), QString("ok"));
        QCOMPARE(tell("until linked"), QString("ok"));
        tell("wait 30");
        QCOMPARE(tell("until dialog UsePortProcessTips"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        // The tip was dropped, not kept.
        tell("wait 15");
        QCOMPARE(tell("until nodialog"), QString("ok"));
    }

    void powerNoticeGoesWithItsCause()
    {
        QVERIFY(start("on-battery").start());
        QCOMPARE(tell("until dialog PowerDownPage"), QString("ok"));
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QCOMPARE(tell("until hidden dim"), QString("ok"));
    }

    void forcedUpdateIsLeftOnlyWithTheProgram()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("newer-forced"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        press({"Escape"});
        tell("wait 2");
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        click(tell("where leave").split(' '));
        QCOMPARE(program.wait(), 0);
    }

    void feedbackThatIsWrittenReachesTheCloud()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("normal"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until linked"), QString("ok"));
        clickOn("feedback");
        QCOMPARE(tell("until dialog FeedbackPage"), QString("ok"));
        // The text has the keyboard already, the contact is the next stop.
        xdo({"type", "--delay", "60", "It stutters"});
        press({"Tab"});
        xdo({"type", "--delay", "60", "me"});
        press({"Return"});
        QCOMPARE(tell("until shown thanks"), QString("ok"));
        press({"Return"});
        QCOMPARE(tell("until nodialog"), QString("ok"));

        const auto uploads = [&cloud] {
            QList<Received> found;
            for (const Received &request : cloud.received()) {
                if (request.target.endsWith("/upload"))
                    found.append(request);
            }
            return found;
        };
        QTRY_COMPARE_WITH_TIMEOUT(uploads().size(), 1, 30000);
        // The document, and what the cloud is to call it.
        const QByteArray body = uploads().first().body;
        const int begin = body.indexOf("\r\n\r\n{") + 4;
        const QByteArray document = body.mid(begin, body.indexOf("\r\n--", begin) - begin);
        const QRegularExpression name(
            "name=\"fileName\"\r\n\r\n"
            "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d_D3SIM00001_me\r\n");
        QVERIFY2(name.match(QString::fromUtf8(body)).hasMatch(), body);
        const QJsonObject written = QJsonDocument::fromJson(document).object();
        QCOMPARE(written.value("content").toString(), QString("It stutters"));
        QCOMPARE(written.value("contact").toString(), QString("me"));
        QVERIFY(written.contains("cpu"));
    }

    void acceptedUpdateIsStartedAndTheProgramEnds()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("newer"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        const QString installer = program.dataDir() + "/download/KOLM_Setup_9.1.17.exe";
        QVERIFY(QFileInfo(installer).isFile());
        QCOMPARE(program.journal().filter("KOLM_Setup"), QStringList());

        xdo({"key", "Return"});

        QCOMPARE(program.wait(), 0);
        const QStringList launches = program.journal().filter("KOLM_Setup");
        QCOMPARE(launches.size(), 1);
        QVERIFY2(launches.first().contains(installer), qPrintable(launches.first()));
    }
};

KOLM_WINDOW_TEST_MAIN(TestWindowNotices)
#include "tst_window_notices.moc"
