#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

namespace {

QString zh(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

// What the controller and the update checker report, and what the user does
// about it.
class TestNotices : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void noneAtFirst();
    void eachReportIsShown_data();
    void eachReportIsShown();
    void noticesStandSideBySide();
    void sameNoticeIsShownOnce();
    void dismissedNoticeGoes();
    void escapeDismisses();

    void powerNoticeGoesWithItsCause();
    void severalHeadsetsNoticeGoesOnceOneIsConnected();
    void networkNoticeOpensTheSettings();

    void switchAsksFirst_data();
    void switchAsksFirst();
    void switchMayBeCancelled();
    void questionGoesWhenTheModeChanges();

    void updateIsInstalledAndTheProgramCloses();
    void failedInstallationIsTold();
    void updateMayBePutOff();
    void forcedUpdateStopsSteam();
    void refusedForcedUpdateEndsTheProgram();

private:
    static QString notice(const Interface &pages, const QString &key)
    {
        QVariant text;
        QMetaObject::invokeMethod(pages.item("notices"), "text", Q_RETURN_ARG(QVariant, text),
                                  Q_ARG(QVariant, key));
        return text.toString();
    }
    static int count(const Interface &pages)
    {
        return pages.item("notices")->property("count").toInt();
    }
    static void press(Interface &pages, const char *text)
    {
        QQuickItem *button = pages.button(zh(text), pages.item("notices"));
        QVERIFY2(button, text);
        pages.click(button);
    }
};

void TestNotices::noneAtFirst()
{
    Interface pages;
    pages.load();
    QCOMPARE(count(pages), 0);
    QVERIFY(!pages.shown("notices"));
}

void TestNotices::eachReportIsShown_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");

    QTest::newRow("power") << "power" << zh("电脑正在使用电池，性能可能受限，请连接电源");
    QTest::newRow("headsets") << "headsets" << zh("发现多个VR眼镜，请在列表中选择要连接的眼镜");
    QTest::newRow("network") << "network"
                             << zh("当前网络为公用网络，电脑可能无法发现眼镜，请将其设为专用网络");
    QTest::newRow("ports") << "ports"
                           << zh("以下程序占用了串流所需的端口，请将其关闭：a.exe, <b>b.exe</b>");
    QTest::newRow("gpu") << "gpu" << zh("显卡驱动版本过低，请更新显卡驱动");
    QTest::newRow("update") << "update" << zh("发现新版本：new faster");
}

void TestNotices::eachReportIsShown()
{
    QFETCH(QString, key);
    QFETCH(QString, text);

    Interface pages;
    pages.load();
    if (key == "power")
        emit pages.orb.showPowerTip();
    else if (key == "headsets")
        emit pages.orb.showMoreHMD();
    else if (key == "network")
        emit pages.orb.showNetWorkSetting();
    else if (key == "ports")
        emit pages.orb.showUseProtPage("a.exe, <b>b.exe</b>");
    else if (key == "gpu")
        emit pages.orb.showUpdateGPUPage();
    else
        emit pages.update.updateSignal("new<br>faster", false);

    QCOMPARE(count(pages), 1);
    QVERIFY(pages.shown("notices"));
    QCOMPARE(notice(pages, key), text);
    // As it stands, without taking foreign text for markup.
    bool found = false;
    for (QQuickItem *item : Interface::shownItems(pages.item("notices"))) {
        if (item->property("text").toString() != text)
            continue;
        found = true;
        QCOMPARE(item->property("textFormat").toInt(), int(Qt::PlainText));
    }
    QVERIFY(found);
}

void TestNotices::noticesStandSideBySide()
{
    Interface pages;
    pages.load();
    emit pages.orb.showUseProtPage("a.exe");
    emit pages.orb.showPowerTip();
    emit pages.orb.showNetWorkSetting();
    QCOMPARE(count(pages), 3);
    QVERIFY(notice(pages, "ports").contains("a.exe"));
    QVERIFY(!notice(pages, "power").isEmpty());
    QVERIFY(!notice(pages, "network").isEmpty());
}

void TestNotices::sameNoticeIsShownOnce()
{
    Interface pages;
    pages.load();
    emit pages.orb.showUseProtPage("a.exe");
    emit pages.orb.showUseProtPage("b.exe");
    QCOMPARE(count(pages), 1);
    QVERIFY(notice(pages, "ports").endsWith("b.exe"));
}

void TestNotices::dismissedNoticeGoes()
{
    Interface pages;
    pages.load();
    emit pages.orb.showUseProtPage("a.exe");
    emit pages.orb.showUpdateGPUPage();
    pages.orb.calls.clear();

    press(pages, "知道了");

    QCOMPARE(count(pages), 1);
    QCOMPARE(notice(pages, "ports"), QString());
    QVERIFY(!notice(pages, "gpu").isEmpty());
    QCOMPARE(pages.orb.calls, QStringList());
}

