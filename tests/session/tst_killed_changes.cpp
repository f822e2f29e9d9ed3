#include "session/change_record.h"
#include "tests/support/test_case.h"
#include "tests/support/vr_path_file.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

// As no tool of ours would lay it out.
const QByteArray list =
    "{\"runtime\" : [\"C:\\\\SteamVR\"],\r\n"
    " \"external_drivers\":[\"C:\\\\Other\\\\driver\", \"D:/KOLM-not\"] ,\"x\":1}";
const QByteArray session = R"({ "sessionSettings":{"video":{"preferredFps":60},"audio":
    {"microphone":{"enabled":false}},"headset":{"serialNumber":"?"}},"openvr_config":{}} )";

const QString ownDriver = QStringLiteral("C:/KOLM");

} // namespace

// Whoever is killed while something of others is changed can give it back.
class TestKilledChanges : public TestCase
{
    Q_OBJECT

    void writeAll(const QByteArray &settings, const QByteArray &server) const
    {
        vr_path_file::write(dir(), list);
        writeFile("set.json", settings);
        writeFile("session.json", server);
    }
    QByteArray listNow() const
    {
        QFile file(vr_path_file::name(dir()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool isKilledAt(int moment) const
    {
        QProcess victim;
        victim.setWorkingDirectory(dir());
        victim.start(QCoreApplication::applicationDirPath() + "/change_victim",
                     {dir(), QString::number(moment)});
        if (!victim.waitForFinished())
            qFatal("the victim does not end");
        return victim.exitStatus() == QProcess::CrashExit;
    }

private slots:
    void everythingComesBackByteForByte_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QByteArray>("server");
        QTest::newRow("documents") << QByteArray("{}") << session;
        QTest::newRow("no JSON") << QByteArray("{\"D1\":") << QByteArray("not JSON\n");
    }
    void everythingComesBackByteForByte()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QByteArray, server);
        int changed = 0;
        int moment = 1;
        for (bool wasKilled = true; wasKilled; ++moment) {
            QDir(dir()).removeRecursively();
            QDir().mkpath(dir());
            QDir::setCurrent(dir());
            writeAll(settings, server);
            wasKilled = isKilledAt(moment);
            changed += listNow() != list;

            ChangeRecord record(dir(), ownDriver);
            const QByteArray when = QByteArray::number(moment);
            QVERIFY2(record.giveBackAll(), when);
            QVERIFY2(listNow() == list, when);
            QVERIFY2(readFile("session.json") == server, when);
            if (settings != "{}" && QFile::exists(path("set.json")))
                QVERIFY2(readFile("set.json") == settings || !readJson("set.json").isEmpty(), when);
            QCOMPARE(QDir(dir() + "/AppData/Local/openvr").entryList(QDir::Files).size(), 1);
            // Once more changes nothing.
            QVERIFY2(record.giveBackAll(), when);
            QVERIFY2(ChangeRecord(dir(), ownDriver).giveBackAll(), when);
            QVERIFY2(listNow() == list, when);
        }
        QVERIFY2(moment > 14, QByteArray::number(moment));
        QVERIFY(changed > 8);
    }

    void severalRunsThatWereKilledAreOneChange()
    {
        writeAll("{}", session);
        for (int moment = 12; moment > 1; --moment)
            isKilledAt(moment);
        ChangeRecord record(dir(), ownDriver);
        QVERIFY(record.giveBackAll());
        QCOMPARE(listNow(), list);
        QCOMPARE(readFile("session.json"), session);
    }
};

KOLM_TEST_MAIN(TestKilledChanges)
#include "tst_killed_changes.moc"
