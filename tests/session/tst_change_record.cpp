#include "session/change_record.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QJsonDocument>

namespace {

const QString ownDriver = QStringLiteral("C:/KOLM");
const QString notWritten = QStringLiteral("A change could not be written down in changes.jsonl");

OutsideEdit edit(const QByteArray &before, const QByteArray &after,
                 OutsideEdit::Document document = OutsideEdit::DriverList)
{
    return {document, "/somewhere/file", before, after};
}

} // namespace

// What is written down of the changes outside this program's folder.
class TestChangeRecord : public TestCase
{
    Q_OBJECT

    QList<OutsideChange> stored() const { return ChangeRecord(dir(), ownDriver).changes(); }
    int lines() const { return readFile("changes.jsonl").count('\n'); }

private slots:
    void nothingIsWrittenWhereNothingWasChanged()
    {
        ChangeRecord record(dir(), ownDriver);
        QVERIFY(record.changes().isEmpty());
        QVERIFY(record.giveBackAll());
        QVERIFY(!QFile::exists(path("changes.jsonl")));
    }

    void aChangeIsOnTheDiskAtOnce()
    {
        ChangeRecord record(dir(), ownDriver);
        const QByteArray before = "\xff\x00 é\r\n";
        record.beforeEdit(edit(before, "new"));
        QCOMPARE(stored().size(), 1);
        const OutsideChange change = stored().first();
        QCOMPARE(change.kind, OutsideChange::DriverList);
        QCOMPARE(change.path, QString("/somewhere/file"));
        QCOMPARE(change.before, before);
        QCOMPARE(change.afters, QList<QByteArray>{outside_change::fingerprint("new")});
        QVERIFY(change.time.isValid());
        QVERIFY(!change.isGivenBack);
    }

    void oneEditAfterTheOtherIsOneChange()
    {
        ChangeRecord record(dir(), ownDriver);
        record.beforeEdit(edit("theirs", "cleared"));
        record.beforeEdit(edit("cleared", "ours"));
        record.beforeEdit(edit("ours", "cleared"));
        QCOMPARE(stored().size(), 1);
        QCOMPARE(stored().first().before, QByteArray("theirs"));
        QCOMPARE(stored().first().afters.size(), 2);
        // Runs that do the same again need no more room.
        const int before = lines();
        for (int run = 0; run < 5; ++run) {
            ChangeRecord later(dir(), ownDriver);
            later.beforeEdit(edit("cleared", "ours"));
            later.beforeEdit(edit("ours", "cleared"));
        }
        QCOMPARE(lines(), before);
    }

    void aKillBeforeTheEditIsNoOtherChange()
    {
        ChangeRecord(dir(), ownDriver).beforeEdit(edit("theirs", "cleared"));
        ChangeRecord(dir(), ownDriver).beforeEdit(edit("theirs", "cleared"));
        QCOMPARE(stored().size(), 1);
    }

    void whatOthersRegisteredSinceIsAnotherChange()
    {
        ChangeRecord record(dir(), ownDriver);
        record.beforeEdit(edit("theirs", "cleared"));
        record.beforeEdit(edit("another tool's", "cleared"));
        QCOMPARE(stored().size(), 2);
        QCOMPARE(stored().last().before, QByteArray("another tool's"));
    }

    void theServersOwnWritingIsNoChangeOfOurs()
    {
        ChangeRecord record(dir(), ownDriver);
        record.beforeEdit(edit("first", "a", OutsideEdit::ServerSettings));
        record.beforeEdit(edit("the server's", "b", OutsideEdit::ServerSettings));
        QCOMPARE(stored().size(), 1);
        QCOMPARE(stored().first().before, QByteArray("first"));
        QCOMPARE(stored().first().afters.size(), 2);
    }

    void forwardsAndFilesThatWereSetAsideAreListed()
    {
        ChangeRecord record(dir(), ownDriver);
        record.beforeForwardsGo({"PA1 tcp:1 tcp:2"});
        record.beforeForwardsGo({"PA1 tcp:1 tcp:2"});
        record.beforeSetAside("/a/set.json", "/a/set.json.bad");
        const QList<OutsideChange> changes = stored();
        QCOMPARE(changes.size(), 2);
        QCOMPARE(changes[0].kind, OutsideChange::Forwards);
        QCOMPARE(changes[0].forwards, QStringList("PA1 tcp:1 tcp:2"));
        QCOMPARE(changes[1].kind, OutsideChange::SetAside);
        QCOMPARE(changes[1].newPath, QString("/a/set.json.bad"));
        QVERIFY(changes[0].id != changes[1].id);
    }

    void aFileThatCouldNotBeSetAsideIsOneChange()
    {
        ChangeRecord(dir(), ownDriver).beforeSetAside("/a/set.json", "/a/set.json.bad");
        ChangeRecord(dir(), ownDriver).beforeSetAside("/a/set.json", "/a/set.json.bad");
        QCOMPARE(stored().size(), 1);
    }

    void aLineThatIsNoneIsPassedOver()
    {
        ChangeRecord(dir(), ownDriver).beforeEdit(edit("theirs", "cleared"));
        const QByteArray whole = readFile("changes.jsonl");
        writeFile("changes.jsonl",
                  "rubbish\n{\"change\":\"unheard of\"}\n[]\n" + whole + "{\"id\":");
        QCOMPARE(stored().size(), 1);
        ChangeRecord(dir(), ownDriver).beforeSetAside("/a", "/b");
        QCOMPARE(stored().size(), 2);
    }

    void aRecordThatIsHeldIsNotWrittenOver()
    {
        ChangeRecord(dir(), ownDriver).beforeEdit(edit("theirs", "cleared"));
        const QByteArray before = readFile("changes.jsonl");
        ChangeRecord record(dir(), ownDriver);
        {
            const LockedFile obstacle(path("changes.jsonl"));
            QVERIFY(obstacle.works());
            announce(notWritten);
            record.beforeSetAside("/a", "/b");
        }
        QCOMPARE(readFile("changes.jsonl"), before);
        QCOMPARE(record.changes().size(), 2); // this run knows it all the same
    }
};

KOLM_TEST_MAIN(TestChangeRecord)
#include "tst_change_record.moc"
