// A library that somebody has put where a program may look for another one. It leaves a
// file beside itself, NAME.loaded, when it is loaded; Qt takes it for a plugin.
#include <QObject>

#include <windows.h>

#include <string>

class Planted : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QPA.QPlatformIntegrationFactoryInterface.5.3" FILE
                          "planted.json")
};

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void *)
{
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(self, path, MAX_PATH);
    const std::wstring note = std::wstring(path) + L".loaded";
    CloseHandle(CreateFileW(note.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}

#include "planted_win.moc"
