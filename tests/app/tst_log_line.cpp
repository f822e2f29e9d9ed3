#include "app/log_file.h"
#include "base/manual_clock.h"
#include "tests/app/log_lines.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

// What a line says, and its bytes in the file.
class LogLineTest : public TestCase
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
};

KOLM_TEST_MAIN(LogLineTest)
#include "tst_log_line.moc"
