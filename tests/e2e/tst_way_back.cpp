#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QFile>

// What the real program changed comes back, however it ended.
class TestWayBack : public TestCase
{
    Q_OBJECT

    static QString listFile(const Program &program)
    {
        return program.home() + "/AppData/Local/openvr/openvrpaths.vrpath";
    }
    static int giveBack(Program &program)
    {
        program.arguments = QStringList("--give-back");
        return program.start() ? program.wait() : -1;
    }

private slots:
    void whoeverIsKilledGivesBack_data()
    {
        QTest::addColumn<QString>("logged");
        QTest::newRow("others are cleared") << "Successfully cleared external_drivers";
        QTest::newRow("the server has its settings") << "checkSteam end";
        QTest::newRow("ours is registered") << "Successfully set external_drivers";
        QTest::newRow("ours is cleared") << "vrserver.exe detected";
    }
    void whoeverIsKilledGivesBack()
    {
        QFETCH(QString, logged);
        Program program(dir(), "one-headset");
        const QByteArray list = "{ \"runtime\":[\"C:\\\\SteamVR\"],\r\n\"external_drivers\" : "
                                "[\"C:\\\\Other\\\\driver\",\"D:/gloves\"]}";
        QFile file(listFile(program));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(list) == list.size());
        file.close();
        const QByteArray session = program.read(program.work() + "/session.json");
        QVERIFY(!session.isEmpty());

        QVERIFY(program.start());
        QTRY_VERIFY_WITH_TIMEOUT(program.log().contains(logged), 60000);
        program.kill();
        QVERIFY(program.read(listFile(program)) != list);

        QCOMPARE(giveBack(program), 0);
        QCOMPARE(program.read(listFile(program)), list);
        QCOMPARE(program.read(program.work() + "/session.json"), session);
    }

    void nobodyGivesBackWhileTheProgramRuns()
    {
        Program program(dir(), "one-headset");
        QVERIFY(program.start());
        QTRY_VERIFY_WITH_TIMEOUT(program.log().contains("init end"), 60000);
        const QByteArray before = program.read(program.dataDir() + "/changes.jsonl");
        QVERIFY(!before.isEmpty());
        Program second(dir() + "/second", "one-headset");
        second.environment = program.environment;
        QCOMPARE(giveBack(second), 2);
        QCOMPARE(program.read(program.dataDir() + "/changes.jsonl"), before);
        program.close();
    }
};

KOLM_TEST_MAIN(TestWayBack)
#include "tst_way_back.moc"
