#include "cloud/orb_update.h"
#include "tests/support/test_case.h"

class TestOrbUpdate : public TestCase
{
    Q_OBJECT

private slots:
    void theVersionIsShownWithThreeParts()
    {
        ORBUpdate update;
        QCOMPARE(update.version(), QString("v1.1.16"));
    }

    void withoutAnInstallerSetupFails()
    {
        ORBUpdate update;
        QVERIFY(!update.setup());
    }
};

KOLM_TEST_MAIN(TestOrbUpdate)
#include "tst_orb_update.moc"
