#include "controller/usage_events.h"
#include "tests/support/test_case.h"

class TestUsageEvents : public TestCase
{
    Q_OBJECT

    QString id;
    QJsonObject data;
    UsageEvents events{[this](const QString &eventId, const QJsonObject &extra) {
        id = eventId;
        data = extra;
    }};

private slots:
    void theStartIsAPageView()
    {
        events.programStarted();
        QCOMPARE(id, QString("streamingAssistant_streaming_streamingType_0_0_page_view"));
        QCOMPARE(data, QJsonObject());
    }

    void modesAreReportedByTheModeLeftOrChosen_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<bool>("isSwitch");
        QTest::addColumn<QString>("event");
        QTest::newRow("chose wired")
            << true << false
            << "streamingAssistant_streaming_streamingType_wiredStreaming_start_pit_click";
        QTest::newRow("chose wireless")
            << false << false
            << "streamingAssistant_streaming_streamingType_wirelessStreaming_start_pit_click";
        QTest::newRow("left wired")
            << true << true
            << "streamingAssistant_streaming_wiredStreaming_orbGlasses_switchToWirelessStreaming_"
               "pit_click";
        QTest::newRow("left wireless")
            << false << true
            << "streamingAssistant_streaming_wirelessStreaming_orbGlasses_switchToWiredStreaming_"
               "pit_click";
    }
    void modesAreReportedByTheModeLeftOrChosen()
    {
        QFETCH(bool, wired);
        QFETCH(bool, isSwitch);
        QFETCH(QString, event);
        events.streamMode(linkKind(wired), isSwitch);
        QCOMPARE(id, event);
        QCOMPARE(data, QJsonObject());
    }

    void thePageOfAModeTellsWhetherThePcCanStream_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<bool>("isAvailable");
        QTest::addColumn<QString>("event");
        const QString wired = "streamingAssistant_streaming_wiredStreaming_0_0_page_view";
        const QString wireless = "streamingAssistant_streaming_wirelessStreaming_0_0_page_view";
        QTest::newRow("wired") << true << true << wired;
        QTest::newRow("wired, cannot") << true << false << wired;
        QTest::newRow("wireless") << false << true << wireless;
        QTest::newRow("wireless, cannot") << false << false << wireless;
    }
    void thePageOfAModeTellsWhetherThePcCanStream()
    {
        QFETCH(bool, wired);
        QFETCH(bool, isAvailable);
        QFETCH(QString, event);
        events.modeViewed(linkKind(wired), isAvailable);
        QCOMPARE(id, event);
        QCOMPARE(data, (QJsonObject{{"is_available", isAvailable}}));
    }

    void theQualityIsNamedAsReportsAlwaysDid_data()
    {
        QTest::addColumn<int>("definition");
        QTest::addColumn<bool>("wired");
        QTest::addColumn<QString>("quality");
        QTest::newRow("0") << 0 << false << "High";
        QTest::newRow("1") << 1 << false << "Standard";
        QTest::newRow("2") << 2 << false << "Smooth";
        QTest::newRow("3") << 3 << false << "Auto";
        QTest::newRow("-1") << -1 << false << "Auto";
        QTest::newRow("wired") << 0 << true << "Wired";
    }
    void theQualityIsNamedAsReportsAlwaysDid()
    {
        QFETCH(int, definition);
        QFETCH(bool, wired);
        QFETCH(QString, quality);
        events.setStartSettings({true, true, definition});
        events.steamAppEnded(61, "Game & é 中", linkKind(wired));
        QCOMPARE(id, QString("streamingAssistant_steamvr_0_0_0_module_pend"));
        const QJsonObject expected{{"duration", 61},
                                   {"streamingApp", "Game & é 中"},
                                   {"streamingType", wired ? "wired" : "wireless"},
                                   {"fps", 90},
                                   {"microphoneOn", true},
                                   {"graphicsQuality", quality}};
        QCOMPARE(data, expected);
    }

    void theLowFrameRateIs72()
    {
        events.setStartSettings({false, false, 1});
        events.steamAppEnded(0, {}, LinkKind::Wireless);
        QCOMPARE(data.value("fps").toInt(), 72);
        QCOMPARE(data.value("microphoneOn"), QJsonValue(false));
    }

    void theEndTellsHowLong()
    {
        events.programClosed(3600);
        QCOMPARE(id, QString("streamingAssistant_streaming_0_0_0_module_pend"));
        QCOMPARE(data, (QJsonObject{{"duration", 3600}}));
    }

    void withoutAReporterNothingHappens()
    {
        UsageEvents silent{{}};
        id.clear();
        silent.programStarted();
        QVERIFY(id.isEmpty());
    }
};

KOLM_TEST_MAIN(TestUsageEvents)
#include "tst_usage_events.moc"
