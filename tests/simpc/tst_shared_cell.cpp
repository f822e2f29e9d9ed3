#include "base/manual_clock.h"
#include "pc/shared_cell.h"
#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"

class SharedCellTest : public TestCase
{
    Q_OBJECT

private slots:
    void doesNothingBeforeItIsCreated();
    void startsEmpty();
    void keepsWhatTheOtherSideWrote();
    void readsBackWhatItWrote_data();
    void readsBackWhatItWrote();
    void seesWhatTheOtherSideWritesLater();
    void sharesItsContentWithASecondOne();
    void doesNothingAfterItIsDestroyed();
    void mayBeCreatedAgain();
    void failsWhenTheSystemRefuses();
    void writesDownWhatTheProgramDid();
    void isWrittenBeforeTheJournalTells();

private:
    ManualClock clock_;
};

void SharedCellTest::doesNothingBeforeItIsCreated()
{
    SimPc pc(clock_);
    SharedCell cell;
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QVERIFY(!cell.write(1));
    QCOMPARE(value, 7u);
    QVERIFY(!pc.cell().read(&value));
    QCOMPARE(pc.journal.lines(), QStringList());
}

void SharedCellTest::startsEmpty()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QCOMPARE(value, 7u);
    QCOMPARE(pc.journal.lines(), QStringList());
}

void SharedCellTest::keepsWhatTheOtherSideWrote()
{
    SimPc pc(clock_);
    pc.cell().write(1);
    SharedCell cell;
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 1u);
}

void SharedCellTest::readsBackWhatItWrote_data()
{
    QTest::addColumn<quint32>("value");
    QTest::newRow("zero") << 0u;
    QTest::newRow("one") << 1u;
    QTest::newRow("the largest") << 0xFFFFFFFFu;
}

void SharedCellTest::readsBackWhatItWrote()
{
    QFETCH(quint32, value);
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(value));
    quint32 read = 7;
    QVERIFY(cell.read(&read));
    QCOMPARE(read, value);
    read = 7;
    QVERIFY(pc.cell().read(&read));
    QCOMPARE(read, value);
}

void SharedCellTest::seesWhatTheOtherSideWritesLater()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(0));
    pc.cell().write(1);
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 1u);
}

void SharedCellTest::sharesItsContentWithASecondOne()
{
    SimPc pc(clock_);
    SharedCell first;
    SharedCell second;
    QVERIFY(first.create());
    QVERIFY(first.write(5));
    QVERIFY(second.create());
    quint32 value = 7;
    QVERIFY(second.read(&value));
    QCOMPARE(value, 5u);
}

void SharedCellTest::doesNothingAfterItIsDestroyed()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(1));
    cell.destroy();
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QVERIFY(!cell.write(2));
    cell.destroy();
    QVERIFY(pc.cell().read(&value));
    QCOMPARE(value, 1u);
}

void SharedCellTest::mayBeCreatedAgain()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(1));
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 1u);
}

void SharedCellTest::failsWhenTheSystemRefuses()
{
    SimPc pc(clock_);
    pc.setCell(std::make_unique<SimCell>(path("no such folder/cell")));
    SharedCell cell;
    QVERIFY(!cell.create());
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QVERIFY(!cell.write(1));
    QCOMPARE(value, 7u);
    QCOMPARE(pc.journal.lines(), QStringList());
}

void SharedCellTest::writesDownWhatTheProgramDid()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(0));
    pc.cell().write(1);
    quint32 value;
    QVERIFY(cell.read(&value));
    QVERIFY(cell.write(4294967295u));
    QCOMPARE(pc.journal.lines(), (QStringList{"cell write 0", "cell write 4294967295"}));
}

void SharedCellTest::isWrittenBeforeTheJournalTells()
{
    SimPc pc(clock_);
    SharedCell cell;
    QVERIFY(cell.create());
    // A streaming side that comes up at the very moment of the zero.
    pc.journal.onLine([&](const QString &) { pc.cell().write(1); });
    QVERIFY(cell.write(0));
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 1u);
}

KOLM_TEST_MAIN(SharedCellTest)
#include "tst_shared_cell.moc"
