#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <pwd.h>
#include <unistd.h>

namespace {

const QString data = QStringLiteral("h ö/.local/share/KOLM/KOLM_Streaming_Assistant/");
const QString openVr = QStringLiteral("h ö/AppData/Local/openvr/openvrpaths.vrpath");

} // namespace

class SimpcSeedTest : public TestCase
{
    Q_OBJECT

private slots:
    void laysOutTheDefaultFiles()
    {
        const Result result = layOut("one-headset");
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.code, 0);
        QCOMPARE(readJson(data + "set.json")["lastSn"].toString(), QString("D3SIM00001"));
        QCOMPARE(readFile(data + "setting.inf"), QByteArray("D3SIM00001;D2OLD00007"));
        QVERIFY(readJson(openVr).contains("runtime"));
        QVERIFY(readFile("w/session.json").contains("16045690984503098046"));
        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({QString::fromUtf8("h ö"), "w"}));
    }

    void aFirstRunHasNoSettings()
    {
        QCOMPARE(layOut("one-headset").code, 0);
        QVERIFY(exists(data + "set.json"));
        QCOMPARE(layOut("first-run").code, 0);
        QVERIFY(!exists(data + "set.json"));
        QVERIFY(!exists(data + "setting.inf"));
        QVERIFY(exists(openVr));
        QVERIFY(exists("w/session.json"));
    }

    void replacesItsFilesAndLeavesOthersAlone()
    {
        QVERIFY(QDir(dir()).mkpath(data));
        writeFile(data + "set.json", "old");
        writeFile(data + "2024-05-17.log", "log");
        QVERIFY(QDir(dir()).mkpath("w"));
        writeFile("w/chinese.qm", "qm");
        writeFile("mine.json", R"({"title":"t","files":{"set.json":"new"}})");
        QCOMPARE(layOut("mine.json").code, 0);
        QCOMPARE(readFile(data + "set.json"), QByteArray("new"));
        QCOMPARE(readFile(data + "2024-05-17.log"), QByteArray("log"));
        QCOMPARE(readFile("w/chinese.qm"), QByteArray("qm"));
    }

    void listsEveryScenarioWithItsTitle()
    {
        const Result result = seed({"--list"});
        QCOMPARE(result.code, 0);
        const QStringList lines = result.output.split('\n', Qt::SkipEmptyParts);
        QVERIFY(lines.size() >= 13);
        QVERIFY(lines.contains("no-steam: Steam is not installed: the assistant says so and offers "
                               "the download page"));
        for (const QString &line : lines)
            QVERIFY2(line.contains(": "), qPrintable(line));
    }

    void saysWhatTheCloudAnswers()
    {
        Result result = seed({"one-headset", "--cloud"});
        QCOMPARE(result.code, 0);
        QCOMPARE(result.output, QString("normal\n"));
        result = seed({"--cloud", "update-offered"});
        QCOMPARE(result.output, QString("newer\n"));
        QCOMPARE(seed({"--cloud", "nothing-such"}).code, 2);
        QVERIFY(QDir(dir()).isEmpty());
    }

    void theReadmeEndsWithTheKeys()
    {
        const Result result = seed({"--keys"});
        QCOMPARE(result.code, 0);
        QVERIFY(result.output.contains("| `acLine` |"));
        QFile file(KOLM_SOURCE_DIR "/simpc/README.md");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString readme = QString::fromUtf8(file.readAll());
        const QString keys = readme.mid(readme.indexOf("## The keys of a scenario"));
        QVERIFY2(keys == result.output,
                 "let simpc/README.md end with what simpc-seed --keys prints");
    }

    void refusesWhatItCannotDo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QString usage = "wanted: SCENARIO --home DIR --work DIR (or --help)";
        QTest::newRow("nothing") << QStringList() << usage;
        QTest::newRow("no home") << QStringList{"one-headset", "--work", "w"} << usage;
        QTest::newRow("no work") << QStringList{"one-headset", "--home", "h"} << usage;
        QTest::newRow("no scenario") << QStringList{"--home", "h", "--work", "w"} << usage;
        QTest::newRow("two scenarios")
            << QStringList{"one-headset", "no-steam", "--home", "h", "--work", "w"} << usage;
        QTest::newRow("unknown scenario")
            << QStringList{"none", "--home", "h", "--work", "w"} << "no scenario \"none\"";
    }
    void refusesWhatItCannotDo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const Result result = seed(arguments);
        QCOMPARE(result.code, 2);
        QVERIFY2(result.errors.startsWith("simpc-seed: " + complaint), qPrintable(result.errors));
        QVERIFY(QDir(dir()).isEmpty());
    }

    void leavesTheRealHomeAlone()
    {
        // A link to it is no way around.
        const QString real = QFile::decodeName(getpwuid(getuid())->pw_dir);
        QVERIFY(QFileInfo(real).isDir());
        QVERIFY(QFile::link(real, path("link")));
        // Were it not refused, it would fail at the first file, outside that home.
        writeFile("w", "a file where the folder should be");
        const Result result = seed({"one-headset", "--home", "link", "--work", "w"});
        QCOMPARE(result.code, 2);
        QCOMPARE(result.errors,
                 QString("simpc-seed: that is your own home folder; choose another\n"));
    }

    void saysWhichFileItCannotWrite()
    {
        writeFile("w", "a file where the folder should be");
        const Result result = layOut("one-headset");
        QCOMPARE(result.code, 2);
        QCOMPARE(result.errors, "simpc-seed: cannot write " + path("w/session.json") + '\n');
    }

private:
    struct Result
    {
        int code;
        QString output;
        QString errors;
    };
    static Result seed(const QStringList &arguments)
    {
        QProcess process;
        process.start(SEED, arguments);
        if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
            return {-1, {}, {}};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    static Result layOut(const QString &scenario)
    {
        return seed({scenario, "--home", QString::fromUtf8("h ö"), "--work", "w"});
    }
    bool exists(const QString &name) const { return QFileInfo::exists(path(name)); }
};

KOLM_TEST_MAIN(SimpcSeedTest)
#include "tst_simpc_seed.moc"
