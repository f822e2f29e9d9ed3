#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QSignalBlocker>
#include <QWheelEvent>

// The streaming settings: what is shown, what is asked of the controller, in
// which order, and what the user is told before.
class TestSettingPage : public TestCase
{
    Q_OBJECT

    static void open(Interface &pages, const FakeOrb::Settings &settings = {})
    {
        QVERIFY(pages.load());
        pages.orb.becomeSettings(settings);
        pages.click("setting");
        QVERIFY(pages.dialog());
        pages.settle();
        pages.orb.calls.clear();
    }
    static FakeOrb::Settings custom(int scale = 110, int bitRate = 80)
    {
        FakeOrb::Settings settings;
        settings.definition = 3;
        settings.scale = scale;
        settings.bitRate = bitRate;
        return settings;
    }
    static void choose(Interface &pages, const QString &setting, int value)
    {
        pages.click(pages.option(setting, value));
    }
    static int chosen(Interface &pages, const QString &setting, const char *property = "value")
    {
        return pages.inDialog(setting)->property(property).toInt();
    }
    // As the user would, by keys.
    static void slide(Interface &pages, const QString &setting, int value)
    {
        QQuickItem *slider = pages.inDialog(setting);
        auto *track = slider->findChild<QQuickItem *>("track");
        track->forceActiveFocus(Qt::TabFocusReason);
        while (slider->property("value").toInt() != value) {
            const int before = slider->property("value").toInt();
            QTest::keyClick(pages.dialog(), before < value ? Qt::Key_Right : Qt::Key_Left);
            QVERIFY(slider->property("value").toInt() != before);
        }
    }
    static QString text(Interface &pages, const QString &name)
    {
        QQuickItem *item = pages.inDialog(name);
        return item ? item->property("text").toString() : QStringLiteral("(not shown)");
    }
    static void confirm(Interface &pages) { pages.click(pages.inDialog("confirm")); }

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

