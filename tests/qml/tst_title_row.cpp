#include "simpc/window_frame_sim.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QLocale>

// What stands in the title row and what it does.
class TestTitleRow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

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
};

KOLM_GUI_TEST_MAIN(TestTitleRow)
#include "tst_title_row.moc"
