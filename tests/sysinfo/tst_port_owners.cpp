#include "sysinfo/port_owners.h"
#include "tests/support/test_case.h"

namespace {

const QList<quint16> streamingPorts{9943, 9944, 50001, 50000};

} // namespace

Q_DECLARE_METATYPE(std::vector<tcp_table::Row>)

class TestPortOwners : public TestCase
{
    Q_OBJECT

private slots:
    void theOwnersOfThePortsAreNamed_data()
    {
        using Rows = std::vector<tcp_table::Row>;
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QStringList>("names");
        // The processes of the test below: one 11, two 12, one 13, four 14.
        QTest::newRow("no row") << Rows{} << QStringList{};
        QTest::newRow("other ports") << Rows{{9942, 11}, {9945, 12}, {80, 13}} << QStringList{};
        QTest::newRow("each of the ports")
            << Rows{{50000, 14}, {50001, 13}, {9944, 12}, {9943, 11}}
            << QStringList{"one.exe", "two.exe", "one.exe", "four.exe"};
        QTest::newRow("two ports of one process")
            << Rows{{9943, 12}, {9944, 12}} << QStringList{"two.exe"};
        QTest::newRow("a listener with its connections")
            << Rows{{9943, 12}, {9943, 12}, {9943, 12}} << QStringList{"two.exe"};
        QTest::newRow("two processes of one name")
            << Rows{{9943, 11}, {9944, 13}} << QStringList{"one.exe", "one.exe"};
        QTest::newRow("two processes on one port")
            << Rows{{9943, 12}, {9943, 14}} << QStringList{"two.exe", "four.exe"};
        QTest::newRow("in the order of the processes")
            << Rows{{9943, 14}, {9944, 11}} << QStringList{"one.exe", "four.exe"};
        QTest::newRow("nobody owns it any more") << Rows{{9943, 0}} << QStringList{};
        QTest::newRow("a process that has gone meanwhile") << Rows{{9943, 99}} << QStringList{};
    }
    void theOwnersOfThePortsAreNamed()
    {
        QFETCH(std::vector<tcp_table::Row>, rows);
        const std::vector<processes::Entry> running{
            {11, "one.exe"}, {12, "two.exe"}, {13, "one.exe"}, {14, "four.exe"}};
        QTEST(port_owners::names(rows, running, streamingPorts), "names");
    }

    void noPortHasNoOwner()
    {
        QCOMPARE(port_owners::names({{9943, 11}}, {{11, "one.exe"}}, {}), QStringList());
    }

    void theIdleProcessIsNamedWhenItIsListed()
    {
        // Rows that wait for their end belong to it.
        QCOMPARE(port_owners::names({{9943, 0}}, {{0, "[System Process]"}, {4, "System"}},
                                    streamingPorts),
                 QStringList{"[System Process]"});
    }

    void hundredsOfPortsAndTenThousandRowsGiveTheRightNames()
    {
        std::vector<tcp_table::Row> rows;
        for (quint32 i = 0; i < 10000; ++i)
            rows.push_back({static_cast<quint16>(10000 + i), 1000 + i % 400});
        std::vector<processes::Entry> running;
        for (quint32 i = 0; i < 800; ++i)
            running.push_back({1000 + i, QString::number(i)});
        // A server with hundreds of ports in the middle of it all.
        for (quint16 port = 30000; port < 30700; ++port)
            rows.push_back({port, 1700});

        QCOMPARE(port_owners::names(rows, running, {30000, 30699}), QStringList{"700"});
        QCOMPARE(port_owners::names(rows, running, {19999, 10000, 10400, 30001}),
                 QStringList({"0", "399", "700"}));
        QList<quint16> all;
        for (int port = 10000; port < 20000; ++port)
            all.append(static_cast<quint16>(port));
        QCOMPARE(port_owners::names(rows, running, all).size(), 400);
    }
};

KOLM_TEST_MAIN(TestPortOwners)
#include "tst_port_owners.moc"
