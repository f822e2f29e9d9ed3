"""The files that are checked, and how to read them."""

import os
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path, PurePosixPath


@dataclass(frozen=True, order=True)
class Problem:
    """One broken rule; `message` says what to do instead."""

    path: str
    line: int
    message: str

    def __str__(self):
        return f"{self.path}:{self.line}: {self.message}"


class Tree:
    """A source tree: the tracked files of a git work tree, or every file of a
    folder that is none."""

    def __init__(self, root):
        self.root = Path(root).resolve()
        self.paths = sorted(self._tracked() or self._walked())
        self._texts = {}
        self._code = {}

    def _tracked(self):
        git = ["git", "-C", str(self.root)]
        try:
            top = subprocess.run(git + ["rev-parse", "--show-toplevel"], capture_output=True)
            if top.returncode or Path(os.fsdecode(top.stdout.rstrip(b"\n"))).resolve() != self.root:
                return []
            files = subprocess.run(git + ["ls-files", "-z"], capture_output=True, check=True)
        except OSError:
            return []
        names = (os.fsdecode(name) for name in files.stdout.split(b"\0") if name)
        return [name for name in names if (self.root / name).is_file()]

    def _walked(self):
        found = []
        for folder, folders, files in os.walk(self.root):
            here = Path(folder)
            folders[:] = [f for f in folders if not f.startswith(".")
                          and (here != self.root or f != "build")]
            found += [(here / f).relative_to(self.root).as_posix() for f in files]
        return found

    def cpp(self):
        return [p for p in self.paths if p.endswith((".cpp", ".h"))]

    def qml(self):
        return [p for p in self.paths if p.endswith(".qml")]

    def text(self, path):
        if path not in self._texts:
            self._texts[path] = (self.root / path).read_text("utf-8", "replace")
        return self._texts[path]

    def code(self, path):
        """The lines of a C++ or QML file without comments and without what
        stands in literals, except in #include lines."""
        if path not in self._code:
            self._code[path] = code_only(self.text(path)).split("\n")
        return self._code[path]

    def includes(self, path):
        """(line number, name) of every #include "name"."""
        return list(_includes(self.code(path), _QUOTED_INCLUDE))

    def system_includes(self, path):
        """(line number, name) of every #include <name>."""
        return list(_includes(self.code(path), _SYSTEM_INCLUDE))


_QUOTED_INCLUDE = re.compile(r'\s*#\s*include\s+"([^"]+)"')
_SYSTEM_INCLUDE = re.compile(r"\s*#\s*include\s+<([^>]+)>")


def _includes(lines, pattern):
    for number, line in enumerate(lines, 1):
        match = pattern.match(line)
        if match:
            yield number, match.group(1)


def folder_of(path):
    """The first folder of a path, "" for a file in the root."""
    parts = PurePosixPath(path).parts
    return parts[0] if len(parts) > 1 else ""


_TOKEN = re.compile(
    r"""(?P<include>^[ \t]*\#[ \t]*include[^\n]*)
      | (?P<comment>//(?:[^\n\\]|\\.)*|/\*.*?(?:\*/|\Z))
      | (?P<raw>R"(?P<mark>[^()\\\s"]{0,16})\(.*?\)(?P=mark)")
      | (?P<number>\b[0-9][0-9a-zA-Z_.']*)
      | (?P<literal>"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)


def code_only(text):
    """Comments and the inside of literals are left out, line ends stay."""

    def keep(match):
        found = match.group(0)
        if match.lastgroup == "include":
            return re.sub(r"//.*", "", found)
        if match.lastgroup == "number":
            return found
        ends = "\n" * found.count("\n")
        return " " + ends if match.group("comment") else '""' + ends

    return _TOKEN.sub(keep, text)
