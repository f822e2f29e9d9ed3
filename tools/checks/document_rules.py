"""Rules that hold documents and code together."""

import re
from pathlib import PurePosixPath

from .tree import Problem, folder_of

# Where every variable has its row.
VARIABLES = "demonstration/README.md"

_TEXTS = {".cpp", ".h", ".in", ".json", ".md", ".py", ".qml", ".txt", ".cmake", ""}
_NAME = re.compile(r"\bSIMPC_[A-Z]+(?:_[A-Z]+)*\b")
_ROW = re.compile(r"\| `(SIMPC_[A-Z_]+)` \|")
_LITERAL = re.compile(r'"(SIMPC_[A-Z_]+)"')


def variables(tree):
    """every SIMPC_ variable has its row, and every row its variable"""
    rows = {}
    if VARIABLES in tree.paths:
        for number, line in enumerate(tree.text(VARIABLES).split("\n"), 1):
            match = _ROW.match(line)
            if match and match.group(1) in rows:
                yield Problem(VARIABLES, number, f"{match.group(1)} has a row already, in line "
                                                 f"{rows[match.group(1)]}")
            elif match:
                rows[match.group(1)] = number

    read = set()
    for path in tree.paths:
        if PurePosixPath(path).suffix not in _TEXTS:
            continue
        if path.endswith((".cpp", ".h")) and folder_of(path) != "tests":
            read.update(_LITERAL.findall(tree.text(path)))
        for number, line in enumerate(tree.text(path).split("\n"), 1):
            for name in _NAME.findall(line):
                if name not in rows:
                    yield Problem(path, number, f"{name} is told nowhere: give it a row in "
                                                f"{VARIABLES}, or call it by a name of that table")
    for name in rows.keys() - read:
        yield Problem(VARIABLES, rows[name], f"nothing reads {name}: take its row away, or name it "
                                             "where it is read")
