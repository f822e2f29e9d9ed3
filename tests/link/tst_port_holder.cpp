#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

#include <atomic>

using Rows = std::vector<tcp_table::Row>;
using Entries = std::vector<processes::Entry>;
Q_DECLARE_METATYPE(Rows)

namespace {

constexpr quint32 ourPid = 40;
const Entries running = {{4, "System"}, {40, "us.exe"}, {51, "other.exe"}, {52, "third.exe"}};

} // namespace

class PortHolderTest : public TestCase
{
    Q_OBJECT

private slots:
    void whoHasIt_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QString>("name");
        QTest::newRow("nobody") << Rows{} << "";
        QTest::newRow("another one") << Rows{{9932, 51}} << "other.exe";
        QTest::newRow("another port") << Rows{{9931, 51}, {9933, 52}} << "";
        QTest::newRow("ourselves") << Rows{{9932, ourPid}} << "";
        QTest::newRow("we and another one") << Rows{{9932, ourPid}, {9932, 51}} << "other.exe";
        QTest::newRow("two") << Rows{{80, 4}, {9932, 52}, {9932, 51}} << "third.exe";
        QTest::newRow("the system") << Rows{{9932, 4}} << "System";
        QTest::newRow("a connection that lingers") << Rows{{9932, 0}} << "";
        QTest::newRow("a process that has ended") << Rows{{9932, 99}} << "";
    }
    void whoHasIt()
    {
        QFETCH(Rows, rows);
        QFETCH(QString, name);
        const std::optional<ControlPort::Holder> holder =
            control_port::holderOf(rows, running, ourPid);
        QCOMPARE(holder.has_value(), !name.isEmpty());
        if (holder)
            QCOMPARE(holder->name, name);
    }

    void whoIsAtTheOtherEnd_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QString>("name");
        QTest::newRow("nobody") << Rows{} << "";
        QTest::newRow("another program")
            << Rows{{9932, ourPid, 50123}, {50123, 51, 9932}} << "other.exe";
        QTest::newRow("ourselves") << Rows{{50123, ourPid, 9932}} << "us.exe";
        QTest::newRow("the same port to elsewhere")
            << Rows{{50123, 52, 443}, {50123, 51, 9932}} << "other.exe";
        QTest::newRow("another connection") << Rows{{50124, 51, 9932}} << "";
        QTest::newRow("one that lingers") << Rows{{50123, 0, 9932}} << "";
        QTest::newRow("a process that has ended") << Rows{{50123, 99, 9932}} << "";
    }
    void whoIsAtTheOtherEnd()
    {
        QFETCH(Rows, rows);
        QFETCH(QString, name);
        const std::optional<ControlPort::Holder> peer = control_port::peerOf(rows, running, 50123);
        QCOMPARE(peer.has_value(), !name.isEmpty());
        if (peer)
            QCOMPARE(peer->name, name);
    }

    void whoConnectsIsAskedForOnceWhenItSpeaks()
    {
        const CapturedStreams streams;
        const quint16 port = freePort();
        SysManager manager({}, port);
        std::atomic<int> asked{0};
        std::atomic<quint16> askedFor{0};
        QVERIFY(manager.start({}, [&](quint16 peerPort) {
            askedFor = peerPort;
            return ControlPort::Holder{50u + static_cast<quint32>(++asked), "other.exe"};
        }));
        QVERIFY(!manager.peer());
        Peer first;
        QVERIFY(first.connectTo(port));
        QVERIFY(eventually([&] { return manager.hasClient(); }));
        QVERIFY(!manager.peer());
        QVERIFY(first.greet());
        QVERIFY(first.greet());
        QCOMPARE(manager.peer()->pid, 51u);
        QCOMPARE(askedFor.load(), first.socket().localPort());
        Peer next;
        QVERIFY(next.connectTo(port));
        QVERIFY(next.greet());
        QCOMPARE(manager.peer()->pid, 52u);
        QCOMPARE(askedFor.load(), next.socket().localPort());
        next.close();
        QVERIFY(eventually([&] { return !manager.hasClient(); }));
        QVERIFY(!manager.peer());
        QCOMPARE(asked.load(), 2);
    }

    void itIsLookedForBeforeWeListen()
    {
        const CapturedStreams streams;
        SysManager manager({}, freePort());
        QString before;
        announce("port 9932 is held by other.exe (pid 51)");
        QVERIFY(manager.start([&] {
            before = streams.info();
            return ControlPort::Holder{51, "other.exe"};
        }));
        QCOMPARE(before, QString());
        QVERIFY(manager.controlPort().listening);
        QVERIFY(manager.controlPort().holder);
        QCOMPARE(manager.controlPort().holder->pid, 51u);
    }

    void aPortThatCannotBeHadIsRemembered()
    {
        const RunningLink first;
        const CapturedStreams streams;
        SysManager second({}, first.port);
        // Windows lets both listen.
        const bool listens = second.start();
        QCOMPARE(second.controlPort().listening, listens);
        QCOMPARE(second.controlPort().error == 0, listens);
        if (!listens) {
            const QString error = QString::number(second.controlPort().error);
            QVERIFY(streams.error().endsWith(" bind error : " + error + '\n'));
        }
    }

    void aFreePortIsNothingToSpeakOf()
    {
        const CapturedStreams streams;
        SysManager manager({}, freePort());
        QVERIFY(manager.start([] { return std::nullopt; }));
        QVERIFY(manager.controlPort().listening);
        QCOMPARE(manager.controlPort().error, 0);
        QVERIFY(!manager.controlPort().holder);
        QCOMPARE(logged(), QStringList());
    }
};

KOLM_TEST_MAIN(PortHolderTest)
#include "tst_port_holder.moc"
