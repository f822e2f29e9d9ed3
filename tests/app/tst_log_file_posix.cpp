#include "app/log_file.h"
#include "base/manual_clock.h"
#include "tests/app/log_lines.h"
#include "tests/support/test_case.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

#include <atomic>
#include <ctime>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

// Sends one of the process's output streams to a file while it lives.
class Redirection
{
public:
    Redirection(int stream, const QString &path) : stream_(stream), saved_(::dup(stream))
    {
        const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT, 0600);
        ::dup2(file, stream);
        ::close(file);
    }
    ~Redirection()
    {
        ::dup2(saved_, stream_);
        ::close(saved_);
    }

private:
    int stream_;
    int saved_;
};

} // namespace

// The log file in surroundings that only POSIX lets a test make, and what Wine does
// not keep: there, two programs that append to a file may overwrite each other.
class LogFilePosixTest : public TestCase
{
    Q_OBJECT

private slots:
    void linesOfTwoProgramsStayWhole()
    {
        // Two objects share no lock, just as two programs do not.
        ManualClock clock;
        constexpr int count = 3000;
        std::atomic<int> ready{0};
        const auto write = [&](QChar letter) {
            LogFile log(dir(), clock);
            const QString text(300, letter);
            ++ready;
            while (ready < 2)
                std::this_thread::yield();
            for (int i = 0; i < count; ++i)
                log.write(QtInfoMsg, noContext, text);
        };
        std::thread other(write, QChar('b'));
        write(QChar('a'));
        other.join();

        const QByteArray head = "[Info:14:03:07.215  \"(0)\"]:";
        const QByteArray lineA = head + QByteArray(300, 'a') + '\r';
        const QByteArray lineB = head + QByteArray(300, 'b') + '\r';
        const QList<QByteArray> lines = readFile(dayFile).split('\n');
        QCOMPARE(lines.count(lineA), count);
        QCOMPARE(lines.count(lineB), count);
        QCOMPARE(lines.size(), 2 * count + 1);
    }

    void linesFollowTheChangeToSummerTime()
    {
        const QByteArray previous = qgetenv("TZ");
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        ::tzset();
        {
            ManualClock clock(localTime(QStringLiteral("2024-03-31 01:59:59.999")));
            LogFile log(dir(), clock);
            log.write(QtInfoMsg, noContext, QStringLiteral("winter"));
            clock.advance(1);
            log.write(QtInfoMsg, noContext, QStringLiteral("summer"));
        }
        if (previous.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", previous);
        ::tzset();
        QCOMPARE(readFile("2024-03-31.txt"), QByteArray("[Info:01:59:59.999  \"(0)\"]:winter\r\n"
                                                        "[Info:03:00:00.000  \"(0)\"]:summer\r\n"));
    }

    void aFullDiskIsHarmless()
    {
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), path(dayFile)));
        ManualClock clock(localTime(QStringLiteral("2024-05-17 23:59:59.999")));
        LogFile log(dir(), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("lost"));
        log.write(QtInfoMsg, noContext, QString(100000, QChar('x')));
        clock.advance(1);
        log.write(QtInfoMsg, noContext, QStringLiteral("kept"));
        QCOMPARE(readFile("2024-05-18.txt"), QByteArray("[Info:00:00:00.000  \"(0)\"]:kept\r\n"));
        QCOMPARE(logged(), QStringList());
    }

    void theInstalledHandlerWritesWhereTheNamesSaySoFar()
    {
        const QString organization = QCoreApplication::organizationName();
        qputenv("XDG_DATA_HOME", QFile::encodeName(dir()));
        QCoreApplication::setOrganizationName(QString());
        const QString early =
            QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM test"));
        const QString late = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QVERIFY(early.startsWith(dir()));
        QVERIFY(early != late);
        QVERIFY(QDir().mkpath(early));
        QVERIFY(QDir().mkpath(late));

        QCoreApplication::setOrganizationName(QString());
        const QtMessageHandler previous = qInstallMessageHandler(nullptr);
        installLogFile();
        QMessageLogger().info("before the name is set");
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM test"));
        QMessageLogger().debug() << "number" << 5;
        QMessageLogger().info("checkSteam end");
        QMessageLogger("a.cpp", 12, "f").warning("careful");
        QMessageLogger().critical("bad");
        qInstallMessageHandler(previous);
        QCoreApplication::setOrganizationName(organization);
        qunsetenv("XDG_DATA_HOME");

        const auto content = [](const QString &folder) {
            QByteArray all;
            const QDir files(folder);
            // Two of them should midnight have come meanwhile.
            for (const QString &name : files.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
                QFile file(files.filePath(name));
                if (file.open(QIODevice::ReadOnly))
                    all += file.readAll();
            }
            return QString::fromUtf8(all);
        };
        const auto pattern = [](const char *text) {
            QString expression = QRegularExpression::escape(QString::fromLatin1(text));
            expression.replace(QStringLiteral("TIME"),
                               QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d{3}"));
            return QRegularExpression(QRegularExpression::anchoredPattern(expression));
        };
        const QString first = content(early);
        QVERIFY2(pattern("[Info:TIME  \"(0)\"]:before the name is set\r\n").match(first).hasMatch(),
                 qPrintable(first));
        const QString rest = content(late);
        QVERIFY2(pattern("[Debug:TIME  \"(0)\"]:number 5\r\n"
                         "[Info:TIME  \"(0)\"]:checkSteam end\r\n"
                         "[Warning:TIME  \"a.cpp(12)\"]:careful\r\n"
                         "[Critical:TIME  \"(0)\"]:bad\r\n")
                     .match(rest)
                     .hasMatch(),
                 qPrintable(rest));
    }

    void theInstalledHandlerKeepsTheConsoleQuiet()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("missing"))));
        const QString organization = QCoreApplication::organizationName();
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM quiet"));
        const QtMessageHandler previous = qInstallMessageHandler(nullptr);
        {
            const Redirection output(STDOUT_FILENO, path(QStringLiteral("out")));
            const Redirection errors(STDERR_FILENO, path(QStringLiteral("err")));
            QMessageLogger().warning("seen");
            installLogFile();
            QMessageLogger().warning("not seen");
            ::fflush(stdout);
            ::fflush(stderr);
        }
        qInstallMessageHandler(previous);
        QCoreApplication::setOrganizationName(organization);
        qunsetenv("XDG_DATA_HOME");

        QCOMPARE(readFile("out"), QByteArray());
        QCOMPARE(readFile("err"), QByteArray("seen\n"));
        QVERIFY(!QDir(path(QStringLiteral("missing"))).exists());
    }
};

KOLM_TEST_MAIN(LogFilePosixTest)
#include "tst_log_file_posix.moc"
