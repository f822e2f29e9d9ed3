#include "tests/e2e/window_fixture.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace {

// A picture of what is really on the screen, without a pointer.
QImage screen()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

} // namespace

// What moves in the window, and what does not.
class TestWindowDrawing : public WindowFixture
{
    Q_OBJECT

private slots:
    void toastIsSeenWhileTheProgramWaits()
    {
        // Here the wait has to last long enough to be looked at.
        start("one-headset").environment.insert("SIMPC_SPEED", "5");
        QVERIFY(program_->start());
        QCOMPARE(tell("until shown headsetPage"), QString("ok"));
        const QStringList place = tell("where window").split(' ');
        QCOMPARE(place.value(0), QString("at"));
        // In the middle of the window, 425 px below its upper edge.
        const QPoint spot(place.value(1).toInt(), place.value(2).toInt() - 875 / 2 + 408);

        // Steam is launched, and then the program waits for it and hears nothing.
        QVERIFY(program_->waitForOutput("steam.exe"));
        const auto toastIsSeen = [spot] { return screen().pixelColor(spot) == QColor("#393939"); };
        QTRY_VERIFY(toastIsSeen());
        QVERIFY(!program_->output().contains("steam://rungameid"));
        QVERIFY(toastIsSeen());
    }

    void toastIsSeenAboveADialog()
    {
        // A toast every five seconds, and time to look at one.
        start("no-audio").environment.insert("SIMPC_SPEED", "5");
        QVERIFY(program_->start());
        QCOMPARE(tell("until linked"), QString("ok"));
        const QStringList place = tell("where window").split(' ');
        QCOMPARE(place.value(0), QString("at"));
        const QPoint spot(place.value(1).toInt(), place.value(2).toInt() - 875 / 2 + 408);
        clickOn("setting");
        QCOMPARE(tell("until dialog SettingPage"), QString("ok"));
        QCOMPARE(tell("until toast gone"), QString("ok"));
        QVERIFY(screen().pixelColor(spot) != QColor("#393939"));

        const QString picture = path("toast.png");
        QCOMPARE(program_->tellAll({"until toast", "picture " + picture}),
                 (QStringList{"ok", "ok"}));
        QTRY_VERIFY(screen().pixelColor(spot) == QColor("#393939"));
        QCOMPARE(QImage(picture).pixelColor(680, 408), QColor("#393939"));
    }

    void marksTurnWhileTheProgramWaits()
    {
        // The window has to be there before the wait begins.
        start("one-headset").environment.insert("SIMPC_SPEED", "1");
        // The one that has a render thread.
        program_->environment.remove("QT_QUICK_BACKEND");
        program_->environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
        QVERIFY(program_->start());
        QCOMPARE(tell("until shown headsetPage"), QString("ok"));
        QCOMPARE(tell("activate"), QString("ok"));
        // In the middle of the wait; nothing else changes the picture in it.
        QVERIFY(program_->waitForOutput("Steam appears"));
        const QImage before = screen();
        QTRY_VERIFY(screen() != before);
        QVERIFY(!program_->output().contains("steam://rungameid"));
    }

    void hiddenWindowDrawsNothing_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("hidden") << "hide";
        QTest::newRow("minimised") << "minimise";
    }

    void hiddenWindowDrawsNothing()
    {
        QFETCH(QString, way);
        QVERIFY(start("server-never-comes").start());
        QCOMPARE(tell("until steamvr"), QString("ok"));
        QCOMPARE(tell("until toast gone"), QString("ok"));
        QCOMPARE(tell(way), QString("ok"));
        tell("wait 5");
        QVERIFY(frames(tell("frames")) > 0);
        tell("wait 60");
        QCOMPARE(frames(tell("frames")), 0);
    }

    void idleWindowDrawsHardlyAnything()
    {
        QVERIFY(start("one-headset").start());
        QCOMPARE(tell("until linked"), QString("ok"));
        QCOMPARE(tell("activate"), QString("ok"));
        QCOMPARE(tell("until toast gone"), QString("ok"));
        tell("wait 5");
        QVERIFY(frames(tell("frames")) > 0);
        tell("wait 60");
        const int drawn = frames(tell("frames"));
        QVERIFY2(drawn >= 0 && drawn <= 60, qPrintable(QString::number(drawn)));
    }

private:
    static int frames(const QString &answer)
    {
        return answer.startsWith("frames ") ? answer.mid(7).toInt() : -1;
    }
};

KOLM_WINDOW_TEST_MAIN(TestWindowDrawing)
#include "tst_window_drawing.moc"
