#include "app/log_file.h"
#include "base/manual_clock.h"
#include "tests/app/log_lines.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <functional>
#include <thread>

namespace {

// A clock that runs ahead, or does something worse, whenever it is asked.
class TrickClock : public Clock
{
public:
    explicit TrickClock(std::function<QDateTime()> answer) : answer_(std::move(answer)) {}

    QDateTime now() const override { return answer_(); }
    qint64 elapsed() const override { return 0; }
    void sleep(std::chrono::milliseconds) override {}
    void singleShot(std::chrono::milliseconds, QObject *, std::function<void()>) override {}
    int startTimer(std::chrono::milliseconds, QObject *, Qt::TimerType) override { return 0; }
    void killTimer(int, QObject *) override {}

private:
    std::function<QDateTime()> answer_;
};

} // namespace

// Which file a line goes to, when, and from which thread.
class LogFileTest : public TestCase
{
    Q_OBJECT

private slots:
    void midnightBeginsANewFile()
    {
        ManualClock clock(localTime(QStringLiteral("2024-12-31 23:59:59.999")));
        LogFile log(dir(), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("just before"));
        clock.advance(1);
        log.write(QtInfoMsg, noContext, QStringLiteral("just after"));
        clock.advance(24 * 60 * 60 * 1000);
        log.write(QtInfoMsg, noContext, QStringLiteral("a day later"));

        QCOMPARE(readFile("2024-12-31.txt"),
                 QByteArray("[Info:23:59:59.999  \"(0)\"]:just before\r\n"));
        QCOMPARE(readFile("2025-01-01.txt"),
                 QByteArray("[Info:00:00:00.000  \"(0)\"]:just after\r\n"));
        QCOMPARE(readFile("2025-01-02.txt"),
                 QByteArray("[Info:00:00:00.000  \"(0)\"]:a day later\r\n"));
        QCOMPARE(QDir(dir()).entryList(QDir::Files).size(), 3);
    }

    void dayAndTimeOfALineBelongTogether()
    {
        // Midnight passes between any two looks at this clock.
        QDateTime time = localTime(QStringLiteral("2024-12-31 23:59:59.999"));
        TrickClock clock([&time] {
            const QDateTime answer = time;
            time = time.addMSecs(1);
            return answer;
        });
        LogFile log(dir(), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("text"));
        QCOMPARE(QDir(dir()).entryList(QDir::Files), QStringList(QStringLiteral("2024-12-31.txt")));
        QCOMPARE(readFile("2024-12-31.txt"), QByteArray("[Info:23:59:59.999  \"(0)\"]:text\r\n"));
    }

    void theSystemClockCountsTheSameMoment()
    {
        const Clock &clock = Clock::system();
        const qint64 before = clock.now().toMSecsSinceEpoch();
        const qint64 between = clock.epochMilliseconds();
        const qint64 after = clock.now().toMSecsSinceEpoch();
        QVERIFY(before <= between);
        QVERIFY(between <= after);
    }

    void linesOfTwoThreadsStayWholeAndInOrder()
    {
        ManualClock clock;
        LogFile log(dir(), clock);
        constexpr int count = 3000;
        std::atomic<int> ready{0};
        const auto write = [&](QChar letter) {
            const QString tail(700, letter);
            ++ready;
            while (ready < 2)
                std::this_thread::yield();
            for (int i = 0; i < count; ++i)
                log.write(QtInfoMsg, noContext, QString::number(i) + tail);
        };
        std::thread other(write, QChar('b'));
        write(QChar('a'));
        other.join();

        const QByteArray head = "[Info:14:03:07.215  \"(0)\"]:";
        int next[2] = {0, 0};
        const QList<QByteArray> lines = readFile(dayFile).split('\n');
        QCOMPARE(lines.size(), 2 * count + 1);
        QCOMPARE(lines.last(), QByteArray());
        for (int i = 0; i < 2 * count; ++i) {
            const QByteArray &line = lines.at(i);
            const char letter = line.size() > 1 ? line.at(line.size() - 2) : '?';
            QVERIFY(letter == 'a' || letter == 'b');
            const int number = next[letter - 'a']++;
            QCOMPARE(line, head + QByteArray::number(number) + QByteArray(700, letter) + '\r');
        }
        QCOMPARE(next[0], count);
        QCOMPARE(next[1], count);
    }

