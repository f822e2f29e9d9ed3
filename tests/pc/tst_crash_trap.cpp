#include "tests/pc/error_mode.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

// What a process leaves that breaks.
class TestCrashTrap : public TestCase
{
    Q_OBJECT

    // Whether it ended as a process that breaks does.
    bool breakBy(const QString &how)
    {
        QProcess victim;
        victim.start(QStringLiteral(KOLM_CRASH_VICTIM),
                     {how, path("crash.txt"), path("crash.dmp")});
        return victim.waitForFinished(60000) &&
               (victim.exitStatus() == QProcess::CrashExit || victim.exitCode() != 0);
    }
    QStringList record() const { return QString::fromUtf8(readFile("crash.txt")).split('\n'); }
    // The lines below a heading.
    QStringList below(const QString &heading) const
    {
        const QStringList lines = record();
        QStringList found;
        for (int i = lines.indexOf(heading) + 1; i > 0 && i < lines.size(); ++i) {
            if (!lines[i].contains(QRegularExpression("^( |[0-9a-f]+-)")))
                break;
            found.append(lines[i].trimmed());
        }
        return found;
    }

private slots:
    void whateverBreaksLeavesARecord_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("why");
        QTest::newRow("a wrong address") << "null" << wrongAddress();
        QTest::newRow("a wrong address on another thread") << "thread" << wrongAddress();
        if (!fullStack().isEmpty())
            QTest::newRow("a full stack") << "stack" << fullStack();
        QTest::newRow("abort") << "abort"
                               << "abort at";
        QTest::newRow("nobody catches") << "throw"
                                        << "exception of C++ at";
        QTest::newRow("fatal for Qt") << "fatal"
                                      << "fatal message of Qt at";
    }
    void whateverBreaksLeavesARecord()
    {
        QFETCH(QString, how);
        QFETCH(QString, why);
        QVERIFY(breakBy(how));
        const QStringList lines = record();
        QVERIFY2(lines[0].startsWith(why), qPrintable(lines[0]));
        QCOMPARE(lines.value(1), QString("victim 1.2.3"));
        QCOMPARE(below("log").mid(0, 2), QStringList({"the last but one", "the last line"}));
        QCOMPARE(below("log").size() > 2, how == "fatal"); // which is logged itself
        QVERIFY(below("stack").size() >= 3);
        QVERIFY(!below("modules").filter("crash_victim").isEmpty());
        QVERIFY(readFile("crash.txt").size() < 100000);
        QCOMPARE(readFile("crash.dmp").startsWith("MDMP"), dumpsAreWritten());
    }

    void theStackNamesTheProgram()
    {
        QVERIFY(breakBy("null"));
        const QRegularExpression range("^([0-9a-f]+)-([0-9a-f]+) .*crash_victim");
        int inside = 0;
        for (const QString &module : below("modules")) {
            const auto match = range.match(module);
            if (!match.hasMatch())
                continue;
            const quint64 begin = match.captured(1).toULongLong(nullptr, 16);
            const quint64 end = match.captured(2).toULongLong(nullptr, 16);
            for (const QString &address : below("stack")) {
                const quint64 at = address.toULongLong(nullptr, 16);
                inside += at >= begin && at < end;
            }
        }
        QVERIFY(inside >= 2); // the function and who called it
    }

    void anOrdinaryEndLeavesNothing()
    {
        QVERIFY(breakBy("exit"));
        QVERIFY(!QFile::exists(path("crash.txt")));
        QVERIFY(!QFile::exists(path("crash.dmp")));
    }

    void whereNothingCanBeWrittenItEndsAllTheSame()
    {
        QProcess victim;
        victim.start(QStringLiteral(KOLM_CRASH_VICTIM),
                     {"null", path("none/crash.txt"), path("none/crash.dmp")});
        QVERIFY(victim.waitForFinished(60000));
        // A sanitizer ends it in its own way.
        QVERIFY(victim.exitStatus() == QProcess::CrashExit || victim.exitCode() != 0);
    }
};

KOLM_TEST_MAIN(TestCrashTrap)
#include "tst_crash_trap.moc"
