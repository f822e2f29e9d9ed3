#include "pc/shared_cell.h"
#include "tests/support/test_case.h"

#include <QProcess>

#include <cstring>
#include <future>

#include <windows.h>

namespace {

constexpr int limit = 60000; // ms
constexpr int rounds = 10000;

using Value = std::optional<quint32>;

// The cell as the streaming side sees it.
class OtherSide
{
public:
    OtherSide()
        : mapping_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 8,
                                      L"KOLM_ALVRMemory")),
          view_(static_cast<quint8 *>(MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 8)))
    {
    }
    ~OtherSide()
    {
        UnmapViewOfFile(view_);
        CloseHandle(mapping_);
    }

    QByteArray bytes() const { return QByteArray(reinterpret_cast<const char *>(view_), 8); }
    void setBytes(const QByteArray &bytes) { std::memcpy(view_, bytes.constData(), 8); }

private:
    HANDLE mapping_;
    quint8 *view_;
};

bool exists()
{
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_READ, FALSE, L"KOLM_ALVRMemory");
    const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, L"KOLM_ALVRData_Mutex");
    if (mapping)
        CloseHandle(mapping);
    if (mutex)
        CloseHandle(mutex);
    return mapping || mutex;
}

} // namespace

class SharedCellWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void doesNothingBeforeItIsCreated()
    {
        SharedCell cell;
        QVERIFY(!cell.read());
        QVERIFY(!cell.write(1));
        QVERIFY(!exists());
    }

    void oneOfOursStartsAtZeroAndEmpty()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(!cell.read());
        QCOMPARE(OtherSide().bytes(), QByteArray(8, '\0'));
    }

    void keepsWhatTheOtherSideWrote()
    {
        OtherSide other;
        other.setBytes(QByteArray("\x01\0\0\0\x01\0\0\0", 8));
        SharedCell cell;
        QVERIFY(cell.create());
        QCOMPARE(cell.read(), Value(1));
    }

    void laysOutValueThenPresence()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        const OtherSide other;
        QVERIFY(cell.write(0));
        QCOMPARE(other.bytes(), QByteArray("\0\0\0\0\x01\0\0\0", 8));
        QCOMPARE(cell.read(), Value(0));
        QVERIFY(cell.write(0x04030201));
        QCOMPARE(other.bytes(), QByteArray("\x01\x02\x03\x04\x01\0\0\0", 8));
    }

    void anyPresenceButZeroCounts()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        OtherSide other;
        other.setBytes(QByteArray("\x05\0\0\0\0\0\0\x80", 8));
        QCOMPARE(cell.read(), Value(5));
        other.setBytes(QByteArray("\x06\0\0\0\0\0\0\0", 8));
        QVERIFY(!cell.read());
    }

    void destroyGivesItsNamesBack()
    {
        {
            SharedCell cell;
            QVERIFY(cell.create());
            QVERIFY(exists());
            cell.destroy();
            QVERIFY(!exists());
            QVERIFY(!cell.read());
            QVERIFY(!cell.write(1));
            QVERIFY(cell.create());
        }
        QVERIFY(!exists());
    }

    void mayBeCreatedAgain()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(3));
        const OtherSide other; // keeps it alive between the two
        QVERIFY(cell.create());
        QCOMPARE(cell.read(), Value(3));
    }

    void failsWhenTheSystemRefuses_data()
    {
        QTest::addColumn<QString>("taken");
        QTest::newRow("the mutex") << QStringLiteral("KOLM_ALVRData_Mutex");
        QTest::newRow("the mapping") << QStringLiteral("KOLM_ALVRMemory");
    }

    void failsWhenTheSystemRefuses()
    {
        QFETCH(QString, taken);
        // Something of another kind bears the name.
        const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, taken.toStdWString().c_str());
        QVERIFY(event);
        SharedCell cell;
        QVERIFY(!cell.create());
        QVERIFY(!cell.read());
        QVERIFY(!cell.write(1));
        CloseHandle(event);
        QVERIFY(!exists());
    }

    void racesWithAnotherProgram()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QProcess rival;
        rival.start(QStringLiteral(KOLM_TEST_HELPER),
                    {QStringLiteral("rival"), QString::number(rounds)});
        QCOMPARE(lineOf(rival), QByteArray("ready"));
        rival.write("go\n");
        rival.waitForBytesWritten(limit);
        // Until both have had their rounds.
        quint32 written = 0;
        while (written < rounds || !rival.waitForFinished(0)) {
            ++written;
            QVERIFY(cell.write(written));
            QCOMPARE(cell.read(), Value(written));
        }
        QCOMPARE(rival.readAllStandardOutput().trimmed(), QByteArray("0"));
    }

    void waitsForAHolderAndGoesOnWhenThatIsKilled()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(9));
        QProcess holder;
        holder.start(QStringLiteral(KOLM_TEST_HELPER), {QStringLiteral("hold")});
        QCOMPARE(lineOf(holder), QByteArray("held"));

        std::future<Value> reading =
            std::async(std::launch::async, [&cell] { return cell.read(); });
        QCOMPARE(reading.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
        holder.kill();
        QVERIFY(holder.waitForFinished(limit));
        QCOMPARE(reading.wait_for(std::chrono::milliseconds(limit)), std::future_status::ready);
        QCOMPARE(reading.get(), Value(9));
        QVERIFY(cell.write(10));
        QCOMPARE(cell.read(), Value(10));
    }

    void whoeverGivesUpTheWaitIsGivenNothing()
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(cell.write(9));
        QProcess holder;
        holder.start(QStringLiteral(KOLM_TEST_HELPER), {QStringLiteral("hold")});
        QCOMPARE(lineOf(holder), QByteArray("held"));
        int asked = 0;
        const auto twice = [&asked] { return ++asked % 3 != 0; };
        QVERIFY(!cell.read(twice));
        QCOMPARE(asked, 3);
        QVERIFY(!cell.write(10, twice));
        QCOMPARE(asked, 6);
        holder.kill();
        QVERIFY(holder.waitForFinished(limit));
        QCOMPARE(cell.read(twice), Value(9)); // nobody holds it: nobody is asked
        QCOMPARE(asked, 6);
    }

private:
    static QByteArray lineOf(QProcess &process)
    {
        while (!process.canReadLine() && process.waitForReadyRead(limit)) {
        }
        return process.readLine().trimmed();
    }
};

KOLM_TEST_MAIN(SharedCellWinTest)
#include "tst_shared_cell_win.moc"
