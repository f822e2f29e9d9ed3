#include "tests/e2e/window_fixture.h"

// The ways through the window, from the choice of the link to the end.
class TestWindow : public WindowFixture
{
    Q_OBJECT

private slots:
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

    void lineThatMeansNothingIsNamed()
    {
        QVERIFY(start("external-server").start());
        QCOMPARE(tell("click nothing"),
                 QString("failed: click nothing: nothing of that name is shown"));
        QCOMPARE(program_->wait(), 5);
    }

private:
    int restarts() { return program_->journal().filter("-shutdown").size(); }
};

KOLM_WINDOW_TEST_MAIN(TestWindow)
#include "tst_window.moc"
