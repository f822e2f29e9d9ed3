#!/usr/bin/env python3
"""Tests of tools/check: each small bad tree must be reported, where and as what
it is, and the good one must not."""

import json
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
import bad_rooms  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
CHECK = ROOT / "tools" / "check"

# Apart, so that these trees' variables are not taken for the program's.
SIMPC = "SIMPC" + "_"

GOOD = {
    "CMakeLists.txt": "project(A VERSION 2.34.5.6)\n",
    "cmake/rooms.txt": bad_rooms.ROOMS,
    "ARCHITECTURE.md": "# Architecture\n" + bad_rooms.PICTURE.replace(
        "    link --> pc\n", "    demonstration --> app\n    demonstration --> simpc\n"
        "    controller --> sysinfo\n    sysinfo --> pc\n    simpc --> pc\n"),
    "base/clock.h": "#pragma once\n\n#include <QObject>\n",
    "base/clock.cpp": '#include "base/clock.h"\n\n#include <QTimer>\n\n'
                      "void wait()\n{\n    QTimer::singleShot(5, [] {});\n}\n",
    "base/manual_clock.cpp": '#include "base/clock.h"\n\nvoid ManualClock::sleep(int) {}\n',
    "simpc/sim_pc.h": '#pragma once\n\n#include "base/clock.h"\n',
    "pc/power.h": "#pragma once\n\nint acLine();\n",
    "pc/power_win.cpp": '#include "pc/power.h"\n\n#include <windows.h>\n\n'
                        "#ifdef _WIN32\n#endif\n",
    "simpc/power_sim.cpp": '#include "pc/power.h"\n#include "simpc/sim_pc.h"\n\n'
                           "int acLine()\n{\n    return 1;\n}\n",
    "sysinfo/power.h": '#pragma once\n\n#include "pc/power.h"\n',
    "config/config_manager.cpp": "ConfigManager &ConfigManager::instance()\n{\n"
                                 "    static ConfigManager manager;\n    return manager;\n}\n",
    "steamvr/steam_manager.cpp": "SteamManager &SteamManager::instance()\n{\n"
                                 "    if (true) {\n    }\n"
                                 "    static SteamManager manager(ConfigManager::instance());\n"
                                 "    return manager;\n}\n",
    "controller/orb_manager.cpp": '#include "sysinfo/power.h"\n\nvoid f()\n{\n'
                                  "    SteamManager::instance();\n}\n",
    "ui/window.cpp": "// No windows.h, no Q_OS_WIN, no msleep(5), no X::instance() here.\n"
                     "/* #include <windows.h>\n   QTimer::singleShot */\n"
                     'const char *text = "usleep(5) // \\" Q_OS_WIN X::instance()";\n'
                     'const char *raw = R"(nanosleep " Q_OS_WIN)";\n'
                     "int million = 1'000'000;\n"
                     "QObject *app = QCoreApplication::instance();\n",
    "peers/server.cpp": '#include "link/adb.h"\n#include "simpc/sim_pc.h"\n\n'
                        "void f()\n{\n    QThread::msleep(5);\n}\n",
    "link/adb.h": "#pragma once\n",
    "demonstration/pc.cpp": '#include "app/start_up.h"\n#include "simpc/sim_pc.h"\n\n'
                            "bool f()\n{\n"
                            f'    return qEnvironmentVariable("{SIMPC}TWO_WORDS");\n}}\n',
    "demonstration/README.md": f"`{SIMPC}TWO_WORDS=1` and more of `{SIMPC}*`:\n\n"
                               "| variable | meaning |\n|---|---|\n"
                               f"| `{SIMPC}TWO_WORDS` | 1: two words |\n| `OTHER` | another |\n",
    "run": f"export {SIMPC}TWO_WORDS=${{{SIMPC}TWO_WORDS-1}}\n",
    "tests/link/tst_adb.cpp": '#include "link/adb.h"\n#include "peers/server.h"\n'
                              '#include "simpc/sim_pc.h"\n\n#include "tst_adb.moc"\n',
    "qml/Utils.qml": 'import QtQuick 2.15\n\nQtObject {\n    property color a: "#1A1B21"\n'
                     "    property color b: Qt.rgba(1, 1, 1, 0.5)\n}\n",
    "qml/Page.qml": "import QtQuick 2.15\n\nText {\n"
                    '    color: "transparent" // not "#fff" and not "white"\n'
                    '    text: "red # 5"\n    objectName: "#12"\n}\n',
    "tests/qml/tst_page.qml": 'import QtTest 1.15\n\nTestCase {\n    property color c: "#123456"\n'
                              "    function test_it() {\n        wait(0);\n        spy.wait();\n"
                              "    }\n}\n",
    "build/other.cpp": "#include <windows.h>\n",
}

