#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QPixmap>
#include <QScreen>
#include <QSet>

#include <windows.h>

using namespace installed_program;

namespace {

const QSize mainWindow(1360, 875);
const QSize notice(400, 300);

const QStringList steamVrProcesses{"vrmonitor.exe", "vrserver.exe", "vrcompositor.exe",
                                   "vrwebhelper.exe", "vrdashboard.exe"};

// The streaming cell's bytes; empty when there is no cell.
QByteArray cellBytes()
{
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_READ, FALSE, L"KOLM_ALVRMemory");
    if (!mapping)
        return {};
    const void *const view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 8);
    const QByteArray bytes(static_cast<const char *>(view), 8);
    UnmapViewOfFile(view);
    CloseHandle(mapping);
    return bytes;
}

QImage pictureOf(const QRect &place)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .toImage();
}

int coloursIn(const QImage &picture)
{
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    return colours.size();
}

// Keeps what a comparison with another system needs.
bool keepResult(const QString &from, const char *as)
{
    const QString to = QStringLiteral(RESULT "/") + QLatin1String(as);
    QFile::remove(to);
    return QFile::copy(from, to);
}

// For whoever measures (bench/windows_idle): says that the headset is connected
// and goes on when that file is there.
void stayConnected()
{
    const QString goOn = qEnvironmentVariable("KOLM_STAY_CONNECTED_UNTIL");
    if (goOn.isEmpty())
        return;
    QVERIFY(QFile(goOn + ".connected").open(QIODevice::WriteOnly));
    QVERIFY(waitUntil([&] { return QFile::exists(goOn); }));
}

} // namespace

// The installed program among stand-ins, from outside.
class ProgramWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(installAll());
        QVERIFY(QDir().mkpath(QStringLiteral(RESULT)));
    }

    void cleanup()
    {
        const bool failed = QTest::currentTestFailed();
        const QStringList running = allProcesses();
        for (const QString &name : steamVrProcesses)
            end(name);
        end("streaming-server-sim.exe");
        end("steam.exe");
        TestCase::cleanup();
        if (failed)
            qInfo().noquote() << "The program's log:\n" + log() + "The streaming server:\n" +
                                     content(serverLog()) + "Processes: " + running.join(' ');
    }

    void aHeadsetConnectsAndEverythingIsLeftInOrder()
    {
        QVERIFY(layOutFiles(true));
        QVERIFY(dataFolder().contains(QString::fromUtf8("用 户")));
        QVERIFY(!runs("steam.exe"));
        Copy program;
        QVERIFY(program.start());

        QVERIFY(waitUntil([] { return runs("steam.exe"); }));
        QVERIFY(waitUntil([] { return runs("vrmonitor.exe"); }));
        // What the program has set for its own drawing is no affair of a game.
        QVERIFY(steamsEnvironment().contains("STAND_IN_SERVER_ARGUMENTS="));
        QVERIFY(!steamsEnvironment().contains("QSG_ATLAS"));
        QVERIFY(waitUntil([] { return content(serverLog()).contains("# D3SIM00001 connected"); }));
        QCOMPARE(cellBytes(), QByteArray("\x01\0\0\0\x01\0\0\0", 8));
        // The registration was there for SteamVR's start only.
        QVERIFY(waitUntil(
            [] { return log().contains("[steam] vrserver.exe detected, clearing VR config"); }));
        QVERIFY(log().contains("Successfully set external_drivers to:"));
        QVERIFY(json(openVrPaths()).value("external_drivers").toArray().isEmpty());
        // The program knows of the connection, and so does its window.
        QVERIFY(waitUntil([] { return content(serverLog()).contains(";true;100"); }));
        QVERIFY(
            waitUntil([&] { return program.window() && program.window()->size() == mainWindow; }));
        QImage picture;
        QVERIFY(waitUntil([&] {
            picture = pictureOf(*program.window());
            return coloursIn(picture) > 50;
        }));
        QVERIFY(picture.save(QStringLiteral(RESULT "/window.png")));
        stayConnected();

        program.askToClose();
        const std::optional<int> code = program.waitForEnd();
        QVERIFY(code);
        QCOMPARE(*code, 0);
        for (const QString &name : steamVrProcesses)
            QVERIFY2(!runs(name), qPrintable(name));
        QVERIFY(!runs("streaming-server-sim.exe"));
        QVERIFY(runs("steam.exe"));
        QVERIFY(!runs("vrstartup.exe"));

        const QJsonObject set = json(dataFolder() + "/set.json");
        QCOMPARE(set.value("wiredOrWireless").toInt(), 2);
        QCOMPARE(set.value("lastSn").toString(), QString("D3SIM00001"));
        QFile::remove(QStringLiteral(RESULT "/log.txt"));
        QFile kept(QStringLiteral(RESULT "/log.txt"));
        QVERIFY(kept.open(QIODevice::WriteOnly));
        kept.write(log().toUtf8());
        QVERIFY(keepResult(serverLog(), "server.log"));
        QVERIFY(keepResult(dataFolder() + "/set.json", "set.json"));
        QVERIFY(keepResult(dataFolder() + "/setting.inf", "setting.inf"));
        QVERIFY(keepResult(programFolder() + "/session.json", "session.json"));
        QVERIFY(keepResult(openVrPaths(), "openvrpaths.vrpath"));
    }

    void aSecondStartOnlyShowsANotice()
    {
        QVERIFY(layOutFiles(false));
        Copy first;
        QVERIFY(first.start());
        QVERIFY(waitUntil([&] { return first.window() && first.window()->size() == mainWindow; }));

        Copy second;
        QVERIFY(second.start());
        QVERIFY(waitUntil([&] { return second.window() && second.window()->size() == notice; }));
        QVERIFY(second.isRunning());
        const std::optional<int> code = second.waitForEnd();
        QVERIFY(code);
        QCOMPARE(*code, 0);
        QVERIFY(second.lifeTime() >= 4000);
        QVERIFY(first.isRunning());

        first.askToClose();
        QVERIFY(first.waitForEnd());
    }

    void aKilledCopyLeavesNoLock()
    {
        QVERIFY(layOutFiles(false));
        Copy killed;
        QVERIFY(killed.start());
        QVERIFY(
            waitUntil([&] { return killed.window() && killed.window()->size() == mainWindow; }));
        killed.kill();

        Copy next;
        QVERIFY(next.start());
        QVERIFY(waitUntil([&] { return next.window().has_value(); }));
        QCOMPARE(next.window()->size(), mainWindow);
        next.askToClose();
        QVERIFY(next.waitForEnd());
    }
};

KOLM_GUI_TEST_MAIN(ProgramWinTest)
#include "tst_program_win.moc"
