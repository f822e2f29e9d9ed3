#include "base/manual_clock.h"
#include "pc/shared_cell.h"
#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"

using Value = std::optional<quint32>;

class SharedCellTest : public TestCase
{
    Q_OBJECT

private slots:
    void doesNothingBeforeItIsCreated()
    {
        SimPc pc(clock_);
        SharedCell cell;
        quint32 value = 7;
        QVERIFY(!cell.read());
        QVERIFY(!cell.write(1));
        QVERIFY(!pc.cell().read(&value));
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void startsEmpty()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(!cell.read());
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void keepsWhatTheOtherSideWrote()
    {
        SimPc pc(clock_);
        pc.cell().write(1);
        SharedCell cell;
        QVERIFY(cell.create());
        QCOMPARE(cell.read(), Value(1));
    }

    void readsBackWhatItWrote_data()
    {
        QTest::addColumn<quint32>("value");
        QTest::newRow("zero") << 0u;
        QTest::newRow("one") << 1u;
        QTest::newRow("the largest") << 0xFFFFFFFFu;
    }
    void readsBackWhatItWrote()
    {
        QFETCH(quint32, value);
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(value));
        QCOMPARE(cell.read(), Value(value));
        quint32 read = 7;
        QVERIFY(pc.cell().read(&read));
        QCOMPARE(read, value);
    }

    void seesWhatTheOtherSideWritesLater()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(0));
        pc.cell().write(1);
        QCOMPARE(cell.read(), Value(1));
    }

    void sharesItsContentWithASecondOne()
    {
        SimPc pc(clock_);
        SharedCell first;
        SharedCell second;
        QVERIFY(first.create());
        QVERIFY(first.write(5));
        QVERIFY(second.create());
        QCOMPARE(second.read(), Value(5));
    }

    void doesNothingAfterItIsDestroyed()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(1));
        cell.destroy();
        quint32 value = 7;
        QVERIFY(!cell.read());
        QVERIFY(!cell.write(2));
        cell.destroy();
        QVERIFY(pc.cell().read(&value));
        QCOMPARE(value, 1u);
    }

    void mayBeCreatedAgain()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(1));
        QVERIFY(cell.create());
        QCOMPARE(cell.read(), Value(1));
    }

    void failsWhenTheSystemRefuses()
    {
        SimPc pc(clock_, std::make_unique<SimCell>(path("no such folder/cell")));
        SharedCell cell;
        QVERIFY(!cell.create());
        QVERIFY(!cell.read());
        QVERIFY(!cell.write(1));
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void writesDownWhatTheProgramDid()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(0));
        pc.cell().write(1);
        QVERIFY(cell.read().has_value());
        QVERIFY(cell.write(4294967295u));
        QCOMPARE(pc.journal.lines(), (QStringList{"cell write 0", "cell write 4294967295"}));
    }

    void isWrittenBeforeTheJournalTells()
    {
        SimPc pc(clock_);
        SharedCell cell;
        QVERIFY(cell.create());
        // A streaming side that comes up at the very moment of the zero.
        pc.journal.onLine([&](const QString &) { pc.cell().write(1); });
        QVERIFY(cell.write(0));
        QCOMPARE(cell.read(), Value(1));
    }

private:
    ManualClock clock_;
};

KOLM_TEST_MAIN(SharedCellTest)
#include "tst_shared_cell.moc"
