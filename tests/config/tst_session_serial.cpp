#include "tests/config/session_fixture.h"

#include <QFile>
#include <QJsonDocument>

// The session's file when the serial is written at shut down.
class TestSessionSerial : public SessionFixture
{
    Q_OBJECT

private slots:
    void theSerialIsWritten()
    {
        writeFile("session.json",
                  R"({"sessionSettings":{"headset":{"serialNumber":"old","x":1}}})");
        ConfigManager config = manager();
        config.saveDeviceSettings("D2-5 é");

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D2-5 é"}));
        QCOMPARE(readFile("session.json"),
                 QJsonDocument(jsonObject(R"({"sessionSettings":{"headset":{"serialNumber":"D2-5 é",
                                     "x":1}}})"))
                     .toJson(QJsonDocument::Indented));
    }

    void clientsAreForgottenBeforeTheSerialIsWritten()
    {
        writeFile("session.json", R"({"clientConnections":{"a":{"ip":1},"b":{}},
                                 "sessionSettings":{"headset":{"serialNumber":"old"}}})");
        ConfigManager config = manager();

        config.writeSessionSerial();
        QCOMPARE(session(), jsonObject(R"({"clientConnections":{},
                                  "sessionSettings":{"headset":{"serialNumber":"old"}}})"));

        config.writeSessionSerial();
        QCOMPARE(session(), jsonObject(R"({"clientConnections":{},
                                  "sessionSettings":{"headset":{"serialNumber":"D3"}}})"));
        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3",
                                        "session path:" + dir() + "/session.json; sn: D3"}));
    }

    void aMissingSessionIsNoMatterAtShutDown()
    {
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList());
        QVERIFY(!QFile::exists(path("session.json")));
    }

    void aSessionWithoutSettingsIsNotWrittenAtShutDown_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("an empty object") << QByteArray("{}");
        QTest::newRow("other members") << QByteArray(R"({"headset":{},  "clientConnections":{}})");
        QTest::newRow("a list") << QByteArray("[ ]");
    }

    void aSessionWithoutSettingsIsNotWrittenAtShutDown()
    {
        QFETCH(QByteArray, text);
        writeFile("session.json", text);
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(readFile("session.json"), text);
        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3"}));
    }

    void aSessionWithoutHeadsetIsRewrittenAtShutDown()
    {
        writeFile("session.json", R"({"sessionSettings":{}})");
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(readFile("session.json"), QByteArray("{\n    \"sessionSettings\": {\n    }\n}\n"));
    }

    void aSessionThatIsNoJsonIsDeletedAtShutDown_data() { addTextsThatAreNoJson(); }

    void aSessionThatIsNoJsonIsDeletedAtShutDown()
    {
        QFETCH(QByteArray, text);
        writeFile("session.json", text);
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3",
                                        "before session json parseError"}));
        QVERIFY(!QFile::exists(path("session.json")));
    }
};

KOLM_TEST_MAIN(TestSessionSerial)
#include "tst_session_serial.moc"
