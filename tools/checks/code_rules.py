"""Rules about C++ files, read as text."""

import re

from .tree import Problem, folder_of

# Who may say X::instance() besides app/, controller/ and the body of another
# instance(). A file, and the classes whose instance it may ask for.
INSTANCE_USERS = {
    # Tests of the instance itself.
    "tests/config/tst_settings_store.cpp": ["ConfigManager"],
    "tests/usb/adb_user_win.cpp": ["AdbManger"],
    "tests/link/tst_control_port.cpp": ["SysManager"],
}

_WINDOWS_HEADER = re.compile(
    r"(windows|windowsx|windef|winbase|winnt|winuser|winreg|winerror|winsvc|winsock2?|ws2tcpip|"
    r"ws2def|mstcpip|iphlpapi|tcpmib|iptypes|netioapi|shellapi|shlobj|shlwapi|knownfolders|"
    r"objbase|combaseapi|oleauto|tlhelp32|psapi|dwmapi|uxtheme|dbt|setupapi|cfgmgr32|devguid|"
    r"devpkey|devpropdef|initguid|usbiodef|mmsystem|mmeapi|mmreg|mmdeviceapi|dxgi[0-9_]*|"
    r"d3d[0-9_]+|d3dcommon|powrprof|wininet|winhttp|wbemidl|netlistmgr|tchar|crtdbg|process\.h|"
    r"io\.h|direct\.h|qtwin|qtwinextras|qwineventnotifier)(\.h)?", re.IGNORECASE)

_PLATFORM_WORD = re.compile(
    r"\b(Q_OS_\w+|_?_?WIN(?:32|64)(?:_*)|__MINGW\w*|__CYGWIN__|__linux(?:__)?|__unix(?:__)?|"
    r"__APPLE__)\b")


def platform(tree):
    """no Windows and no platform condition outside the seam"""
    for path in tree.cpp():
        if path.endswith(("_win.cpp", "_win.h")):
            continue
        for line, name in tree.system_includes(path) + tree.includes(path):
            if _WINDOWS_HEADER.fullmatch(name):
                yield Problem(path, line, f"<{name}> belongs into a *_win.cpp behind a header of "
                                          "the seam")
        for number, line in enumerate(tree.code(path), 1):
            match = _PLATFORM_WORD.search(line)
            if match:
                yield Problem(path, number, f"no {match.group(1)} here: put what differs into "
                                            "name_win.cpp and name_sim.cpp and let CMake choose")


_WAITING = re.compile(
    r"\b(qWait\w*|qSleep|msleep|usleep|sleep_for|sleep_until|nanosleep|clock_nanosleep|"
    r"QTimer::singleShot)\b|(?<![\w>])(::sleep|(?:QThread|std::this_thread)::sleep|Sleep)\s*\(")


_QML_WAITING = re.compile(r"(?<![\w])(wait)\s*\(\s*(?!0\s*\)|\))")


def waiting(tree):
    """no waiting in real time outside the clock"""
    for path in tree.cpp():
        if path in ("base/clock.cpp", "base/clock.h") or folder_of(path) == "peers":
            continue
        for number, line in enumerate(tree.code(path), 1):
            match = _WAITING.search(line)
            if match:
                yield Problem(path, number, f"no {match.group(1) or match.group(2)} here: wait "
                                            "through a Clock (base/clock.h), in a test through a "
                                            "ManualClock or on a condition")
    for path in tree.qml():
        for number, line in enumerate(tree.code(path), 1):
            if _QML_WAITING.search(line):
                yield Problem(path, number, "no wait() here: use tryCompare, tryVerify or a "
                                            "SignalSpy, which go on as soon as they can")


_INSTANCE_CALL = re.compile(r"\b((?!Q[A-Z])\w+)::instance\s*\(\s*\)")
_INSTANCE_BODY = re.compile(r"\b(\w+)\s*&\s*\1::instance\s*\(\s*\)\s*\{")


def singletons(tree):
    """singletons are asked for where the program is put together"""
    for path in tree.cpp():
        if folder_of(path) in ("app", "controller"):
            continue
        code = "\n".join(tree.code(path))
        bodies = [_body(code, match) for match in _INSTANCE_BODY.finditer(code)]
        for match in _INSTANCE_CALL.finditer(code):
            if any(start <= match.start() < end for start, end in bodies):
                continue
            if match.group(1) in INSTANCE_USERS.get(path, ()):
                continue
            line = code.count("\n", 0, match.start()) + 1
            yield Problem(path, line, f"hand {match.group(1)} in through the constructor; only "
                                      "app/, controller/, another instance() and the table in "
                                      "tools/checks/code_rules.py may ask for it")


def _body(code, match):
    """From the head of a function to the brace that closes it."""
    depth = 0
    for position in range(match.end() - 1, len(code)):
        depth += {"{": 1, "}": -1}.get(code[position], 0)
        if depth == 0:
            return match.start(), position
    return match.start(), len(code)
