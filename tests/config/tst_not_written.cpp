#include "config/config_manager.h"
#include "config/openvr_paths.h"
#include "config/recent_headsets.h"
#include "tests/base/denied_access.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QPair>

#include <memory>

using openvr_paths::Problem;

namespace {

const QString listFile = QStringLiteral("AppData/Local/openvr/openvrpaths.vrpath");

// What can be in the way of a file's content.
enum class Obstacle { Nothing, FullDisk, NoRights, Held };

} // namespace

Q_DECLARE_METATYPE(Obstacle)
Q_DECLARE_METATYPE(WriteResult)
Q_DECLARE_METATYPE(openvr_paths::Problem)

// Whatever cannot be written is told, and what was there stays whole.
class NotWrittenTest : public TestCase
{
    Q_OBJECT

    using Told = QList<QPair<StoredFile, WriteResult>>;

    static void addObstacles()
    {
        QTest::addColumn<Obstacle>("obstacle");
        QTest::addColumn<WriteResult>("result");
        QTest::newRow("nothing") << Obstacle::Nothing << WriteResult::Ok;
        QTest::newRow("full disk") << Obstacle::FullDisk << WriteResult::WriteFailed;
        QTest::newRow("no rights") << Obstacle::NoRights << WriteResult::OpenFailed;
        QTest::newRow("held") << Obstacle::Held << WriteResult::OpenFailed;
    }

    // Where the files lie: a disk of its own when it has to be full.
    bool prepare(Obstacle obstacle)
    {
        folder_ = dir() + "/files";
        QDir().mkpath(folder_);
        if (obstacle == Obstacle::FullDisk)
            disk_ = std::make_unique<SmallDisk>(folder_);
        return !disk_ || disk_->works();
    }
    void put(const QString &file, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(folder_ + '/' + file).path());
        writeFile("files/" + file, content);
    }
    QByteArray content(const QString &file) const { return readFile("files/" + file); }

    // False where this user cannot be stopped so.
    bool block(Obstacle obstacle, const QString &file)
    {
        switch (obstacle) {
        case Obstacle::Nothing:
            break;
        case Obstacle::FullDisk:
            return disk_->fillUp(0);
        case Obstacle::NoRights:
            readOnly_ = std::make_unique<ReadOnlyFile>(folder_ + '/' + file);
            return readOnly_->works();
        case Obstacle::Held:
            locked_ = std::make_unique<LockedFile>(folder_ + '/' + file);
            return locked_->works();
        }
        return true;
    }
    void release()
    {
        readOnly_.reset();
        locked_.reset();
        if (disk_)
            disk_->makeRoom();
    }

    std::unique_ptr<ConfigManager> started(Told &told) const
    {
        auto config = std::make_unique<ConfigManager>(folder_, [] { return false; });
        config->setNotWritten([&told](StoredFile file, WriteResult result) {
            told.append({file, result});
        });
        config->loadDeviceSettings(false, 0);
        return config;
    }

    QString folder_;
    std::unique_ptr<SmallDisk> disk_;
    std::unique_ptr<ReadOnlyFile> readOnly_;
    std::unique_ptr<LockedFile> locked_;

