#include "simpc/window_frame_sim.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>
#include <QLocale>
#include <QSignalSpy>

class TestMainWindow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void opensWithItsFixedSize()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        QVERIFY(window);
        QCOMPARE(window->size(), QSize(1360, 875));
        QCOMPARE(pages.firstSize(), QSize(1360, 875));
        QCOMPARE(window->title(), zh("串流助手"));
        QCOMPARE(window->color(), QColor(Qt::transparent));
        QVERIFY(window->isVisible());
        QVERIFY(window->needShadow());
        QVERIFY(!window->resizeable());
        QVERIFY(window->titleBar());
        QCOMPARE(window->titleBar()->objectName(), QStringLiteral("titleRow"));
        QCOMPARE(window->titleBar()->height(), 90.0);
        QCOMPARE(window->property("ispullDown").toBool(), false);
    }

    void asksForTheModePageAndThenForThePorts()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.orb.calls, (QStringList{"isHideSelectPage", "checkPortUsage"}));
    }

    void snapsBackToItsSize()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        window->resize(1920, 1080);
        QTRY_COMPARE(window->size(), QSize(1360, 875));
        window->resize(640, 480);
        QTRY_COMPARE(window->size(), QSize(1360, 875));
    }

    void logoFollowsTheLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QSizeF>("size");

        QTest::newRow("Chinese") << "zh_CN"
                                 << "zh" << QSizeF(153, 40);
        QTest::newRow("Chinese, Taiwan") << "zh_TW"
                                         << "zh" << QSizeF(153, 40);
        QTest::newRow("English") << "en_US"
                                 << "en" << QSizeF(249, 40);
        QTest::newRow("Japanese") << "ja_JP"
                                  << "ja" << QSizeF(249, 40);
        QTest::newRow("none") << "C"
                              << "C" << QSizeF(249, 40);
    }
    void logoFollowsTheLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, language);
        QFETCH(QSizeF, size);

        const QLocale before;
        QLocale::setDefault(QLocale(locale));
        {
            Interface pages;
            FramelessQuickWindow *window = pages.load();
            pages.settle();
            QCOMPARE(window->property("currentLanguage").toString(), language);
            QCOMPARE(pages.text("logo", "source"),
                     language == "zh" ? QStringLiteral("qrc:/res/image/orb_icon.png")
                                      : QStringLiteral("qrc:/res/image/orb_icon_en.png"));
            QCOMPARE(pages.item("logo")->size(), size);
            QCOMPARE(pages.item("logo")->x(), 30.0);
        }
        QLocale::setDefault(before);
    }

    void titleRowShowsTheVersion()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("version"), QStringLiteral("v1.2.3"));
        const QFont font = pages.item("version")->property("font").value<QFont>();
        QCOMPARE(font.pixelSize(), 16);
        QVERIFY(font.bold());
    }

    void worksWithoutUpdateChecker()
    {
        Interface pages;
        pages.hasUpdate = false;
        QVERIFY(pages.load());
        QCOMPARE(pages.text("version"), QString());
    }

    void titleRowDragsTheWindowExceptOnButtons_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("drags");

        QTest::newRow("logo") << "logo" << true;
        QTest::newRow("version") << "version" << true;
        QTest::newRow("empty space") << "titleRow" << true;
        QTest::newRow("help") << "help" << false;
        QTest::newRow("minimise") << "minimise" << false;
        QTest::newRow("close") << "close" << false;
        QTest::newRow("below the title row") << "banner" << false;
    }
    void titleRowDragsTheWindowExceptOnButtons()
    {
        QFETCH(QString, name);
        QFETCH(bool, drags);

        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.settle();
        window_frame::sim::clearJournal();
        const QRectF place = pages.item(name)->mapRectToScene(pages.item(name)->boundingRect());

        QTest::mousePress(window, Qt::LeftButton, {}, place.center().toPoint());

        QCOMPARE(window_frame::sim::journal(), drags ? QStringList("drag 2") : QStringList());
    }

    void helpOpensTheUserGuide()
    {
        Interface pages;
        pages.load();
        pages.orb.calls.clear();
        pages.click("help");
        QCOMPARE(pages.orb.calls, QStringList("gotoWeb 1"));
    }

    void titleBarButtonsAnswerTheMouse()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.settle();
        for (const char *name : {"minimise", "close"}) {
            QQuickItem *button = pages.item(name);
            const auto tone = [button] { return button->property("color").value<QColor>(); };
            const QPoint middle = button->mapToScene(QPointF(20, 20)).toPoint();
            QTest::mouseMove(window, QPoint(5, 5));
            QTRY_COMPARE(tone(), QColor(Qt::transparent));
            QTest::mouseMove(window, middle);
            QTRY_COMPARE(tone(), button->property("hoverColor").value<QColor>());
            QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, middle);
            QVERIFY(tone().lightness() <
                    button->property("hoverColor").value<QColor>().lightness());
            // Let go elsewhere, it was not pressed.
            QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
            QCOMPARE(window->visibility(), QWindow::Windowed);
            const auto areas = button->childItems();
            QVERIFY(std::any_of(areas.begin(), areas.end(), [](const QQuickItem *item) {
                return item->cursor().shape() == Qt::PointingHandCursor;
            }));
        }
    }

    void labelsOfPillButtonsAreBoldUnlessHovered()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.settle();
        QQuickItem *help = pages.item("help");
        for (const char *pill : {"help", "feedback", "setting"}) {
            QCOMPARE(pages.item(pill)->size(), QSizeF(140, 40));
            QCOMPARE(pages.item(pill)->property("radius").toReal(), 20.0);
            QCOMPARE(pages.item(pill)->property("color").value<QColor>(), QColor("#393939"));
        }
        QQuickItem *label = nullptr;
        for (QQuickItem *item : Interface::shownItems(help)) {
            if (item != help && item->property("text").toString() == zh("使用帮助"))
                label = item;
        }
        QVERIFY(label);

        QVERIFY(label->property("font").value<QFont>().bold());
        QTest::mouseMove(window, QPoint(5, 5));
        QTest::mouseMove(window, help->mapToScene(QPointF(70, 20)).toPoint());
        QTRY_VERIFY(help->property("hovered").toBool());
        QVERIFY(!label->property("font").value<QFont>().bold());
    }

    void minimiseMinimises()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.click("minimise");
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
    }

    void closeButtonTellsTheControllerAndCloses()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();
        bool openWhenTold = false;
        pages.orb.onCall = [&](const QString &) { openWhenTold = window->isVisible(); };

        pages.click("close");

        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(openWhenTold);
        QVERIFY(!window->isVisible());
    }

    void closeRequestRunsTheSameShutdown()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();

        QCloseEvent request;
        QCoreApplication::sendEvent(window, &request);

        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(!window->isVisible());
    }

    void controllerMayCloseTheWindow()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();
        emit pages.orb.closeExe();
        QVERIFY(!window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void bannerSaysHowFarThingsAre_data()
    {
        QTest::addColumn<bool>("steam");
        QTest::addColumn<bool>("steamVR");
        QTest::addColumn<bool>("headset");
        QTest::addColumn<QString>("icon");
        QTest::addColumn<QString>("text");

        const QString todo = zh("完成下列步骤，即可畅玩Steam游戏大作");
        const QString done = zh("恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～");
        QTest::newRow("nothing") << false << false << false << "orb_tips.png" << todo;
        QTest::newRow("Steam") << true << false << false << "orb_tips.png" << todo;
        QTest::newRow("Steam and SteamVR") << true << true << false << "orb_tips.png" << todo;
        QTest::newRow("headset alone") << false << false << true << "orb_tips.png" << done;
        QTest::newRow("headset and Steam") << true << false << true << "orb_tips.png" << done;
        QTest::newRow("all") << true << true << true << "orb_suc.png" << done;
    }
    void bannerSaysHowFarThingsAre()
    {
        QFETCH(bool, steam);
        QFETCH(bool, steamVR);
        QFETCH(bool, headset);
        QFETCH(QString, icon);
        QFETCH(QString, text);

        Interface pages;
        pages.load();
        pages.orb.becomeSteam(steam);
        pages.orb.becomeSteamVR(steamVR);
        pages.orb.becomeConnected(headset);

        QVERIFY(pages.shown("banner"));
        QCOMPARE(pages.item("banner")->property("color").value<QColor>(), QColor("#22242C"));
        QCOMPARE(pages.text("bannerIcon", "source"), "qrc:/res/image/" + icon);
        QCOMPARE(pages.text("bannerText"), text);
    }

    void bannerCanBeSentAway()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("bannerHide"), zh("不再提示"));
        QCOMPARE(pages.item("bannerHide")->property("textColor").value<QColor>(),
                 QColor("#1E68FF"));

        pages.click("bannerHide");
        QVERIFY(!pages.shown("banner"));
        pages.orb.becomeConnected(true);
        QVERIFY(!pages.shown("banner"));
    }

    void bannerShowsTips()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.click("bannerHide");
        QMetaObject::invokeMethod(window, "showTips",
                                  Q_ARG(QVariant, "qrc:/res/image/orb_fail.png"),
                                  Q_ARG(QVariant, "something to know"));
        QVERIFY(pages.shown("banner"));
        QCOMPARE(pages.text("bannerIcon", "source"), QStringLiteral("qrc:/res/image/orb_fail.png"));
        QCOMPARE(pages.text("bannerText"), QStringLiteral("something to know"));
    }

    void toastShowsForItsDuration_data()
    {
        QTest::addColumn<QVariant>("duration");
        QTest::addColumn<int>("interval");

        QTest::newRow("given") << QVariant(13000) << 13000;
        QTest::newRow("another") << QVariant(5000) << 5000;
        QTest::newRow("not given") << QVariant() << 2000;
    }
    void toastShowsForItsDuration()
    {
        QFETCH(QVariant, duration);
        QFETCH(int, interval);

        Interface pages;
        pages.load();
        auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        QVERIFY(!toast->isVisible());

        if (duration.isValid())
            emit pages.orb.showToast("hello", duration.toInt());
        else
            QMetaObject::invokeMethod(pages.window(), "showToast", Q_ARG(QVariant, "hello"),
                                      Q_ARG(QVariant, QVariant()));

        QVERIFY(toast->isVisible());
        QCOMPARE(pages.text("toastContent"), QStringLiteral("hello"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), interval);
        QVERIFY(pages.find("toastTimer")->property("running").toBool());
    }

    void toastStandsInTheMiddleOfTheWindow()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        window->setPosition(100, 50);
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));

        for (const QString &text : {QStringLiteral("short"), QString(90, QChar(0x4e2d))}) {
            emit pages.orb.showToast(text, 2000);
            QVERIFY(qAbs(toast->x() + toast->width() / 2.0 - (100 + 680)) <= 1);
            QCOMPARE(toast->y(), 50 + 400);
        }
        QCOMPARE(toast->width(), 880);
        QCOMPARE(toast->parentWin(), window);
        QVERIFY(!toast->needShadow());
    }

    void toastHidesWhenItsTimeIsOver()
    {
        Interface pages;
        pages.load();
        emit pages.orb.showToast("hello", 3000);
        const auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        pages.clock.advance(2999);
        QVERIFY(toast->isVisible());
        pages.clock.advance(1);
        QVERIFY(!toast->isVisible());
    }

    void laterToastReplacesTheEarlier()
    {
        Interface pages;
        pages.load();
        emit pages.orb.showToast("first", 15000);
        emit pages.orb.showToast("second", 2000);
        QCOMPARE(pages.text("toastContent"), QStringLiteral("second"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), 2000);
        pages.clock.advance(2000);
        QVERIFY(!qobject_cast<QQuickWindow *>(pages.find("toast"))->isVisible());
    }

    // Whoever announces it may keep the event loop waiting for many seconds.
    void toastIsOnTheScreenBeforeAnythingElseHappens()
    {
        Interface pages;
        pages.load();
        pages.settle();
        auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        const QSignalSpy frames(toast, &QQuickWindow::afterRendering);
        emit pages.orb.showToast("hello", 2000);
        QVERIFY(toast->isExposed());
        const int first = frames.count();
        QVERIFY(first > 0);
        emit pages.orb.showToast("something else", 2000);
        QVERIFY(frames.count() > first);
    }

    void toastLeavesTheWindowActive()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));
        emit pages.orb.showToast("hello", 2000);
        QVERIFY(toast->flags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(toast->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(toast->flags().testFlag(Qt::WindowTransparentForInput));
        QVERIFY(window->isVisible());
    }

    void closeRequestHidesTheToast()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));
        emit pages.orb.showToast("hello", 2000);
        pages.orb.calls.clear();

        QCloseEvent request;
        QCoreApplication::sendEvent(toast, &request);

        QVERIFY(!toast->isVisible());
        QVERIFY(window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
