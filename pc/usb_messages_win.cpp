#include "pc/usb_messages.h"

#include "base/console.h"
#include "base/threads.h"
#include "pc/handles_win.h"

#include <chrono>

#include <dbt.h>

using namespace std::chrono_literals;

namespace {

constexpr UINT exitMessage = 1025;
constexpr auto retryInterval = 10ms;
const char *const purpose = "messages about USB devices";
const wchar_t *const className = L"Sample Window Class";

constexpr GUID watchedClasses[] = {
    // USB devices
    {0xA5DCBF10, 0x6530, 0x11D2, {0x90, 0x1F, 0x00, 0xC0, 0x4F, 0xB9, 0x51, 0xED}},
    // disks
    {0x53F56307, 0xB6BF, 0x11D0, {0x94, 0xF2, 0x00, 0xA0, 0xC9, 0x1E, 0xFB, 0x8B}},
    // human interface devices
    {0x4D1E55B2, 0xF16F, 0x11CF, {0x88, 0xCB, 0x00, 0x11, 0x11, 0x00, 0x00, 0x30}},
    // network adapters
    {0xAD498944, 0x762F, 0x11D0, {0x8D, 0xCB, 0x00, 0xC0, 0x4F, 0xC3, 0x35, 0x8C}},
};

using Handler = UsbMessages::Changed;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM event, LPARAM data)
{
    if (message != WM_DEVICECHANGE)
        return DefWindowProcW(window, message, event, data);
    if (event != DBT_DEVICEARRIVAL && event != DBT_DEVICEREMOVECOMPLETE)
        return 0;
    const auto *broadcast = reinterpret_cast<const DEV_BROADCAST_HDR *>(data);
    if (!broadcast || broadcast->dbch_devicetype != DBT_DEVTYP_DEVICEINTERFACE)
        return 0;
    const auto *device = reinterpret_cast<const DEV_BROADCAST_DEVICEINTERFACE_W *>(broadcast);
    const auto *changed =
        reinterpret_cast<const Handler *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (changed)
        (*changed)(QString::fromWCharArray(device->dbcc_name));
    return 0;
}

DWORD WINAPI watch(void *handler)
{
    const HINSTANCE program = GetModuleHandleW(nullptr);
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = program;
    windowClass.lpszClassName = className;
    if (!RegisterClassW(&windowClass))
        return static_cast<DWORD>(-1);
    const HWND window =
        CreateWindowExW(0, className, L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, program, nullptr);
    if (!window)
        return static_cast<DWORD>(-1);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(handler));
    for (const GUID &watched : watchedClasses) {
        DEV_BROADCAST_DEVICEINTERFACE_W filter = {};
        filter.dbcc_size = sizeof filter;
        filter.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
        filter.dbcc_classguid = watched;
        RegisterDeviceNotificationW(window, &filter, DEVICE_NOTIFY_WINDOW_HANDLE);
    }
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0)) {
        if (message.message == exitMessage) {
            console::echo("worker receive the exiting Message...");
            break;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

} // namespace

struct UsbMessages::Private
{
    Handler changed;
    DWORD threadId = 0;
    KernelHandle thread;
};

UsbMessages::UsbMessages(Changed changed) : d(std::make_unique<Private>())
{
    d->changed = std::move(changed);
    if (threads::mayBegin())
        d->thread.reset(CreateThread(nullptr, 0, watch, &d->changed, 0, &d->threadId));
    if (d->thread)
        threads::noteBegun(purpose);
    else
        threads::noteMissing(purpose, qt_error_string(ERROR_MAX_THRDS_REACHED).trimmed());
}

UsbMessages::~UsbMessages()
{
    stop();
}

bool UsbMessages::stop()
{
    if (!d->thread)
        return false;
    // Until the thread has made its message queue nothing can be posted to it.
    while (!PostThreadMessageW(d->threadId, exitMessage, 0, 0) &&
           WaitForSingleObject(d->thread.get(), static_cast<DWORD>(retryInterval.count())) ==
               WAIT_TIMEOUT) {
    }
    WaitForSingleObject(d->thread.get(), INFINITE);
    d->thread.reset();
    return true;
}
