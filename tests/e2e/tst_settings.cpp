#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QJsonDocument>

// Somebody opens the settings in the running program, by mouse.
class TestSettings : public TestCase
{
    Q_OBJECT

    static std::unique_ptr<Program> started(const QString &dir, const QJsonObject &model = {},
                                            const QString &scenario = "one-headset")
    {
        auto program = std::make_unique<Program>(dir, scenario);
        program->environment.insert("SIMPC_DIRECTED", "1");
        program->environment.insert("SIMPC_LIMIT", "6000");
        if (!model.isEmpty()) {
            const QString path = program->dataDir() + "/set.json";
            QJsonObject settings = program->json(path);
            settings["D3"] = model;
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly))
                return nullptr;
            file.write(QJsonDocument(settings).toJson());
        }
        return program->start() ? std::move(program) : nullptr;
    }
    static bool isDone(Program &program, const QStringList &lines)
    {
        // All at once: a toast is short at this speed.
        const QStringList answers = program.tellAll(lines);
        const int bad = answers.lastIndexOf("ok") + 1;
        if (bad < lines.size())
            qWarning("%s: %s", qPrintable(lines[bad]), qPrintable(answers[bad]));
        return bad == lines.size();
    }
    static QJsonObject stored(const Program &program)
    {
        return program.json(program.dataDir() + "/set.json")["D3"].toObject();
    }
    static int shutdowns(Program &program) { return program.journal().filter("-shutdown").size(); }

private slots:
    void chosenSettingsReachTheServerByARestart()
    {
        const auto program = started(dir());
        QVERIFY(program);
        QVERIFY(isDone(*program, {"until linked", "until toast gone", "click setting",
                                  "until dialog SettingPage", "click option0", "click option0 2",
                                  "click option0 3"}));
        QCOMPARE(shutdowns(*program), 0);
        QVERIFY(isDone(*program, {"click confirm", "until nodialog", "until toast"}));
        QCOMPARE(shutdowns(*program), 1);
        // The settings are there before SteamVR is started again.
        const QJsonObject settings = stored(*program);
        QCOMPARE(settings["definitionIndex"].toInt(), 0);
        QCOMPARE(settings["fps"].toString(), QString("72"));
        QCOMPARE(settings["codec"].toString(), QString("H264"));
        QCOMPARE(settings["bitRate"].toString(), QString("20"));
        QCOMPARE(settings["scale"].toString(), QString("80"));
        const QJsonObject session = program->json(program->work() + "/session.json");
        QCOMPARE(
            session["sessionSettings"].toObject()["video"].toObject()["preferredFps"].toDouble(),
            72.0);
        QVERIFY(program->log().contains("definition: 0 fps: 0  encode: 0 audio: 0 wired: 0"));

        const int starts = program->journal().filter("rungameid").size();
        QVERIFY(program->waitForOutput("rungameid", starts + 1));
        QVERIFY(isDone(*program, {"wait 15", "until linked", "click setting",
                                  "until dialog SettingPage", "click cancel", "until nodialog"}));
        QCOMPARE(shutdowns(*program), 1);
        QCOMPARE(program->close(), 0);
    }

    void theMicrophoneIsTheCableWhereThereIsOne_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("output");
        QTest::newRow("a cable") << "cable-present"
                                 << "CABLE Input (VB-Audio Virtual Cable)"
                                 << "CABLE Output (VB-Audio Virtual Cable)";
        QTest::newRow("none") << "cable-missing" << QString() << QString();
    }

    void theMicrophoneIsTheCableWhereThereIsOne()
    {
        QFETCH(QString, scenario);
        const auto program = started(dir(), {{"definitionIndex", 1}, {"audio", true}}, scenario);
        QVERIFY(program);
        QVERIFY(isDone(*program, {"until linked"}));
        const QJsonObject session = program->json(program->work() + "/session.json");
        const QJsonObject microphone =
            session["sessionSettings"].toObject()["audio"].toObject()["microphone"].toObject();
        QVERIFY(microphone["enabled"].toBool());
        const QJsonObject content = microphone["content"].toObject();
        QTEST(content["inputDeviceId"].toObject()["name"].toString(), "input");
        QTEST(content["outputDeviceId"].toObject()["name"].toString(), "output");
        QCOMPARE(program->close(), 0);
    }

    void bitRateAloneIsStoredWithoutARestart()
    {
        const auto program = started(dir(), {{"definitionIndex", 3},
                                             {"customize", true},
                                             {"scale", "110"},
                                             {"bitRate", "80"},
                                             {"bitRate_wired", "60"},
                                             {"fps", "90"},
                                             {"codec", "HEVC"}});
        QVERIFY(program);
        // The middle of the second slider.
        QVERIFY(isDone(*program, {"until linked", "until toast gone", "click setting",
                                  "until dialog SettingPage", "click track 2", "click confirm",
                                  "until nodialog", "until toast"}));
        QCOMPARE(stored(*program)["bitRate"].toString(), QString("105"));
        QCOMPARE(stored(*program)["bitRate_wired"].toString(), QString("60"));
        QCOMPARE(stored(*program)["scale"].toString(), QString("110"));
        QVERIFY(isDone(*program, {"wait 20", "until linked"}));
        QCOMPARE(shutdowns(*program), 0);
        QCOMPARE(program->journal().filter("rungameid").size(), 1);
        QCOMPARE(program->close(), 0);
    }

    void choicesSurviveThePoll()
    {
        const auto program = started(dir());
        QVERIFY(program);
        QVERIFY(
            isDone(*program, {"until linked", "until toast gone", "click setting",
                              "until dialog SettingPage", "click option3", "until shown scale",
                              "wait 12", "until shown scale", "click cancel", "until nodialog"}));
        QCOMPARE(program->close(), 0);
    }
};

KOLM_TEST_MAIN(TestSettings)
#include "tst_settings.moc"
