#include "tests/qml/settings_dialog.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QSignalBlocker>
#include <QWheelEvent>

// The streaming settings: what is offered, and what becomes of it when the headset,
// the link or the PC is another.
class TestSettingControls : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

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

        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.nvidia = nvidia;
        settings.av1 = av1;
        pages.open(settings);
        QCOMPARE(Interface::texts(pages.inDialog("encoder")), names);
    }

    void eachEncoderHasItsIndex()
    {
        for (int encoder : {0, 1, 2, 3}) {
            SettingsDialog pages;
            FakeOrb::Settings settings;
            settings.av1 = true;
            settings.encoder = 1;
            pages.open(settings);
            pages.choose("encoder", encoder);
            pages.confirm();
            QCOMPARE(pages.orb.calls,
                     QStringList(
                         QStringLiteral("setEffects 1 1 %1 false false false false").arg(encoder)));
        }
    }

    void encoderThatIsNotOfferedBecomesHevc()
    {
        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.encoder = 3;
        pages.open(settings);
        QCOMPARE(pages.chosen("encoder"), 1);
        pages.confirm();
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void microphoneNeedsTheVirtualCable()
    {
        SettingsDialog pages;
        pages.orb.audioInstalled = false;
        pages.open();
        pages.click(pages.inDialog("audio"));
        QCOMPARE(pages.orb.calls, QStringList("installAudio"));
        QCOMPARE(pages.chosen("audio", "checked"), 0);
        QVERIFY(pages.chosen("audio", "installing"));

        pages.orb.audioInstalled = true;
        pages.click(pages.inDialog("audio"));
        QCOMPARE(pages.orb.calls, (QStringList{"installAudio", "installAudio"}));
        QCOMPARE(pages.chosen("audio", "checked"), 1);
        QVERIFY(!pages.chosen("audio", "installing"));
    }

    void installedCableIsNotInstalledAgain()
    {
        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.audio = true;
        pages.open(settings);
        pages.confirm();
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 true false false false"));
    }

    void microphoneCanBeSwitchedOffWithoutACable()
    {
        SettingsDialog pages;
        pages.orb.audioInstalled = false;
        FakeOrb::Settings settings;
        settings.audio = true;
        pages.open(settings);
        pages.click(pages.inDialog("audio"));
        pages.confirm();
        QCOMPARE(pages.orb.calls, QStringList("setEffects 1 1 1 false false false false"));
    }

    void slidersOnlyBelongToTheCustomDefinition()
    {
        SettingsDialog pages;
        pages.open();
        QVERIFY(!pages.inDialog("scale"));
        QVERIFY(!pages.inDialog("bitRate"));
        pages.choose("definition", 3);
        QVERIFY(pages.inDialog("scale"));
        QVERIFY(pages.inDialog("bitRate"));
    }

    void bitRateIsThatOfTheLink()
    {
        for (bool wired : {false, true}) {
            SettingsDialog pages;
            pages.orb.becomeWired(wired);
            pages.open(customSettings());
            QCOMPARE(pages.inDialog("bitRate")->property("name").toString(),
                     wired ? zh("码率（有线）") : zh("码率（无线）"));
        }
    }

    void settingsOfAnotherHeadsetAreRead()
    {
        SettingsDialog pages;
        pages.open();
        pages.choose("fps", 0);
        FakeOrb::Settings other = customSettings(130, 150);
        other.av1 = true;
        other.encoder = 3;
        pages.orb.becomeSettings(other);
        QCOMPARE(pages.chosen("definition"), 3);
        QCOMPARE(pages.chosen("fps"), 1);
        QCOMPARE(pages.chosen("encoder"), 3);
        QCOMPARE(pages.chosen("scale"), 130);
        QCOMPARE(pages.chosen("bitRate"), 150);
    }

    void announcedSettingsLeaveWhatTheUserIsAt()
    {
        SettingsDialog pages;
        FakeOrb::Settings settings = customSettings(110, 80);
        settings.av1 = true;
        pages.open(settings);
        pages.slide("bitRate", 95);
        pages.choose("encoder", 3);
        QQuickItem *focused = pages.option("encoder", 3);
        focused->forceActiveFocus(Qt::TabFocusReason);
        pages.orb.becomeSettings(settings); // as each poll does
        pages.settle();
        QCOMPARE(pages.chosen("bitRate"), 95);
        QCOMPARE(pages.chosen("encoder"), 3);
        QCOMPARE(pages.option("encoder", 3), focused);
        QVERIFY(focused->hasActiveFocus());
    }

    void encoderThatIsOfferedNoMoreBecomesHevc()
    {
        SettingsDialog pages;
        FakeOrb::Settings settings;
        settings.av1 = true;
        settings.nvidia = true;
        pages.open(settings);
        pages.choose("encoder", 3);
        settings.av1 = false; // a headset of another model, with the same settings
        pages.orb.becomeSettings(settings);
        QCOMPARE(pages.chosen("encoder"), 1);
    }

    void otherLinkBringsItsBitRate()
    {
        SettingsDialog pages;
        pages.open(customSettings(110, 80));
        FakeOrb::Settings cable = customSettings(110, 150);
        QSignalBlocker quiet(pages.orb);
        pages.orb.becomeSettings(cable);
        quiet.unblock();
        QCOMPARE(pages.chosen("bitRate"), 80);
        pages.orb.becomeWired(true);
        QCOMPARE(pages.chosen("bitRate"), 150);
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

        SettingsDialog pages;
        pages.open(customSettings(100, start));
        pages.inDialog("bitRate")->findChild<QQuickItem *>("track")->forceActiveFocus();
        QTest::keyClick(pages.dialog(), Qt::Key(key));
        QCOMPARE(pages.chosen("bitRate"), end);
        QCOMPARE(pages.shownText("confirm"), zh("确定")); // the page is still there
    }

    void sliderFollowsMouseAndWheel()
    {
        SettingsDialog pages;
        pages.open(customSettings(100, 50));
        auto *track = pages.inDialog("bitRate")->findChild<QQuickItem *>("track");
        const QPointF middle = track->mapToScene(QPointF(track->width() / 2, track->height() / 2));
        QTest::mouseClick(pages.dialog(), Qt::LeftButton, {}, middle.toPoint());
        QCOMPARE(pages.chosen("bitRate"), 105);
        const QPointF end = track->mapToScene(QPointF(track->width() - 1, track->height() / 2));
        QTest::mousePress(pages.dialog(), Qt::LeftButton, {}, middle.toPoint());
        QTest::mouseMove(pages.dialog(), end.toPoint());
        QTest::mouseRelease(pages.dialog(), Qt::LeftButton, {}, end.toPoint());
        QCOMPARE(pages.chosen("bitRate"), 200);
        QWheelEvent wheel(middle, pages.dialog()->mapToGlobal(middle.toPoint()), {},
                          QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(pages.dialog(), &wheel);
        QCOMPARE(pages.chosen("bitRate"), 195);
    }

    void pageStartsWithTheDefinition()
    {
        SettingsDialog pages;
        pages.open();
        QTest::keyClick(pages.dialog(), Qt::Key_Right);
        QCOMPARE(pages.chosen("definition"), 2);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QTest::keyClick(pages.dialog(), Qt::Key_Left);
        QCOMPARE(pages.chosen("definition"), 0);
    }
};

KOLM_GUI_TEST_MAIN(TestSettingControls)
#include "tst_setting_controls.moc"
