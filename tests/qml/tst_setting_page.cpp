#include "tests/qml/settings_dialog.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The streaming settings: what is asked of the controller, in which order, and what
// the user is told before.
class TestSettingPage : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void storedValuesAreShown_data()
    {
        QTest::addColumn<int>("definition");
        QTest::addColumn<int>("fps");
        QTest::addColumn<int>("encoder");
        QTest::addColumn<bool>("audio");
        QTest::addColumn<int>("shownDefinition");
        QTest::addColumn<int>("shownFps");

        QTest::newRow("fresh") << 1 << 1 << 1 << false << 1 << 1;
        QTest::newRow("smooth") << 0 << 0 << 0 << true << 0 << 0;
        QTest::newRow("high") << 2 << 1 << 2 << false << 2 << 1;
        QTest::newRow("custom") << 3 << 1 << 3 << true << 3 << 1;
        QTest::newRow("any other frame rate is the low one") << 2 << 7 << 1 << false << 2 << 0;
        QTest::newRow("unknown definition is shown as standard") << 8 << 1 << 1 << false << 1 << 1;
    }
    void storedValuesAreShown()
    {
        QFETCH(int, definition);
        QFETCH(int, fps);
        QFETCH(int, encoder);
        QFETCH(bool, audio);
        QFETCH(int, shownDefinition);
        QFETCH(int, shownFps);

        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.definition = definition;
        settings.fps = fps;
        settings.encoder = encoder;
        settings.audio = audio;
        settings.av1 = true;
        settings.scale = 130;
        settings.bitRate = 95;
        pages.open(settings);
        QCOMPARE(pages.chosen("definition"), shownDefinition);
        QCOMPARE(pages.chosen("fps"), shownFps);
        QCOMPARE(pages.chosen("encoder"), encoder);
        QCOMPARE(pages.chosen("audio", "checked"), int(audio));
        if (definition == 3) {
            QCOMPARE(pages.chosen("scale"), 130);
            QCOMPARE(pages.chosen("bitRate"), 95);
        }
    }

    void missingNumbersGetUsefulValues()
    {
        SettingsDialog pages;
        pages.open(customSettings(0, 0));
        QCOMPARE(pages.chosen("scale"), 100);
        QCOMPARE(pages.chosen("bitRate"), 50);
    }

    void fixedDefinitionIsAppliedAtOnce_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("definition");
        for (int stored : {1, 3}) {
            for (int definition : {0, 1, 2})
                QTest::addRow("%d to %d", stored, definition) << stored << definition;
        }
    }
    void fixedDefinitionIsAppliedAtOnce()
    {
        QFETCH(int, stored);
        QFETCH(int, definition);

        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.definition = stored;
        pages.open(settings);
        pages.choose("definition", definition);
        pages.choose("fps", 0);
        pages.choose("encoder", 0);
        pages.confirm();
        QCOMPARE(pages.orb.calls,
                 QStringList(
                     QStringLiteral("setEffects %1 0 0 false false false false").arg(definition)));
        QVERIFY(!pages.dialog());
    }

    void fixedDefinitionTellsItsBitRate_data()
    {
        QTest::addColumn<int>("definition");
        QTest::addColumn<QString>("bitRate");
        QTest::newRow("smooth") << 0 << "20 Mbps";
        QTest::newRow("standard") << 1 << "50 Mbps";
        QTest::newRow("high") << 2 << "100 Mbps";
    }
    void fixedDefinitionTellsItsBitRate()
    {
        QFETCH(int, definition);
        QFETCH(QString, bitRate);

        SettingsDialog pages;
        pages.open(customSettings());
        pages.choose("definition", definition);
        pages.settle();
        QCOMPARE(pages.shownText("presetRate"), bitRate);
    }

    void bitRateAloneNeedsNoRestart()
    {
        SettingsDialog pages;
        pages.open(customSettings(110, 80));
        pages.slide("bitRate", 120);
        pages.confirm();
        QCOMPARE(pages.orb.calls, QStringList("setVideoBitRate 120"));
        QCOMPARE(pages.text("toastContent"), zh("切换码率"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), 2000);
        QVERIFY(!pages.dialog());
    }

    void anyOtherChangeOfACustomDefinitionRestarts_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("value");
        QTest::addColumn<QStringList>("calls");

        QTest::newRow("nothing") << "" << 0
                                 << QStringList{"setVideoQuilty 110 80",
                                                "setEffects 3 1 1 false false false false"};
        QTest::newRow("scale") << "scale" << 90
                               << QStringList{"setVideoQuilty 90 85",
                                              "setEffects 3 1 1 false false false false"};
        QTest::newRow("frame rate")
            << "fps" << 0
            << QStringList{"setVideoQuilty 110 85", "setEffects 3 0 1 false false false false"};
        QTest::newRow("encoder") << "encoder" << 0
                                 << QStringList{"setVideoQuilty 110 85",
                                                "setEffects 3 1 0 false false false false"};
        QTest::newRow("microphone") << "audio" << 1
                                    << QStringList{"installAudio", "setVideoQuilty 110 85",
                                                   "setEffects 3 1 1 true false false false"};
    }
    void anyOtherChangeOfACustomDefinitionRestarts()
    {
        QFETCH(QString, setting);
        QFETCH(int, value);
        QFETCH(QStringList, calls);

        SettingsDialog pages;
        pages.open(customSettings(110, 80));
        if (!setting.isEmpty())
            pages.slide("bitRate", 85); // together with the other change
        if (setting == "scale")
            pages.slide(setting, value);
        else if (setting == "audio")
            pages.click(pages.inDialog("audio"));
        else if (!setting.isEmpty())
            pages.choose(setting, value);
        pages.confirm();
        QCOMPARE(pages.orb.calls, calls);
        QVERIFY(!pages.shown("toastContent") || pages.text("toastContent") != zh("切换码率"));
    }

    void becomingCustomRestarts()
    {
        SettingsDialog pages;
        pages.open();
        pages.choose("definition", 3);
        pages.slide("bitRate", 70);
        pages.confirm();
        QCOMPARE(pages.orb.calls, (QStringList{"setVideoQuilty 100 70",
                                               "setEffects 3 1 1 false false false false"}));
    }

    void unreadableStoredScaleRestarts()
    {
        // The store may hold a number where the controller reads a text.
        SettingsDialog pages;
        pages.open(customSettings(0, 80));
        pages.slide("bitRate", 85);
        pages.confirm();
        QCOMPARE(pages.orb.calls, (QStringList{"setVideoQuilty 100 85",
                                               "setEffects 3 1 1 false false false false"}));
    }

    void specialColoursAreNeverAskedFor()
    {
        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.tenBit = true;
        settings.fullRange = true;
        settings.hdr = true;
        pages.open(settings);
        pages.confirm();
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void pageIsGoneBeforeSteamVRIsStopped()
    {
        SettingsDialog pages;
        pages.open();
        bool shown = true;
        pages.orb.onCall = [&](const QString &) { shown = pages.dialog() != nullptr; };
        pages.confirm();
        QVERIFY(!shown);
    }

    void cancellingAsksForNothing_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("button") << "cancel";
        QTest::newRow("icon") << "close";
        QTest::newRow("Escape") << "Escape";
    }
    void cancellingAsksForNothing()
    {
        QFETCH(QString, how);
        SettingsDialog pages;
        pages.open();
        pages.choose("definition", 0);
        if (how == "Escape")
            QTest::keyClick(pages.dialog(), Qt::Key_Escape);
        else
            pages.click(pages.inDialog(how));
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void restartIsAnnounced()
    {
        const QString restart = zh("确定后SteamVR会重新启动，正在运行的VR游戏会被关闭");
        const QString none = zh("只更改码率，SteamVR不会重新启动");
        SettingsDialog pages;
        pages.open(customSettings(110, 80));
        QCOMPARE(pages.shownText("restart"), restart);
        pages.slide("bitRate", 90);
        QCOMPARE(pages.shownText("restart"), none);
        pages.slide("scale", 100);
        QCOMPARE(pages.shownText("restart"), restart);
        pages.slide("scale", 110);
        QCOMPARE(pages.shownText("restart"), none);
        pages.choose("definition", 2);
        QCOMPARE(pages.shownText("restart"), restart);
    }

    void enterConfirms()
    {
        SettingsDialog pages;
        pages.open();
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
        QVERIFY(!pages.dialog());
    }

    void usageEventsAreSwitchedAtOnceAndNothingElseIs()
    {
        SettingsDialog pages;
        pages.open();
        QVERIFY(pages.inDialog("usage")->property("checked").toBool());
        pages.click(pages.inDialog("usage"));
        QVERIFY(!pages.usage.isOn());
        QVERIFY(!pages.inDialog("usage")->property("checked").toBool());
        QCOMPARE(pages.forgotten, 1);
        QVERIFY(pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
        pages.click(pages.inDialog("usage"));
        QVERIFY(pages.usage.isOn());
    }
};

KOLM_GUI_TEST_MAIN(TestSettingPage)
#include "tst_setting_page.moc"
