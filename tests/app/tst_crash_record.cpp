#include "app/crash_record.h"
#include "tests/support/test_case.h"

#include <QFile>

// What is told of a run that broke, and what becomes of its record.
class TestCrashRecord : public TestCase
{
    Q_OBJECT

private slots:
    void withoutARecordThereIsNothingToTell()
    {
        QVERIFY(!crash_record::take(dir()));
        QVERIFY(logged().isEmpty());
    }

    void aRecordIsToldOnceAndKept()
    {
        writeFile("crash.txt", "signal 11 at 0000000000000000\r\nKOLM 1.2.3\n");
        writeFile("crash.dmp", "MDMP");
        writeFile("crash-last.txt", "an earlier one");
        announce("The last run broke: signal 11 at 0000000000000000; its record is kept in "
                 "crash-last.txt");
        QCOMPARE(crash_record::take(dir()),
                 std::optional<QString>("signal 11 at 0000000000000000"));
        QVERIFY(readFile("crash-last.txt").contains("KOLM 1.2.3"));
        QCOMPARE(readFile("crash-last.dmp"), QByteArray("MDMP"));
        QVERIFY(!crash_record::take(dir()));
        QVERIFY(!QFile::exists("crash.dmp"));
    }

    void aRecordThatBrokeOffIsToldToo()
    {
        writeFile("crash.txt", "");
        announce("The last run broke: ; its record is kept in crash-last.txt");
        QVERIFY(crash_record::take(dir()));
    }

    void ofAnEndlessLineLittleIsSaid()
    {
        writeFile("crash.txt", QByteArray(1 << 20, 'a'));
        announce("The last run broke: " + QString(199, 'a') +
                 "; its record is kept in crash-last.txt");
        QVERIFY(crash_record::take(dir()));
    }
};

KOLM_TEST_MAIN(TestCrashRecord)
#include "tst_crash_record.moc"
