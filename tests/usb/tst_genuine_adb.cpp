#include "base/manual_clock.h"
#include "simpc/adb_processes.h"
#include "simpc/sim_pc.h"
#include "tests/support/genuine_adb.h"
#include "tests/support/test_case.h"
#include "usb/adb_manger.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

namespace {

constexpr int limit = 20000;     // ms
constexpr int portLimit = 60000; // ms; as long as other tests may take

// The system may have given the port to a connection of something else that
// runs, and keeps it for a minute after that. adb tries both of the PC's own
// addresses.
bool listens(QTcpServer &server, quint16 port)
{
    return server.isListening() || server.listen(QHostAddress::LocalHost, port) ||
           server.listen(QHostAddress::LocalHostIPv6, port);
}

// Whose sockets have this port, in the system's words.
QString holders(quint16 port)
{
    QProcess ss;
    ss.start("ss", {"-anpHt", QString("( sport = :%1 )").arg(port)});
    ss.waitForFinished(limit);
    return QString("%1: %2").arg(port).arg(QString::fromLocal8Bit(ss.readAllStandardOutput()));
}

// A PC on which adb is the genuine one.
struct Pc
{
    explicit Pc(const QString &dir) : adb(dir)
    {
        for (const char *name : names)
            qputenv(name, adb.environment().value(name).toLocal8Bit());
        pc.facts.searchPath.set(GenuineAdb::folder());
        pc.processes.setHostProcesses(
            adb_processes::onPort(static_cast<quint16>(adb.port().toInt())));
    }

    ~Pc()
    {
        manager.reset();
        for (std::size_t i = 0; i < std::size(names); ++i) {
            if (before[i].isNull())
                qunsetenv(names[i]);
            else
                qputenv(names[i], before[i]);
        }
    }

    void start()
    {
        manager = std::make_unique<AdbManger>(AdbManger::Dependencies{clock});
        QObject::connect(manager.get(), &AdbManger::deviceConnect,
                         [this](bool connect, const QString &serial) {
                             said << (connect ? "connect " : "gone ") + serial;
                         });
        QObject::connect(manager.get(), &AdbManger::showAdbTipToast, [this] { said << "tip"; });
    }
    // Lets it look as often as it takes, each look with time enough for adb.
    bool looksUntil(const std::function<bool()> &condition)
    {
        QElapsedTimer timer;
        timer.start();
        do {
            manager->checkDevice();
            for (int i = 0; i < 10; ++i) {
                clock.advance(500);
                QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
                manager->findChild<QProcess *>()->waitForFinished(200);
            }
            if (condition())
                return true;
        } while (!timer.hasExpired(limit));
        return false;
    }

    // adb's processes inherit these.
    static constexpr const char *names[] = {"ANDROID_ADB_SERVER_PORT", "HOME", "TMPDIR"};
    const QByteArray before[std::size(names)] = {qgetenv(names[0]), qgetenv(names[1]),
                                                 qgetenv(names[2])};
    GenuineAdb adb;
    ManualClock clock;
    SimPc pc{clock};
    QStringList said;
    std::unique_ptr<AdbManger> manager;
};

} // namespace

class GenuineAdbTest : public TestCase
{
    Q_OBJECT

private slots:
    void itsVersionAndItsEmptyListAreUnderstood()
    {
        Pc p(dir());
        p.start();
        QVERIFY(p.looksUntil([this] { return loggedCount("use local adb") == 1; }));
        QVERIFY(p.looksUntil([&p] { return p.said == QStringList{"gone "}; }));
        QVERIFY(p.adb.serverRuns());
        QVERIFY(p.pc.processes.isRunning("adb.exe"));
        p.manager.reset();
        QVERIFY(!p.pc.processes.isRunning("adb.exe"));
        QVERIFY(!p.adb.serverRuns());
    }

