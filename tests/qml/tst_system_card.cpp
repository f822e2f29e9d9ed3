#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

namespace {

const QString configuration = QStringLiteral("[[\"CPU:\",\"Some i7\"],[\"GPU:\",\"<b>Card</b>\"]]");

} // namespace

// The card of the PC: is it good enough, and what is in it.
class TestSystemCard : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void pcIsLookedAtFirst()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("systemPage", "title"), zh("PC配置"));
        QCOMPARE(pages.text("systemPage", "status"), zh("检测中"));
        QVERIFY(pages.is("systemPage", "mark", "StatusMark.Busy"));
        QCOMPARE(pages.orb.hardwareReads, 0);
    }

    void verdictOnThePC_data()
    {
        QTest::addColumn<int>("hardware");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("mark");

        QTest::newRow("cannot") << int(FakeOrb::NotCanRun) << zh("本机配置无法串流")
                                << "StatusMark.Failure";
        QTest::newRow("low") << int(FakeOrb::LowHardware) << zh("本机配置符合要求")
                             << "StatusMark.Done";
        QTest::newRow("good") << int(FakeOrb::AdviceHardware) << zh("本机配置符合要求")
                              << "StatusMark.Done";
        QTest::newRow("best") << int(FakeOrb::ExcellentHardware) << zh("本机配置符合要求")
                              << "StatusMark.Done";
    }
    void verdictOnThePC()
    {
        QFETCH(int, hardware);
        QFETCH(QString, status);
        QFETCH(QString, mark);

        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", configuration);
        pages.orb.becomeHardware(FakeOrb::HardwareState(hardware));
        QCOMPARE(pages.text("systemPage", "status"), status);
        QVERIFY(pages.is("systemPage", "mark", mark));
    }

    // Every question is reported as a page that was seen.
    void verdictIsAskedForOnceForEachLook()
    {
        Interface pages;
        pages.orb.becomeSystemInfo("[]", configuration);
        pages.orb.becomeHardware(FakeOrb::AdviceHardware);
        pages.load();
        pages.settle();
        QCOMPARE(pages.text("systemPage", "status"), zh("本机配置符合要求"));
        QCOMPARE(pages.orb.hardwareReads, 1);

        pages.orb.becomeHardware(FakeOrb::NotCanRun);
        pages.settle();
        QCOMPARE(pages.text("systemPage", "status"), zh("本机配置无法串流"));
        QCOMPARE(pages.orb.hardwareReads, 2);
    }

    // The question may bring the notice about the graphics driver.
    void verdictWaitsForTheWindow()
    {
        Interface pages;
        pages.realDialogs = false;
        pages.orb.becomeSystemInfo("[]", configuration);
        int readsAtPortCheck = -1;
        pages.orb.onCall = [&](const QString &call) {
            if (call == QLatin1String("checkPortUsage"))
                readsAtPortCheck = pages.orb.hardwareReads;
        };
        pages.load();
        QCOMPARE(readsAtPortCheck, 0);
        QCOMPARE(pages.orb.hardwareReads, 1);
    }

    // It takes long where the list of drivers is long.
    void verdictWaitsForTheFirstFrame()
    {
        Interface pages;
        pages.orb.becomeSystemInfo("[]", configuration);
        bool drawn = false;
        bool drawnBefore = false;
        pages.orb.onCall = [&](const QString &call) {
            if (call != QLatin1String("isHideSelectPage"))
                return;
            // The last call before the window is shown.
            const QWindowList windows = QGuiApplication::topLevelWindows();
            for (QWindow *window : windows) {
                if (auto *main = qobject_cast<QQuickWindow *>(window)) {
                    QObject::connect(
                        main, &QQuickWindow::frameSwapped, main, [&] { drawn = true; },
                        Qt::DirectConnection);
                }
            }
        };
        pages.orb.onHardwareRead = [&] { drawnBefore = drawn; };
        pages.load();
        QCOMPARE(pages.orb.hardwareReads, 1);
        QVERIFY(drawnBefore);
    }

    void configurationIsListed()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", configuration);
        const QStringList shown = Interface::texts(pages.item("systemPage"));
        QCOMPARE(shown.mid(shown.indexOf("CPU:")),
                 (QStringList{"CPU:", "Some i7", "GPU:", "<b>Card</b>", zh("查看更多配置")}));
    }

    void brokenConfigurationIsAnEmptyOne_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty text") << QString();
        QTest::newRow("no JSON") << "[[";
        QTest::newRow("not an array") << "{}";
        QTest::newRow("null") << "null";
    }
    void brokenConfigurationIsAnEmptyOne()
    {
        QFETCH(QString, text);
        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", text);
        pages.orb.becomeHardware(FakeOrb::AdviceHardware);
        QCOMPARE(pages.text("systemPage", "status"), zh("检测中"));
        QCOMPARE(pages.orb.hardwareReads, 0);
    }

    void moreOpensTheSystemInformation()
    {
        StandIns pages;
        pages.click("systemMore");
        QCOMPARE(pages.dialogFile(), QStringLiteral("SystemInfoPage.qml"));
    }
};

KOLM_GUI_TEST_MAIN(TestSystemCard)
#include "tst_system_card.moc"
