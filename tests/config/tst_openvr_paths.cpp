#include "config/config_manager.h"
#include "config/openvr_paths.h"
#include "tests/base/denied_access.h"
#include "tests/support/json.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kDriver = QStringLiteral("C:/Program Files/驱动 é/driver");

} // namespace

class TestOpenvrPaths : public TestCase
{
    Q_OBJECT

private slots:
    void theFileLiesInTheHomeFolder()
    {
        QCOMPARE(openvr_paths::path("C:/Users/Zoë"),
                 QString("C:/Users/Zoë/AppData/Local/openvr/openvrpaths.vrpath"));
    }

    void driversAreFound_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("found");
        const auto add = [](const char *text, bool found) {
            QTest::newRow(text) << QByteArray(text) << found;
        };
        add(R"({"external_drivers":["C:/a"]})", true);
        add(R"({"external_drivers":["C:/a","C:/b"],"runtime":[]})", true);
        add(R"({"external_drivers":[null]})", true);
        add(R"({"external_drivers":[18446744073709551615]})", true);
        add(R"({"external_drivers":[]})", false);
        add(R"({"external_drivers":null})", false);
        add(R"({"external_drivers":"C:/a"})", false);
        add(R"({"external_drivers":{"0":"C:/a"}})", false);
        add(R"({"external_drivers":18446744073709551615})", false);
        add(R"({"runtime":["C:/a"]})", false);
        add(R"({})", false);
        add(R"(["external_drivers"])", false);
        add(R"([{"external_drivers":["C:/a"]}])", false);
        add(R"({"external_drivers":["C:/a"])", false);
        add("", false);
        add("7", false);
    }

    void driversAreFound()
    {
        QFETCH(QByteArray, text);
        writePaths(text);

        QTEST(config_.hasExternalDrivers(dir()), "found");
        QCOMPARE(readFile(kFile), text);
        QCOMPARE(logged(), QStringList());
    }

    void aListThatIsNoObjectStaysAsItIs()
    {
        const QByteArray text = R"(["theirs",{"runtime":["C:/r"]}])";
        writePaths(text);
        announce("vrpath is no object, left as it is:" + openvr_paths::path(dir()));
        QCOMPARE(openvr_paths::registerDriver(dir(), kDriver).problem,
                 openvr_paths::Problem::NoJson);
        QCOMPARE(readFile(kFile), text);
    }

    void noDriversWithoutAReadableFile()
    {
        QVERIFY(!config_.hasExternalDrivers(dir()));
        QVERIFY(!config_.hasExternalDrivers(path("missing")));
        {
            writePaths(R"({"external_drivers":["C:/a"]})");
            const LockedFile obstacle(file());
            QVERIFY(obstacle.works());
            QVERIFY(!config_.hasExternalDrivers(dir()));
        }
        QVERIFY(config_.hasExternalDrivers(dir()));
        QVERIFY(QFile::remove(file()));
        QVERIFY(QDir().mkpath(file()));
        QVERIFY(!config_.hasExternalDrivers(dir()));
        QCOMPARE(logged(), QStringList());
    }

    void theDriverIsRegisteredAsTheOnlyOne_data()
    {
        QTest::addColumn<QByteArray>("before");
        const auto add = [](const char *text) { QTest::newRow(text) << QByteArray(text); };
        add(R"({"runtime":["C:/r"],"external_drivers":["C:/other","D:/another"]})");
        add(R"({"runtime":["C:/r"],"external_drivers":[]})");
        add(R"({"runtime":["C:/r"],"external_drivers":null})");
        add(R"({"runtime":["C:/r"],"external_drivers":"text"})");
        add(R"({"runtime":["C:/r"]})");
    }

    void theDriverIsRegisteredAsTheOnlyOne()
    {
        QFETCH(QByteArray, before);
        writePaths(before);
        QString runtime;

        QVERIFY(config_.setExternalDrivers(kDriver, dir(), &runtime));

        QCOMPARE(runtime, QString("C:/r"));
        QCOMPARE(readFile(kFile), QString("{\n"
                                          "    \"external_drivers\": [\n"
                                          "        \"%1\"\n"
                                          "    ],\n"
                                          "    \"runtime\": [\n"
                                          "        \"C:/r\"\n"
                                          "    ]\n"
                                          "}\n")
                                      .arg(kDriver)
                                      .toUtf8());
        QCOMPARE(logged(), QStringList({"Successfully set external_drivers to:" + kDriver}));
        QVERIFY(config_.hasExternalDrivers(dir()));
    }

    void theFirstRuntimeIsReported_data()
    {
        QTest::addColumn<QByteArray>("runtime"); // empty: no such member
        QTest::addColumn<QString>("reported");
        QTest::addColumn<QByteArray>("written");
        const auto add = [](const char *runtime, const QString &reported, const char *written) {
            QTest::newRow(runtime) << QByteArray(runtime) << reported << QByteArray(written);
        };
        add(R"(["C:\\Steam\\VR"])", "C:\\Steam\\VR", R"(["C:\\Steam\\VR"])");
        add(R"(["C:/a","C:/b"])", "C:/a", R"(["C:/a","C:/b"])");
        add(R"([""])", "", R"([""])");
        add(R"([7,"C:/b"])", "", R"([7,"C:/b"])");
        add(R"([null])", "", R"([null])");
        add(R"([])", "before", R"([])");
        add(R"(null)", "before", R"(null)");
        add(R"("C:/a")", "before", R"("C:/a")");
        add(R"({"0":"C:/a"})", "before", R"({"0":"C:/a"})");
        add("", "before", R"(null)");
    }

    void theFirstRuntimeIsReported()
    {
        QFETCH(QByteArray, runtime);
        QFETCH(QByteArray, written);
        writePaths(runtime.isEmpty() ? QByteArray("{}") : "{\"runtime\":" + runtime + "}");
        QString reported = "before";

        QVERIFY(config_.setExternalDrivers(kDriver, dir(), &reported));

        QTEST(reported, "reported");
        QCOMPARE(QJsonObject({{"runtime", paths()["runtime"]}}),
                 jsonObject("{\"runtime\":" + written + "}"));
        QVERIFY(paths().contains("runtime"));
    }

    void everythingElseSurvives()
    {
        writePaths(R"({"config":["C:/c"],"jsonid":"vrpathreg","log":["C:/l"],"version":1,
                  "id":18446744073709551615,"x":0.30000000000000004,
                  "runtime":["C:/r",18446744073709551614],"external_drivers":["C:/o"]})");
        const QJsonObject before = paths();
        QString runtime;

        QVERIFY(config_.setExternalDrivers(kDriver, dir(), &runtime));
        config_.clearExternalDrivers(dir());

        QJsonObject expected = before;
        expected["external_drivers"] = QJsonValue::Null;
        QCOMPARE(paths(), expected);
        for (const char *number :
             {"18446744073709551615", "0.30000000000000004", "18446744073709551614"})
            QVERIFY(readFile(kFile).contains(number));

        // A number is no path of a runtime, however it is kept.
        writePaths(R"({"runtime":[18446744073709551615]})");
        QVERIFY(config_.setExternalDrivers(kDriver, dir(), &runtime));
        QCOMPARE(runtime, QString());
    }

    void anyDriverPathComesBackUnchanged_data()
    {
        QTest::addColumn<QString>("driver");
        QTest::newRow("backslashes") << "C:\\Program Files\\VR";
        QTest::newRow("a quote") << "C:/\"quoted\"";
        QTest::newRow("Chinese") << QString("D:/流媒体/驱动");
        QTest::newRow("beyond the basic plane") << QString("D:/👓");
        QTest::newRow("empty") << "";
        QTest::newRow("a percent sign") << "C:/100%1";
    }

    void anyDriverPathComesBackUnchanged()
    {
        QFETCH(QString, driver);
        writePaths("{}");
        QString runtime;

        QVERIFY(config_.setExternalDrivers(driver, dir(), &runtime));

        QCOMPARE(paths()["external_drivers"].toArray(), QJsonArray{driver});
        QCOMPARE(logged(), QStringList({"Successfully set external_drivers to:" + driver}));
    }

    void theDriversAreCleared_data()
    {
        QTest::addColumn<QByteArray>("drivers");
        for (const char *text : {R"(["C:/a","C:/b"])", "[]", "null", "\"text\"", "{}", "7"})
            QTest::newRow(text) << QByteArray(text);
    }

    void theDriversAreCleared()
    {
        QFETCH(QByteArray, drivers);
        writePaths("{\"external_drivers\":" + drivers + ",\"version\":1}");

        config_.clearExternalDrivers(dir());

        QCOMPARE(readFile(kFile),
                 QByteArray("{\n    \"external_drivers\": null,\n    \"version\": 1\n}\n"));
        QCOMPARE(logged(),
                 QStringList({"Successfully cleared external_drivers array (empty array)"}));
        QVERIFY(!config_.hasExternalDrivers(dir()));
    }

    void withoutAListNothingIsCleared_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char *text : {"{}", R"({"runtime":["C:/r"]})", "[]", R"(["external_drivers"])"})
            QTest::newRow(text) << QByteArray(text);
    }

    void withoutAListNothingIsCleared()
    {
        QFETCH(QByteArray, text);
        writePaths(text);

        config_.clearExternalDrivers(dir());

        QCOMPARE(readFile(kFile), text);
        QCOMPARE(logged(), QStringList({"No external_drivers field found, nothing to clear"}));
    }

    void aMissingFileIsNotCreated()
    {
        QString runtime = "before";

        QVERIFY(!config_.setExternalDrivers(kDriver, dir(), &runtime));
        config_.clearExternalDrivers(dir());

        QCOMPARE(runtime, QString("before"));
        QCOMPARE(logged(), QStringList({"Config file does not exist:" + file(),
                                        "Config file does not exist:" + file()}));
        QVERIFY(QDir(dir()).isEmpty());
    }

    void aFileThatIsNoJsonIsLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("cut off") << QByteArray(R"({"external_drivers":["C:/a")");
        QTest::newRow("cut off in a long number") << QByteArray("{\"a\":12345678901234567890");
        QTest::newRow("rubbish") << QByteArray("\0\xff", 2);
        QTest::newRow("a number") << QByteArray("7");
    }

    void aFileThatIsNoJsonIsLeftAlone()
    {
        QFETCH(QByteArray, text);
        writePaths(text);
        QJsonParseError error;
        QJsonDocument::fromJson(text, &error);
        QString runtime = "before";

        QVERIFY(!config_.setExternalDrivers(kDriver, dir(), &runtime));
        config_.clearExternalDrivers(dir());

        const QString line = "vrpath parseError:" + error.errorString();
        QCOMPARE(logged(), QStringList({line, line}));
        QCOMPARE(runtime, QString("before"));
        QCOMPARE(readFile(kFile), text);
    }

    void aFileThatCannotBeReadIsLeftAlone()
    {
        const QByteArray before = R"({"external_drivers":["C:/a"]})";
        writePaths(before);
        QString runtime = "before";
        announce("Failed to open file for reading:" + file());
        announce("Failed to open file for reading:" + file());
        {
            const LockedFile obstacle(file());
            QVERIFY(obstacle.works());
            QVERIFY(!config_.setExternalDrivers(kDriver, dir(), &runtime));
            config_.clearExternalDrivers(dir());
        }
        QCOMPARE(logged().size(), 2);
        QCOMPARE(runtime, QString("before"));
        QCOMPARE(readFile(kFile), before);
    }

    void aFolderInItsPlaceIsLeftAlone()
    {
        QVERIFY(QDir().mkpath(file() + "/inside"));
        QString runtime = "before";
        announce("Failed to open file for reading:" + file());
        announce("Failed to open file for reading:" + file());

        QVERIFY(!config_.setExternalDrivers(kDriver, dir(), &runtime));
        config_.clearExternalDrivers(dir());

        QCOMPARE(logged().size(), 2);
        QVERIFY(QDir(file() + "/inside").exists());
    }

    void aFileThatMayNotBeWrittenIsLeftAlone()
    {
        const QByteArray before = R"({"external_drivers":["C:/a"],"runtime":["C:/r"]})";
        writePaths(before);
        const ReadOnlyFile obstacle(file());
        if (!obstacle.works())
            QSKIP("This user may write every file.");
        QString runtime = "before";
        announce("Failed to open file for writing:" + file());
        announce("Failed to open file for writing:" + file());

        QVERIFY(!config_.setExternalDrivers(kDriver, dir(), &runtime));
        config_.clearExternalDrivers(dir());

        QCOMPARE(logged().size(), 2);
        // Known before the file could not be written.
        QCOMPARE(runtime, QString("C:/r"));
        QCOMPARE(readFile(kFile), before);
    }

    void inAFolderThatTakesNoNewFilesTheFileIsWrittenInPlace()
    {
        writePaths(R"({"external_drivers":["C:/a"],"runtime":["C:/r"]})");
        const ClosedFolder obstacle(path("AppData/Local/openvr"));
        if (!obstacle.works())
            QSKIP("This user may create files everywhere.");
        QString runtime;

        QVERIFY(config_.setExternalDrivers(kDriver, dir(), &runtime));

        QCOMPARE(paths()["external_drivers"].toArray(), QJsonArray{kDriver});
        QCOMPARE(logged(), QStringList({"Successfully set external_drivers to:" + kDriver}));
    }

private:
    void writePaths(const QByteArray &text) const
    {
        QVERIFY(QDir(dir()).mkpath("AppData/Local/openvr"));
        writeFile(kFile, text);
    }
    QJsonObject paths() const { return readJson(kFile); }
    QString file() const { return path(kFile); }

    const QString kFile = QStringLiteral("AppData/Local/openvr/openvrpaths.vrpath");
    // Needs neither a folder nor the cable.
    const ConfigManager config_{QString(), nullptr};
};

KOLM_TEST_MAIN(TestOpenvrPaths)
#include "tst_openvr_paths.moc"
