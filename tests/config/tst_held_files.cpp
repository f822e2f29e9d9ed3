#include "config/config_manager.h"
#include "config/device_settings.h"
#include "config/openvr_paths.h"
#include "config/recent_headsets.h"
#include "config/settings_file.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString parseError = QStringLiteral("setting json parseError");
const QByteArray stored = R"({"D1":{"codec":"AV01"},"D2":{"fps":"72","bitRate":"77","own":[1]},)"
                          R"("D3":{"scale":"110"},"lastSn":"D2-5","wiredOrWireless":2})";

} // namespace

// Files that are whole, but that somebody else keeps from being read when the
// program starts.
class HeldFilesTest : public TestCase
{
    Q_OBJECT

private slots:
    void defaultsAreNotWrittenOverSettingsThatWereHeld();
    void whatTheRunHasChangedIsAddedToSettingsThatWereHeld();
    void settingsThatAreStillHeldAreNotWritten();
    void settingsThatCameToHarmMeanwhileAreWritten_data();
    void settingsThatCameToHarmMeanwhileAreWritten();
    void settingsThatAreNoJsonAreNotLost();
    void anInterruptedSaveIsFinishedAtTheStart();
    void merging_data();
    void merging();
    void knownHeadsetsThatWereHeldComeBehindTheNewOnes();
    void knownHeadsetsThatAreStillHeldStay();

    void driversInAFileThatIsHeldAreClearedByAnotherAttempt();

private:
    // One that could not read the settings.
    ConfigManager started() const
    {
        ConfigManager config(dir(), [] { return false; });
        const LockedFile obstacle(path("set.json"));
        if (obstacle.works())
            config.loadDeviceSettings(false, 0);
        return config;
    }
    QJsonObject saved() const { return QJsonDocument::fromJson(readFile("set.json")).object(); }
};

void HeldFilesTest::defaultsAreNotWrittenOverSettingsThatWereHeld()
{
    writeFile("set.json", stored);
    ConfigManager config = started();
    QCOMPARE(logged(), QStringList{parseError});
    QCOMPARE(config.serial(), QString("D3"));
    config.saveDeviceSettings(QString());
    QCOMPARE(saved().value("lastSn").toString(), QString("D2-5"));
    QCOMPARE(saved().value("wiredOrWireless").toInt(), 2);
    QCOMPARE(saved().value("D1").toObject().value("codec").toString(), QString("AV01"));
    QCOMPARE(saved().value("D2").toObject().value("bitRate").toString(), QString("77"));
    QCOMPARE(saved().value("D2").toObject().value("own").toArray().size(), 1);
    QCOMPARE(config.serial(), QString("D2-5"));
}

void HeldFilesTest::whatTheRunHasChangedIsAddedToSettingsThatWereHeld()
{
    writeFile("set.json", stored);
    ConfigManager config = started();
    config.setBitRate(33, false, 2);
    config.setWiredOrWireless(1);
    config.saveDeviceSettings("D1-9");
    const QJsonObject d2 = saved().value("D2").toObject();
    QCOMPARE(d2.value("bitRate").toString(), QString("33"));
    QCOMPARE(d2.value("fps").toString(), QString("72"));
    QCOMPARE(saved().value("D3").toObject().value("scale").toString(), QString("110"));
    QCOMPARE(saved().value("lastSn").toString(), QString("D1-9"));
    QCOMPARE(saved().value("wiredOrWireless").toInt(), 1);
    // From now on as ever: the file is written and not read again.
    writeFile("set.json", "{}");
    config.saveDeviceSettings(QString());
    QCOMPARE(saved().value("D2").toObject(), d2);
}

void HeldFilesTest::settingsThatAreStillHeldAreNotWritten()
{
    writeFile("set.json", stored);
    ConfigManager config = started();
    config.setWiredOrWireless(1);
    {
        const LockedFile obstacle(path("set.json"));
        QVERIFY(obstacle.works());
        config.saveDeviceSettings("D1-9");
    }
    QCOMPARE(readFile("set.json"), stored);
    config.saveDeviceSettings(QString());
    QCOMPARE(saved().value("lastSn").toString(), QString("D1-9"));
    QCOMPARE(saved().value("D1").toObject().value("codec").toString(), QString("AV01"));
}

void HeldFilesTest::settingsThatCameToHarmMeanwhileAreWritten_data()
{
    QTest::addColumn<QByteArray>("meanwhile");
    QTest::newRow("deleted") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("{");
}

void HeldFilesTest::settingsThatCameToHarmMeanwhileAreWritten()
{
    QFETCH(QByteArray, meanwhile);
    writeFile("set.json", stored);
    ConfigManager config = started();
    if (meanwhile.isNull())
        QVERIFY(QFile::remove(path("set.json")));
    else
        writeFile("set.json", meanwhile);
    config.saveDeviceSettings("D1-9");
    QCOMPARE(saved().value("lastSn").toString(), QString("D1-9"));
    QCOMPARE(saved().value("D2").toObject(), device_settings::fresh());
    QCOMPARE(readFile("set.json.bad"), meanwhile);
}

