#include "base/file_io.h"
#include "demonstration/signal_spy.h"
#include "demonstration/written_files.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QStringListModel>

// Something that pages could see.
class Seen : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int number READ number NOTIFY changed)
    Q_PROPERTY(QString quiet READ quiet)
    Q_PROPERTY(int costly READ costly NOTIFY changed)
    Q_PROPERTY(QObject *list READ list NOTIFY changed)
    Q_PROPERTY(Mood mood READ mood NOTIFY changed)

public:
    enum Mood { Good, Bad };
    Q_ENUM(Mood)

    int number() const { return number_; }
    QString quiet() const { return quiet_; }
    int costly()
    {
        ++reads;
        return 0;
    }
    QObject *list() { return &list_; }
    Mood mood() const { return mood_; }

    int reads = 0;
    int number_ = 1;
    QString quiet_ = QStringLiteral("a");
    Mood mood_ = Good;
    QStringListModel list_;

signals:
    void changed();
    void said(const QString &text, int times = 2);
};

// What is written down of a run.
class TestFaceRecord : public TestCase
{
    Q_OBJECT

    QStringList lines_;

    void follow(SignalSpy &spy)
    {
        spy.begin([this](const QString &line) { lines_ += line; });
    }

private slots:
    void cleanup()
    {
        lines_.clear();
        TestCase::cleanup();
    }

    void itBeginsWithWhatThePropertiesAre()
    {
        Seen seen;
        seen.list_.setStringList({"x", "y"});
        SignalSpy spy(seen, "seen", {"costly"});
        follow(spy);
        QCOMPARE(lines_, QStringList({"  seen.number = 1", "  seen.quiet = \"a\"",
                                      "  seen.list = [display \"x\", edit \"x\"]"
                                      "[display \"y\", edit \"y\"]",
                                      "  seen.mood = Good"}));
    }

    void eachSignalIsSaidWithItsArguments()
    {
        Seen seen;
        SignalSpy spy(seen, "seen", {"costly"});
        follow(spy);
        lines_.clear();
        emit seen.changed();
        emit seen.changed();
        QCOMPARE(lines_, QStringList({"seen.changed()", "seen.changed()"}));
        lines_.clear();
        emit seen.said("hello", 3);
        QCOMPARE(lines_.first(), QString("seen.said(\"hello\", 3)"));
    }

    void aChangeIsSaidOnceWhoeverToldOfIt()
    {
        Seen seen;
        SignalSpy spy(seen, "seen", {"costly"});
        follow(spy);
        lines_.clear();
        seen.number_ = 2;
        seen.mood_ = Seen::Bad;
        emit seen.changed();
        seen.quiet_ = "b"; // nobody tells
        emit seen.changed();
        QCOMPARE(lines_, QStringList({"seen.changed()", "  seen.number = 2", "  seen.mood = Bad",
                                      "seen.changed()", "  seen.quiet = \"b\""}));
    }

    void whatCostsIsNeverRead()
    {
        Seen seen;
        SignalSpy spy(seen, "seen", {"costly"});
        follow(spy);
        emit seen.changed();
        QCOMPARE(seen.reads, 0);
    }

    void aListThatIsFollowedIsItsRows()
    {
        QStringListModel list({"a"});
        SignalSpy spy(list, "list", {});
        follow(spy);
        QCOMPARE(lines_, QStringList({"  list.rows = [display \"a\", edit \"a\"]"}));
        lines_.clear();
        list.setStringList({});
        QVERIFY2(lines_.contains("  list.rows = no rows"), qPrintable(lines_.join('\n')));
    }

    void filesAreToldInTheOrderInWhichTheyAreWritten()
    {
        writeFile("b.json", "one\ntwo\n");
        WrittenFiles written;
        written.watch(dir());
        QCOMPARE(written.news(), QStringList());
        QCOMPARE(replaceFile(path("b.json"), "one\nthree\n"), WriteResult::Ok);
        QCOMPARE(replaceFile(path("a.inf"), "x"), WriteResult::Ok);
        writeFile("day.txt", "a log");
        QCOMPARE(written.news(),
                 QStringList({"wrote b.json", "  -two", "  +three", "made a.inf", "  +x"}));
        QVERIFY(QFile::remove(path("a.inf")));
        QCOMPARE(written.news(), QStringList({"removed a.inf", "  -x"}));
        QCOMPARE(written.news(), QStringList());
    }

    void aFileThatStaysTheSameIsToldAllTheSame()
    {
        writeFile("b.json", "one");
        WrittenFiles written;
        written.watch(dir());
        QCOMPARE(replaceFile(path("b.json"), "one"), WriteResult::Ok);
        QCOMPARE(written.news(), QStringList({"wrote b.json"}));
    }
};

KOLM_TEST_MAIN(TestFaceRecord)
#include "tst_face_record.moc"
