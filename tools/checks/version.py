"""The version of the program stands in one place."""

import re

from .tree import Problem

PLACE = "CMakeLists.txt"

_VERSION = re.compile(r"^project\([^)]*?\bVERSION\s+([0-9.]+)", re.MULTILINE)


def version(tree):
    """the version in one place"""
    match = _VERSION.search(tree.text(PLACE)) if PLACE in tree.paths else None
    if not match:
        yield Problem(PLACE, 1, "the version stands in project(... VERSION ...)")
        return
    # However its numbers are put together.
    again = re.compile(rb"(?<![0-9.,])" + rb"[.,_]".join(match.group(1).encode().split(b"."))
                       + rb"(?![0-9.,_]*[0-9])")
    for path in tree.paths:
        data = (tree.root / path).read_bytes()
        for found in again.finditer(data):
            if path == PLACE and found.start() == len(tree.text(PLACE)[:match.start(1)].encode()):
                continue
            yield Problem(path, data.count(b"\n", 0, found.start()) + 1,
                          f"the version stands in {PLACE} alone: take KOLM_VERSION from CMake's "
                          "PROJECT_VERSION, or make up another one where any will do")
