#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>

// What all dialogs have in common, and how the program is left.
class TestDialogs : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void everyDialogHasTheSameFrame_data() { dialogRows(); }
    void everyDialogHasTheSameFrame()
    {
        QFETCH(QString, state);
        Interface pages;
        showDialog(pages, state);
        const FramelessQuickWindow *dialog = pages.dialog();
        QVERIFY(!dialog->needShadow());
        QVERIFY(dialog->titleBar());
        QVERIFY(!dialog->title().isEmpty());
        QCOMPARE(pages.dialogTexts().first(), dialog->title());
        QVERIFY(dialog->width() <= pages.window()->width());
        QVERIFY(dialog->height() <= pages.window()->height());
        // On the grid, so that nothing is blurred at 125 %.
        QCOMPARE(dialog->width() % 8, 0);
        QCOMPARE(dialog->height() % 8, 0);
    }

    void everyWayOutAsksForNothing_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("way");
        for (const char *state :
             {"settings, custom", "headsets", "feedback", "feedback, full", "system",
              "confirm wired", "power", "network", "ports", "driver", "update"}) {
            for (const char *way : {"Escape", "icon", "close request", "cancel"}) {
                const bool onlyOneButton =
                    QList<QByteArray>{"system", "power", "driver"}.contains(state);
                if (!onlyOneButton || qstrcmp(way, "cancel") != 0)
                    QTest::addRow("%s, %s", state, way) << state << way;
            }
        }
    }
    void everyWayOutAsksForNothing()
    {
        QFETCH(QString, state);
        QFETCH(QString, way);

        Interface pages;
        showDialog(pages, state);
        if (way == "Escape") {
            pages.press(Qt::Key_Escape);
        } else if (way == "icon") {
            pages.click(pages.inDialog("close"));
        } else if (way == "cancel") {
            pages.click(pages.inDialog("cancel"));
        } else {
            QCloseEvent request;
            QCoreApplication::sendEvent(pages.dialog(), &request);
        }
        QVERIFY(!pages.dialog());
        QVERIFY(pages.window()->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void mainButtonDoesWhatItSays_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<bool>("byKey");
        for (bool byKey : {false, true}) {
            const char *how = byKey ? "Enter" : "mouse";
            const auto row = [&](const char *state, const QStringList &calls) {
                QTest::addRow("%s, %s", state, how) << state << calls << byKey;
            };
            row("confirm wired", {"reportstreamMode false true", "wired=true"});
            row("confirm wireless", {"reportstreamMode true true", "wired=false"});
            row("power", {});
            row("network", {"openNetworkSetting"});
            row("driver", {});
            row("system", {});
            row("ports, free", {});
        }
    }
    void mainButtonDoesWhatItSays()
    {
        QFETCH(QString, state);
        QFETCH(QStringList, calls);
        QFETCH(bool, byKey);

        Interface pages;
        showDialog(pages, state);
        if (byKey)
            pages.press(Qt::Key_Return);
        else
            pages.click(pages.inDialog("confirm"));
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, calls);
    }

    void switchIsOnlyAskedForWhenTheDialogIsGone()
    {
        // The switch keeps the windows from drawing for seconds.
        Interface pages;
        showDialog(pages, "confirm wired");
        bool shown = true;
        pages.orb.onCall = [&](const QString &) { shown = pages.dialog() != nullptr; };
        pages.press(Qt::Key_Return);
        QVERIFY(!shown);
    }

    void systemIsShownInThreeColumns()
    {
        Interface pages;
        showDialog(pages, "system");
        const QStringList shown = pages.dialogTexts();
        QCOMPARE(shown.size(), 1 + 3 * 11 + 2); // title, columns, button
        QCOMPARE(shown.mid(1, 7),
                 (QStringList{zh("当前配置"), zh("最低配置"), zh("推荐配置"), zh("操作系统："),
                              "Windows 11 Professional Workstation", zh("处理器："),
                              "AMD Ryzen 9 7950X3D 16-Core Processor"}));
        // What belongs together is level, and each column is below its title.
        QList<QPointF> labels;
        QList<QPointF> titles;
        for (QQuickItem *item : Interface::shownItems(pages.inDialog("table"))) {
            if (item->property("text").toString() == zh("显卡："))
                labels.append(item->mapToScene({}));
            if (item->objectName() == "columnTitle")
                titles.append(item->mapToScene({}));
        }
        QCOMPARE(labels.size(), 3);
        QCOMPARE(titles.size(), 3);
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(labels[column].y(), labels[0].y());
            QCOMPARE(labels[column].x(), titles[column].x());
        }
        // Each look at the verdict would count as a page view.
        QCOMPARE(pages.orb.hardwareReads, 0);
    }

    void systemFollowsTheCheck()
    {
        Interface pages;
        showDialog(pages, "system, unknown");
        QVERIFY(pages.inDialog("empty"));
        QVERIFY(!pages.inDialog("table"));
        pages.orb.becomeSystemInfo(systemInfoText(), "[]");
        pages.settle();
        QVERIFY(!pages.inDialog("empty"));
        QVERIFY(pages.inDialog("table"));
    }

    void waitEndsByItself()
    {
        Interface pages;
        showDialog(pages, "wait");
        auto *timer = pages.dialog()->findChild<QObject *>("limitTimer");
        QCOMPARE(timer->property("interval").toInt(), 30000);
        QVERIFY(timer->property("running").toBool());
        pages.clock.advance(29999);
        QVERIFY(pages.dialog());
        pages.clock.advance(1);
        QVERIFY(!pages.dialog());
    }

    void waitCannotBeSkipped()
    {
        Interface pages;
        showDialog(pages, "wait");
        QVERIFY(!pages.inDialog("close"));
        pages.press(Qt::Key_Escape);
        pages.press(Qt::Key_Return);
        QVERIFY(pages.dialog());
    }

    void slowEndIsToldOf()
    {
        Interface pages;
        QVERIFY(pages.load());
        QString file;
        pages.orb.onCall = [&](const QString &call) {
            if (call != "closeApp")
                return;
            QVERIFY(!pages.dialog());
            pages.clock.advance(499);
            QVERIFY(!pages.dialog());
            pages.clock.advance(1);
            file = pages.dialogFile();
            QVERIFY(pages.dialog());
            pages.settle();
            QVERIFY(pages.dialogTexts().contains(zh("正在退出")));
            QVERIFY(
                !pages.dialog()->findChild<QObject *>("limitTimer")->property("running").toBool());
        };
        pages.click("close");
        QCOMPARE(file, QString("WaitPage.qml"));
        QVERIFY(!pages.dialog());
        QVERIFY(!pages.window()->isVisible());
    }

    void programIsLeftOnce()
    {
        Interface pages;
        QVERIFY(pages.load());
        pages.orb.calls.clear();
        pages.orb.onCall = [&](const QString &) {
            QCloseEvent again;
            QCoreApplication::sendEvent(pages.window(), &again);
        };
        pages.click("close");
        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
    }
};

KOLM_GUI_TEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
