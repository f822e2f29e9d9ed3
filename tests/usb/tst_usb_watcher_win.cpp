#include "base/manual_clock.h"
#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"
#include "usb/adb_manger.h"
#include "usb/usb_watcher.h"

#include <QThread>

#include <iostream>

#include <windows.h>

#include <dbt.h>

namespace {

const GUID usbClass = {
    0xA5DCBF10, 0x6530, 0x11D2, {0x90, 0x1F, 0x00, 0xC0, 0x4F, 0xB9, 0x51, 0xED}};
const GUID diskClass = {
    0x53F56307, 0xB6BF, 0x11D0, {0x94, 0xF2, 0x00, 0xA0, 0xC9, 0x1E, 0xFB, 0x8B}};
const QString headset =
    QStringLiteral(R"(\\?\USB#VID_05C6&PID_903A#PA7910#{a5dcbf10-6530-11d2-901f-00c04fb951ed})");
const QString disk = QStringLiteral(
    R"(\\?\USBSTOR#Disk&Ven_Acme&Prod_Stick#0123&0#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})");

// The watcher's window in this process; null when there is none.
HWND watcherWindow()
{
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, L"Sample Window Class", nullptr))) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId())
            return window;
    }
    return nullptr;
}

// As the system tells the window of a device interface.
LRESULT tell(WPARAM event, const QString &path, const GUID &deviceClass = usbClass,
             DWORD type = DBT_DEVTYP_DEVICEINTERFACE)
{
    const std::size_t size =
        sizeof(DEV_BROADCAST_DEVICEINTERFACE_W) + static_cast<std::size_t>(path.size()) * 2;
    std::vector<char> memory(size);
    auto *broadcast = reinterpret_cast<DEV_BROADCAST_DEVICEINTERFACE_W *>(memory.data());
    broadcast->dbcc_size = static_cast<DWORD>(size);
    broadcast->dbcc_devicetype = type;
    broadcast->dbcc_classguid = deviceClass;
    path.toWCharArray(broadcast->dbcc_name);
    return SendMessageW(watcherWindow(), WM_DEVICECHANGE, event,
                        reinterpret_cast<LPARAM>(memory.data()));
}

} // namespace

// The real hidden window. A process has one in its life, so all functions share
// a manager, and the order of the last two counts.
class UsbWatcherWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        manager_ = std::make_unique<AdbManger>(
            AdbManger::Dependencies{clock_, [](const QString &, const QString &) {}});
        connect(manager_.get(), &AdbManger::checkdevice, this, [this] {
            ++checks_;
            thread_ = QThread::currentThread();
        });
        QTRY_VERIFY(watcherWindow());
    }

    void init()
    {
        TestCase::init();
        checks_ = 0;
        thread_ = nullptr;
    }

    void itsWindowIsHidden()
    {
        const HWND window = watcherWindow();
        QVERIFY(!IsWindowVisible(window));
        QCOMPARE(GetWindowTextLengthW(window), 0);
        QVERIFY(!GetParent(window));
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
        QCOMPARE(style & WS_OVERLAPPEDWINDOW, DWORD(WS_OVERLAPPEDWINDOW));
        QVERIFY(GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId());
    }

    void theSystemsMessagesArriveAsChecks_data()
    {
        QTest::addColumn<unsigned int>("event");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("ofADisk");
        QTest::addColumn<unsigned int>("type");
        QTest::addColumn<int>("checks");
        const unsigned int arrival = DBT_DEVICEARRIVAL;
        const unsigned int removal = DBT_DEVICEREMOVECOMPLETE;
        const unsigned int interface_ = DBT_DEVTYP_DEVICEINTERFACE;
        QTest::newRow("a headset arrives") << arrival << headset << false << interface_ << 1;
        QTest::newRow("a headset is gone") << removal << headset << false << interface_ << 1;
        QTest::newRow("in lower case") << arrival << headset.toLower() << false << interface_ << 1;
        QTest::newRow("a headset's disk") << arrival << headset << true << interface_ << 1;
        QTest::newRow("another disk") << arrival << disk << true << interface_ << 0;
        QTest::newRow("another disk is gone") << removal << disk << true << interface_ << 0;
        QTest::newRow("a network adapter")
            << arrival << R"(\\?\PCI#VEN_8086&DEV_15B8#3&1#{ad498944-762f-11d0-8dcb-00c04fc3358c})"
            << false << interface_ << 0;
        QTest::newRow("a headset is about to go")
            << static_cast<unsigned int>(DBT_DEVICEQUERYREMOVE) << headset << false << interface_
            << 0;
        QTest::newRow("something changed") << static_cast<unsigned int>(DBT_DEVNODES_CHANGED)
                                           << headset << false << interface_ << 0;
        QTest::newRow("a volume") << arrival << headset << false
                                  << static_cast<unsigned int>(DBT_DEVTYP_VOLUME) << 0;
    }

    void theSystemsMessagesArriveAsChecks()
    {
        QFETCH(unsigned int, event);
        QFETCH(QString, path);
        QFETCH(bool, ofADisk);
        QFETCH(unsigned int, type);
        QFETCH(int, checks);
        QCOMPARE(tell(event, path, ofADisk ? diskClass : usbClass, type), LRESULT(0));
        QCOMPARE(checks_, 0); // it is not this thread that hears of it
        tell(DBT_DEVICEARRIVAL, headset);
        QTRY_VERIFY(checks_ >= checks + 1);
        QCoreApplication::processEvents();
        QCOMPARE(checks_, checks + 1);
        QCOMPARE(thread_, QCoreApplication::instance()->thread());
    }

    void otherMessagesAreTheSystemsToHandle()
    {
        const HWND window = watcherWindow();
        QCOMPARE(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"x")),
                 LRESULT(TRUE));
        QCOMPARE(GetWindowTextLengthW(window), 1);
        SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
        QCOMPARE(SendMessageW(window, WM_DEVICECHANGE, DBT_DEVICEARRIVAL, 0), LRESULT(0));
    }

    void aWatcherWithoutAWindowEndsAtOnce()
    {
        // The window's class is taken, so there is no second window.
        const CapturedStreams streams;
        UsbWatcher second([] {});
        QVERIFY(second.stop());
        QCOMPARE(streams.echo(), QByteArray()); // no message ended it
        QVERIFY(!second.stop());
        tell(DBT_DEVICEARRIVAL, headset); // the first one's is as it was
        QTRY_COMPARE(checks_, 1);
    }

    void theEndOfTheManagerEndsTheThread()
    {
        const DWORD thread = GetWindowThreadProcessId(watcherWindow(), nullptr);
        const HANDLE handle = OpenThread(SYNCHRONIZE, FALSE, thread);
        QVERIFY(handle);
        QCOMPARE(WaitForSingleObject(handle, 0), DWORD(WAIT_TIMEOUT));
        const CapturedStreams streams;
        // Only what is written the console's way heals a stream that failed before,
        // and waits for the lines of others.
        std::cout.setstate(std::ios::badbit);
        manager_.reset();
        QCOMPARE(streams.echo(), QByteArray("worker receive the exiting Message...\n"));
        QCOMPARE(WaitForSingleObject(handle, 0), DWORD(WAIT_OBJECT_0));
        CloseHandle(handle);
        QVERIFY(!watcherWindow());
        QCOMPARE(loggedCount("install winproc fail"), 0);
    }

private:
    ManualClock clock_;
    std::unique_ptr<AdbManger> manager_;
    int checks_ = 0;
    QThread *thread_ = nullptr;
};

KOLM_TEST_MAIN(UsbWatcherWinTest)
#include "tst_usb_watcher_win.moc"
