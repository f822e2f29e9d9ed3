#include "tests/support/small_disk.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

// What fits a file's buffer takes another way to the disk than what does not.
constexpr int kSmall = 100;
constexpr int kLarge = 20000;

// The file below the folder, and what was in it before.
struct Document
{
    QString path;
    QByteArray before;
};

Document document(const QString &file, int size)
{
    const QByteArray padding(size, 'p');
    if (file == "set.json")
        return {file, "{\"D3\":{\"padding\":\"" + padding + "\"},\"lastSn\":\"D3-old\"}"};
    if (file == "setting.inf")
        return {file, "D3-old;" + padding};
    if (file == "session.json")
        return {file, "{\"sessionSettings\":{\"headset\":{}},\"padding\":\"" + padding + "\"}"};
    return {"AppData/Local/openvr/" + file,
            "{\"external_drivers\":[\"C:/a\"],\"padding\":\"" + padding + "\"}"};
}

// A system call of the save: its name and the how manieth of this name it is,
// counted from the start of the program.
struct Step
{
    QString call;
    int number;
};

class Saver
{
public:
    Saver(const QString &file, const QString &folder) : file_(file), folder_(folder) {}

    // Saves under strace with its options `options`; empty: without strace.
    void run(const QStringList &options) { run(options, {}); }
    void run(const QStringList &options, const QStringList &more)
    {
        QProcess process;
        process.setWorkingDirectory(folder_);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The search for leaks cannot work under strace.
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        environment.insert("LSAN_OPTIONS", "detect_leaks=0");
        process.setProcessEnvironment(environment);
        QStringList arguments{QCoreApplication::applicationDirPath() + "/save_once", file_,
                              folder_};
        arguments += more;
        if (!options.isEmpty())
            arguments = QStringList("strace") + options + arguments;
        process.start(arguments.takeFirst(), arguments);
        finished_ = process.waitForFinished(20000) &&
                    process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        errors_ = QString::fromLocal8Bit(process.readAllStandardError());
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    // The steps of a save that is disturbed by these options alone; the last one
    // comes after its end.
    QList<Step> steps(const QStringList &options = {})
    {
        QTemporaryFile trace;
        if (!trace.open())
            return {};
        run(QStringList{"-o", trace.fileName(), "-y", "-e", "trace=%file,%desc"} + options);
        QList<Step> steps;
        QHash<QString, int> counts;
        bool saving = false;
        const QRegularExpression name("^([a-z0-9_]+)\\(");
        for (QByteArray line; !(line = trace.readLine()).isEmpty();) {
            const QString call = name.match(QString::fromLatin1(line)).captured(1);
            if (call.isEmpty())
                continue;
            ++counts[call];
            // A sanitizer makes calls of its own, which have nothing to do with
            // our files.
            const bool ours = line.contains(folderMark()) || line.contains(file_.toLatin1());
            if (saving && ours)
                steps.append({call, counts[call]});
            saving |= line.contains("save begins");
            if (line.contains("save ends"))
                return steps;
        }
        return {};
    }

    bool finished() const { return finished_; }
    QString errors() const { return errors_; }

private:
    // The end of the folder's name, which strace has no reason to spell in
    // another way.
    QByteArray folderMark() const { return folder_.right(6).toLatin1(); }

    QString file_;
    QString folder_;
    bool finished_ = false;
    QString errors_;
};

} // namespace

