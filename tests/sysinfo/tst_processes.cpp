#include "base/manual_clock.h"
#include "pc/processes.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

// The processes, and who listens on which port.
class TestProcesses : public TestCase
{
    Q_OBJECT

private slots:
    void processesAreFoundByTheirExactName()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe", "C:/one/adb.exe");
        pc.processes.start("adb.exe", "C:/two/adb.exe");
        QVERIFY(SystemInfo::isProcessRunning("adb.exe"));
        QVERIFY(!SystemInfo::isProcessRunning("ADB.exe"));
        QVERIFY(!SystemInfo::isProcessRunning("adb"));
        QCOMPARE(SystemInfo::processPath("adb.exe"), QString("C:/one/adb.exe"));
        QCOMPARE(SystemInfo::processPath("other.exe"), QString());
    }

    void namesThatAreNotPlainAreFoundWhereTheUsersEncodingIsUtf8()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("串流.exe", "C:/串流.exe");
        QCOMPARE(SystemInfo::isProcessRunning("串流.exe"),
                 QString("串流").toLocal8Bit() == QString("串流").toUtf8());
        QVERIFY(!SystemInfo::isProcessRunning(""));
    }

    void aProcessIsAskedForItsPathByItsNumber()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe", "C:/one/adb.exe");
        const quint32 pid = pc.processes.start("adb.exe", "C:/two/adb.exe");
        QCOMPARE(SystemInfo::modulePathOf(pid), QString("C:/two/adb.exe"));
        QCOMPARE(SystemInfo::modulePathOf(pid + 1), QString());
        pc.processes.end(pid);
        QCOMPARE(SystemInfo::modulePathOf(pid), QString());
    }

    void killingTakesEveryProcessOfTheNameAndNoOther()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe");
        pc.processes.start("Adb.exe");
        pc.processes.start("steam.exe");
        pc.processes.start("adb.exe");
        SystemInfo::killProcesses({"ADB.EXE", "adb", ""});
        QCOMPARE(pc.processes.list().size(), size_t(4));
        SystemInfo::killProcesses({"other.exe", "adb.exe"});
        QStringList left;
        for (const processes::Entry &process : pc.processes.list())
            left.append(process.name);
        QCOMPARE(left, QStringList({"Adb.exe", "steam.exe"}));
        QCOMPARE(pc.journal.lines(), QStringList({"terminate adb.exe", "terminate adb.exe"}));
    }

    void thePcIsAskedForItsPorts()
    {
        ManualClock clock;
        SimPc pc(clock);
        const quint32 node = pc.processes.start("node.exe");
        const quint32 vrserver = pc.processes.start("vrserver.exe");
        pc.processes.start("node.exe");
        pc.ports.open(vrserver, 9943);
        pc.ports.open(node, 50000);
        pc.ports.open(node, 80);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}),
                 QStringList({"node.exe", "vrserver.exe"}));
        pc.processes.end(node);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}),
                 QStringList{"vrserver.exe"});
        QCOMPARE(SystemInfo::processesUsingPorts({80}), QStringList());
    }

    void aTableThatCannotBeReadIsLoggedAndNamesNobody_data()
    {
        QTest::addColumn<int>("failure");
        QTest::addColumn<quint32>("error");
        QTest::addColumn<QString>("log");
        QTest::newRow("no memory")
            << int(tcp_table::Table::NoMemory) << 0U << "Error allocating memory\n";
        QTest::newRow("no answer")
            << int(tcp_table::Table::NotAnswered) << 122U << "\tGetTcpTable2 failed with 122\n";
    }

    void aTableThatCannotBeReadIsLoggedAndNamesNobody()
    {
        QFETCH(int, failure);
        QFETCH(QString, log);
        answers::TcpTable table;
        table.failure = static_cast<tcp_table::Table::Failure>(failure);
        QFETCH(quint32, error);
        table.error = error;
        ManualClock clock;
        SimPc pc(clock);
        pc.ports.open(pc.processes.start("node.exe"), 9943);
        pc.facts.tcpTable.set(table);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}), QStringList());
        QCOMPARE(logged(), QStringList{log});
    }
};

KOLM_TEST_MAIN(TestProcesses)
#include "tst_processes.moc"
