#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"
#include "usb/usb_watcher.h"

#include <vector>

#include <windows.h>

// The system's own names for the classes; this makes them objects.
#include <initguid.h>

#include <dbt.h>
#include <ddk/ndisguid.h>
#include <hidclass.h>
#include <usbiodef.h>
#include <winioctl.h>

// Where this program finds the function.
extern "C" decltype(&RegisterDeviceNotificationW) __imp_RegisterDeviceNotificationW;

namespace {

struct Registration
{
    HANDLE recipient;
    DEV_BROADCAST_DEVICEINTERFACE_W filter;
    DWORD flags;
    HDEVNOTIFY result;
};

std::vector<Registration> registrations;
decltype(&RegisterDeviceNotificationW) original = nullptr;

HDEVNOTIFY WINAPI noteRegistration(HANDLE recipient, LPVOID filter, DWORD flags)
{
    const HDEVNOTIFY result = original(recipient, filter, flags);
    registrations.push_back(
        {recipient, *static_cast<DEV_BROADCAST_DEVICEINTERFACE_W *>(filter), flags, result});
    return result;
}

// Puts a function in the place of the system's, in this program only.
void replaceWith(decltype(&RegisterDeviceNotificationW) function)
{
    DWORD before = 0;
    VirtualProtect(&__imp_RegisterDeviceNotificationW, sizeof(void *), PAGE_READWRITE, &before);
    original = __imp_RegisterDeviceNotificationW;
    __imp_RegisterDeviceNotificationW = function;
    VirtualProtect(&__imp_RegisterDeviceNotificationW, sizeof(void *), before, &before);
}

} // namespace

// What the watcher asks the system to be told of. No test can plug in a device.
class UsbRegistrationsWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void theFourClassesAreRegisteredInTheirOrder()
    {
        const CapturedStreams streams;
        replaceWith(noteRegistration);
        UsbWatcher watcher([] {});
        // Its messages are looked at after the registrations.
        QVERIFY(watcher.stop());
        replaceWith(original);

        const GUID wanted[] = {GUID_DEVINTERFACE_USB_DEVICE, GUID_DEVINTERFACE_DISK,
                               GUID_DEVINTERFACE_HID, GUID_NDIS_LAN_CLASS};
        QCOMPARE(registrations.size(), std::size(wanted));
        for (std::size_t i = 0; i < registrations.size(); ++i) {
            const Registration &made = registrations[i];
            QVERIFY2(IsEqualGUID(made.filter.dbcc_classguid, wanted[i]),
                     qPrintable(QString::number(i)));
            QCOMPARE(made.filter.dbcc_size, DWORD(sizeof made.filter));
            QCOMPARE(made.filter.dbcc_devicetype, DWORD(DBT_DEVTYP_DEVICEINTERFACE));
            QCOMPARE(made.flags, DWORD(DEVICE_NOTIFY_WINDOW_HANDLE));
            QVERIFY(made.recipient);
            QCOMPARE(made.recipient, registrations.front().recipient);
            QVERIFY2(made.result, "the system refuses it");
        }
    }
};

KOLM_TEST_MAIN(UsbRegistrationsWinTest)
#include "tst_usb_registrations_win.moc"