// Whatever happens while a file is saved, afterwards the old or the new one is
// there, whole.
class TestInterruptedSaves : public TestCase
{
    Q_OBJECT

private slots:
    void anyStepOfASaveMayFailOrBeTheLast_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("size"); // -1: there was no file before
        const auto add = [](const char *file, const char *fault, int size) {
            QTest::addRow("%s, %s, %d bytes", file, fault, size)
                << QString(file) << QString(fault) << size;
        };
        for (const char *file : {"set.json", "setting.inf", "session.json", "openvrpaths.vrpath"}) {
            for (const char *fault : {"signal=KILL", "error=ENOSPC", "error=EACCES"})
                add(file, fault, kSmall);
            add(file, "error=ENOSPC", kLarge);
        }
        for (const char *file : {"set.json", "setting.inf"}) {
            add(file, "signal=KILL", kLarge);
            add(file, "signal=KILL", -1);
            add(file, "error=ENOSPC", -1);
        }
    }

    void anyStepOfASaveMayFailOrBeTheLast()
    {
        QFETCH(QString, file);
        QFETCH(QString, fault);
        QFETCH(int, size);
        const bool isThere = size >= 0;
        const bool isKill = fault == "signal=KILL";
        if (QStandardPaths::findExecutable("strace").isEmpty())
            QSKIP("No strace here.");
        const Document document = ::document(file, size);
        QVERIFY(QDir().mkpath(QFileInfo(path(document.path)).path()));
        const auto reset = [&] {
            QFile::remove(path(document.path));
            if (isThere)
                writeFile(document.path, document.before);
        };
        Saver saver(file, dir());
        reset();
        const QList<Step> steps = saver.steps();
        if (!saver.finished() && saver.errors().contains("ptrace"))
            QSKIP("Nobody may be traced here.");
        QVERIFY2(saver.finished(), qPrintable(saver.errors()));
        const QByteArray after = readFile(document.path);
        QVERIFY(after.size() > size);
        QVERIFY(after != document.before);
        QVERIFY2(steps.size() > 5, qPrintable(QString::number(steps.size())));

        int killed = 0;
        int old = 0;
        int done = 0;
        for (const Step &step : steps) {
            reset();
            QStringList options{
                "-o", QProcess::nullDevice(),
                "-e", "trace=" + step.call,
                "-e", QString("inject=%1:%2:when=%3").arg(step.call, fault).arg(step.number)};
            // Three times as fast, but nobody is killed.
            if (!isKill)
                options << "-f"
                        << "--seccomp-bpf";
            saver.run(options);
            const QByteArray content = readFile(document.path);
            const bool isOld =
                isThere ? content == document.before : !QFile::exists(path(document.path));
            const bool isNew = content == after;
            old += isOld;
            done += isNew;
            QVERIFY2(isOld || isNew, qPrintable(QString("%1 bytes after %2 at %3 %4")
                                                    .arg(content.size())
                                                    .arg(fault, step.call)
                                                    .arg(step.number)));
            if (isKill)
                killed += !saver.finished();
            else
                QVERIFY2(saver.finished(), qPrintable(step.call + ": " + saver.errors()));
            // What an interrupted save leaves behind is not in the way of the next.
            if (isOld) {
                saver.run({});
                QVERIFY(saver.finished());
                QCOMPARE(readFile(document.path), after);
            }
        }

        // A sanitizer does not make the same number of calls each time, so that now
        // and then a step is not met.
        QVERIFY(!isKill || killed >= steps.size() - 2);
        // Otherwise nothing was disturbed, or everything.
        QVERIFY(old > 0);
        QVERIFY(done > 0);
    }

    void aSaveInPlaceMayBeKilledAtAnyStep_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : {"set.json", "openvrpaths.vrpath"})
            QTest::newRow(file) << QString(file);
    }

    // As where the system refuses to put the copy into the place of the file. (It
    // gets its own name with a link.)
    void aSaveInPlaceMayBeKilledAtAnyStep()
    {
        QFETCH(QString, file);
        if (QStandardPaths::findExecutable("strace").isEmpty())
            QSKIP("No strace here.");
        const Document document = ::document(file, kLarge);
        QVERIFY(QDir().mkpath(QFileInfo(path(document.path)).path()));
        writeFile(document.path, document.before);
        const QStringList refused{"-e", "inject=rename:error=EACCES"};
        Saver saver(file, dir());
        const QList<Step> steps = saver.steps(refused);
        if (!saver.finished() && saver.errors().contains("ptrace"))
            QSKIP("Nobody may be traced here.");
        QVERIFY2(saver.finished(), qPrintable(saver.errors()));
        const QByteArray after = readFile(document.path);
        QVERIFY(after.size() > kLarge && after != document.before);

        int half = 0;
        int old = 0;
        int done = 0;
        for (const Step &step : steps) {
            if (step.call == "rename") // is disturbed already
                continue;
            writeFile(document.path, document.before);
            saver.run(
                QStringList{
                    "-o", QProcess::nullDevice(), "-e", "trace=rename," + step.call, "-e",
                    QString("inject=%1:signal=KILL:when=%2").arg(step.call).arg(step.number)} +
                refused);
            half += readFile(document.path) != document.before && readFile(document.path) != after;
            saver.run({}, {"finish"});
            QVERIFY2(saver.finished(), qPrintable(saver.errors()));
            const QByteArray content = readFile(document.path);
            old += content == document.before;
            done += content == after;
            QVERIFY2(content == document.before || content == after,
                     qPrintable(QString("%1 bytes after %2 %3")
                                    .arg(content.size())
                                    .arg(step.call)
                                    .arg(step.number)));
            QVERIFY(!QFile::exists(path(document.path + ".new")));
        }
        QVERIFY(half > 0);
        QVERIFY(old > 0);
        QVERIFY(done > 0);
    }

    void theDiskMayBeFull_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("size");
        for (const char *file : {"set.json", "setting.inf", "session.json", "openvrpaths.vrpath"}) {
            for (const int size : {kSmall, kLarge})
                QTest::addRow("%s, %d bytes", file, size) << QString(file) << size;
        }
    }

    void theDiskMayBeFull()
    {
        QFETCH(QString, file);
        QFETCH(int, size);
        const SmallDisk disk(path("disk"));
        if (!disk.works())
            QSKIP("This user may not mount a disk.");
        const Document document = ::document(file, size);
        const QString target = "disk/" + document.path;
        QVERIFY(QDir().mkpath(QFileInfo(path(target)).path()));
        writeFile(target, document.before);
        Saver saver(file, disk.path());
        saver.run({});
        QVERIFY2(saver.finished(), qPrintable(saver.errors()));
        const QByteArray after = readFile(target);
        QVERIFY(after != document.before);

        int old = 0;
        int done = 0;
        for (int room = 0; room < 8; ++room) {
            writeFile(target, document.before);
            QVERIFY(disk.fillUp(room * 4096));

            saver.run({});

            QVERIFY2(saver.finished(), qPrintable(saver.errors()));
            const QByteArray content = readFile(target);
            old += content == document.before;
            done += content == after;
            QVERIFY2(
                content == document.before || content == after,
                qPrintable(
                    QString("%1 bytes with room for %2 blocks").arg(content.size()).arg(room)));
            disk.makeRoom();
        }
        QVERIFY(old > 0);
        QVERIFY(done > 0);
    }
};

KOLM_TEST_MAIN(TestInterruptedSaves)
#include "tst_interrupted_saves.moc"
