#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QGuiApplication>

// Which dialog the main window opens when, and which wish is dropped, kept or
// answered. The dialogs themselves are stand-ins.
class TestDialogLoader : public TestCase
{
    Q_OBJECT

    static void wish(Interface &pages, const QString &what)
    {
        if (what == "power")
            emit pages.orb.showPowerTip();
        else if (what == "headsets")
            emit pages.orb.showMoreHMD();
        else if (what == "network")
            emit pages.orb.showNetWorkSetting();
        else if (what == "ports")
            emit pages.orb.showUseProtPage("a.exe");
        else if (what == "gpu")
            emit pages.orb.showUpdateGPUPage();
        else if (what == "update")
            emit pages.update.updateSignal("new", false);
        else if (what == "forced update")
            emit pages.update.updateSignal("new", true);
        else
            pages.click(what);
    }
    static void wishes()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("file");

        QTest::newRow("power") << "power"
                               << "PowerDownPage.qml";
        QTest::newRow("several headsets") << "headsets"
                                          << "MoreSettingPage.qml";
        QTest::newRow("network") << "network"
                                 << "NetworkSetting.qml";
        QTest::newRow("ports") << "ports"
                               << "UsePortProcessTips.qml";
        QTest::newRow("graphics driver") << "gpu"
                                         << "UpdateGpuDriverTips.qml";
        QTest::newRow("update") << "update"
                                << "UpdatePage.qml";
        QTest::newRow("forced update") << "forced update"
                                       << "UpdatePage.qml";
    }

