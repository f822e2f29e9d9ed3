#include "controller/unwritten_files.h"
#include "tests/controller/controller_test.h"
#include "tests/support/vr_path_file.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using openvr_paths::Problem;

namespace {

const QString settingsLine = QStringLiteral("set.json does not fit on the disk");
const QString headsetsLine = QStringLiteral("setting.inf cannot be opened for writing");
const QString serverLine = QStringLiteral("session.json cannot be opened for writing");

} // namespace

// What the user is told when a document cannot be written.
class TestUnwrittenFiles : public ControllerTest
{
    Q_OBJECT

    struct Speaker
    {
        Speaker()
        {
            QObject::connect(&files, &UnwrittenFiles::toast,
                             [this](const QString &text, int duration) {
                                 toasts << text;
                                 files.otherToast(duration); // as everybody's toast is
                             });
        }
        ManualClock clock;
        UnwrittenFiles files{clock};
        QStringList toasts;
    };

private slots:
    void eachDocumentIsNamedWithWhatItMeans_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("reason");
        const auto row = [](const QString &text, const char *file, const char *reason) {
            QTest::addRow("%s, %s", file, reason) << text << file << reason;
        };
        for (const auto &[file, name] : {std::pair(StoredFile::Settings, "set.json"),
                                         std::pair(StoredFile::KnownHeadsets, "setting.inf"),
                                         std::pair(StoredFile::ServerSettings, "session.json"),
                                         std::pair(StoredFile::UsageChoice, "usage.json")}) {
            row(UnwrittenFiles::text(file, WriteResult::OpenFailed), name, "文件被占用或没有权限");
            row(UnwrittenFiles::text(file, WriteResult::WriteFailed), name, "磁盘空间不足");
        }
        const char *list = "openvrpaths.vrpath";
        row(UnwrittenFiles::text(Problem::Missing), list, "文件不存在");
        row(UnwrittenFiles::text(Problem::NoJson), list, "文件已损坏");
        row(UnwrittenFiles::text(Problem::NotWritten), list, "磁盘空间不足");
        row(UnwrittenFiles::text(Problem::NotWritable), list, "文件被占用或没有权限");
    }
    void eachDocumentIsNamedWithWhatItMeans()
    {
        QFETCH(QString, text);
        QFETCH(QString, file);
        QFETCH(QString, reason);
        QVERIFY2(QRegularExpression('^' + file + ".*（" + reason + "）。.+").match(text).hasMatch(),
                 qPrintable(text));
    }

    void aDocumentIsToldOnceARun()
    {
        Speaker s;
        announce(settingsLine);
        s.files.tell(StoredFile::Settings, WriteResult::Ok);
        QVERIFY(s.clock.idle());
        s.files.tell(StoredFile::Settings, WriteResult::WriteFailed);
        s.files.tell(StoredFile::Settings, WriteResult::OpenFailed);
        QCOMPARE(s.toasts, QStringList()); // nobody could see it yet
        s.clock.advance(60000);
        s.files.tell(StoredFile::Settings, WriteResult::WriteFailed);
        s.clock.advance(60000);
        QCOMPARE(s.toasts,
                 QStringList(UnwrittenFiles::text(StoredFile::Settings, WriteResult::WriteFailed)));
    }

    void eachStartOfSteamVRWithoutTheDriverIsTold()
    {
        Speaker s;
        s.files.driverMissing(Problem::None);
        QVERIFY(s.clock.idle());
        for (int start = 1; start <= 2; ++start) {
            s.files.driverMissing(Problem::NotWritable);
            s.clock.advance(60000);
            QCOMPARE(s.toasts.size(), start);
        }
    }

    void twoDocumentsAreToldOneAfterTheOther()
    {
        Speaker s;
        announce(settingsLine);
        announce(serverLine);
        s.files.tell(StoredFile::Settings, WriteResult::WriteFailed);
        s.files.tell(StoredFile::ServerSettings, WriteResult::OpenFailed);
        s.clock.advance(1000);
        QCOMPARE(s.toasts.size(), 1);
        s.clock.advance(7999);
        QCOMPARE(s.toasts.size(), 1);
        s.clock.advance(1);
        QCOMPARE(s.toasts.size(), 2);
    }

    void whatWasReplacedAtOnceComesAgain()
    {
        Speaker s;
        announce(settingsLine);
        s.files.tell(StoredFile::Settings, WriteResult::WriteFailed);
        s.clock.advance(1500);
        QCOMPARE(s.toasts.size(), 1);
        s.files.otherToast(5000);
        s.clock.advance(4999);
        QCOMPARE(s.toasts.size(), 1);
        s.clock.advance(1);
        QCOMPARE(s.toasts.size(), 2);
        s.clock.advance(5000); // it was there for long enough
        s.files.otherToast(2000);
        s.clock.advance(60000);
        QCOMPARE(s.toasts.size(), 2);
    }

    void aRunTellsWhatItCouldNotWrite()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        QVERIFY(QFile::remove(vr_path_file::name(dir())));
        QVERIFY(QDir(dir()).mkpath("session.json/inside"));
        announce(serverLine);
        f.orb();
        QCOMPARE(f.toasts(), QStringList());
        f.pass(60000);
        const QString server =
            UnwrittenFiles::text(StoredFile::ServerSettings, WriteResult::OpenFailed);
        QCOMPARE(f.count("showToast(" + server + ",8000)"), 1);
        const QString driver = UnwrittenFiles::text(Problem::Missing);
        QCOMPARE(f.count("showToast(" + driver + ",8000)"), 1);
        f.close();
    }

    void aNewHeadsetThatCannotBeStoredIsTold()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        QVERIFY(QDir(dir()).mkpath("setting.inf/inside"));
        announce(headsetsLine);
        f.orb().connectVR("D3NEW", "10.0.0.7");
        f.pass(20000);
        const QString text =
            UnwrittenFiles::text(StoredFile::KnownHeadsets, WriteResult::OpenFailed);
        QCOMPARE(f.count("showToast(" + text + ",8000)"), 1);
        f.close();
        QVERIFY(QDir(path("setting.inf/inside")).exists());
    }

    void aNewHeadsetIsStoredAtOnce()
    {
        store(LinkKind::Wireless);
        writeFile("setting.inf", "D3OLD");
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        f.orb().connectVR("D3NEW", "10.0.0.7");
        QCOMPARE(readFile("setting.inf"), QByteArray("D3NEW;D3OLD"));
    }
};

KOLM_TEST_MAIN(TestUnwrittenFiles)
#include "tst_unwritten_files.moc"
