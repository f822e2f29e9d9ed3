#include "pc/shared_cell.h"
#include "tests/support/test_case.h"

#include <QProcess>

#include <cstring>
#include <future>

#include <windows.h>

namespace {

constexpr int limit = 60000; // ms
constexpr int rounds = 10000;

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
    void doesNothingBeforeItIsCreated();
    void oneOfOursStartsAtZeroAndEmpty();
    void keepsWhatTheOtherSideWrote();
    void laysOutValueThenPresence();
    void anyPresenceButZeroCounts();
    void destroyGivesItsNamesBack();
    void mayBeCreatedAgain();
    void failsWhenTheSystemRefuses_data();
    void failsWhenTheSystemRefuses();
    void racesWithAnotherProgram();
    void waitsForAHolderAndGoesOnWhenThatIsKilled();

private:
    static QByteArray lineOf(QProcess &process);
};

QByteArray SharedCellWinTest::lineOf(QProcess &process)
{
    while (!process.canReadLine() && process.waitForReadyRead(limit)) {
    }
    return process.readLine().trimmed();
}

void SharedCellWinTest::doesNothingBeforeItIsCreated()
{
    SharedCell cell;
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QVERIFY(!cell.write(1));
    QCOMPARE(value, 7u);
    QVERIFY(!exists());
}

void SharedCellWinTest::oneOfOursStartsAtZeroAndEmpty()
{
    SharedCell cell;
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QCOMPARE(value, 7u);
    QCOMPARE(OtherSide().bytes(), QByteArray(8, '\0'));
}

void SharedCellWinTest::keepsWhatTheOtherSideWrote()
{
    OtherSide other;
    other.setBytes(QByteArray("\x01\0\0\0\x01\0\0\0", 8));
    SharedCell cell;
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 1u);
}

void SharedCellWinTest::laysOutValueThenPresence()
{
    SharedCell cell;
    QVERIFY(cell.create());
    const OtherSide other;
    QVERIFY(cell.write(0));
    QCOMPARE(other.bytes(), QByteArray("\0\0\0\0\x01\0\0\0", 8));
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 0u);
    QVERIFY(cell.write(0x04030201));
    QCOMPARE(other.bytes(), QByteArray("\x01\x02\x03\x04\x01\0\0\0", 8));
}

void SharedCellWinTest::anyPresenceButZeroCounts()
{
    SharedCell cell;
    QVERIFY(cell.create());
    OtherSide other;
    other.setBytes(QByteArray("\x05\0\0\0\0\0\0\x80", 8));
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 5u);
    other.setBytes(QByteArray("\x06\0\0\0\0\0\0\0", 8));
    QVERIFY(!cell.read(&value));
    QCOMPARE(value, 5u);
}

void SharedCellWinTest::destroyGivesItsNamesBack()
{
    {
        SharedCell cell;
        QVERIFY(cell.create());
        QVERIFY(exists());
        cell.destroy();
        QVERIFY(!exists());
        quint32 value = 7;
        QVERIFY(!cell.read(&value));
        QVERIFY(!cell.write(1));
        QVERIFY(cell.create());
    }
    QVERIFY(!exists());
}

void SharedCellWinTest::mayBeCreatedAgain()
{
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(3));
    const OtherSide other; // keeps it alive between the two
    QVERIFY(cell.create());
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 3u);
}

void SharedCellWinTest::failsWhenTheSystemRefuses_data()
{
    QTest::addColumn<QString>("taken");
    QTest::newRow("the mutex") << QStringLiteral("KOLM_ALVRData_Mutex");
    QTest::newRow("the mapping") << QStringLiteral("KOLM_ALVRMemory");
}

void SharedCellWinTest::failsWhenTheSystemRefuses()
{
    QFETCH(QString, taken);
    // Something of another kind bears the name.
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, taken.toStdWString().c_str());
    QVERIFY(event);
    SharedCell cell;
    QVERIFY(!cell.create());
    quint32 value = 7;
    QVERIFY(!cell.read(&value));
    QVERIFY(!cell.write(1));
    CloseHandle(event);
    QVERIFY(!exists());
}

void SharedCellWinTest::racesWithAnotherProgram()
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
        quint32 value = 0;
        QVERIFY2(cell.read(&value), qPrintable(QString::number(written)));
        QCOMPARE(value, written);
    }
    QCOMPARE(rival.readAllStandardOutput().trimmed(), QByteArray("0"));
}

void SharedCellWinTest::waitsForAHolderAndGoesOnWhenThatIsKilled()
{
    SharedCell cell;
    QVERIFY(cell.create());
    QVERIFY(cell.write(9));
    QProcess holder;
    holder.start(QStringLiteral(KOLM_TEST_HELPER), {QStringLiteral("hold")});
    QCOMPARE(lineOf(holder), QByteArray("held"));

    std::future<quint32> reading = std::async(std::launch::async, [&cell] {
        quint32 value = 7;
        return cell.read(&value) ? value : 0;
    });
    QCOMPARE(reading.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
    holder.kill();
    QVERIFY(holder.waitForFinished(limit));
    QCOMPARE(reading.wait_for(std::chrono::milliseconds(limit)), std::future_status::ready);
    QCOMPARE(reading.get(), 9u);
    QVERIFY(cell.write(10));
    quint32 value = 7;
    QVERIFY(cell.read(&value));
    QCOMPARE(value, 10u);
}

KOLM_TEST_MAIN(SharedCellWinTest)
#include "tst_shared_cell_win.moc"
