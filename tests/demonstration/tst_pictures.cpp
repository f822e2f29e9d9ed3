#include "demonstration/pictures.h"
#include "tests/demonstration/small_window.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// Of windows that are drawn, but on no screen.
class TestPictures : public TestCase
{
    Q_OBJECT

private slots:
    void windowIsDrawnOnceMore()
    {
        const SmallWindow small(R"(Window { width: 40; height: 30
        Rectangle { width: 20; height: 30; color: "red" }
        Rectangle { x: 20; width: 20; height: 30; color: "blue" } })");
        QImage picture;
        pictures::take(small.window(), this, [&picture](const QImage &taken) { picture = taken; });
        QTRY_COMPARE(picture.size(), QSize(40, 30));
        QCOMPARE(picture.pixelColor(5, 15), QColor("red"));
        QCOMPARE(picture.pixelColor(30, 15), QColor("blue"));
    }

    void nothingIsHandedToWhoIsGone()
    {
        const SmallWindow small(R"(Window { width: 40; height: 30 })");
        auto gone = std::make_unique<QObject>();
        bool handed = false;
        bool handedLater = false;
        pictures::take(small.window(), gone.get(), [&handed](const QImage &) { handed = true; });
        gone.reset();
        pictures::take(small.window(), this, [&](const QImage &) { handedLater = true; });
        QTRY_VERIFY(handedLater);
        QVERIFY(!handed);
    }

    void windowWithoutAnAreaHasNone()
    {
        QQuickWindow window;
        bool handed = false;
        bool isNull = false;
        announce("<Unknown File>: QML QQuickRootItem: grabToImage: item has invalid dimensions");
        pictures::take(window, this, [&](const QImage &taken) {
            handed = true;
            isNull = taken.isNull();
        });
        QVERIFY(handed);
        QVERIFY(isNull);
    }

    void noWindowIsNoPicture() { QVERIFY(pictures::together({}).isNull()); }
};

KOLM_GUI_TEST_MAIN(TestPictures)
#include "tst_pictures.moc"
