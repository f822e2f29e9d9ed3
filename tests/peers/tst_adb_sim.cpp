#include "tests/support/free_port.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTcpSocket>

namespace {

struct Result
{
    QString out;
    QString err;
    int code = -1;
};

} // namespace

class AdbSimTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        port_ = freePort();
    }
    void cleanup()
    {
        call({"kill-server"});
        TestCase::cleanup();
    }

    void theFirstCallStartsAServer()
    {
        QVERIFY(!isOpen(port_));
        QVERIFY(call({"--version"}).out.startsWith("Android Debug Bridge version "));
        QVERIFY(!isOpen(port_));
        const Result first = call({"devices"});
        QCOMPARE(first.out, QString("List of devices attached\n\n"));
        QCOMPARE(first.err, QString("* daemon not running; starting now at tcp:%1\n"
                                    "* daemon started successfully\n")
                                .arg(port_));
        QVERIFY(isOpen(port_));
        QCOMPARE(call({"devices"}).err, QString());
        QCOMPARE(call({"kill-server"}).code, 0);
        QTRY_VERIFY(!isOpen(port_));
    }

    void listsWhatIsOnTheCable()
    {
        writeFile("devices", "PA7910\tdevice\nPA7911\toffline\n");
        QCOMPARE(call({"devices"}).out,
                 QString("List of devices attached\nPA7910\tdevice\nPA7911\toffline\n\n"));
    }

    void aForwardHoldsItsPortUntilItIsRemoved()
    {
        writeFile("devices", "PA7910\tdevice\n");
        const quint16 port = freePort();
        const QString local = QString("tcp:%1").arg(port);
        QCOMPARE(call({"forward", "--list"}).out, QString("\n"));
        QCOMPARE(call({"forward", local, "tcp:9943"}).out, QString("%1\n").arg(port));
        QCOMPARE(call({"forward", "--list"}).out, QString("PA7910 %1 tcp:9943\n\n").arg(local));
        {
            QTcpSocket socket;
            socket.connectToHost("127.0.0.1", port);
            QVERIFY(socket.waitForReadyRead(5000));
            QCOMPARE(socket.readAll(), QByteArray("HEADSET\n"));
        }
        QCOMPARE(call({"reverse", "tcp:50000", "tcp:50001"}).code, 0);
        QCOMPARE(call({"reverse", "--list"}).out, QString("UsbFfs tcp:50000 tcp:50001\n\n"));
        QCOMPARE(call({"forward", "--remove-all"}).out, QString());
        QCOMPARE(call({"forward", "--list"}).out, QString("\n"));
        QVERIFY(!isOpen(port));
        QCOMPARE(call({"reverse", "--remove-all"}).code, 0);
        QCOMPARE(call({"reverse", "--list"}).out, QString("\n"));
        QCOMPARE(call({"forward", "--remove", local}).code, 1);
    }

    void theListsLoseWhatIsGone()
    {
        writeFile("devices", "PA7910\tdevice\n");
        const quint16 port = freePort();
        QCOMPARE(call({"forward", QString("tcp:%1").arg(port), "tcp:9943"}).code, 0);
        QCOMPARE(call({"reverse", "tcp:50000", "tcp:50000"}).code, 0);
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", port);
        QVERIFY(socket.waitForReadyRead(5000));
        writeFile("devices", "");
        QVERIFY(socket.waitForDisconnected(5000));
        QVERIFY(!isOpen(port));
        writeFile("devices", "PA7910\tdevice\n");
        QCOMPARE(call({"forward", "--list"}).out, QString("\n"));
        QCOMPARE(call({"reverse", "--list"}).out, QString("\n"));
    }

    void withoutOneReadyHeadsetNothingIsForwarded_data()
    {
        QTest::addColumn<QByteArray>("devices");
        QTest::addColumn<QString>("error");
        QTest::newRow("none") << QByteArray() << "adb: error: no devices/emulators found\n";
        QTest::newRow("two") << QByteArray("A\tdevice\nB\tdevice\n")
                             << "adb: error: more than one device/emulator\n";
        QTest::newRow("offline") << QByteArray("A\toffline\n") << "adb: error: device offline\n";
    }

    void withoutOneReadyHeadsetNothingIsForwarded()
    {
        QFETCH(QByteArray, devices);
        QFETCH(QString, error);
        QCOMPARE(call({"start-server"}).code, 0);
        writeFile("devices", devices);
        for (const char *what : {"forward", "reverse"}) {
            const Result result = call({what, "tcp:50000", "tcp:50000"});
            QCOMPARE(result.err, error);
            QCOMPARE(result.out, QString());
            QCOMPARE(result.code, 1);
        }
    }

    void playsRecordedAnswers()
    {
        QVERIFY(QDir().mkpath(path("answers")));
        writeFile("answers/forward_--list", "recorded\n");
        QCOMPARE(call({"forward", "--list"}).out, QString("recorded\n"));
        QVERIFY(!isOpen(port_));
    }

    void recordsItsArgumentsByteForByte()
    {
        const QStringList arguments = {"--version", QString::fromUtf8("中 文 & \"é\""), "a\\b", ""};
        call(arguments);
        const QJsonObject recorded = readJson("calls");
        QCOMPARE(recorded.value("arguments").toArray(), QJsonArray::fromStringList(arguments));
        QCOMPARE(recorded.value("folder").toString(), QDir::currentPath());
        QCOMPARE(recorded.value("program").toString(), QString(ADB_SIM));
    }

    void hangsAsLongAsItIsTold()
    {
        writeFile("hang", "");
        QProcess adb;
        adb.setProcessEnvironment(environment());
        adb.start(ADB_SIM, {"devices"});
        QTRY_VERIFY(!readFile("calls").isEmpty());
        QCOMPARE(adb.state(), QProcess::Running);
        QCOMPARE(adb.readAllStandardOutput(), QByteArray());
        QVERIFY(QFile::remove(path("hang")));
        QVERIFY(adb.waitForFinished(20000));
        QVERIFY(adb.readAllStandardOutput().startsWith("List of devices attached\n"));
    }

    void withItsFolderTheServerEnds()
    {
        const QString owner = path("somebody");
        writeFile("somebody", "");
        writeFile("owner", owner.toUtf8());
        QCOMPARE(call({"start-server"}).code, 0);
        QVERIFY(isOpen(port_));
        QVERIFY(QFile::remove(owner));
        QTRY_VERIFY(!isOpen(port_));
    }

private:
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ADB_SIM_FOLDER", dir());
        environment.insert("ANDROID_ADB_SERVER_PORT", QString::number(port_));
        return environment;
    }
    Result call(const QStringList &arguments) const
    {
        QProcess adb;
        adb.setProcessEnvironment(environment());
        adb.start(ADB_SIM, arguments);
        if (!adb.waitForFinished(20000))
            return {};
        return {adb.readAllStandardOutput(), adb.readAllStandardError(), adb.exitCode()};
    }
    static bool isOpen(quint16 port)
    {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", port);
        return socket.waitForConnected(5000);
    }

    quint16 port_ = 0;
};

KOLM_TEST_MAIN(AdbSimTest)
#include "tst_adb_sim.moc"