# name, rule, files, what must be reported: file:line and words of the message
BAD = [
    ("two headers in a circle", "cycles",
     {"link/a.h": '#include "link/b.h"\n', "link/b.h": '\n#include "link/a.h"\n'},
     [("link/b.h", 2, "link/a.h -> link/b.h -> link/a.h")]),
    ("three headers in a circle", "cycles",
     {"link/a.h": '#include "link/b.h"\n', "link/b.h": '#include "link/c.h"\n',
      "link/c.h": '#include "link/a.h"\n', "link/user.cpp": '#include "link/b.h"\n'},
     [("link/c.h", 1, "circular include")]),
    ("a header that includes itself", "cycles", {"link/a.h": '#include "link/a.h"\n'},
     [("link/a.h", 1, "circular include")]),
    ("windows.h", "platform", {"link/a.cpp": "#include <QObject>\n#include <windows.h>\n"},
     [("link/a.cpp", 2, "*_win.cpp")]),
    ("winsock2.h in capitals", "platform", {"link/a.h": "#include <WinSock2.h>\n"},
     [("link/a.h", 1, "*_win.cpp")]),
    ("windows.h in a test", "platform", {"tests/link/tst_a.cpp": "#include <windows.h>\n"},
     [("tests/link/tst_a.cpp", 1, "*_win.cpp")]),
    ("windows.h in a stand-in", "platform", {"peers/a.cpp": '#include "windows.h"\n'},
     [("peers/a.cpp", 1, "*_win.cpp")]),
    ("windows.h behind a comment", "platform",
     {"link/a.cpp": "/* one\n two */\n#include <windows.h> // why not\n"},
     [("link/a.cpp", 3, "*_win.cpp")]),
    ("Q_OS_WIN", "platform", {"ui/a.cpp": "int i;\n#ifdef Q_OS_WIN\n#endif\n"},
     [("ui/a.cpp", 2, "let CMake choose")]),
    ("_WIN32", "platform", {"ui/a.h": "#if defined(_WIN32)\n#endif\n"}, [("ui/a.h", 1, "_WIN32")]),
    ("the other way round", "platform", {"ui/a.cpp": "#ifndef __linux__\n#endif\n"},
     [("ui/a.cpp", 1, "__linux__")]),
    ("in the stand-in of a seam", "platform", {"ui/a_sim.cpp": "#ifdef Q_OS_LINUX\n#endif\n"},
     [("ui/a_sim.cpp", 1, "Q_OS_LINUX")]),
    ("qml/ without a colour table", "colours",
     {"qml/a.qml": 'Item {\n  color: "#ff0000"\n}\n', "qml/windows/b.qml": "x: '#FFF'\n"},
     [("qml/a.qml", 2, "#ff0000"), ("qml/windows/b.qml", 1, "qml/Utils.qml")]),
    ("a colour by its name", "colours", {"qml/a.qml": 'Item {\n  border.color: on ? "red" : b\n}'},
     [("qml/a.qml", 2, "red")]),
    ("a colour by its parts", "colours", {"qml/a.qml": "Item { x: Qt.rgba(0, 0, 0, 1) }"},
     [("qml/a.qml", 1, "Qt.rgba")]),
    ("a colour in another Utils", "colours", {"qml/common/Utils.qml": '"#123456"\n'},
     [("qml/common/Utils.qml", 1, "#123456")]),
    ("an animation of the GUI thread", "animators",
     {"qml/a.qml": "Item {\n  NumberAnimation { target: b }\n}"},
     [("qml/a.qml", 2, "use an Animator")]),
    ("a control of its own making", "controls",
     {"qml/common/Clickable.qml": "Item { Accessible.onPressAction: go() }",
      "qml/a.qml": "Clickable {\n  Accessible.onToggleAction: press()\n}",
      "qml/b.qml": "Item {\n  Accessible.onPressAction: go()\n}"},
     [("qml/b.qml", 2, "make it of that")]),
    ("a timer of real time", "timers",
     {"qml/a.qml": "Item {\n  ClockTimer {}\n  Timer { running: true }\n}"},
     [("qml/a.qml", 3, "use ClockTimer")]),
    ("QML that does not parse", "qmllint",
     {"qml/a.qml": "import QtQuick 2.15\nItem {\n    x: }\n}\n"}, [("qml/a.qml", 3, "mend it")]),
    ("one call that is not the instance's own", "singletons",
     {"link/a.cpp": "X &X::instance()\n{\n    static X x;\n    return x;\n}\n"
                    "void f()\n{\n    X::instance().go();\n}\n"},
     [("link/a.cpp", 8, "hand X in")]),
    ("an instance in a header", "singletons", {"cloud/a.h": "inline int f() { A::instance(); }\n"},
     [("cloud/a.h", 1, "hand A in")]),
    ("an instance in a test", "singletons", {"tests/a/b.cpp": "auto &a = SysManager::instance( );\n"},
     [("tests/a/b.cpp", 1, "hand SysManager in")]),
    ("a variable without a row", "variables",
     {"demonstration/README.md": f"| `{SIMPC}A` | a |\n",
      "demonstration/a.cpp": f'f("{SIMPC}A");\n\ng("{SIMPC}B_C");\n',
      "tests/e2e/a.cpp": f'e.insert("{SIMPC}D", "1");\n', "run": f"\nexport {SIMPC}E=1\n"},
     [("demonstration/a.cpp", 3, f"{SIMPC}B_C is told nowhere"),
      ("run", 2, f"{SIMPC}E is told nowhere"), ("tests/e2e/a.cpp", 1, f"{SIMPC}D is told nowhere")]),
    ("a row that nothing reads", "variables",
     {"demonstration/README.md": "| variable | meaning |\n"
                                 f"| `{SIMPC}A` | a |\n| `{SIMPC}B` | b |\n",
      "simpc/a.cpp": f'f("{SIMPC}A");\n// "for {SIMPC}B"\n',
      "tests/a.cpp": f'e.insert("{SIMPC}B", "1");\n'},
     [("demonstration/README.md", 3, f"nothing reads {SIMPC}B")]),
    ("a variable with two rows", "variables",
     {"demonstration/README.md": f"| `{SIMPC}A` | a |\n| `{SIMPC}A` | b |\n",
      "simpc/a.cpp": f'f("{SIMPC}A");\n'},
     [("demonstration/README.md", 2, "a row already, in line 1")]),
    ("variables without a table", "variables", {"simpc/a.cpp": f'f("{SIMPC}A");\n'},
     [("simpc/a.cpp", 1, "a row in demonstration/README.md")]),
    ("waiting in QML", "waiting", {"tests/qml/a.qml": "Item {\n  function f() { wait(500) }\n}"},
     [("tests/qml/a.qml", 2, "tryCompare")]),
    ("the version in a source", "version",
     {"CMakeLists.txt": "# It is 2.34.5.6.\nproject(A VERSION 2.34.5.6 LANGUAGES CXX)\n",
      "a/a.cpp": 'auto v = "v2.34.5.6";\n// 12.34.5.6 2.34.5.60 2.34.5 2.34.5.6.7\n',
      "b/b.rc": "\nFILEVERSION 2,34,5,6\n", "c/c.json": '"KOLM_2.34.5_6"', "d/d": b"\xff\n2.34.5.6."},
     [("CMakeLists.txt", 1, "stands in CMakeLists.txt alone"), ("a/a.cpp", 1, "KOLM_VERSION"),
      ("b/b.rc", 2, "KOLM_VERSION"), ("c/c.json", 1, "make up"), ("d/d", 2, "KOLM_VERSION")]),
    ("no version", "version", {"CMakeLists.txt": "project(A)\n"}, [("CMakeLists.txt", 1, "stands in")]),
    ("bad format", "format",
     {"ui/a.cpp": "int a;\nint  b;\nint  c;\n", "ui/b.cpp": "int b;\n", ".clang-format": None},
     [("ui/a.cpp", 2, "clang-format -i ui/a.cpp")]),
]

