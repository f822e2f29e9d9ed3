"""Rules about C++ files, read as text."""

import re

from .tree import Problem, folder_of

# Each folder may include only itself and those after it.
LAYERS = ["app", "ui", "controller", "cloud", "steamvr", "usb", "link", "config", "sysinfo",
          "simpc", "pc", "base"]

# Folders that are built upon the layers; no layer knows of them.
ON_TOP = ["tests", "peers", "bench", "tools", "packaging"]

# Who may say X::instance() besides app/, controller/ and the body of another
# instance(). A file, and the classes whose instance it may ask for.
INSTANCE_USERS = {
    # Tests of the instance itself.
    "tests/config/tst_settings_store.cpp": ["ConfigManager"],
    "tests/usb/adb_user_win.cpp": ["AdbManger"],
    "tests/link/tst_control_port.cpp": ["SysManager"],
}


def layers(tree):
    """no include from a higher folder"""
    for path in tree.cpp():
        own = folder_of(path)
        for line, name in tree.includes(path):
            other = folder_of(name)
            if not other and not name.endswith(".moc"):
                yield Problem(path, line, f'write the path from the root: "{own}/{name}"')
            elif other.startswith("."):
                yield Problem(path, line, f'write the path from the root instead of "{name}"')
            elif own in LAYERS and other in ON_TOP:
                yield Problem(path, line, f"{own}/ must not know {other}/; move what both need "
                                          "into a folder that both may use")
            elif own in LAYERS and other in LAYERS and LAYERS.index(other) < LAYERS.index(own):
                yield Problem(path, line, f"{own}/ lies below {other}/; offer a callback that "
                                          "app/ connects, or move the shared part down")


def simpc(tree):
    """the simulated PC stays behind the seam"""
    for path in tree.cpp():
        if folder_of(path) in ("simpc", "tests", "peers", "bench") or path.endswith("_sim.cpp"):
            continue
        for line, name in tree.includes(path):
            if folder_of(name) == "simpc":
                yield Problem(path, line, "only *_sim.cpp, tests/ and peers/ may use simpc/; ask "
                                          "the PC through a header of the seam")


def cycles(tree):
    """no circle of includes"""
    known = set(tree.cpp())
    graph = {path: [(line, name) for line, name in tree.includes(path) if name in known]
             for path in known}
    state = {}  # absent: not seen, 1: on the way, 2: done

    def visit(start):
        stack = [(start, iter(graph[start]))]
        state[start] = 1
        while stack:
            path, rest = stack[-1]
            for line, name in rest:
                if state.get(name) == 1:
                    names = [p for p, _ in stack]
                    circle = names[names.index(name):] + [name]
                    yield Problem(path, line, "circular include " + " -> ".join(circle)
                                  + "; declare the class forward or move the shared part out")
                elif name not in state:
                    state[name] = 1
                    stack.append((name, iter(graph[name])))
                    break
            else:
                state[path] = 2
                stack.pop()

    for path in sorted(known):
        if path not in state:
            yield from visit(path)


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