    void aHeadsetGetsItsPortsAndBothSidesUseThem()
    {
        Pc p(dir());
        p.start();
        const QString serial = p.adb.plugIn();
        QVERIFY(!serial.isEmpty());
        QVERIFY(p.looksUntil([&] { return p.said.contains("connect " + serial); }));
        QVERIFY(p.looksUntil([&p] {
            return p.adb.call({"reverse", "--list"}).contains("tcp:50001 tcp:50001");
        }));
        QCOMPARE(p.adb.call({"forward", "--list"}),
                 QString("%1 tcp:9943 tcp:9943\n%1 tcp:9944 tcp:9944\n\n").arg(serial));
        QVERIFY(p.adb.call({"reverse", "--list"}).contains("tcp:50000 tcp:50000"));
        for (const quint16 port : {9943, 9944}) {
            QTcpSocket toHeadset;
            toHeadset.connectToHost("127.0.0.1", port);
            QVERIFY(toHeadset.waitForReadyRead(limit));
            QCOMPARE(toHeadset.readAll(), QByteArray("HEADSET\n"));
        }
        for (const quint16 port : {50000, 50001}) {
            QTcpServer pcs;
            QTRY_VERIFY2_WITH_TIMEOUT(listens(pcs, port), qPrintable(holders(port)), portLimit);
            QTcpSocket headsets; // a connection that is made on the headset
            headsets.connectToHost("127.0.0.2", port);
            QVERIFY(headsets.waitForConnected(limit));
            headsets.write("picture");
            QVERIFY(headsets.waitForBytesWritten(limit));
            QVERIFY(pcs.waitForNewConnection(limit));
            QTcpSocket *socket = pcs.nextPendingConnection();
            QVERIFY(socket->waitForReadyRead(limit));
            QCOMPARE(socket->readAll(), QByteArray("picture"));
            socket->write("answer");
            QVERIFY(socket->waitForBytesWritten(limit));
            QVERIFY(headsets.waitForReadyRead(limit));
            QCOMPARE(headsets.readAll(), QByteArray("answer"));
        }
        // Once is enough.
        p.said.clear();
        QVERIFY(p.looksUntil([] { return true; }));
        QCOMPARE(p.said, QStringList());
        QCOMPARE(p.adb.asked().filter("forward:tcp:50000;tcp:50000").size(), 1);
    }

    void aHeadsetThatIsPulledOutRestartsAdb()
    {
        Pc p(dir());
        p.start();
        const QString first = p.adb.plugIn();
        QVERIFY(p.looksUntil([&] { return p.said.contains("connect " + first); }));
        p.said.clear();
        p.adb.pullOut(); // adb calls such a headset offline
        QVERIFY(p.looksUntil([&p] { return p.said.contains("tip"); }));
        QVERIFY(p.pc.journal.lines().contains("terminate adb.exe"));
        QVERIFY(p.looksUntil([&p] { return p.said.contains("gone "); }));
        const QString second = p.adb.plugIn();
        QVERIFY(p.looksUntil([&] { return p.said.contains("connect " + second); }));
        QVERIFY(p.looksUntil([&] {
            return p.adb.call({"forward", "--list"}).contains(second + " tcp:9944");
        }));
    }

    void anEarlierServerIsLeftWithoutPorts()
    {
        Pc p(dir());
        p.adb.call({"start-server"});
        const QString serial = p.adb.plugIn();
        p.start();
        QCOMPARE(loggedCount("use started adb"), 1);
        QVERIFY(p.looksUntil([&p] {
            return p.adb.call({"reverse", "--list"}).contains("tcp:50001 tcp:50001");
        }));
        QVERIFY(p.said.contains("connect " + serial));
        QVERIFY(p.adb.call({"forward", "--list"}).contains("tcp:9944"));
        p.manager.reset();
        QVERIFY(p.adb.serverRuns());
        QCOMPARE(p.adb.call({"devices"}).count("\tdevice"), 1);
        QCOMPARE(p.adb.call({"forward", "--list"}), QString("\n"));
        QCOMPARE(p.adb.call({"reverse", "--list"}), QString("\n"));
    }
};

KOLM_TEST_MAIN(GenuineAdbTest)
#include "tst_genuine_adb.moc"
