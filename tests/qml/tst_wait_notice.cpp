#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include "ui/wait_notice.h"

#include <QCloseEvent>

namespace {

const QString url = QStringLiteral("qrc:/qml/windows/WaitNotice.qml");

FramelessQuickWindow *show(Interface &pages, const QString &key, bool canEnd, int lasted)
{
    return pages.loadAlone(url, {{"key", key}, {"canEnd", canEnd}, {"lasted", lasted}});
}

QString detail(const Interface &pages)
{
    return pages.find("detail")->property("text").toString();
}

} // namespace

// The window of a process that has nothing but a wait to show.
class TestWaitNotice : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void saysWhatIsAwaitedAndSinceWhen_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("lasted");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QString>("detail");
        const QString leave = zh("可以不再等待，稍后重启电脑。");
        QTest::newRow("SteamVR") << "steamvr" << 3 << zh("正在等待SteamVR关闭")
                                 << zh("已等待3秒。通常不超过半分钟。");
        QTest::newRow("SteamVR, just in time")
            << "steamvr" << 29 << zh("正在等待SteamVR关闭") << zh("已等待29秒。通常不超过半分钟。");
        QTest::newRow("SteamVR, late")
            << "steamvr" << 30 << zh("正在等待SteamVR关闭")
            << zh("已等待30秒。比平时更久。结束SteamVR会丢失游戏中未保存的进度。");
        QTest::newRow("cell") << "cell" << 4 << zh("另一个程序占用了串流服务器的共享内存")
                              << zh("已等待4秒。请关闭其他串流程序。");
        QTest::newRow("adb") << "adb" << 5 << zh("正在等待adb结束") << zh("已等待5秒。") + leave;
        QTest::newRow("anything") << "?" << 5 << zh("正在等待另一个程序")
                                  << zh("已等待5秒。") + leave;
    }
    void saysWhatIsAwaitedAndSinceWhen()
    {
        QFETCH(QString, key);
        QFETCH(int, lasted);
        QFETCH(QString, headline);
        Interface pages;
        QVERIFY(show(pages, key, false, lasted));
        QCOMPARE(pages.find("headline")->property("text").toString(), headline);
        QTEST(detail(pages), "detail");
    }

    void theSecondsGoOn()
    {
        Interface pages;
        show(pages, "steamvr", true, 28);
        pages.clock.advance(999);
        QVERIFY(detail(pages).contains("28"));
        pages.clock.advance(1);
        QVERIFY(detail(pages).contains("29"));
        pages.clock.advance(1000);
        QVERIFY(detail(pages).contains(zh("比平时更久")));
    }

    void eachButtonIsAnExitCode_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");
        QTest::newRow("end") << "endPrograms" << wait_notice::exitEndPrograms;
        QTest::newRow("go on") << "goOn" << wait_notice::exitGoOn;
        QTest::newRow("wait") << "keepWaiting" << wait_notice::exitKeepWaiting;
        QTest::newRow("icon") << "close" << wait_notice::exitKeepWaiting;
    }
    void eachButtonIsAnExitCode()
    {
        QFETCH(QString, name);
        QFETCH(int, code);
        Interface pages;
        show(pages, "steamvr", true, 3);
        pages.click(name);
        QCOMPARE(pages.exitCodes(), QList<int>{code});
    }

    void onlyWhatCanBeEndedHasAButtonForIt()
    {
        Interface pages;
        const FramelessQuickWindow *window = show(pages, "cell", false, 3);
        const QStringList texts = Interface::texts(window->contentItem());
        QVERIFY(!texts.contains(zh("结束SteamVR")));
        QVERIFY(texts.contains(zh("不再等待")));
        QVERIFY(texts.contains(zh("继续等待")));
    }

    void keysKeepWaiting_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Enter") << int(Qt::Key_Return);
        QTest::newRow("Escape") << int(Qt::Key_Escape);
    }
    void keysKeepWaiting()
    {
        QFETCH(int, key);
        Interface pages;
        FramelessQuickWindow *window = show(pages, "steamvr", true, 3);
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        QTest::keyClick(window, Qt::Key(key));
        QCOMPARE(pages.exitCodes(), QList<int>{wait_notice::exitKeepWaiting});
    }

    void tabReachesTheOthers()
    {
        Interface pages;
        FramelessQuickWindow *window = show(pages, "steamvr", true, 3);
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        QTest::keyClick(window, Qt::Key_Backtab); // from "keep waiting"
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(pages.exitCodes(), QList<int>{wait_notice::exitGoOn});
    }

    void aCloseRequestKeepsWaiting()
    {
        Interface pages;
        FramelessQuickWindow *window = show(pages, "steamvr", true, 3);
        QCloseEvent request;
        QCoreApplication::sendEvent(window, &request);
        QCOMPARE(pages.exitCodes(), QList<int>{wait_notice::exitKeepWaiting});
    }
};

KOLM_GUI_TEST_MAIN(TestWaitNotice)
#include "tst_wait_notice.moc"
