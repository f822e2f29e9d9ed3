"""Rules about the rooms: who may know whom, and what lives where."""

import re

from .tree import Problem, folder_of

TABLE = "cmake/rooms.txt"

# Folders that are built upon the rooms; no room knows of them. They may use all.
ON_TOP = ["tests", "peers", "bench", "tools", "packaging"]

_ROW = re.compile(r"([a-z]+):((?: [a-z]+)*)")


class Rooms:
    """The table: for each room, from the top down, the rooms that it may use."""

    def __init__(self, tree):
        self.may_use = {}
        self.problems = []
        if TABLE not in tree.paths:
            self.problems.append(Problem(TABLE, 1, "the table of the rooms is missing"))
            return
        for number, line in reversed(list(enumerate(tree.text(TABLE).splitlines(), 1))):
            if line and not line.startswith("#"):
                self._read(number, line)
        self.may_use = dict(reversed(self.may_use.items()))

    def _read(self, number, line):
        match = _ROW.fullmatch(line)
        if not match:
            self.problems.append(Problem(TABLE, number, 'write a row as "room: room room"'))
            return
        room, used = match.group(1), match.group(2).split()
        self.problems += [
            Problem(TABLE, number, f"{room}/ may only use rooms that stand further down, not "
                                   f"{other}/")
            for other in used if other not in self.may_use]
        self.may_use[room] = used

    def allows(self, own, other):
        return own == other or other in self.may_use[own]

    def lies_below(self, own, other):
        """Whether `other` uses `own`, perhaps through rooms between them."""
        return any(room == own or self.lies_below(own, room) for room in self.may_use[other])


def arrows(tree):
    """no include that cmake/rooms.txt does not allow"""
    rooms = Rooms(tree)
    if rooms.problems:
        yield from rooms.problems
        return
    for path in tree.cpp():
        own = folder_of(path)
        if own not in rooms.may_use and own not in ON_TOP:
            yield Problem(path, 1, f"{own}/ is no room: give it a row in {TABLE}, or move the "
                                   "file into one that has" if own else "move it into a room")
            continue
        for line, name in tree.includes(path):
            message = _wrong_way(rooms, own, name)
            if message:
                yield Problem(path, line, message)


def _wrong_way(rooms, own, name):
    other = folder_of(name)
    if not other:
        return "" if name.endswith(".moc") else f'write the path from the root: "{own}/{name}"'
    if other.startswith("."):
        return f'write the path from the root instead of "{name}"'
    if own in ON_TOP:
        return ""
    if other in ON_TOP:
        return (f"{own}/ must not know {other}/; move what both need into a folder that both "
                "may use")
    if other not in rooms.may_use:
        return f"{other}/ is no room: give it a row in {TABLE}, or include a room's header"
    if rooms.allows(own, other):
        return ""
    if other == "simpc":
        users = [room for room in rooms.may_use if rooms.allows(room, "simpc")]
        return (f"only {', '.join(f'{user}/' for user in users + ['tests', 'peers', 'bench'])} "
                "may use simpc/; ask the PC through a header of pc/")
    if rooms.lies_below(own, other):
        return (f"{own}/ lies below {other}/; offer a callback that app/ connects, or move the "
                "shared part down")
    return (f"{TABLE} lets {own}/ not use {other}/: have app/ hand in what {own}/ needs of it, "
            "or move the shared part into a room that both may use")


# Where the two sides of the seam live, and what has sides of its own.
_SIDES = {"sim": "simpc", "win": "pc"}
_OWN_SIDES = ["tests", "peers"]
_SIDE = re.compile(r"_(sim|win)\.(?:cpp|h)")


def sides(tree):
    """both sides of the seam in their rooms"""
    for path in tree.cpp():
        match = _SIDE.search(path)
        if not match or folder_of(path) in _OWN_SIDES + [_SIDES[match.group(1)]]:
            continue
        room = _SIDES[match.group(1)]
        yield Problem(path, 1, f"what is named _{match.group(1)} lives in {room}/, behind a header "
                               "of pc/: move it there, or give it another name if it asks the PC "
                               "nothing")
