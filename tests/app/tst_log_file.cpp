#include "app/log_file.h"
#include "base/manual_clock.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

const QMessageLogContext noContext;
const QByteArray dayFile = "2024-05-17.txt";

QDateTime localTime(const QString &text)
{
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
}

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

class LogFileTest : public TestCase
{
    Q_OBJECT

private slots:
    void aLineIsLevelTimeContextAndText_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("line");
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        const QTime afternoon(14, 3, 7, 215);
        const auto release = [&](const char *name, int type, const char *expected) {
            QTest::newRow(name) << type << QByteArray() << 0 << afternoon
                                << QStringLiteral("checkSteam end") << QString::fromUtf8(expected);
        };
        release("debug", QtDebugMsg, "[Debug:14:03:07.215  \"(0)\"]:checkSteam end");
        release("info", QtInfoMsg, "[Info:14:03:07.215  \"(0)\"]:checkSteam end");
        release("warning", QtWarningMsg, "[Warning:14:03:07.215  \"(0)\"]:checkSteam end");
        release("critical", QtCriticalMsg, "[Critical:14:03:07.215  \"(0)\"]:checkSteam end");
        release("fatal", QtFatalMsg, "[Fatal:14:03:07.215  \"(0)\"]:checkSteam end");
        release("any other", 17, "[14:03:07.215  \"(0)\"]:checkSteam end");

        QTest::newRow("a build that knows the source")
            << int(QtInfoMsg) << QByteArray("../app/main.cpp") << 42 << afternoon
            << QStringLiteral("text")
            << QStringLiteral("[Info:14:03:07.215  \"../app/main.cpp(42)\"]:text");
        QTest::newRow("a source in a folder with accents")
            << int(QtInfoMsg) << QByteArray("é 中/a.cpp") << 1 << afternoon
            << QStringLiteral("text")
            << QString::fromUtf8("[Info:14:03:07.215  \"é 中/a.cpp(1)\"]:text");
        QTest::newRow("every digit has its place")
            << int(QtInfoMsg) << QByteArray() << 0 << QTime(1, 2, 3, 4) << QStringLiteral("text")
            << QStringLiteral("[Info:01:02:03.004  \"(0)\"]:text");
        QTest::newRow("midnight") << int(QtInfoMsg) << QByteArray() << 0 << QTime(0, 0, 0, 0)
                                  << QStringLiteral("text")
                                  << QStringLiteral("[Info:00:00:00.000  \"(0)\"]:text");
        QTest::newRow("the last moment of a day")
            << int(QtInfoMsg) << QByteArray() << 0 << QTime(23, 59, 59, 999)
            << QStringLiteral("text") << QStringLiteral("[Info:23:59:59.999  \"(0)\"]:text");
        QTest::newRow("no text") << int(QtInfoMsg) << QByteArray() << 0 << afternoon << QString()
                                 << QStringLiteral("[Info:14:03:07.215  \"(0)\"]:");
        QTest::newRow("a text with place holders")
            << int(QtInfoMsg) << QByteArray("%4.cpp") << 7 << afternoon
            << QStringLiteral("%1 %2 %%")
            << QStringLiteral("[Info:14:03:07.215  \"%4.cpp(7)\"]:%1 %2 %%");
    }

    void aLineIsLevelTimeContextAndText()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, file);
        QFETCH(int, line);
        QFETCH(QTime, time);
        QFETCH(QString, text);
        QFETCH(QString, expected);

        const QMessageLogContext context(file.isEmpty() ? nullptr : file.constData(), line, "f",
                                         "c");
        QCOMPARE(logLine(static_cast<QtMsgType>(type), context, time, text), expected);
    }

    void everyDayHasAFileName_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("name");
        QTest::newRow("two digits each") << QDate(2024, 5, 7) << QStringLiteral("/2024-05-07.txt");
        QTest::newRow("end of a year") << QDate(2024, 12, 31) << QStringLiteral("/2024-12-31.txt");
        QTest::newRow("leap day") << QDate(2028, 2, 29) << QStringLiteral("/2028-02-29.txt");
    }

    void everyDayHasAFileName()
    {
        QFETCH(QDate, date);
        QFETCH(QString, name);
        QCOMPARE(logFileName(date), name);
    }

    void linesAreAppendedWithCrLf()
    {
        writeFile(dayFile, "from an earlier start\r\n");
        ManualClock clock(localTime(QStringLiteral("2024-05-17 14:03:07.215")));
        LogFile log(dir(), clock);
        log.write(QtInfoMsg, noContext, QStringLiteral("checkSteam end"));
        clock.advance(85);
        log.write(QtWarningMsg, noContext, QString());
        clock.advance(61 * 60 * 1000);
        log.write(QtDebugMsg, noContext, QStringLiteral("last"));

        QCOMPARE(readFile(dayFile), QByteArray("from an earlier start\r\n"
                                               "[Info:14:03:07.215  \"(0)\"]:checkSteam end\r\n"
                                               "[Warning:14:03:07.300  \"(0)\"]:\r\n"
                                               "[Debug:15:04:07.300  \"(0)\"]:last\r\n"));
    }

    void textIsInTheLocalesEncoding()
    {
        QTextCodec *const previous = QTextCodec::codecForLocale();
        QTextCodec *const chinese = QTextCodec::codecForName("GB18030");
        QVERIFY(chinese);
        // Changing the encoding changes what the names of folders mean as well.
        const QTemporaryDir folder;
        ManualClock clock;
        LogFile log(folder.path(), clock);
        const QString text = QString::fromUtf8("串流助手");

        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        log.write(QtInfoMsg, noContext, text);
        QTextCodec::setCodecForLocale(chinese);
        log.write(QtInfoMsg, noContext, text);
        QTextCodec::setCodecForLocale(previous);

        QFile file(folder.filePath(dayFile));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray head = "[Info:14:03:07.215  \"(0)\"]:";
        QCOMPARE(file.readAll(),
                 head + text.toUtf8() + "\r\n" + head + "\xB4\xAE\xC1\xF7\xD6\xFA\xCA\xD6\r\n");
    }

    void longTextsAndTextsOfSeveralLinesAreWrittenAsTheyAre()
    {
        ManualClock clock;
        LogFile log(dir(), clock);
        const QByteArray longText(3 * 1024 * 1024, 'x');
        log.write(QtInfoMsg, noContext, QString::fromLatin1(longText));
        log.write(QtInfoMsg, noContext, QStringLiteral("one\ntwo\r\n\tthree\n"));
        log.write(QtInfoMsg, noContext, QString::fromLatin1("nul\0inside", 10));

        const QByteArray head = "[Info:14:03:07.215  \"(0)\"]:";
        QVERIFY(readFile(dayFile) == head + longText + "\r\n" + head + "one\ntwo\r\n\tthree\n\r\n" +
                                         head + QByteArray("nul\0inside", 10) + "\r\n");
    }

    void aFatalMessageIsOnlyRecorded()
    {
        ManualClock clock;
        LogFile log(dir(), clock);
        log.write(QtFatalMsg, noContext, QStringLiteral("the end"));
        log.write(QtInfoMsg, noContext, QStringLiteral("not yet"));
        QCOMPARE(readFile(dayFile), QByteArray("[Fatal:14:03:07.215  \"(0)\"]:the end\r\n"
                                               "[Info:14:03:07.215  \"(0)\"]:not yet\r\n"));
    }

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
