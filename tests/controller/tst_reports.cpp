#include "controller/feedback_status.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QDir>

namespace {

const QString wiredPage =
    QStringLiteral("streamingAssistant_streaming_wiredStreaming_0_0_page_view");
const QString wirelessPage =
    QStringLiteral("streamingAssistant_streaming_wirelessStreaming_0_0_page_view");

} // namespace

// What the controller sends to the vendor cloud, and when.
class TestReports : public TestCase
{
    Q_OBJECT

    QJsonObject feedback() const { return readJson("feedback.json"); }

private slots:
    void theStartIsReportedLastOfAllThatItDoes()
    {
        writeFile("set.json", R"({"wiredOrWireless":2})");
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QCOMPARE(f.events.size(), 1);
        QCOMPARE(f.events[0].first,
                 QString("streamingAssistant_streaming_streamingType_0_0_page_view"));
        QCOMPARE(f.events[0].second, QJsonObject());
        QVERIFY(f.sentAfter.isEmpty());
    }

    void everyLookAtTheHardwareIsAPageView_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("event");
        QTest::newRow("wired") << QByteArray("{\"wiredOrWireless\":1}") << wiredPage;
        QTest::newRow("wireless") << QByteArray("{\"wiredOrWireless\":2}") << wirelessPage;
    }
    void everyLookAtTheHardwareIsAPageView()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, event);
        writeFile("set.json", stored);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        for (int count = 2; count < 4; ++count) {
            announce("cpu or gpu not match");
            const int state = f.orb().property("pcHardware").toInt();
            QCOMPARE(f.events.size(), count);
            QCOMPARE(f.events.last().first, event);
            QCOMPARE(f.events.last().second,
                     (QJsonObject{{"is_available", state != ORBManager::NotCanRun}}));
        }
    }

    void theChoiceOfAModeIsReportedAsThePagesSay()
    {
        ControllerFixture f(dir());
        f.orb();
        f.orb().reportstreamMode(true, true);
        QCOMPARE(f.events.last().first,
                 QString("streamingAssistant_streaming_wiredStreaming_orbGlasses_"
                         "switchToWirelessStreaming_pit_click"));
        QCOMPARE(f.events.size(), 2);
    }

    void closingReportsTheTimeAndThenSendsEverything()
    {
        ControllerFixture f(dir());
        f.orb();
        f.clock.advance(61999);
        f.orb().closeApp();
        QCOMPARE(f.events.size(), 2);
        QCOMPARE(f.events[1].first, QString("streamingAssistant_streaming_0_0_0_module_pend"));
        QCOMPARE(f.events[1].second, (QJsonObject{{"duration", 61}}));
        QCOMPARE(f.sentAfter, QList<int>{2});
        f.close();
        QCOMPARE(f.events.size(), 2);
        QCOMPARE(f.sentAfter.size(), 1);
    }

    void anUpdateOnlyAsksThePagesToClose()
    {
        ControllerFixture f(dir());
        f.orb();
        f.orb().setupNewVersion();
        QCOMPARE(f.emitted, QStringList{"closeExe"});
        QCOMPARE(f.events.size(), 1);
        QVERIFY(f.sentAfter.isEmpty());
    }

    void feedbackIsWrittenAndUploadedUnderItsName()
    {
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().connectVR("D3A0123456", "10.0.0.7");
        f.orb().sendFeecback("It \"works\"\n很好 %1", "me@example.com %2");
        QCOMPARE(f.uploads.size(), 1);
        QCOMPARE(f.uploads[0].first, dir() + "/feedback.json");
        QCOMPARE(f.uploads[0].second,
                 f.clock.now().toString("yyyy-MM-dd hh:mm:ss") + "_D3A0123456_me@example.com %2");
        QJsonObject expected = f.system.toJson();
        expected["content"] = "It \"works\"\n很好 %1";
        expected["contact"] = "me@example.com %2";
        QCOMPARE(feedback(), expected);
        QVERIFY(expected.contains("cpu"));
    }

    void aLaterFeedbackReplacesTheFile()
    {
        ControllerFixture f(dir());
        f.orb().sendFeecback("a long first one", "a");
        f.orb().sendFeecback("2", "b");
        QCOMPARE(f.uploads.size(), 2);
        QCOMPARE(feedback().value("content").toString(), QString("2"));
        QCOMPARE(feedback().value("contact").toString(), QString("b"));
    }

    void whatBecameOfTheFeedbackIsSaid_data()
    {
        QTest::addColumn<bool>("taken");
        QTest::addColumn<FeedbackStatus::State>("state");
        QTest::newRow("taken") << true << FeedbackStatus::Sent;
        QTest::newRow("not taken") << false << FeedbackStatus::Kept;
    }
    void whatBecameOfTheFeedbackIsSaid()
    {
        QFETCH(bool, taken);
        QFETCH(FeedbackStatus::State, state);
        ControllerFixture f(dir());
        QCOMPARE(f.orb().feedback().state(), FeedbackStatus::None);
        f.orb().sendFeecback("content", "contact");
        QCOMPARE(f.orb().feedback().state(), FeedbackStatus::Sending);
        f.uploadDone(taken);
        QCOMPARE(f.orb().feedback().state(), state);
        f.orb().sendFeecback("more", "contact");
        QCOMPARE(f.orb().feedback().state(), FeedbackStatus::Sending);
        f.close();
        f.uploadDone(taken); // nobody is there any more
    }

    void feedbackThatCannotBeWrittenIsNotUploaded()
    {
        QVERIFY(QDir(dir()).mkdir("feedback.json"));
        ControllerFixture f(dir());
        f.orb().sendFeecback("content", "contact");
        QVERIFY(f.uploads.isEmpty());
        QCOMPARE(f.orb().feedback().state(), FeedbackStatus::NotWritten);
        QCOMPARE(loggedCount("feedback.json cannot be written"), 1);
    }
};

KOLM_TEST_MAIN(TestReports)
#include "tst_reports.moc"