    void timesInAFileNeverRunBackwards()
    {
        // Whoever takes a time is slow to go on with it.
        std::atomic<int> milliseconds{0};
        const QDateTime start = localTime(QStringLiteral("2024-05-17 14:00:00.000"));
        TrickClock clock([&] {
            const int now = milliseconds++;
            std::this_thread::yield();
            return start.addMSecs(now);
        });
        LogFile log(dir(), clock);
        constexpr int count = 2000;
        std::atomic<int> ready{0};
        const auto write = [&] {
            ++ready;
            while (ready < 2)
                std::this_thread::yield();
            for (int i = 0; i < count; ++i)
                log.write(QtInfoMsg, noContext, QString());
        };
        std::thread other(write);
        write();
        other.join();

        const QList<QByteArray> lines = readFile(dayFile).split('\n');
        QCOMPARE(lines.size(), 2 * count + 1);
        for (int i = 1; i < 2 * count; ++i)
            QVERIFY2(lines.at(i - 1) < lines.at(i), lines.at(i).constData());
    }

    void aMessageLoggedByLoggingIsDropped()
    {
        LogFile *self = nullptr;
        int asked = 0;
        TrickClock clock([&] {
            ++asked;
            self->write(QtWarningMsg, noContext, QStringLiteral("from the clock"));
            return localTime(QStringLiteral("2024-05-17 14:03:07.215"));
        });
        LogFile log(
            [&] {
                self->write(QtWarningMsg, noContext, QStringLiteral("from the folder"));
                return dir();
            },
            clock);
        self = &log;
        log.write(QtInfoMsg, noContext, QStringLiteral("first"));
        log.write(QtInfoMsg, noContext, QStringLiteral("second"));
        QCOMPARE(asked, 2);
        QCOMPARE(readFile(dayFile), QByteArray("[Info:14:03:07.215  \"(0)\"]:first\r\n"
                                               "[Info:14:03:07.215  \"(0)\"]:second\r\n"));
    }

    void withoutTheFolderNothingHappens()
    {
        ManualClock clock;
        LogFile log(path(QStringLiteral("KOLM/missing")), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("lost"));
        log.write(QtCriticalMsg, noContext, QStringLiteral("lost as well"));
        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
        QCOMPARE(logged(), QStringList());
    }

    void theFolderMayComeLater()
    {
        ManualClock clock;
        LogFile log(path(QStringLiteral("later")), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("lost"));
        QVERIFY(QDir(dir()).mkdir(QStringLiteral("later")));
        log.write(QtInfoMsg, noContext, QStringLiteral("kept"));
        QCOMPARE(readFile("later/" + dayFile), QByteArray("[Info:14:03:07.215  \"(0)\"]:kept\r\n"));
    }

    void theFolderMayChange()
    {
        QVERIFY(QDir(dir()).mkdir(QStringLiteral("a")));
        QVERIFY(QDir(dir()).mkdir(QStringLiteral("b")));
        ManualClock clock;
        QString folder = path(QStringLiteral("a"));
        LogFile log([&folder] { return folder; }, clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("one"));
        folder = path(QStringLiteral("b"));
        log.write(QtInfoMsg, noContext, QStringLiteral("two"));
        QCOMPARE(readFile("a/" + dayFile), QByteArray("[Info:14:03:07.215  \"(0)\"]:one\r\n"));
        QCOMPARE(readFile("b/" + dayFile), QByteArray("[Info:14:03:07.215  \"(0)\"]:two\r\n"));
    }

    void theFileIsClosedBetweenLines()
    {
        ManualClock clock;
        LogFile log(dir(), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("one"));
        QVERIFY(QFile::rename(path(dayFile), path(QStringLiteral("sent.txt"))));
        log.write(QtInfoMsg, noContext, QStringLiteral("two"));
        QCOMPARE(readFile("sent.txt"), QByteArray("[Info:14:03:07.215  \"(0)\"]:one\r\n"));
        QCOMPARE(readFile(dayFile), QByteArray("[Info:14:03:07.215  \"(0)\"]:two\r\n"));
    }

    void whatCannotBeWrittenIsLostSilently_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("a folder that takes no files") << QStringLiteral("/proc");
        QTest::newRow("a file in the folder's place") << QStringLiteral("file");
        QTest::newRow("a folder in the file's place") << QStringLiteral("blocked");
        QTest::newRow("a name that is too long") << QString(5000, QChar('x'));
    }

    void whatCannotBeWrittenIsLostSilently()
    {
        QFETCH(QString, folder);
        writeFile("file", "untouched");
        QVERIFY(QDir(dir()).mkpath("blocked/" + dayFile));

        ManualClock clock;
        LogFile log(QDir(dir()).absoluteFilePath(folder), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("lost"));

        QCOMPARE(readFile("file"), QByteArray("untouched"));
        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({QStringLiteral("blocked"), QStringLiteral("file")}));
        QVERIFY(QDir(path("blocked/" + dayFile)).isEmpty());
        QCOMPARE(logged(), QStringList());
    }
};

KOLM_TEST_MAIN(LogFileTest)
#include "tst_log_file.moc"
