#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>

// What a dialog is told, and what it has the main window do. The dialogs themselves
// are stand-ins.
class TestDialogWishes : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void namesOfProgramsAreHandedOver()
    {
        StandIns pages;
        emit pages.orb.showUseProtPage("a.exe, <b>b.exe</b>");
        QCOMPARE(pages.dialog()->property("names").toString(),
                 QStringLiteral("a.exe, <b>b.exe</b>"));
    }

    void noteAndForceAreHandedOver()
    {
        StandIns pages;
        emit pages.update.updateSignal("new<br>faster", false);
        QCOMPARE(pages.dialog()->property("note").toString(), QStringLiteral("new<br>faster"));
        QVERIFY(!pages.dialog()->property("isForce").toBool());
    }

    void forcedUpdateStopsSteam_data()
    {
        QTest::addColumn<bool>("forced");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("forced") << true << QStringList("stopSteam");
        QTest::newRow("not forced") << false << QStringList();
    }
    void forcedUpdateStopsSteam()
    {
        QFETCH(bool, forced);
        QFETCH(QStringList, calls);

        StandIns pages;
        pages.orb.calls.clear();
        bool shownWhenStopped = false;
        pages.orb.onCall = [&](const QString &) { shownWhenStopped = pages.dialog() != nullptr; };
        emit pages.update.updateSignal("new", forced);
        QCOMPARE(pages.orb.calls, calls);
        QCOMPARE(shownWhenStopped, forced);
    }

    void forcedUpdateThatIsNotShownStopsNothing()
    {
        StandIns pages;
        emit pages.orb.showUseProtPage("a.exe");
        pages.orb.calls.clear();
        emit pages.update.updateSignal("new", true);
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void switchAsksFirst_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QStringList>("calls");

        QTest::newRow("from wired") << true << zh("确定切换为无线串流")
                                    << QStringList{"reportstreamMode true true", "wired=false"};
        QTest::newRow("from wireless") << false << zh("确定切换为有线串流")
                                       << QStringList{"reportstreamMode false true", "wired=true"};
    }
    void switchAsksFirst()
    {
        QFETCH(bool, wired);
        QFETCH(QString, question);
        QFETCH(QStringList, calls);

        StandIns pages;
        pages.orb.becomeWired(wired);
        pages.orb.calls.clear();

        pages.click("switchMode");
        QCOMPARE(pages.dialog()->property("text").toString(), question);
        QCOMPARE(pages.orb.calls, QStringList());

        QMetaObject::invokeMethod(pages.dialog(), "accepted");
        QCOMPARE(pages.orb.calls, calls);
    }

    void switchMayBeCancelled()
    {
        StandIns pages;
        pages.orb.calls.clear();
        pages.click("switchMode");
        pages.dialog()->close();
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void dialogMayShowAToast()
    {
        StandIns pages;
        pages.click("feedback");
        QMetaObject::invokeMethod(pages.dialog(), "toast", Q_ARG(QString, "thanks"),
                                  Q_ARG(int, 3000));
        QCOMPARE(pages.text("toastContent"), QStringLiteral("thanks"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), 3000);
        QVERIFY(qobject_cast<QQuickWindow *>(pages.find("toast"))->isVisible());
    }

    void dialogMayOpenAnother()
    {
        StandIns pages;
        pages.click("setting");
        QMetaObject::invokeMethod(pages.dialog(), "openPage",
                                  Q_ARG(QString, "qrc:/qml/windows/WaitPage.qml"),
                                  Q_ARG(QVariant, QVariantMap({{"text", "a moment"}})));
        QCOMPARE(pages.dialogFile(), QStringLiteral("WaitPage.qml"));
        QCOMPARE(pages.dialog()->property("text").toString(), QStringLiteral("a moment"));
    }

    void dialogMayCloseTheProgram()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        emit pages.update.updateSignal("new", false);
        pages.orb.calls.clear();
        QMetaObject::invokeMethod(pages.dialog(), "closeMain");
        QVERIFY(!pages.dialog());
        QVERIFY(!window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void dialogMayLeaveTheProgramAndIsDoneBefore()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        emit pages.update.updateSignal("new", true);
        pages.orb.calls.clear();
        QMetaObject::invokeMethod(pages.dialog(), "leaveProgram");
        QCOMPARE(pages.orb.calls, QStringList());
        QTRY_COMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(!pages.dialog());
        QVERIFY(!window->isVisible());
    }

    void closeRequestClosesTheDialogFirst()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        emit pages.orb.showUseProtPage("a.exe");
        pages.orb.calls.clear();
        bool dialogWhenTold = true;
        bool windowWhenTold = false;
        pages.orb.onCall = [&](const QString &) {
            dialogWhenTold = pages.dialog() != nullptr;
            windowWhenTold = window->isVisible();
        };

        QCloseEvent request;
        QCoreApplication::sendEvent(window, &request);

        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(!dialogWhenTold);
        QVERIFY(windowWhenTold);
        QVERIFY(!window->isVisible());
    }

    void closeRequestOfTheDialogLeavesTheWindow()
    {
        StandIns pages;
        FramelessQuickWindow *window = pages.window();
        pages.click("feedback");
        pages.orb.calls.clear();
        QCloseEvent request;
        QCoreApplication::sendEvent(pages.dialog(), &request);
        QVERIFY(!pages.dialog());
        QVERIFY(window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestDialogWishes)
#include "tst_dialog_wishes.moc"
