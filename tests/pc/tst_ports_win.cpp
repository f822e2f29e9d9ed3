#include "pc/tcp_table.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <memory>
#include <optional>

#include <winsock2.h>

namespace {

constexpr int limit = 60000; // ms

// Wine names the owner of a socket only after the owner itself has used it, and
// not merely bound it.
void use(const QAbstractSocket &socket)
{
    u_long available = 0;
    ioctlsocket(static_cast<SOCKET>(socket.socketDescriptor()), FIONREAD, &available);
}
void use(const QTcpServer &server)
{
    u_long available = 0;
    ioctlsocket(static_cast<SOCKET>(server.socketDescriptor()), FIONREAD, &available);
}

// Of a process or of all.
int rowsOf(quint16 port, std::optional<quint32> pid = std::nullopt)
{
    const std::vector<tcp_table::Row> rows = tcp_table::read().rows;
    return static_cast<int>(std::count_if(rows.begin(), rows.end(), [&](const tcp_table::Row &row) {
        return row.localPort == port && (!pid || row.pid == *pid);
    }));
}

// Of the connection that has this port at its own end.
quint16 otherEndOf(quint16 port)
{
    for (const tcp_table::Row &row : tcp_table::read().rows) {
        if (row.localPort == port)
            return row.remotePort;
    }
    return 0;
}

} // namespace

// The TCP table against sockets that the test itself has opened.
class PortsWinTest : public TestCase
{
    Q_OBJECT

    const quint32 self_ = static_cast<quint32>(QCoreApplication::applicationPid());
    const QString ownName_ = QFileInfo(QCoreApplication::applicationFilePath()).fileName();

private slots:
    void aListenerHoldsItsPort()
    {
        quint16 port = 0;
        {
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            use(server);
            port = server.serverPort();
            QCOMPARE(rowsOf(port, self_), 1);
            QCOMPARE(otherEndOf(port), quint16(0));
            QCOMPARE(SystemInfo::processesUsingPorts({port}), QStringList{ownName_});
        }
        QCOMPARE(rowsOf(port, self_), 0);
        QCOMPARE(SystemInfo::processesUsingPorts({port}), QStringList());
    }

    void aConnectionHoldsItsPortsUntilBothEndsHaveClosedIt()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, server.serverPort());
        QVERIFY(client.waitForConnected(limit));
        QVERIFY(server.waitForNewConnection(limit));
        const std::unique_ptr<QTcpSocket> accepted(server.nextPendingConnection());
        use(server);
        use(client);
        const quint16 port = client.localPort();
        const quint16 listened = server.serverPort();
        // Wine does not know whose an accepted connection is.
        QCOMPARE(rowsOf(listened, self_), 1);
        QCOMPARE(rowsOf(listened), 2);
        QCOMPARE(rowsOf(port, self_), 1);
        QCOMPARE(otherEndOf(port), listened);
        // Several ports and rows of one process: named once.
        QCOMPARE(SystemInfo::processesUsingPorts({port, listened, 1}), QStringList{ownName_});

        // The other end has closed it, ours has not yet.
        accepted->disconnectFromHost();
        QTRY_COMPARE(rowsOf(listened), 2); // the end that has closed waits for ours
        QCOMPARE(rowsOf(port, self_), 1);
        server.close();
        QCOMPARE(SystemInfo::processesUsingPorts({port}), QStringList{ownName_});
        QCOMPARE(SystemInfo::processesUsingPorts({listened}), QStringList());
        client.abort();
        QTRY_COMPARE(rowsOf(port, self_), 0);
        QCOMPARE(SystemInfo::processesUsingPorts({port}), QStringList());
    }

    void rowsThatNobodyOwnsNameNobody()
    {
        for (const tcp_table::Row &row : tcp_table::read().rows) {
            if (row.pid == 0)
                QVERIFY(!SystemInfo::processesUsingPorts({row.localPort}).contains(ownName_));
        }
    }

    void hundredsOfListenersAreAllThere()
    {
        std::vector<std::unique_ptr<QTcpServer>> servers;
        QList<quint16> ports;
        for (int i = 0; i < 500; ++i) {
            servers.push_back(std::make_unique<QTcpServer>());
            QVERIFY(servers.back()->listen(QHostAddress::LocalHost));
            use(*servers.back());
            ports.append(servers.back()->serverPort());
        }
        const tcp_table::Table table = tcp_table::read();
        QCOMPARE(table.failure, tcp_table::Table::None);
        QList<quint16> held;
        for (const tcp_table::Row &row : table.rows) {
            if (row.pid == self_)
                held.append(row.localPort);
        }
        std::sort(held.begin(), held.end());
        std::sort(ports.begin(), ports.end());
        QCOMPARE(held, ports);
        QCOMPARE(SystemInfo::processesUsingPorts(ports), QStringList{ownName_});
        QCOMPARE(SystemInfo::processesUsingPorts({ports.first(), ports.last()}),
                 QStringList{ownName_});
    }
};

KOLM_TEST_MAIN(PortsWinTest)
#include "tst_ports_win.moc"
