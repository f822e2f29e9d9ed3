#include "tests/cloud/cloud_peer.h"
#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPixmap>
#include <QRegularExpression>
#include <QScreen>

namespace {

// A picture of what is really on the screen, without a pointer.
QImage screen()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

} // namespace

// The real program on a screen, worked with the mouse and the keys of that
// screen: the events go through the window system.
class TestWindow : public TestCase
{
    Q_OBJECT

private slots:
    // Whatever a test did, no page has complained.
    void cleanup()
    {
        QString said;
        if (program_) {
            said = program_->log() + program_->errors();
            program_->kill();
            program_.reset();
        }
        TestCase::cleanup();
        QVERIFY2(!said.contains("qrc:/"), qPrintable(said));
    }

    void firstRunAsksForTheLinkAndGoesOn()
    {
        QVERIFY(start("first-run").start());
        QCOMPARE(tell("until shown chooseWireless"), QString("ok"));
        QCOMPARE(tell("until hidden setting"), QString("ok"));
        QCOMPARE(program_->journal(), QStringList());
        clickOn("chooseWireless");
        QCOMPARE(tell("until shown headsetPage"), QString("ok"));
        QCOMPARE(tell("until hidden chooseWireless"), QString("ok"));
        QCOMPARE(tell("until shown setting"), QString("ok"));
        QCOMPARE(tell("until linked"), QString("ok"));
        QCOMPARE(program_->close(), 0);
        QCOMPARE(program_->json(program_->dataDir() + "/set.json").value("wiredOrWireless").toInt(),
                 2);
    }

    void oneOfTwoHeadsetsIsChosenByKeyboard()
    {
        QVERIFY(start("two-headsets").start());
        QCOMPARE(tell("until dialog MoreSettingPage"), QString("ok"));
        // The one of the last time has the keyboard; the other one stands above.
        press({"Up", "Return"});
        QCOMPARE(tell("until linked"), QString("ok"));
        QVERIFY2(program_->serverLog().contains("LinkTo D2SIM00002"),
                 qPrintable(program_->serverLog()));
    }

    void oneOfTwoHeadsetsIsChosenInTheCard()
    {
        QVERIFY(start("two-headsets").start());
        QCOMPARE(tell("until dialog MoreSettingPage"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        clickOn("connect 2");
        QCOMPARE(tell("until linked"), QString("ok"));
        QVERIFY2(program_->serverLog().contains("LinkTo D3SIM00001"),
                 qPrintable(program_->serverLog()));
    }

    void settingsRestartSteamVROnlyWhenTheyMust()
    {
        QVERIFY(start("one-headset").start());
        QCOMPARE(tell("until linked"), QString("ok"));
        const int before = restarts();

        clickOn("setting");
        QCOMPARE(tell("until dialog SettingPage"), QString("ok"));
        clickOn("option3");
        QCOMPARE(tell("until shown bitRate"), QString("ok"));
        clickOn("confirm");
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QVERIFY(program_->waitForOutput("lost: headset connected"));
        QCOMPARE(restarts(), before + 1);
        QCOMPARE(tell("until linked"), QString("ok"));

        // Only the bit rate: whoever plays plays on.
        clickOn("setting");
        QCOMPARE(tell("until dialog SettingPage"), QString("ok"));
        clickOn("bitRate");
        // The toast is short at this speed: it is waited for before the click.
        const QStringList place = tell("where confirm").split(' ');
        QCOMPARE(program_->tellAll({"until toast", "until nodialog"}, [&] { click(place); }),
                 (QStringList{"ok", "ok"}));
        tell("wait 20");
        QCOMPARE(restarts(), before + 1);
        QCOMPARE(program_->close(), 0);
        const QJsonObject stored = program_->json(program_->dataDir() + "/set.json");
        QVERIFY(stored.value("D3").toObject().value("bitRate").toString() != "50");
    }

    void eachNoticeIsReadAndClosed_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("file");
        QTest::newRow("power") << "on-battery"
                               << "PowerDownPage";
        QTest::newRow("network") << "public-network"
                                 << "NetworkSetting";
        QTest::newRow("ports") << "ports-taken"
                               << "UsePortProcessTips";
        QTest::newRow("driver") << "old-graphics-driver"
                                << "UpdateGpuDriverTips";
    }

    void eachNoticeIsReadAndClosed()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, file);

