#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QTcpServer>

// Broken files and a taken port: the program goes on, and nothing of the
// user's is lost.
class TestBadSurroundings : public TestCase
{
    Q_OBJECT

private slots:
    void aTakenControlPortEndsItAtTheServer()
    {
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, 9932));
        Program program(dir(), "steam-already-running");
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "40");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY(program.errors().contains("ControlSocket::Startup bind error : "));
        QVERIFY(program.log().contains("port 9932 cannot be listened on, error "));
        QVERIFY(program.output().contains("missing: streaming server on the control port"));
        QVERIFY(program.journal().value(program.journal().size() - 1).contains("vrstartup.exe"));
    }

    void brokenFilesEndNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("half") << QByteArray("{\"sessionSettings\":{\"vid");
        QTest::newRow("garbage") << QByteArray(5000, '\xfe');
        QTest::newRow("NUL bytes") << QByteArray(100, '\0');
        QTest::newRow("an array") << QByteArray("[1,2,3]");
        QTest::newRow("wrong types") << QByteArray(
            "{\"sessionSettings\":7,\"D3\":\"x\",\"lastSn\":{},\"wiredOrWireless\":\"y\"}");
    }
    void brokenFilesEndNothing()
    {
        QFETCH(QByteArray, content);
        Program program(dir(), "steam-already-running");
        const auto overwrite = [&](const QString &path) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        };
        const QString paths = program.home() + "/AppData/Local/openvr/openvrpaths.vrpath";
        overwrite(program.work() + "/session.json");
        overwrite(paths);
        overwrite(program.dataDir() + "/setting.inf");
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "40");
        QVERIFY(program.start());
        // SteamVR cannot load a driver that could not be registered; the
        // program itself lives through it all.
        const int code = program.wait();
        QVERIFY2(code == 0 || code == 3, qPrintable(program.errors()));
        if (content.startsWith('{') && !content.endsWith("vid"))
            QCOMPARE(code, 0);
        else if (!content.startsWith('['))
            QCOMPARE(program.read(paths), content); // not ours to repair
        QVERIFY(!program.json(program.dataDir() + "/set.json").isEmpty());
    }

    void aBrokenSettingsFileIsReplacedByDefaults()
    {
        Program program(dir(), "steam-already-running");
        QFile file(program.dataDir() + "/set.json");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"D3\":");
        file.close();
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "10");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3); // no stored mode any more: the person is asked
        QVERIFY(program.log().contains("setting json parseError"));
        QCOMPARE(program.json(program.dataDir() + "/set.json")
                     .value("D3")
                     .toObject()
                     .value("codec")
                     .toString(),
                 QString("HEVC"));
    }

    void withoutThreadsItSaysSoAndEnds_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("says");
        QTest::newRow("Steam runs") << "steam-already-running"
                                    << "no thread for the link to the streaming server: ";
        QTest::newRow("Steam has to be started") << "one-headset"
                                                 << "no thread for the launch of Steam: ";
    }
    void withoutThreadsItSaysSoAndEnds()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, says);
        Program program(dir(), scenario);
        program.environment.insert("SIMPC_NO_THREADS", "1");
        program.environment.insert("SIMPC_FACE", path("face"));
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "40");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY2(program.log().contains(says), qPrintable(program.log()));
        QVERIFY(program.log().contains("no thread for facts: "));
        // What the user sees, and how it is left.
        const QString face = QString::fromUtf8(readFile("face"));
        QVERIFY2(face.contains("no-threads"), qPrintable(face));
        QCOMPARE(face.contains("orb.showToast(\"启动Steam失败\""), scenario == "one-headset");
        const QString paths = program.home() + "/AppData/Local/openvr/openvrpaths.vrpath";
        QVERIFY(program.json(paths).value("external_drivers").isNull());
        QVERIFY(!program.json(program.dataDir() + "/set.json").isEmpty());
    }

    void aMissingDataFolderIsMade()
    {
        Program program(dir(), "steam-already-running");
        QVERIFY(QDir(program.home() + "/.local").removeRecursively());
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.environment.insert("SIMPC_LIMIT", "5");
        QVERIFY(program.start());
        QCOMPARE(program.wait(), 3);
        QVERIFY(!program.log().isEmpty());
    }
};

KOLM_TEST_MAIN(TestBadSurroundings)
#include "tst_bad_surroundings.moc"