void TestNotices::escapeDismisses()
{
    Interface pages;
    pages.load();
    emit pages.orb.showUseProtPage("a.exe");
    pages.window()->requestActivate();
    QTRY_VERIFY(pages.window()->isActive());
    pages.button(zh("知道了"), pages.item("notices"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(pages.window(), Qt::Key_Escape);
    QCOMPARE(count(pages), 0);
}

void TestNotices::powerNoticeGoesWithItsCause()
{
    Interface pages;
    pages.load();
    emit pages.orb.showPowerTip();
    emit pages.orb.closePowerTip();
    QCOMPARE(count(pages), 0);
}

void TestNotices::severalHeadsetsNoticeGoesOnceOneIsConnected()
{
    Interface pages;
    pages.load();
    emit pages.orb.showMoreHMD();
    pages.orb.becomeConnected(false);
    QCOMPARE(count(pages), 1);
    pages.orb.becomeConnected(true);
    QCOMPARE(count(pages), 0);
}

void TestNotices::networkNoticeOpensTheSettings()
{
    Interface pages;
    pages.load();
    emit pages.orb.showNetWorkSetting();
    pages.orb.calls.clear();
    press(pages, "打开网络设置");
    QCOMPARE(pages.orb.calls, QStringList("openNetworkSetting"));
    QCOMPARE(count(pages), 0);
}

void TestNotices::switchAsksFirst_data()
{
    QTest::addColumn<bool>("wired");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QStringList>("calls");

    QTest::newRow("from wired") << true << zh("确定切换为无线串流")
                                << QStringList{"reportstreamMode true true", "wired=false"};
    QTest::newRow("from wireless") << false << zh("确定切换为有线串流")
                                   << QStringList{"reportstreamMode false true", "wired=true"};
}

void TestNotices::switchAsksFirst()
{
    QFETCH(bool, wired);
    QFETCH(QString, question);
    QFETCH(QStringList, calls);

    Interface pages;
    pages.load();
    pages.orb.becomeWired(wired);
    pages.orb.calls.clear();

    pages.click("switchMode");
    QCOMPARE(notice(pages, "switch"), question);
    QCOMPARE(pages.orb.calls, QStringList());

    press(pages, "确定");
    QCOMPARE(pages.orb.calls, calls);
    QCOMPARE(count(pages), 0);
}

void TestNotices::switchMayBeCancelled()
{
    Interface pages;
    pages.load();
    pages.orb.calls.clear();
    pages.click("switchMode");
    press(pages, "取消");
    QCOMPARE(pages.orb.calls, QStringList());
    QCOMPARE(count(pages), 0);
}

void TestNotices::questionGoesWhenTheModeChanges()
{
    Interface pages;
    pages.load();
    pages.click("switchMode");
    pages.orb.becomeWired(true);
    QCOMPARE(count(pages), 0);
}

void TestNotices::updateIsInstalledAndTheProgramCloses()
{
    Interface pages;
    FramelessQuickWindow *window = pages.load();
    emit pages.update.updateSignal("new", false);
    pages.orb.calls.clear();
    press(pages, "立即更新");
    QCOMPARE(pages.orb.calls, (QStringList{"setup", "shutdownADB"}));
    QVERIFY(!window->isVisible());
}

void TestNotices::failedInstallationIsTold()
{
    Interface pages;
    FramelessQuickWindow *window = pages.load();
    pages.update.setupSucceeds = false;
    emit pages.update.updateSignal("new", false);
    pages.orb.calls.clear();
    press(pages, "立即更新");
    QCOMPARE(pages.orb.calls, QStringList("setup"));
    QVERIFY(window->isVisible());
    QCOMPARE(pages.text("toastContent"), zh("安装失败请重试！"));
}

void TestNotices::updateMayBePutOff()
{
    Interface pages;
    FramelessQuickWindow *window = pages.load();
    emit pages.update.updateSignal("new", false);
    pages.orb.calls.clear();
    press(pages, "以后再说");
    QCOMPARE(pages.orb.calls, QStringList());
    QVERIFY(window->isVisible());
}

void TestNotices::forcedUpdateStopsSteam()
{
    Interface pages;
    pages.load();
    pages.orb.calls.clear();
    emit pages.update.updateSignal("new", true);
    QCOMPARE(pages.orb.calls, QStringList("stopSteam"));
    QCOMPARE(notice(pages, "update"), zh("需要更新到新版本才能继续使用：new"));
}

void TestNotices::refusedForcedUpdateEndsTheProgram()
{
    Interface pages;
    FramelessQuickWindow *window = pages.load();
    emit pages.update.updateSignal("new", true);
    pages.orb.calls.clear();
    press(pages, "退出");
    QCOMPARE(pages.orb.calls, QStringList("closeApp"));
    QVERIFY(!window->isVisible());
}

KOLM_GUI_TEST_MAIN(TestNotices)
#include "tst_notices.moc"
