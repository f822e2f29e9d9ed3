#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QProcess>

// Whether the network is public.
class TestNetworkCategory : public TestCase
{
    Q_OBJECT

private slots:
    void publicWinsOverPrivate_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("category");
        QTest::newRow("private") << "NetworkCategory  : Private\r\n"
                                 << "Private";
        QTest::newRow("public") << "NetworkCategory  : Public\r\n"
                                << "Public";
        QTest::newRow("both") << "NetworkCategory  : Private\r\nNetworkCategory  : Public\r\n"
                              << "Public";
        QTest::newRow("neither") << "NetworkCategory  : DomainAuthenticated\r\n"
                                 << "";
        QTest::newRow("other letter case") << "public private"
                                           << "";
        QTest::newRow("nothing") << ""
                                 << "";
    }

    void publicWinsOverPrivate()
    {
        QFETCH(QString, output);
        QFETCH(QString, category);
        QCOMPARE(SystemInfo::networkCategoryOf(output), category);
    }

    void theNetworkIsPrivateUntilTheQueryHasAnswered()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.network.set({"Public"});
        SystemInfo info;
        QCOMPARE(info.networkCategory(), QString("Private"));
        QTRY_COMPARE(info.networkCategory(), QString("Public"));
        QCOMPARE(loggedCount("powershellcmd res:NetworkCategory  : Public\n"), 1);
    }

    void aQueryThatSaysNothingOfUseClearsTheCategory()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.network.set({"DomainAuthenticated"});
        SystemInfo info;
        QTRY_COMPARE(info.networkCategory(), QString());
    }

    void withoutTheQuerysProgramTheNetworkStaysPrivate()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.networkQuery.set(SimNetworkQuery::Missing);
        SystemInfo info;
        auto *query = info.findChild<QProcess *>();
        QVERIFY(query);
        QTRY_COMPARE(query->error(), QProcess::FailedToStart);
        QCOMPARE(info.networkCategory(), QString("Private"));
        QVERIFY(logged().isEmpty());
    }

    void aQueryThatHangsHoldsNothingUp()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.networkQuery.set(SimNetworkQuery::Hangs);
        qint64 pid = 0;
        {
            SystemInfo info;
            auto *query = info.findChild<QProcess *>();
            QVERIFY(query);
            // The probe did not even wait for it to start.
            QTRY_COMPARE(query->state(), QProcess::Running);
            pid = query->processId();
            QCOMPARE(info.networkCategory(), QString("Private"));
            QVERIFY(QFile::exists(QStringLiteral("/proc/%1").arg(pid)));
        }
        // It ends with the program, which does not wait for it.
        QVERIFY(!QFile::exists(QStringLiteral("/proc/%1").arg(pid)));
        QVERIFY(logged().isEmpty());
    }
};

KOLM_TEST_MAIN(TestNetworkCategory)
#include "tst_network_category.moc"