        Interface pages;
        FakeOrb::Settings settings;
        settings.definition = definition;
        settings.fps = fps;
        settings.encoder = encoder;
        settings.audio = audio;
        settings.av1 = true;
        settings.scale = 130;
        settings.bitRate = 95;
        open(pages, settings);
        QCOMPARE(chosen(pages, "definition"), shownDefinition);
        QCOMPARE(chosen(pages, "fps"), shownFps);
        QCOMPARE(chosen(pages, "encoder"), encoder);
        QCOMPARE(chosen(pages, "audio", "checked"), int(audio));
        if (definition == 3) {
            QCOMPARE(chosen(pages, "scale"), 130);
            QCOMPARE(chosen(pages, "bitRate"), 95);
        }
    }

    void missingNumbersGetUsefulValues()
    {
        Interface pages;
        open(pages, custom(0, 0));
        QCOMPARE(chosen(pages, "scale"), 100);
        QCOMPARE(chosen(pages, "bitRate"), 50);
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

        Interface pages;
        FakeOrb::Settings settings;
        settings.definition = stored;
        open(pages, settings);
        choose(pages, "definition", definition);
        choose(pages, "fps", 0);
        choose(pages, "encoder", 0);
        confirm(pages);
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

        Interface pages;
        open(pages, custom());
        choose(pages, "definition", definition);
        pages.settle();
        QCOMPARE(text(pages, "presetRate"), bitRate);
    }

    void bitRateAloneNeedsNoRestart()
    {
        Interface pages;
        open(pages, custom(110, 80));
        slide(pages, "bitRate", 120);
        confirm(pages);
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

        Interface pages;
        open(pages, custom(110, 80));
        if (!setting.isEmpty())
            slide(pages, "bitRate", 85); // together with the other change
        if (setting == "scale")
            slide(pages, setting, value);
        else if (setting == "audio")
            pages.click(pages.inDialog("audio"));
        else if (!setting.isEmpty())
            choose(pages, setting, value);
        confirm(pages);
        QCOMPARE(pages.orb.calls, calls);
        QVERIFY(!pages.shown("toastContent") || pages.text("toastContent") != zh("切换码率"));
    }

    void becomingCustomRestarts()
    {
        Interface pages;
        open(pages, {});
        choose(pages, "definition", 3);
        slide(pages, "bitRate", 70);
        confirm(pages);
        QCOMPARE(pages.orb.calls, (QStringList{"setVideoQuilty 100 70",
                                               "setEffects 3 1 1 false false false false"}));
    }

    void unreadableStoredScaleRestarts()
    {
        // The store may hold a number where the controller reads a text.
        Interface pages;
        open(pages, custom(0, 80));
        slide(pages, "bitRate", 85);
        confirm(pages);
        QCOMPARE(pages.orb.calls, (QStringList{"setVideoQuilty 100 85",
                                               "setEffects 3 1 1 false false false false"}));
    }

    void specialColoursAreNeverAskedFor()
    {
        Interface pages;
        FakeOrb::Settings settings;
        settings.tenBit = true;
        settings.fullRange = true;
        settings.hdr = true;
        open(pages, settings);
        confirm(pages);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void pageIsGoneBeforeSteamVRIsStopped()
    {
        Interface pages;
        open(pages, {});
        bool shown = true;
        pages.orb.onCall = [&](const QString &) { shown = pages.dialog() != nullptr; };
        confirm(pages);
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
        Interface pages;
        open(pages, {});
        choose(pages, "definition", 0);
        if (how == "Escape")
            QTest::keyClick(pages.dialog(), Qt::Key_Escape);
        else
            pages.click(pages.inDialog(how));
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void encodersDependOnTheGraphicsCard_data()
    {
        QTest::addColumn<bool>("nvidia");
        QTest::addColumn<bool>("av1");
        QTest::addColumn<QStringList>("names");

        QTest::newRow("any") << false << false << QStringList{"H.264", "HEVC"};
        QTest::newRow("NVIDIA") << true << false << QStringList{"H.264", "HEVC", "HEVC 10-bit"};
        QTest::newRow("AV1") << true << true << QStringList{"H.264", "HEVC", "HEVC 10-bit", "AV1"};
    }
    void encodersDependOnTheGraphicsCard()
    {
        QFETCH(bool, nvidia);
        QFETCH(bool, av1);
        QFETCH(QStringList, names);

        Interface pages;
        FakeOrb::Settings settings;
        settings.nvidia = nvidia;
        settings.av1 = av1;
        open(pages, settings);
        QCOMPARE(Interface::texts(pages.inDialog("encoder")), names);
    }

    void eachEncoderHasItsIndex()
    {
        for (int encoder : {0, 1, 2, 3}) {
            Interface pages;
            FakeOrb::Settings settings;
            settings.av1 = true;
            settings.encoder = 1;
            open(pages, settings);
            choose(pages, "encoder", encoder);
            confirm(pages);
            QCOMPARE(pages.orb.calls,
                     QStringList(
                         QStringLiteral("setEffects 1 1 %1 false false false false").arg(encoder)));
        }
    }

    void encoderThatIsNotOfferedBecomesHevc()
    {
        Interface pages;
        FakeOrb::Settings settings;
        settings.encoder = 3;
        open(pages, settings);
        QCOMPARE(chosen(pages, "encoder"), 1);
        confirm(pages);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void microphoneNeedsTheVirtualCable()
    {
        Interface pages;
        pages.orb.audioInstalled = false;
        open(pages, {});
        pages.click(pages.inDialog("audio"));
        QCOMPARE(pages.orb.calls, QStringList("installAudio"));
        QCOMPARE(chosen(pages, "audio", "checked"), 0);
        QVERIFY(chosen(pages, "audio", "installing"));

        pages.orb.audioInstalled = true;
        pages.click(pages.inDialog("audio"));
        QCOMPARE(pages.orb.calls, (QStringList{"installAudio", "installAudio"}));
        QCOMPARE(chosen(pages, "audio", "checked"), 1);
        QVERIFY(!chosen(pages, "audio", "installing"));
    }

    void installedCableIsNotInstalledAgain()
    {
        Interface pages;
        FakeOrb::Settings settings;
        settings.audio = true;
        open(pages, settings);
        confirm(pages);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 true false false false"));
    }

    void microphoneCanBeSwitchedOffWithoutACable()
    {
        Interface pages;
        pages.orb.audioInstalled = false;
        FakeOrb::Settings settings;
        settings.audio = true;
        open(pages, settings);
        pages.click(pages.inDialog("audio"));
        confirm(pages);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void restartIsAnnounced()
    {
        const QString restart = zh("确定后SteamVR会重新启动，正在运行的VR游戏会被关闭");
        const QString none = zh("只更改码率，SteamVR不会重新启动");
        Interface pages;
        open(pages, custom(110, 80));
        QCOMPARE(text(pages, "restart"), restart);
        slide(pages, "bitRate", 90);
        QCOMPARE(text(pages, "restart"), none);
        slide(pages, "scale", 100);
        QCOMPARE(text(pages, "restart"), restart);
        slide(pages, "scale", 110);
        QCOMPARE(text(pages, "restart"), none);
        choose(pages, "definition", 2);
        QCOMPARE(text(pages, "restart"), restart);
    }

    void slidersOnlyBelongToTheCustomDefinition()
    {
        Interface pages;
        open(pages, {});
        QVERIFY(!pages.inDialog("scale"));
        QVERIFY(!pages.inDialog("bitRate"));
        choose(pages, "definition", 3);
        QVERIFY(pages.inDialog("scale"));
        QVERIFY(pages.inDialog("bitRate"));
    }

    void bitRateIsThatOfTheLink()
    {
        for (bool wired : {false, true}) {
            Interface pages;
            pages.orb.becomeWired(wired);
            open(pages, custom());
            QCOMPARE(pages.inDialog("bitRate")->property("name").toString(),
                     wired ? zh("码率（有线）") : zh("码率（无线）"));
        }
    }

    void settingsOfAnotherHeadsetAreRead()
    {
        Interface pages;
        open(pages, {});
        choose(pages, "fps", 0);
        FakeOrb::Settings other = custom(130, 150);
        other.av1 = true;
        other.encoder = 3;
        pages.orb.becomeSettings(other);
        QCOMPARE(chosen(pages, "definition"), 3);
        QCOMPARE(chosen(pages, "fps"), 1);
        QCOMPARE(chosen(pages, "encoder"), 3);
        QCOMPARE(chosen(pages, "scale"), 130);
        QCOMPARE(chosen(pages, "bitRate"), 150);
    }

    void announcedSettingsLeaveWhatTheUserIsAt()
    {
        Interface pages;
        FakeOrb::Settings settings = custom(110, 80);
        settings.av1 = true;
        open(pages, settings);
        slide(pages, "bitRate", 95);
        choose(pages, "encoder", 3);
        QQuickItem *focused = pages.option("encoder", 3);
        focused->forceActiveFocus(Qt::TabFocusReason);
        pages.orb.becomeSettings(settings); // as each poll does
        pages.settle();
        QCOMPARE(chosen(pages, "bitRate"), 95);
        QCOMPARE(chosen(pages, "encoder"), 3);
        QCOMPARE(pages.option("encoder", 3), focused);
        QVERIFY(focused->hasActiveFocus());
    }

    void encoderThatIsOfferedNoMoreBecomesHevc()
    {
        Interface pages;
        FakeOrb::Settings settings;
        settings.av1 = true;
        settings.nvidia = true;
        open(pages, settings);
        choose(pages, "encoder", 3);
        settings.av1 = false; // a headset of another model, with the same settings
        pages.orb.becomeSettings(settings);
        QCOMPARE(chosen(pages, "encoder"), 1);
    }

    void otherLinkBringsItsBitRate()
    {
        Interface pages;
        open(pages, custom(110, 80));
        FakeOrb::Settings cable = custom(110, 150);
        QSignalBlocker quiet(pages.orb);
        pages.orb.becomeSettings(cable);
        quiet.unblock();
        QCOMPARE(chosen(pages, "bitRate"), 80);
        pages.orb.becomeWired(true);
        QCOMPARE(chosen(pages, "bitRate"), 150);
    }

    void sliderStaysInItsSteps_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");

        QTest::newRow("right") << int(Qt::Key_Right) << 80 << 85;
        QTest::newRow("up") << int(Qt::Key_Up) << 80 << 85;
        QTest::newRow("left") << int(Qt::Key_Left) << 80 << 75;
        QTest::newRow("down") << int(Qt::Key_Down) << 80 << 75;
        QTest::newRow("page up") << int(Qt::Key_PageUp) << 80 << 105;
        QTest::newRow("page down") << int(Qt::Key_PageDown) << 80 << 55;
        QTest::newRow("home") << int(Qt::Key_Home) << 80 << 10;
        QTest::newRow("end") << int(Qt::Key_End) << 80 << 200;
        QTest::newRow("right of the last") << int(Qt::Key_Right) << 200 << 200;
        QTest::newRow("left of the first") << int(Qt::Key_Left) << 10 << 10;
        QTest::newRow("from between two steps") << int(Qt::Key_Right) << 82 << 85;
    }
    void sliderStaysInItsSteps()
    {
        QFETCH(int, key);
        QFETCH(int, start);
        QFETCH(int, end);

        Interface pages;
        open(pages, custom(100, start));
        pages.inDialog("bitRate")->findChild<QQuickItem *>("track")->forceActiveFocus();
        QTest::keyClick(pages.dialog(), Qt::Key(key));
        QCOMPARE(chosen(pages, "bitRate"), end);
        QCOMPARE(text(pages, "confirm"), zh("确定")); // the page is still there
    }

    void sliderFollowsMouseAndWheel()
    {
        Interface pages;
        open(pages, custom(100, 50));
        auto *track = pages.inDialog("bitRate")->findChild<QQuickItem *>("track");
        const QPointF middle = track->mapToScene(QPointF(track->width() / 2, track->height() / 2));
        QTest::mouseClick(pages.dialog(), Qt::LeftButton, {}, middle.toPoint());
        QCOMPARE(chosen(pages, "bitRate"), 105);
        const QPointF end = track->mapToScene(QPointF(track->width() - 1, track->height() / 2));
        QTest::mousePress(pages.dialog(), Qt::LeftButton, {}, middle.toPoint());
        QTest::mouseMove(pages.dialog(), end.toPoint());
        QTest::mouseRelease(pages.dialog(), Qt::LeftButton, {}, end.toPoint());
        QCOMPARE(chosen(pages, "bitRate"), 200);
        QWheelEvent wheel(middle, pages.dialog()->mapToGlobal(middle.toPoint()), {},
                          QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(pages.dialog(), &wheel);
        QCOMPARE(chosen(pages, "bitRate"), 195);
    }

    void enterConfirms()
    {
        Interface pages;
        open(pages, {});
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
        QVERIFY(!pages.dialog());
    }

    void pageStartsWithTheDefinition()
    {
        Interface pages;
        open(pages, {});
        QTest::keyClick(pages.dialog(), Qt::Key_Right);
        QCOMPARE(chosen(pages, "definition"), 2);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QCOMPARE(chosen(pages, "definition"), 0);
    }
};

KOLM_GUI_TEST_MAIN(TestSettingPage)
#include "tst_setting_page.moc"