private slots:
    void initTestCase() { registerInterface(); }

    void noneAtFirst()
    {
        StandIns pages;
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.dialogFile(), QString());
        QVERIFY(!pages.shown("dim"));
    }

    void eachWishOpensItsDialog_data()
    {
        wishes();
        QTest::newRow("feedback button") << "feedback"
                                         << "FeedbackPage.qml";
        QTest::newRow("settings button") << "setting"
                                         << "SettingPage.qml";
        QTest::newRow("switch button") << "switchMode"
                                       << "ConfirmPage.qml";
    }
    void eachWishOpensItsDialog()
    {
        QFETCH(QString, what);
        QFETCH(QString, file);

        StandIns pages;
        wish(pages, what);
        QVERIFY(pages.dialog());
        QCOMPARE(pages.dialogFile(), file);
    }

    void dialogStandsInTheMiddleAndIsNotOfTheTaskBar()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        window->setPosition(100, 50);
        emit pages.orb.showPowerTip();
        QCOMPARE(pages.dialog()->parentWin(), window);
        QCOMPARE(pages.dialog()->position(), QPoint(100 + 680 - 240, 50 + 440 - 160));
    }

    void dialogDimsTheWindow()
    {
        StandIns pages;
        emit pages.orb.showPowerTip();
        QVERIFY(pages.shown("dim"));
        QCOMPARE(pages.item("dim")->property("color").value<QColor>(), QColor("#1A1B21"));
        QCOMPARE(pages.item("dim")->opacity(), 0.8);
        QCOMPARE(pages.item("dim")->size(), QSizeF(1360, 875));
        pages.dialog()->close();
        QVERIFY(!pages.shown("dim"));
    }

    void onlyMinimisingAndClosingWorkBelowTheDim()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        emit pages.orb.showPowerTip();
        pages.orb.calls.clear();

        for (const char *name : {"help", "steamHelp", "bannerHide"})
            pages.click(name);
        QCOMPARE(pages.orb.calls, QStringList());
        QVERIFY(pages.shown("banner"));
        pages.click("setting");
        QCOMPARE(pages.dialogFile(), QStringLiteral("PowerDownPage.qml"));

        pages.click("minimise");
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
        window->showNormal();
        pages.click("close");
        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
    }

    void keyboardGoesBackToTheDialog()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        emit pages.orb.showPowerTip();
        QTRY_VERIFY(pages.dialog()->isActive());
        bool returned = false;
        connect(qApp, &QGuiApplication::focusWindowChanged, window,
                [&](const QWindow *focused) { returned |= focused == window; });
        window->requestActivate();
        QTRY_VERIFY(returned);
        QTRY_COMPARE(QGuiApplication::focusWindow(), pages.dialog());
    }

    void laterWishReplacesAnOrdinaryDialog_data() { wishes(); }
    void laterWishReplacesAnOrdinaryDialog()
    {
        QFETCH(QString, what);
        QFETCH(QString, file);

        StandIns pages;
        pages.click("feedback");
        const QPointer<QWindow> first = pages.dialog();
        wish(pages, what);
        QVERIFY(pages.dialog());
        QVERIFY(pages.dialog() != first);
        QCOMPARE(pages.dialogFile(), file);
        QTRY_VERIFY(!first);
    }

    void blockingNoticeStays_data()
    {
        QTest::addColumn<QString>("notice");
        QTest::addColumn<QString>("what");
        for (const char *notice : {"ports", "network", "gpu"}) {
            for (const char *what :
                 {"power", "headsets", "network", "ports", "gpu", "update", "forced update"})
                QTest::addRow("%s, then %s", notice, what) << notice << what;
        }
    }
    void blockingNoticeStays()
    {
        QFETCH(QString, notice);
        QFETCH(QString, what);

        StandIns pages;
        wish(pages, notice);
        const QWindow *first = pages.dialog();
        const QString file = pages.dialogFile();
        QVariant blocked;
        QMetaObject::invokeMethod(pages.window(), "checkWin", Q_RETURN_ARG(QVariant, blocked));
        QVERIFY(blocked.toBool());

        wish(pages, what);

        QCOMPARE(pages.dialog(), first);
        QCOMPARE(pages.dialogFile(), file);
    }

    // It is asked for only once a run.
    void choiceOfTheHeadsetWaitsForTheNotice()
    {
        StandIns pages;
        wish(pages, "ports");
        wish(pages, "headsets");
        wish(pages, "power");
        pages.dialog()->close();
        QVERIFY(!pages.dialog());
        QTRY_VERIFY(pages.dialog());
        QCOMPARE(pages.dialogFile(), QStringLiteral("MoreSettingPage.qml"));

        pages.dialog()->close();
        QCoreApplication::processEvents();
        QVERIFY(!pages.dialog());
    }

    void onlyTheChoiceOfTheHeadsetWaits_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : {"power", "network", "gpu", "update"})
            QTest::newRow(what) << what;
    }
    void onlyTheChoiceOfTheHeadsetWaits()
    {
        QFETCH(QString, what);
        StandIns pages;
        wish(pages, "ports");
        wish(pages, what);
        pages.dialog()->close();
        QCoreApplication::processEvents();
        QVERIFY(!pages.dialog());
    }

    void choiceOfTheHeadsetMayBeOver_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"connected", "wired", "leaving", "closed"})
            QTest::newRow(how) << how;
    }
    void choiceOfTheHeadsetMayBeOver()
    {
        QFETCH(QString, how);
        StandIns pages;
        wish(pages, "ports");
        wish(pages, "headsets");
        if (how == "connected")
            pages.orb.becomeConnected(true);
        else if (how == "wired")
            pages.orb.becomeWired(true);
        if (how == "leaving")
            pages.click("close");
        else if (how == "closed")
            emit pages.orb.closeExe();
        else
            pages.dialog()->close();
        QCoreApplication::processEvents();
        QVERIFY(!pages.dialog());
    }

    void closedBlockingNoticeIsNoHindrance()
    {
        StandIns pages;
        emit pages.orb.showUseProtPage("a.exe");
        pages.dialog()->close();
        QVariant blocked;
        QMetaObject::invokeMethod(pages.window(), "checkWin", Q_RETURN_ARG(QVariant, blocked));
        QVERIFY(!blocked.toBool());
        emit pages.orb.showPowerTip();
        QCOMPARE(pages.dialogFile(), QStringLiteral("PowerDownPage.qml"));
        QVERIFY(pages.dialog());
    }

    void sameDialogIsMadeAnew()
    {
        StandIns pages;
        emit pages.update.updateSignal("first", false);
        emit pages.update.updateSignal("second", true);
        QCOMPARE(pages.dialog()->property("note").toString(), QStringLiteral("second"));
        QVERIFY(pages.dialog()->property("isForce").toBool());
    }

    void hiddenDialogIsDestroyed()
    {
        StandIns pages;
        emit pages.orb.showPowerTip();
        const QPointer<QWindow> dialog = pages.dialog();
        QVERIFY(!pages.find("dropTimer")->property("running").toBool());
        dialog->close();
        QVERIFY(pages.find("dropTimer")->property("running").toBool());
        pages.clock.advance(999);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialog);
        pages.clock.advance(1);
        QTRY_VERIFY(!dialog);
        QCOMPARE(pages.dialogFile(), QString());
        QVERIFY(!pages.find("dropTimer")->property("running").toBool());
    }

    void portsAreAskedForWhenTheWindowIsThere()
    {
        Interface pages;
        pages.realDialogs = false;
        // The controller answers the question of the start at once.
        pages.orb.onCall = [&](const QString &call) {
            if (call == QLatin1String("checkPortUsage"))
                emit pages.orb.showUseProtPage("a.exe");
        };
        pages.load();
        QVERIFY(pages.dialog());
        QCOMPARE(pages.dialogFile(), QStringLiteral("UsePortProcessTips.qml"));
        QVERIFY(pages.window()->isVisible());
    }
};

KOLM_GUI_TEST_MAIN(TestDialogLoader)
#include "tst_dialog_loader.moc"
