#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>

// The offer of a newer version, which may be more than an offer.
class TestUpdatePage : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void installedUpdateClosesTheProgram()
    {
        Interface pages;
        showDialog(pages, "update");
        pages.click(pages.inDialog("confirm"));
        QCOMPARE(pages.orb.calls, (QStringList{"setup", "shutdownADB"}));
        QVERIFY(!pages.dialog());
        QVERIFY(!pages.window()->isVisible());
    }

    void failedUpdateMayBeTriedAgain()
    {
        Interface pages;
        pages.update.setupSucceeds = false;
        showDialog(pages, "update");
        pages.press(Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList("setup"));
        QCOMPARE(pages.text("toastContent"), zh("安装失败请重试！"));
        QVERIFY(pages.window()->isVisible());
        QVERIFY(pages.dialogTexts().contains(zh("安装未能开始")));

        pages.press(Qt::Key_Return);
        QCOMPARE(pages.orb.calls, (QStringList{"setup", "setup"}));
    }

    void optionalUpdateMayWait_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Escape") << true;
        QTest::newRow("button") << false;
    }
    void optionalUpdateMayWait()
    {
        QFETCH(bool, byKey);
        Interface pages;
        showDialog(pages, "update");
        QVERIFY(!pages.inDialog("leave"));
        if (byKey)
            pages.press(Qt::Key_Escape);
        else
            pages.click(pages.inDialog("cancel"));
        QVERIFY(!pages.dialog());
        QVERIFY(pages.window()->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void forcedUpdateCannotBePutOff()
    {
        Interface pages;
        showDialog(pages, "update, forced");
        QVERIFY(!pages.inDialog("cancel"));
        QVERIFY(!pages.inDialog("close"));
        pages.press(Qt::Key_Escape);
        QVERIFY(pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void declinedForcedUpdateLeavesTheProgram_data()
    {
        QTest::addColumn<bool>("byRequest");
        QTest::newRow("button") << false;
        QTest::newRow("close request") << true;
    }
    void declinedForcedUpdateLeavesTheProgram()
    {
        QFETCH(bool, byRequest);
        Interface pages;
        showDialog(pages, "update, forced");
        if (byRequest) {
            QCloseEvent request;
            QCoreApplication::sendEvent(pages.dialog(), &request);
        } else {
            pages.click(pages.inDialog("leave"));
        }
        QTRY_COMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(!pages.dialog());
        QVERIFY(!pages.window()->isVisible());
    }

    void noteIsShownLineByLineAndUnread()
    {
        Interface pages;
        QVERIFY(pages.load());
        emit pages.update.updateSignal("one<br>two <b>bold</b>", false);
        pages.settle();
        QCOMPARE(pages.inDialog("news")->property("text").toString(),
                 QString("one\ntwo <b>bold</b>"));
        QCOMPARE(pages.inDialog("news")->property("lineCount").toInt(), 2);
    }

    void downloadShowsHowFarItIs()
    {
        Interface pages;
        showDialog(pages, "update");
        QVERIFY(!pages.inDialog("progress"));
        emit pages.update.processStatus(0.37F);
        pages.settle();
        QVERIFY(pages.dialogTexts().contains(zh("正在下载：37%")));
        emit pages.update.processStatus(-512); // the size is not known
        pages.settle();
        QVERIFY(pages.dialogTexts().contains(zh("正在下载")));
        QVERIFY(!pages.inDialog("done"));
        emit pages.update.downExeFinish();
        QVERIFY(!pages.inDialog("progress"));
    }
};

KOLM_GUI_TEST_MAIN(TestUpdatePage)
#include "tst_update_page.moc"
