#include "checks/power_tip.h"
#include "tests/support/test_case.h"

using power::AcLine;

class TestPowerTip : public TestCase
{
    Q_OBJECT

private slots:
    void theTipComesOnceAndGoesOnce()
    {
        PowerTip tip;
        QCOMPARE(tip.update(AcLine::Online), PowerTip::Change::None);
        QCOMPARE(tip.update(AcLine::Offline), PowerTip::Change::Show);
        QCOMPARE(tip.update(AcLine::Offline), PowerTip::Change::None);
        QCOMPARE(tip.update(AcLine::Online), PowerTip::Change::Close);
        QCOMPARE(tip.update(AcLine::Online), PowerTip::Change::None);
    }

    void unknownAndNoAnswerCountAsBattery()
    {
        PowerTip unknown;
        QCOMPARE(unknown.update(AcLine::Unknown), PowerTip::Change::Show);
        PowerTip failed;
        QCOMPARE(failed.update(std::nullopt), PowerTip::Change::Show);
        QCOMPARE(failed.update(AcLine::Offline), PowerTip::Change::None);
        QCOMPARE(failed.update(AcLine::Online), PowerTip::Change::Close);
    }
};

KOLM_TEST_MAIN(TestPowerTip)
#include "tst_power_tip.moc"
