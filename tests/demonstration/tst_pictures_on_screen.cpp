#include "demonstration/pictures.h"
#include "demonstration/quick_screen.h"
#include "tests/demonstration/small_window.h"
#include "tests/support/test_case.h"

#include <QGuiApplication>

// Of windows on a real screen.
class TestPicturesOnScreen : public TestCase
{
    Q_OBJECT

private slots:
    void windowIsTakenAtOnceWithItsBackground()
    {
        const SmallWindow small(R"(Window { width: 40; height: 30; color: "red"
        Rectangle { x: 20; width: 20; height: 30; color: "blue" } })");
        QImage picture;
        pictures::take(small.window(), this, [&picture](const QImage &taken) { picture = taken; });
        QCOMPARE(picture.size(), QSize(40, 30));
        QCOMPARE(picture.pixelColor(5, 15), QColor("red"));
        QCOMPARE(picture.pixelColor(30, 15), QColor("blue"));
    }

    void severalLieUponEachOtherAsOnTheScreen()
    {
        const SmallWindow behind(
            R"(Window { x: 100; y: 50; width: 60; height: 40; color: "red" })");
        const SmallWindow inFront(
            R"(Window { x: 110; y: 70; width: 20; height: 10; color: "lime" })");
        const QImage picture = pictures::together({&behind.window(), &inFront.window()});
        QCOMPARE(picture.size(), QSize(60, 40));
        QCOMPARE(picture.pixelColor(9, 20), QColor("red"));
        QCOMPARE(picture.pixelColor(10, 20), QColor("lime"));
        QCOMPARE(picture.pixelColor(29, 29), QColor("lime"));
        QCOMPARE(picture.pixelColor(30, 30), QColor("red"));
    }

    void whatTheScreenShowsIsSaved()
    {
        const SmallWindow behind(
            R"(Window { x: 100; y: 50; width: 60; height: 40; color: "red" })");
        const SmallWindow inFront(
            R"(Window { x: 110; y: 70; width: 20; height: 10; color: "lime" })");
        QuickScreen screen(behind.window());
        QVERIFY(screen.takePicture(path("all.png")).done);
        const QImage picture(path("all.png"));
        QCOMPARE(picture.size(), QSize(60, 40));
        QCOMPARE(picture.pixelColor(5, 5), QColor("red"));
        QCOMPARE(picture.pixelColor(20, 25), QColor("lime"));
    }

    // A toast as well: which is seen, the screen decides.
    void windowThatIsInFrontIsSavedInFront()
    {
        const SmallWindow behind(
            R"(Window { x: 100; y: 50; width: 60; height: 40; color: "red" })");
        const SmallWindow toast(R"(Window { x: 110; y: 70; width: 20; height: 10; color: "lime"
            flags: Qt.ToolTip | Qt.WindowDoesNotAcceptFocus
            Item { objectName: "row"; width: 20; height: 10 } })");
        const SmallWindow dialog(R"(Window { x: 105; y: 60; width: 40; height: 20; color: "blue"
            Item { objectName: "row"; width: 40; height: 20 } })");
        QuickScreen screen(behind.window());
        const auto seen = [&] {
            return screen.takePicture(path("all.png")).done
                       ? QImage(path("all.png")).pixelColor(20, 25).name()
                       : QString();
        };
        for (int round = 0; round < 2; ++round) {
            dialog.window().raise();
            QCOMPARE(seen(), QColor("blue").name());
            QCOMPARE(screen.middleOf({"row", 1}), QPoint(125, 70));
            toast.window().raise();
            QCOMPARE(seen(), QColor("lime").name());
            QCOMPARE(screen.middleOf({"row", 1}), QPoint(120, 75));
        }
    }
};

int main(int argc, char *argv[])
{
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    TestPicturesOnScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pictures_on_screen.moc"
