"""Trees that break a rule about rooms: name, rule, files, and what must be
reported: file:line and words of the message."""

# Rooms as a program might have them.
ROOMS = """# from the top down
demonstration: app simpc base
app: ui qml controller link steamvr config sysinfo pc base
ui: pc base
qml:
controller: link steamvr config sysinfo base
link: pc base

steamvr: config sysinfo pc base
config: pc base
sysinfo: pc base
simpc: pc base
pc: base
base:
"""

_HERE = "cmake/rooms.txt"


def _arrows(name, files, *expected):
    return name, "arrows", {_HERE: ROOMS} | files, list(expected)


def _table(name, old, new, *expected):
    return name, "arrows", {_HERE: ROOMS.replace(old, new), "link/a.cpp": ""}, list(expected)


def _picture(name, page, *expected):
    return (name, "picture", {_HERE: ROOMS, "ARCHITECTURE.md": page,
                              "link/a.h": '#include "pc/b.h"\n#include "base/c.h"\n'},
            list(expected))


PICTURE = """<!-- tools/rooms draws this -->
```mermaid
graph TD
    link --> pc
```
<!-- up to here -->
"""

BAD = [
    _arrows("base knows link", {"base/a.h": '#pragma once\n#include "link/b.h"\n'},
            ("base/a.h", 2, "offer a callback")),
    _arrows("link knows controller", {"link/a.cpp": '#include "controller/b.h"\n'},
            ("link/a.cpp", 1, "link/ lies below controller/")),
    _arrows("sysinfo knows steamvr", {"sysinfo/a.cpp": '\n\n  #  include "steamvr/b.h"\n'},
            ("sysinfo/a.cpp", 3, "sysinfo/ lies below steamvr/")),
    _arrows("through a room between them", {"pc/a.cpp": '#include "app/b.h"\n'},
            ("pc/a.cpp", 1, "pc/ lies below app/")),
    _arrows("ui knows controller", {"ui/a.cpp": '#include "base/b.h"\n#include "controller/b.h"\n'},
            ("ui/a.cpp", 2, "cmake/rooms.txt lets ui/ not use controller/: have app/ hand in")),
    _arrows("config knows its neighbour", {"config/a.h": '#include "sysinfo/b.h"\n'},
            ("config/a.h", 1, "not use sysinfo/")),
    _arrows("controller asks the PC itself", {"controller/a.cpp": '#include "pc/power.h"\n'},
            ("controller/a.cpp", 1, "not use pc/")),
    _arrows("the program knows its tests", {"ui/a.cpp": '#include "tests/support/b.h"\n'},
            ("ui/a.cpp", 1, "ui/ must not know tests/")),
    _arrows("the program knows a stand-in", {"app/a.cpp": '#include "peers/b.h"\n'},
            ("app/a.cpp", 1, "app/ must not know peers/")),
    _arrows("a path without its folder", {"link/a.cpp": '#include "b.h"\n', "link/b.h": ""},
            ("link/a.cpp", 1, 'from the root: "link/b.h"')),
    _arrows("a path that climbs", {"link/a.cpp": '#include "../base/b.h"\n'},
            ("link/a.cpp", 1, "from the root")),
    _arrows("a test's path without its folder", {"tests/link/a.cpp": '#include "b.h"\n'},
            ("tests/link/a.cpp", 1, "from the root")),
    _arrows("simpc past the seam",
            {"sysinfo/power.cpp": '#include "base/a.h"\n#include "simpc/sim_pc.h"\n'},
            ("sysinfo/power.cpp", 2,
             "only demonstration/, simpc/, tests/, peers/, bench/ may use simpc/")),
    _arrows("simpc in the seam itself", {"pc/power.h": '#include "simpc/sim_pc.h"\n'},
            ("pc/power.h", 1, "through a header of pc/")),
    _arrows("simpc in a file that says it is simulated", {"app/a_sim.cpp": '#include "simpc/b.h"\n'},
            ("app/a_sim.cpp", 1, "through a header of pc/")),
    _arrows("a folder without a row", {"cellar/a.cpp": '#include "base/b.h"\n'},
            ("cellar/a.cpp", 1, "give it a row in cmake/rooms.txt")),
    _arrows("a file without a folder", {"main.cpp": ""}, ("main.cpp", 1, "move it into a room")),
    _arrows("a header of no room", {"link/a.cpp": '#include "cellar/b.h"\n'},
            ("link/a.cpp", 1, "cellar/ is no room")),
    ("no table", "arrows", {"link/a.cpp": ""}, [(_HERE, 1, "is missing")]),
    _table("a row that goes up", "pc: base", "pc: link base", (_HERE, 13, "not link/")),
    _table("a row that names no room", "link: pc", "link: attic", (_HERE, 7, "not attic/")),
    _table("a room that uses itself", "link: pc", "link: link pc", (_HERE, 7, "not link/")),
    _table("a row that cannot be read", "demonstration: app", "demonstration: app,",
           (_HERE, 2, 'write a row as "room: room room"')),
    ("a stand-in of the seam elsewhere", "sides",
     {"app/a_sim.cpp": "", "pc/power_sim.cpp": "", "simpc/power_sim.cpp": ""},
     [("app/a_sim.cpp", 1, "lives in simpc/"), ("pc/power_sim.cpp", 1, "lives in simpc/")]),
    ("Windows elsewhere", "sides",
     {"app/a_win.cpp": "", "simpc/a_win.h": "", "pc/power_win.cpp": "", "tests/a/b_win.cpp": ""},
     [("app/a_win.cpp", 1, "lives in pc/"), ("simpc/a_win.h", 1, "lives in pc/")]),
    ("two rooms in a circle", "cycles",
     {"link/a.cpp": '#include "usb/a.h"\n', "usb/b.cpp": '\n#include "link/c.h"\n',
      "usb/a.h": "", "link/c.h": ""},
     [("usb/b.cpp", 2, "circle of rooms link -> usb -> link; offer a callback")]),
    ("three rooms in a circle", "cycles",
     {"link/a.cpp": '#include "usb/a.h"\n', "usb/b.cpp": '#include "pc/a.h"\n',
      "pc/b.cpp": '#include "link/a.h"\n', "usb/a.h": "", "pc/a.h": "", "link/a.h": ""},
     [("pc/b.cpp", 1, "circle of rooms link -> usb -> pc -> link")]),
    _picture("no picture", "# Architecture\n", ("ARCHITECTURE.md", 1, "stands between")),
    _picture("marks the wrong way round", "".join(reversed(PICTURE.splitlines(True))),
             ("ARCHITECTURE.md", 1, "stands between")),
    _picture("an arrow too few", "# A\n\n" + PICTURE.replace("    link --> pc\n", ""),
             ("ARCHITECTURE.md", 3, "run tools/rooms --write")),
    _picture("an arrow too many", PICTURE.replace("    link", "    link --> base\n    link"),
             ("ARCHITECTURE.md", 1, "run tools/rooms --write")),
]