for call in ("QTest::qWait(5)", "QTest::qWaitFor(f)", "QTest::qSleep(5)", "QThread::msleep(5)",
             "QThread::usleep(5)", "QThread::sleep(5)", "::sleep(5)", "::usleep(5)", "nanosleep(t)",
             "std::this_thread::sleep_for(t)", "std::this_thread::sleep_until(t)", "Sleep(5)",
             "QTimer::singleShot(5, f)"):
    places = ["base/clock_helper.cpp", "link/a.cpp", "tests/link/tst_a.cpp", "ui/a_win.cpp"]
    BAD.append((call, "waiting", {place: f"void f()\n{{\n    {call};\n}}\n" for place in places},
                [(place, 3, "through a Clock (base/clock.h)") for place in places]))

BAD += bad_rooms.BAD


class CheckTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="kolm 中 文 & é ")
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def lay_out(self, files):
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            if isinstance(text, bytes):
                path.write_bytes(text)
            else:
                path.write_text((ROOT / name).read_text() if text is None else text, "utf-8")

    def check(self, *arguments):
        run = subprocess.run([sys.executable, CHECK, "--root", self.root, *arguments],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertIn(run.returncode, (0, 1), run.stderr)
        lines = run.stdout.splitlines()
        self.assertEqual(run.returncode, 1 if lines else 0)
        return lines

    def assert_reported(self, lines, expected):
        self.assertEqual(len(lines), len(expected), lines)
        for line, (path, number, words) in zip(lines, expected):
            self.assertTrue(line.startswith(f"{path}:{number}: "), line)
            self.assertIn(words, line)

    def test_good_tree_passes(self):
        self.lay_out(GOOD | {".clang-format": None})
        self.assertEqual(self.check(), [])

    def test_every_rule_is_tried(self):
        rules = re.findall(r"^  (\w+) ", subprocess.run(
            [sys.executable, CHECK, "--help"], stdout=subprocess.PIPE, text=True,
            check=True).stdout.split("rules:")[1], re.MULTILINE)
        self.assertEqual(sorted(set(rules) - {"locks", "tidy"}), sorted({rule for _, rule, _, _ in BAD}))

    def test_unknown_rule_is_refused(self):
        run = subprocess.run([sys.executable, CHECK, "--root", self.root, "layer"],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertEqual(run.returncode, 2)
        self.assertIn("no such rule: layer", run.stderr)

    def test_only_tracked_files_count(self):
        bad = {"link/a.cpp": "#include <windows.h>\n"}
        self.lay_out(bad)
        self.git("init", "-q")
        self.assert_reported(self.check("platform"), [("link/a.cpp", 1, "*_win.cpp")])
        self.lay_out({"link/b.cpp": "\n"})
        self.git("add", "link/b.cpp")
        self.assertEqual(self.check("platform"), [])
        self.git("add", "link/a.cpp")
        self.assert_reported(self.check("platform"), [("link/a.cpp", 1, "*_win.cpp")])

    def git(self, *words):
        subprocess.run(["git", "-c", "user.name=A", "-c", "user.email=a@example.org", *words],
                       cwd=self.root, check=True, stdout=subprocess.PIPE)

    @unittest.skipUnless(shutil.which("clang-tidy"), "clang-tidy is not installed")
    def test_tidy_looks_at_what_changed(self):
        bad = "#include \"a/{}.h\"\nint *pointer()\n{{\n    return 0;\n}}\n"
        self.lay_out({"a/old.cpp": bad.format("old"), "a/old.h": "", "a/new.h": "",
                      "a/user.cpp": bad.format("new"),
                      ".clang-tidy": "Checks: '-*,modernize-use-nullptr'\nWarningsAsErrors: '*'\n"})
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-qm", "One")
        self.lay_out({"a/new.h": "int i();\n", "a/other.cpp": bad.format("old")})
        self.git("add", ".")
        self.git("commit", "-qm", "Two")
        names = [str(self.root / "a" / name) for name in ("old.cpp", "user.cpp", "other.cpp")]
        (self.root / "compile_commands.json").write_text(json.dumps(
            [{"directory": str(self.root), "file": name, "arguments":
              ["c++", "-I", str(self.root), "-c", name]} for name in names]))
        build = ("--build", str(self.root))

        self.assert_reported(self.check("tidy", *build),
                             [("a/other.cpp", 4, "nullptr"), ("a/user.cpp", 4, "nullptr")])
        self.assertEqual(self.check("tidy", *build, "--base", "HEAD"), [])
        self.assertEqual(len(self.check("tidy", *build, "--all")), 3)

    @unittest.skipUnless(shutil.which("clang++"), "clang++ is not installed")
    def test_locks_are_held(self):
        counter = ("#include \"base/mutex.h\"\nstruct Counter\n{{\n    Mutex mutex;\n"
                   "    int count GUARDED_BY(mutex) = 0;\n}};\nvoid next(Counter &counter)\n{{\n"
                   "    {}\n    ++counter.count;\n}}\n")
        self.lay_out({"base/mutex.h": (ROOT / "base" / "mutex.h").read_text("utf-8"),
                      "link/good.cpp": counter.format("const MutexLock lock(counter.mutex);"),
                      "link/bad.cpp": counter.format(""),
                      "tests/link/other.cpp": counter.format("")})
        names = [str(self.root / name)
                 for name in ("link/good.cpp", "link/bad.cpp", "tests/link/other.cpp")]
        (self.root / "compile_commands.json").write_text(json.dumps(
            [{"directory": str(self.root), "file": name, "command":
              "ccache c++ -std=c++17 -I . -o x.o -c " + shlex.quote(name)} for name in names]))
        self.assert_reported(self.check("locks", "--build", str(self.root)),
                             [("link/bad.cpp", 10, "requires holding mutex")])


def bad_tree_test(rule, files, expected):
    def test(self):
        self.lay_out(files)
        self.assert_reported(self.check(rule), expected)

    return test


for index, (name, rule, files, expected) in enumerate(BAD):
    setattr(CheckTest, f"test_{index:02} {rule}: {name}", bad_tree_test(rule, files, expected))


if __name__ == "__main__":
    unittest.main(verbosity=1)