void HeldFilesTest::settingsThatAreNoJsonAreNotLost()
{
    const QByteArray bad = "{\"D1\":";
    writeFile("set.json", bad);
    ConfigManager config(dir(), [] { return false; });
    {
        // On Windows nobody can rename it meanwhile, but everybody write it.
        QFile reader(path("set.json"));
        QVERIFY(reader.open(QIODevice::ReadOnly));
        config.loadDeviceSettings(false, 0);
        config.saveDeviceSettings("D1-9");
        const bool isAside = QFile::exists(path("set.json.bad"));
        QCOMPARE(readFile(isAside ? "set.json.bad" : "set.json"), bad);
    }
    config.saveDeviceSettings(QString());
    QCOMPARE(readFile("set.json.bad"), bad);
    QCOMPARE(saved().value("lastSn").toString(), QString("D1-9"));
}

void HeldFilesTest::anInterruptedSaveIsFinishedAtTheStart()
{
    writeFile("set.json", stored.left(20));
    writeFile("set.json.new", stored);
    writeFile("setting.inf", "");
    writeFile("setting.inf.new", "A;B");
    ConfigManager config(dir(), [] { return false; });
    config.loadDeviceSettings(false, 0);
    QCOMPARE(config.serial(), QString("D2-5"));
    QCOMPARE(readFile("set.json"), stored);
    QCOMPARE(recent_headsets::load(dir()), (QStringList{"A", "B"}));
    QCOMPARE(logged(), QStringList());
}

void HeldFilesTest::merging_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<int>("link");
    QTest::addColumn<QString>("mergedSerial");
    QTest::addColumn<int>("mergedLink");
    QTest::newRow("nothing changed") << "D3" << 0 << "D2-5" << 2;
    QTest::newRow("another headset") << "X" << 0 << "X" << 2;
    QTest::newRow("another link") << "D3" << 1 << "D2-5" << 1;
}

void HeldFilesTest::merging()
{
    QFETCH(QString, serial);
    QFETCH(int, link);
    const StoredSettings before = settings_file::read(QByteArray()).settings;
    StoredSettings now = before;
    now.serial = serial;
    now.link = static_cast<LinkKind>(link);
    const StoredSettings merged = settings_file::merge(settings_file::read(stored), before, now);
    QTEST(merged.serial, "mergedSerial");
    QTEST(int(merged.link), "mergedLink");
    QCOMPARE(merged.d2, settings_file::read(stored).settings.d2);
}

void HeldFilesTest::knownHeadsetsThatWereHeldComeBehindTheNewOnes()
{
    writeFile("setting.inf", "A;B");
    {
        const LockedFile obstacle(path("setting.inf"));
        QVERIFY(obstacle.works());
        QVERIFY(!recent_headsets::loadUnlessHeld(dir()));
        QCOMPARE(recent_headsets::load(dir()), QStringList());
    }
    QCOMPARE(recent_headsets::add(dir(), {"C", "B"}), WriteResult::Ok);
    QCOMPARE(readFile("setting.inf"), QByteArray("C;B;A"));
    QVERIFY(recent_headsets::loadUnlessHeld(dir()) == (QStringList{"C", "B", "A"}));
    QVERIFY(QFile::remove(path("setting.inf")));
    QVERIFY(recent_headsets::loadUnlessHeld(dir()) == QStringList());
}

void HeldFilesTest::knownHeadsetsThatAreStillHeldStay()
{
    writeFile("setting.inf", "A;B");
    {
        const LockedFile obstacle(path("setting.inf"));
        QVERIFY(obstacle.works());
        static_cast<void>(recent_headsets::add(dir(), {"C"}));
    }
    QCOMPARE(readFile("setting.inf"), QByteArray("A;B"));
}

void HeldFilesTest::driversInAFileThatIsHeldAreClearedByAnotherAttempt()
{
    using openvr_paths::Attempt;
    QVERIFY(QDir().mkpath(path("AppData/Local/openvr")));
    const QString file = openvr_paths::path(dir());
    writeFile("AppData/Local/openvr/openvrpaths.vrpath", R"({"external_drivers":["C:/KOLM"]})");
    {
        const LockedFile obstacle(file);
        QVERIFY(obstacle.works());
        announce("Failed to open file for reading:" + file);
        QVERIFY(!openvr_paths::clearDrivers(dir()));
        QVERIFY(!openvr_paths::clearDrivers(dir(), Attempt::Again)); // without a word
    }
    QVERIFY(openvr_paths::hasDrivers(dir()));
    QVERIFY(openvr_paths::clearDrivers(dir(), Attempt::Again));
    QVERIFY(!openvr_paths::hasDrivers(dir()));
    // Nothing that another attempt would change.
    QVERIFY(openvr_paths::clearDrivers(dir()));
    writeFile("AppData/Local/openvr/openvrpaths.vrpath", "{");
    QVERIFY(openvr_paths::clearDrivers(dir()));
    QVERIFY(QFile::remove(file));
    QVERIFY(openvr_paths::clearDrivers(dir()));
}

KOLM_TEST_MAIN(HeldFilesTest)
#include "tst_held_files.moc"
