#include "tests/e2e/window_fixture.h"
#include "tests/support/eventually.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <sys/file.h>

namespace {

// Of the program's time, and longer than any test.
const QByteArray never = "100000";

QList<QByteArray> commandLine(const QString &process)
{
    QFile file("/proc/" + process + "/cmdline");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\0') : QList<QByteArray>();
}

bool isChildOf(const QString &process, qint64 parent)
{
    QFile file("/proc/" + process + "/status");
    return file.open(QIODevice::ReadOnly) &&
           file.readAll().contains("\nPPid:\t" + QByteArray::number(parent) + "\n");
}

// The process that shows a wait for `parent`, and what for; empty when there is none.
struct Notice
{
    QString pid;
    QByteArray key;
};

Notice noticeOf(qint64 parent)
{
    const QStringList processes = QDir("/proc").entryList(QDir::Dirs);
    for (const QString &process : processes) {
        const QList<QByteArray> line = commandLine(process);
        if (line.value(1) == "--wait-notice" && isChildOf(process, parent))
            return {process, line.value(2)};
    }
    return {};
}

// The file in which `process` shares its cell with others.
QString cellOf(qint64 process)
{
    const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
    for (const QString &file : files.entryList(QDir::Files | QDir::System)) {
        const QString target = QFile::symLinkTarget(files.filePath(file));
        if (target.endsWith("/cell"))
            return target;
    }
    return {};
}

} // namespace

// The real program while it waits for others, which its own windows cannot say.
class TestWaits : public WindowFixture
{
    Q_OBJECT

private slots:
    void aSteamVRLeftOverIsSaidBeforeTheWindowAndEnded()
    {
        startWith(R"("steam": {"running": true},
                     "steamVR": {"running": true, "closesAfter": )" +
                  never + "}");
        QVERIFY(waitForNotice("steamvr"));
        press({"shift+Tab", "shift+Tab", "Return"});
        QVERIFY(waitForJournal("terminate vrserver.exe"));
        QVERIFY(waitForJournal("launch explorer steam://rungameid/250820"));
        QVERIFY(noticeOf(program_->pid()).pid.isEmpty());
        QVERIFY(program_->log().contains("[steam] the user ends SteamVR, which does not close"));
    }

    void whoDoesNotWantToWaitGoesOn()
    {
        startWith(R"("steam": {"running": true},
                     "steamVR": {"running": true, "closesAfter": )" +
                  never + "}");
        QVERIFY(waitForNotice("steamvr"));
        press({"shift+Tab", "Return"});
        QVERIFY(waitForJournal("launch explorer steam://rungameid/250820"));
        QVERIFY(!program_->journal().join(' ').contains("terminate"));
    }

    void theNoticeGoesWithAProgramThatIsKilled()
    {
        startWith(R"("steamVR": {"running": true, "closesAfter": )" + never + "}");
        QVERIFY(waitForNotice("steamvr"));
        const QString notice = noticeOf(program_->pid()).pid;
        program_->kill();
        QTRY_VERIFY_WITH_TIMEOUT(commandLine(notice).value(1).isEmpty(), 20000);
    }

    void aCellThatIsHeldIsSaid()
    {
        startWith(R"("steam": {"running": true},
                     "steamVR": {"running": true, "closesAfter": )" +
                  never + "}");
        QVERIFY(waitForNotice("steamvr"));
        QFile cell(cellOf(program_->pid()));
        QVERIFY(cell.open(QIODevice::ReadWrite));
        QCOMPARE(flock(cell.handle(), LOCK_EX), 0);
        press({"shift+Tab", "Return"});
        QVERIFY(waitForNotice("cell"));
        QVERIFY(!program_->journal().join(' ').contains("explorer"));
        press({"shift+Tab", "Return"});
        QVERIFY(waitForJournal("launch explorer steam://rungameid/250820"));
        QVERIFY(program_->log().contains("another program holds the shared memory"));
    }

    void aWaitAtTheEndIsSaid()
    {
        startWith(R"("steam": {"running": true}, "steamVR": {"closesAfter": )" + never + "}");
        QVERIFY(program_->waitForOutput("[x] SteamVR runs"));
        program_->signal(SIGTERM);
        QVERIFY(waitForNotice("steamvr"));
        QVERIFY(program_->isRunning());
        press({"shift+Tab", "shift+Tab", "Return"});
        QCOMPARE(program_->wait(), 0);
        QVERIFY(!program_->json(program_->dataDir() + "/set.json").isEmpty());
    }

private:
    void startWith(const QByteArray &scenario)
    {
        writeFile("waits.json", "{\"title\": \"waits\", " + scenario + "}");
        start(path("waits.json")).environment.remove("SIMPC_DIRECTED");
        QVERIFY(program_->start());
    }

    // Until it is there, for this, and has the keys.
    bool waitForNotice(const QByteArray &key)
    {
        const auto isThere = [&] { return noticeOf(program_->pid()).key == key; };
        if (!seen(isThere))
            return false;
        return QProcess::execute(XDOTOOL, {"search", "--sync", "--onlyvisible", "--all", "--pid",
                                           noticeOf(program_->pid()).pid, "--name", ".*",
                                           "windowfocus"}) == 0;
    }

    // What the program prints meanwhile is read.
    static bool seen(const std::function<bool()> &condition)
    {
        const auto isThere = [&] {
            QCoreApplication::processEvents();
            return condition();
        };
        return eventually(isThere, 60000);
    }

    bool waitForJournal(const QString &line)
    {
        const auto isThere = [&] { return program_->journal().join('\n').contains(line); };
        return seen(isThere);
    }

    static void press(const QStringList &keys) { xdo(QStringList("key") + keys); }
};

KOLM_WINDOW_TEST_MAIN(TestWaits)
#include "tst_waits.moc"
