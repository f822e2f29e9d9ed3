#include "pc/session_end.h"

#include <cstdlib>

#include <windows.h>

namespace session_end {

const long yes = TRUE;

Message read(const QByteArray &eventType, const void *message)
{
    if (eventType != "windows_generic_MSG")
        return Message::Other;
    const MSG *native = static_cast<const MSG *>(message);
    switch (native->message) {
    case WM_QUERYENDSESSION:
        return Message::Question;
    case WM_ENDSESSION:
        return native->wParam ? Message::Ends : Message::IsRefused;
    default:
        return Message::Other;
    }
}

void endProcess()
{
    TerminateProcess(GetCurrentProcess(), 0);
    std::_Exit(0); // does not come that far
}

} // namespace session_end
