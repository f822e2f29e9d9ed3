#include "config/usage_choice.h"
#include "controller/usage_switch.h"
#include "tests/support/test_case.h"

#include <QFile>

class TestUsageSwitch : public TestCase
{
    Q_OBJECT

private slots:
    void theFileDecides_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("on");
        QTest::newRow("on") << QByteArray("{\"usageEvents\": true}") << true;
        QTest::newRow("off") << QByteArray("{\"usageEvents\": false}") << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("broken") << QByteArray("{\"usageEvents\": tr") << false;
        QTest::newRow("a number") << QByteArray("{\"usageEvents\": 1}") << false;
    }

    void theFileDecides()
    {
        QFETCH(QByteArray, content);
        writeFile("usage.json", content);
        QTEST(usage_choice::isOn(dir()), "on");
    }

    void itIsOnUntilTheUserSaysSomething()
    {
        const UsageSwitch usage(dir(), [] {});
        QVERIFY(usage.isOn());
        QVERIFY(!QFile::exists("usage.json"));
    }

    void itStaysAsTheUserWantsIt()
    {
        int forgotten = 0;
        for (const bool wanted : {false, true}) {
            UsageSwitch usage(dir(), [&] { ++forgotten; });
            int changes = 0;
            connect(&usage, &UsageSwitch::changed, this, [&] { ++changes; });
            usage.setOn(!wanted);
            QCOMPARE(changes, 0);
            usage.setOn(wanted);
            QCOMPARE(changes, 1);
            QCOMPARE(UsageSwitch(dir(), [] {}).isOn(), wanted);
        }
        QCOMPARE(forgotten, 1); // of what is wanted nothing is
    }

    void whatCannotBeKeptHoldsForThisRun()
    {
        UsageSwitch usage(path("missing"), [] {});
        QList<WriteResult> told;
        connect(&usage, &UsageSwitch::notKept, this,
                [&told](WriteResult result) { told.append(result); });
        usage.setOn(false);
        QCOMPARE(told, QList<WriteResult>{WriteResult::OpenFailed});
        QVERIFY(!usage.isOn());
        QCOMPARE(logged(), QStringList("usage.json cannot be written"));
    }
};

KOLM_TEST_MAIN(TestUsageSwitch)
#include "tst_usage_switch.moc"
