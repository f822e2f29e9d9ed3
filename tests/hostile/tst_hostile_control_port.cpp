#include "tests/hostile/attacked.h"
#include "tests/hostile/control_port_attacks.h"
#include "tests/support/test_case.h"

// Whatever is sent to the control port, the program goes on, obeys nobody but a
// streaming server, and ends when it is to end.
class TestHostileControlPort : public TestCase
{
    Q_OBJECT

    // Without the headset, SteamVR or a cloud that it would have to wait for.
    static constexpr qint64 mostToClose = 10000; // ms

private slots:
    void harmsNothing_data()
    {
        QTest::addColumn<int>("index");
        const auto &attacks = controlPortAttacks();
        for (std::size_t i = 0; i < attacks.size(); ++i)
            QTest::newRow(attacks[i].name) << static_cast<int>(i);
    }
    void harmsNothing()
    {
        QFETCH(int, index);
        const ControlPortAttack &attack = controlPortAttacks()[static_cast<std::size_t>(index)];
        Attacked here(dir());
        QVERIFY(here.started);
        QVERIFY(attack.carryOut(here));
        QVERIFY(here.answers());
        const qint64 toClose = here.millisecondsToClose();
        QVERIFY2(toClose >= 0 && toClose < mostToClose, qPrintable(QString::number(toClose)));
        QVERIFY2(here.restarts() <= attack.mostRestarts,
                 qPrintable(QString::number(here.restarts())));
        QVERIFY(attack.mayNameHeadsets || !here.knowsEvilHeadset());
        QVERIFY2(here.logOfNonsense() <= attack.mostLog,
                 qPrintable(QString::number(here.logOfNonsense())));
    }
};

KOLM_TEST_MAIN(TestHostileControlPort)
#include "tst_hostile_control_port.moc"
