#include "simpc/sim_cell.h"

#include "tests/support/test_case.h"

#include <QFile>

#include <atomic>
#include <thread>

#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

class SimCellTest : public TestCase
{
    Q_OBJECT

private slots:
    void aNewCellHoldsNothing_data() { places(); }
    void aNewCellHoldsNothing()
    {
        QFETCH(bool, inFile);
        const auto cell = make(inFile);
        quint32 value = 77;
        QVERIFY(cell->isValid());
        QVERIFY(!cell->read(&value));
        QCOMPARE(value, 77u);
    }

    void aWrittenValueIsReadAlsoZero_data() { places(); }
    void aWrittenValueIsReadAlsoZero()
    {
        QFETCH(bool, inFile);
        const auto cell = make(inFile);
        quint32 value = 77;
        QVERIFY(cell->write(0));
        QVERIFY(cell->read(&value));
        QCOMPARE(value, 0u);
        QVERIFY(cell->write(4294967295u));
        QVERIFY(cell->read(&value));
        QCOMPARE(value, 4294967295u);
    }

    void clearingTakesTheValueAway_data() { places(); }
    void clearingTakesTheValueAway()
    {
        QFETCH(bool, inFile);
        const auto cell = make(inFile);
        quint32 value = 77;
        QVERIFY(cell->write(1));
        cell->clear();
        QVERIFY(!cell->read(&value));
    }

    void aFileOutlivesTheCellThatWroteIt()
    {
        quint32 value = 0;
        QVERIFY(make(true)->write(5));
        QVERIFY(make(true)->read(&value));
        QCOMPARE(value, 5u);
    }

    void theFileIsEightBytesWithTheValueFirst()
    {
        QVERIFY(make(true)->write(1));
        QCOMPARE(readFile("cell"), QByteArray("\x01\0\0\0\x01\0\0\0", 8));
    }

    void anotherProcessSeesWhatWasWritten()
    {
        const auto cell = make(true);
        QVERIFY(cell->write(1));
        const pid_t child = fork();
        if (child == 0) {
            // Its own mapping, as a program of its own would have it.
            SimCell own(path("cell"));
            quint32 value = 0;
            const bool ok = own.read(&value) && value == 1 && own.write(2);
            _exit(ok ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
        quint32 value = 0;
        QVERIFY(cell->read(&value));
        QCOMPARE(value, 2u);
    }

    void aHolderThatDiesDoesNotBlockTheOthers()
    {
        const auto cell = make(true);
        int ready[2];
        QCOMPARE(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            char byte = 1;
            SimCell own(path("cell"));
            if (write(ready[1], &byte, 1) != 1)
                _exit(1);
            for (quint32 i = 0;; ++i)
                own.write(i);
        }
        char byte = 0;
        QCOMPARE(read(ready[0], &byte, 1), ssize_t(1));
        quint32 value = 0;
        for (int i = 0; i < 200; ++i)
            cell->read(&value);
        QCOMPARE(kill(child, SIGKILL), 0);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(cell->write(7));
        QVERIFY(cell->read(&value));
        QCOMPARE(value, 7u);
        ::close(ready[0]);
        ::close(ready[1]);
    }

    void whoeverGivesUpTheWaitForTheLockIsGivenNothing()
    {
        SimCell cell(path("cell"));
        QVERIFY(cell.write(1));
        QFile file(path("cell"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(flock(file.handle(), LOCK_EX), 0);
        int asked = 0;
        const auto twice = [&asked] { return ++asked % 3 != 0; };
        quint32 value = 77;
        QVERIFY(!cell.read(&value, twice));
        QCOMPARE(asked, 3);
        QVERIFY(!cell.write(2, twice));
        QCOMPARE(asked, 6);
        QCOMPARE(value, 77u);
        file.close();
        QVERIFY(cell.read(&value, twice));
        QCOMPARE(value, 1u);
        QCOMPARE(asked, 6);
    }

    void whileAnotherHoldsTheLockNobodyReads()
    {
        SimCell cell(path("cell"));
        QVERIFY(cell.write(1));
        QFile file(path("cell"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(flock(file.handle(), LOCK_EX), 0);
        std::atomic<bool> reading{false};
        quint32 value = 0;
        std::thread reader([&] {
            reading = true;
            cell.read(&value);
        });
        while (!reading)
            std::this_thread::yield();
        // Plenty of opportunity to read too early.
        for (int i = 0; i < 10000; ++i)
            std::this_thread::yield();
        const bool written = file.write("\x02\0\0\0", 4) == 4 && file.flush();
        const int unlocked = flock(file.handle(), LOCK_UN);
        reader.join();
        QVERIFY(written);
        QCOMPARE(unlocked, 0);
        QCOMPARE(value, 2u);
    }

    void aCellThatCannotBeMappedSaysSo()
    {
        SimCell cell(path("no such folder/cell"));
        quint32 value = 77;
        QVERIFY(!cell.isValid());
        QVERIFY(!cell.read(&value));
        QVERIFY(!cell.write(1));
        cell.clear();
        QCOMPARE(value, 77u);
    }

    void threadsNeverSeeHalfAChange()
    {
        SimCell cell;
        std::atomic<bool> stop{false};
        std::atomic<int> odd{0};
        std::thread writer([&] {
            while (!stop) {
                cell.write(11);
                cell.clear();
            }
        });
        for (int i = 0; i < 20000; ++i) {
            quint32 value = 11;
            if (cell.read(&value) && value != 11)
                ++odd;
        }
        stop = true;
        writer.join();
        QCOMPARE(odd.load(), 0);
    }

private:
    void places()
    {
        QTest::addColumn<bool>("inFile");
        QTest::newRow("in this process") << false;
        QTest::newRow("in a file") << true;
    }
    std::unique_ptr<SimCell> make(bool inFile) const
    {
        return inFile ? std::make_unique<SimCell>(path("cell")) : std::make_unique<SimCell>();
    }
};

KOLM_TEST_MAIN(SimCellTest)
#include "tst_sim_cell.moc"