        QVERIFY(start(scenario).start());
        QCOMPARE(tell("until dialog " + file), QString("ok"));
        QCOMPARE(tell("until shown dim"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QCOMPARE(tell("until hidden dim"), QString("ok"));
        // It was a notice, not an obstacle.
        QCOMPARE(tell("until linked"), QString("ok"));
    }

    void blockingNoticeOutlastsAnother()
    {
        writeFile("both.json", R"({ "title": "taken ports, and then the power fails",
        "pc": { "start": [{ "name": "node.exe", "path": "C:\\node.exe", "ports": [9943] }] },
        "at": [{ "seconds": 25, "acLine": "offline" }] })");
        QVERIFY(start(path("both.json")).start());
        QCOMPARE(tell("until dialog UsePortProcessTips"), QString("ok"));
        QCOMPARE(tell("until linked"), QString("ok"));
        tell("wait 30");
        QCOMPARE(tell("until dialog UsePortProcessTips"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        // The tip was dropped, not kept.
        tell("wait 15");
        QCOMPARE(tell("until nodialog"), QString("ok"));
    }

    void powerNoticeGoesWithItsCause()
    {
        QVERIFY(start("on-battery").start());
        QCOMPARE(tell("until dialog PowerDownPage"), QString("ok"));
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QCOMPARE(tell("until hidden dim"), QString("ok"));
    }

    void forcedUpdateIsLeftOnlyWithTheProgram()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("newer-forced"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        press({"Escape"});
        tell("wait 2");
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        click(tell("where leave").split(' '));
        QCOMPARE(program.wait(), 0);
    }

    void feedbackThatIsWrittenReachesTheCloud()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("normal"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until linked"), QString("ok"));
        clickOn("feedback");
        QCOMPARE(tell("until dialog FeedbackPage"), QString("ok"));
        // The text has the keyboard already, the contact is the next stop.
        xdo({"type", "--delay", "60", "It stutters"});
        press({"Tab"});
        xdo({"type", "--delay", "60", "me"});
        press({"Return"});
        QCOMPARE(tell("until shown thanks"), QString("ok"));
        press({"Return"});
        QCOMPARE(tell("until nodialog"), QString("ok"));

        const auto uploads = [&cloud] {
            QList<Received> found;
            for (const Received &request : cloud.received()) {
                if (request.target.endsWith("/upload"))
                    found.append(request);
            }
            return found;
        };
        QTRY_COMPARE_WITH_TIMEOUT(uploads().size(), 1, 30000);
        // The document, and what the cloud is to call it.
        const QByteArray body = uploads().first().body;
        QVERIFY(body.contains("\r\n\r\n" + program.read(program.dataDir() + "/feedback.json") +
                              "\r\n--"));
        const QRegularExpression name(
            "name=\"fileName\"\r\n\r\n"
            "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d_D3SIM00001_me\r\n");
        QVERIFY2(name.match(QString::fromUtf8(body)).hasMatch(), body);
        const QJsonObject written = program.json(program.dataDir() + "/feedback.json");
        QCOMPARE(written.value("content").toString(), QString("It stutters"));
        QCOMPARE(written.value("contact").toString(), QString("me"));
        QVERIFY(written.contains("cpu"));
    }

    void acceptedUpdateIsStartedAndTheProgramEnds()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QStringLiteral("newer"));
        Program &program = start("one-headset");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud.host());
        QVERIFY(program.start());
        QCOMPARE(tell("until dialog UpdatePage"), QString("ok"));
        const QString installer = program.dataDir() + "/download/KOLM_Setup_9.1.17.exe";
        QVERIFY(QFileInfo(installer).isFile());
        QCOMPARE(program.journal().filter("KOLM_Setup"), QStringList());

        xdo({"key", "Return"});