private slots:
    void cleanup()
    {
        release();
        QDir::setCurrent(dir());
        disk_.reset();
        TestCase::cleanup();
    }

    void settingsThatAreNotWrittenAreTold_data() { addObstacles(); }
    void settingsThatAreNotWrittenAreTold()
    {
        QFETCH(Obstacle, obstacle);
        QFETCH(WriteResult, result);
        if (!prepare(obstacle))
            QSKIP("This user may not mount a disk.");
        const QByteArray before = R"({"lastSn":"D2-5"})";
        put("set.json", before);
        Told told;
        const auto config = started(told);
        if (!block(obstacle, "set.json"))
            QSKIP("This user may write every file.");
        config->saveDeviceSettings("D1-9");
        release();
        if (result == WriteResult::Ok) {
            QCOMPARE(told, Told());
            QVERIFY(content("set.json") != before);
            return;
        }
        QCOMPARE(told, (Told{{StoredFile::Settings, result}}));
        QCOMPARE(content("set.json"), before);
        // It holds for this run all the same, and comes with the next save.
        config->saveDeviceSettings(QString());
        QVERIFY(content("set.json").contains("D1-9"));
        QCOMPARE(told.size(), 1);
    }

    void settingsThatAreStillHeldAreTold()
    {
        QVERIFY(prepare(Obstacle::Held));
        put("set.json", R"({"lastSn":"D2-5"})");
        QVERIFY(block(Obstacle::Held, "set.json"));
        Told told;
        const auto config = started(told);
        config->saveDeviceSettings("D1-9");
        release();
        QCOMPARE(told, (Told{{StoredFile::Settings, WriteResult::OpenFailed}}));
        QCOMPARE(content("set.json"), QByteArray(R"({"lastSn":"D2-5"})"));
    }

    void theServersSettingsThatAreNotWrittenAreTold_data() { addObstacles(); }
    void theServersSettingsThatAreNotWrittenAreTold()
    {
        QFETCH(Obstacle, obstacle);
        QFETCH(WriteResult, result);
        if (!prepare(obstacle))
            QSKIP("This user may not mount a disk.");
        const QByteArray before = R"({"sessionSettings":{"headset":{}}})";
        put("session.json", before);
        Told told;
        const auto config = started(told);
        QDir::setCurrent(folder_);
        if (!block(obstacle, "session.json"))
            QSKIP("This user may write every file.");
        config->writeSessionSerial();
        release();
        const bool isOk = result == WriteResult::Ok;
        QCOMPARE(told, isOk ? Told() : (Told{{StoredFile::ServerSettings, result}}));
        QCOMPARE(content("session.json") == before, !isOk);
    }

    void aSessionThatIsNotThereIsNotMissed()
    {
        QVERIFY(prepare(Obstacle::Nothing));
        Told told;
        const auto config = started(told);
        config->writeSessionSerial();
        QCOMPARE(told, Told());
    }

    void knownHeadsetsThatAreNotWrittenAreTold_data() { addObstacles(); }
    void knownHeadsetsThatAreNotWrittenAreTold()
    {
        QFETCH(Obstacle, obstacle);
        QFETCH(WriteResult, result);
        if (!prepare(obstacle))
            QSKIP("This user may not mount a disk.");
        put("setting.inf", "A");
        if (!block(obstacle, "setting.inf"))
            QSKIP("This user may write every file.");
        const WriteResult saved = recent_headsets::save(folder_, {"B"});
        const WriteResult added = recent_headsets::add(folder_, {"B"});
        release();
        QCOMPARE(saved, result);
        QCOMPARE(added, result);
        QCOMPARE(content("setting.inf"),
                 result == WriteResult::Ok ? QByteArray("B") : QByteArray("A"));
    }

    void aDriverThatIsNotRegisteredIsTold_data()
    {
        QTest::addColumn<Obstacle>("obstacle");
        QTest::addColumn<Problem>("problem");
        QTest::addColumn<QString>("line");
        QTest::newRow("nothing") << Obstacle::Nothing << Problem::None << QString();
        QTest::newRow("full disk")
            << Obstacle::FullDisk << Problem::NotWritten << "Failed to write to file:";
        QTest::newRow("no rights")
            << Obstacle::NoRights << Problem::NotWritable << "Failed to open file for writing:";
        QTest::newRow("held") << Obstacle::Held << Problem::Unreadable
                              << "Failed to open file for reading:";
    }
    void aDriverThatIsNotRegisteredIsTold()
    {
        QFETCH(Obstacle, obstacle);
        QFETCH(Problem, problem);
        QFETCH(QString, line);
        if (!prepare(obstacle))
            QSKIP("This user may not mount a disk.");
        const QByteArray before = R"({"external_drivers":["C:/other"]})";
        put(listFile, before);
        if (!block(obstacle, listFile))
            QSKIP("This user may write every file.");
        if (!line.isEmpty())
            announce(line + openvr_paths::path(folder_));
        const Problem found = openvr_paths::registerDriver(folder_, "C:/KOLM").problem;
        release();
        QCOMPARE(found, problem);
        QCOMPARE(content(listFile) == before, problem != Problem::None);
    }

    void aListThatIsNoneIsTold()
    {
        QVERIFY(prepare(Obstacle::Nothing));
        QCOMPARE(openvr_paths::registerDriver(folder_, "C:/KOLM").problem, Problem::Missing);
        put(listFile, "{");
        QCOMPARE(openvr_paths::registerDriver(folder_, "C:/KOLM").problem, Problem::NoJson);
    }
};

KOLM_TEST_MAIN(NotWrittenTest)
#include "tst_not_written.moc"
