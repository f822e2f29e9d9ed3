#include "peers/streaming_server_sim/stop_signal.h"

#include <QCoreApplication>

#include <windows.h>

namespace {

// Windows calls it on a thread of its own.
BOOL WINAPI handle(DWORD)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                              Qt::QueuedConnection);
    return TRUE;
}

} // namespace

void quitOnStopRequest()
{
    SetConsoleCtrlHandler(handle, TRUE);
}