        QCOMPARE(program.wait(), 0);
        const QStringList launches = program.journal().filter("KOLM_Setup");
        QCOMPARE(launches.size(), 1);
        QVERIFY2(launches.first().contains(installer), qPrintable(launches.first()));
    }

    void linkIsSwitchedAfterAQuestion()
    {
        QVERIFY(start("one-headset").start());
        QCOMPARE(tell("until linked"), QString("ok"));
        const int before = restarts();
        clickOn("switchMode");
        QCOMPARE(tell("until dialog ConfirmPage"), QString("ok"));
        press({"Escape"});
        QCOMPARE(tell("until nodialog"), QString("ok"));
        QCOMPARE(restarts(), before);

        clickOn("switchMode");
        QCOMPARE(tell("until dialog ConfirmPage"), QString("ok"));
        clickOn("confirm");
        QVERIFY(program_->waitForOutput("lost: headset connected"));
        QCOMPARE(restarts(), before + 1);
        QCOMPARE(program_->close(), 0);
        QCOMPARE(program_->json(program_->dataDir() + "/set.json").value("wiredOrWireless").toInt(),
                 1);
    }

    void detailsOpenWhileConnected()
    {
        QVERIFY(start("headset-drops-and-returns").start());
        QCOMPARE(tell("until shown drawerTab"), QString("ok"));
        clickOn("drawerTab");
        QCOMPARE(tell("until shown stageList"), QString("ok"));
        QCOMPARE(tell("until hidden drawerTab"), QString("ok"));
        QCOMPARE(tell("until hidden stageList"), QString("ok"));
        QCOMPARE(tell("until shown stageStrip"), QString("ok"));
        QCOMPARE(tell("until linked"), QString("ok"));
    }

    void closeButtonEndsTheProgram()
    {
        QVERIFY(start("one-headset").start());
        QCOMPARE(tell("until linked"), QString("ok"));
        click(tell("where close").split(' '));
        QCOMPARE(program_->wait(), 0);
        QVERIFY(program_->journal().last().contains("-shutdown"));
    }

    void secondCopyIsClosedByItsButton()
    {
        QVERIFY(start("external-server").start());
        QVERIFY(program_->waitForOutput("ControlSocket::Startup Successfully bound"));
        QCOMPARE(tell("wait 1"), QString("ok"));
        QProcess second;
        QProcessEnvironment environment = program_->environment;
        environment.insert("SIMPC_SPEED", "1"); // it would be gone too soon by itself
        second.setProcessEnvironment(environment);
        second.setWorkingDirectory(program_->work());
        second.start(PROGRAM, QStringList());
        second.write("until shown confirm\nclick confirm\n");
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.readAllStandardOutput().count("directed: ok"), 1);
        QCOMPARE(tell("until shown headsetPage"), QString("ok"));
    }

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

    void lineThatMeansNothingIsNamed()
    {
        QVERIFY(start("external-server").start());
        QCOMPARE(tell("click nothing"),
                 QString("failed: click nothing: nothing of that name is shown"));
        QCOMPARE(program_->wait(), 5);
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
    // A program that does what it is told; every line must be carried out.
    Program &start(const QString &scenario)
    {
        program_ = std::make_unique<Program>(dir(), scenario);
        program_->environment.insert("QT_QPA_PLATFORM", "xcb");
        program_->environment.insert("SIMPC_DIRECTED", "1");
        program_->environment.remove("SIMPC_LIMIT");
        return *program_;
    }
    QString tell(const QString &line) { return program_->tell(line); }
    // With the mouse of the screen.
    void clickOn(const QString &name)
    {
        const QStringList place = tell("where " + name).split(' ');
        click(place);
        tell(QStringLiteral("wait 1"));
    }
    // There, as the answer to "where" says it.
    static void click(const QStringList &place)
    {
        QCOMPARE(place.value(0), QStringLiteral("at"));
        xdo({"mousemove", place.value(1), place.value(2), "click", "1"});
    }
    // With the keyboard of the screen.
    void press(const QStringList &keys)
    {
        for (const QString &key : keys) {
            xdo({"key", key});
            tell(QStringLiteral("wait 1"));
        }
    }
    static void xdo(const QStringList &arguments)
    {
        QCOMPARE(QProcess::execute(XDOTOOL, arguments), 0);
    }
    int restarts() { return program_->journal().filter("-shutdown").size(); }
    static int frames(const QString &answer)
    {
        return answer.startsWith("frames ") ? answer.mid(7).toInt() : -1;
    }

    std::unique_ptr<Program> program_;
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    TestWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_window.moc"
