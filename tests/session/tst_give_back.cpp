#include "config/config_manager.h"
#include "session/change_record.h"
#include "session/give_back.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"
#include "tests/support/vr_path_file.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>

namespace {

const QString ownDriver = QStringLiteral("C:/KOLM");

QByteArray drivers(const char *list)
{
    return QByteArray(R"({"x":12345678901234567890,"external_drivers":)") + list + "}";
}

} // namespace

// What was changed comes back.
class TestGiveBack : public TestCase
{
    Q_OBJECT

    QString listFile() const { return vr_path_file::name(dir()); }
    QByteArray list() const
    {
        QFile file(listFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QJsonArray listed() const
    {
        return vr_path_file::read(dir()).value("external_drivers").toArray();
    }
    void clear(ChangeRecord &record) const
    {
        ConfigManager config(dir(), [] { return false; });
        config.setOutsideRecord(record.callbacks());
        config.clearExternalDrivers(dir());
    }

private slots:
    void aListThatNobodyTouchedSinceComesBackByteForByte()
    {
        vr_path_file::write(dir(), drivers(R"( ["C:/other"] )"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        QCOMPARE(listed(), QJsonArray());
        QVERIFY(give_back::isInForce(record.changes().first(), ownDriver));
        QVERIFY(record.giveBack(record.changes().first().id));
        QCOMPARE(list(), drivers(R"( ["C:/other"] )"));
        QVERIFY(record.changes().first().isGivenBack);
        QVERIFY(!give_back::isInForce(record.changes().first(), ownDriver));
        QVERIFY(ChangeRecord(dir(), ownDriver).changes().first().isGivenBack);
    }

    void whatOthersWroteSinceStays()
    {
        vr_path_file::write(dir(), drivers(R"(["C:/other","C:/KOLM"])"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        vr_path_file::write(dir(), R"({"y":2,"external_drivers":["C:/new","C:/KOLM/"]})");
        QVERIFY(give_back::isInForce(record.changes().first(), ownDriver));
        QVERIFY(record.giveBackAll());
        QCOMPARE(listed(), (QJsonArray{"C:/new", "C:/other"}));
        QCOMPARE(vr_path_file::read(dir()).value("y").toInt(), 2);
    }

    void severalLossesComeBackTogether()
    {
        vr_path_file::write(dir(), drivers(R"(["C:/a"])"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        vr_path_file::write(dir(), drivers(R"(["C:/b"])"));
        clear(record);
        QCOMPARE(record.changes().size(), 2);
        QVERIFY(record.giveBackAll());
        QCOMPARE(listed(), (QJsonArray{"C:/b", "C:/a"}));
    }

    void aListThatIsGoneIsMadeAnew()
    {
        vr_path_file::write(dir(), drivers(R"(["C:/a"])"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        QVERIFY(QFile::remove(listFile()));
        QVERIFY(record.giveBackAll());
        QCOMPARE(list(), drivers(R"(["C:/a"])"));
    }

    void aListWhoseFolderIsGoneNeedsNothing()
    {
        vr_path_file::write(dir(), drivers(R"(["C:/a"])"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        QVERIFY(QDir(path("AppData")).removeRecursively());
        QVERIFY(!give_back::isPossible(record.changes().first()));
        QVERIFY(record.giveBackAll());
        QVERIFY(!record.changes().first().isGivenBack);
    }

    void whatCannotBeWrittenIsNotGivenBack()
    {
        vr_path_file::write(dir(), drivers(R"(["C:/a"])"));
        ChangeRecord record(dir(), ownDriver);
        clear(record);
        {
            const ReadOnlyFile obstacle(listFile());
            if (!obstacle.works())
                QSKIP("This user may write every file.");
            announce("What was changed cannot be given back now: " + listFile());
            QVERIFY(!record.giveBackAll());
        }
        QVERIFY(!record.changes().first().isGivenBack);
        QVERIFY(record.giveBackAll());
        QCOMPARE(listed(), QJsonArray{"C:/a"});
    }

    void settingsThatTheServerWroteSinceAreKeptBeside()
    {
        writeFile("session.json", "first");
        ChangeRecord record(dir(), ownDriver);
        record.beforeEdit({OutsideEdit::ServerSettings, path("session.json"), "first", "ours"});
        writeFile("session.json", "the server's");
        QVERIFY(record.giveBackAll());
        QCOMPARE(readFile("session.json"), QByteArray("first"));
        QCOMPARE(readFile("session.json.replaced"), QByteArray("the server's"));
    }

    void whatWasSetAsideGetsItsNameBackWhereItIsFree()
    {
        writeFile("set.json", "{");
        writeFile("set.json.bad", "older");
        ChangeRecord record(dir(), ownDriver);
        QVERIFY(setAside(path("set.json"), record.callbacks()));
        QVERIFY(!QFile::exists(path("set.json")));
        QCOMPARE(readFile("set.json-2.bad"), QByteArray("{"));
        QCOMPARE(readFile("set.json.bad"), QByteArray("older"));
        writeFile("set.json", "{}");
        QVERIFY(!give_back::isPossible(record.changes().first()));
        QVERIFY(record.giveBackAll());
        QCOMPARE(readFile("set.json"), QByteArray("{}"));
        QVERIFY(QFile::remove(path("set.json")));
        QVERIFY(record.giveBackAll());
        QCOMPARE(readFile("set.json"), QByteArray("{"));
    }

    void forwardsDoNotComeBackByThemselves()
    {
        ChangeRecord record(dir(), ownDriver);
        record.beforeForwardsGo({"PA1 tcp:1 tcp:2"});
        QVERIFY(!give_back::isPossible(record.changes().first()));
        QVERIFY(record.giveBackAll());
        QVERIFY(!record.changes().first().isGivenBack);
    }

    void listsAreMerged_data()
    {
        QTest::addColumn<QByteArray>("now");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("merged");
        const QByteArray nothing;
        QTest::newRow("no JSON") << QByteArray("{") << drivers(R"(["a"])") << nothing;
        QTest::newRow("a list") << QByteArray("[]") << drivers(R"(["a"])") << nothing;
        QTest::newRow("still there")
            << drivers(R"(["a","b"])") << drivers(R"(["a"])") << drivers(R"(["a","b"])");
        QTest::newRow("nothing lost") << drivers("null") << drivers("[]") << drivers("null");
    }
    void listsAreMerged()
    {
        QFETCH(QByteArray, now);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, merged);
        QCOMPARE(give_back::withDrivers(now, before, ownDriver), merged);
    }

    void numbersThatNoDoubleHoldsStay()
    {
        const QByteArray merged =
            give_back::withDrivers(drivers(R"(["C:/KOLM"])"), drivers(R"(["a"])"), ownDriver);
        QVERIFY(merged.contains("12345678901234567890"));
        QVERIFY(merged.contains("\"a\"") && !merged.contains("KOLM"));
    }
};

KOLM_TEST_MAIN(TestGiveBack)
#include "tst_give_back.moc"
