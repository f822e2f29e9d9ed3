"""The picture of the rooms in ARCHITECTURE.md."""

from .rooms import Rooms
from .tree import Problem, folder_of

PAGE = "ARCHITECTURE.md"
BEGIN = "<!-- tools/rooms draws this -->"
END = "<!-- up to here -->"

# Every room may use it: its arrows would hide the others.
LEFT_OUT = "base"


def draw(tree):
    """The arrows between the rooms, taken from the includes, as a Mermaid graph."""
    rooms = list(Rooms(tree).may_use)
    known = {(folder_of(path), folder_of(name)) for path in tree.cpp()
             for _, name in tree.includes(path)}
    arrows = [f"    {own} --> {other}" for own in rooms for other in rooms
              if own != other and other != LEFT_OUT and (own, other) in known]
    return "\n".join(["```mermaid", "graph TD"] + arrows + ["```"])


def place(text):
    """Where the picture stands in the page: from, to. None without the marks."""
    start, end = text.find(BEGIN), text.find(END)
    return (start + len(BEGIN), end) if 0 <= start < end else None


def put(tree):
    """The text of the page with the current picture."""
    text = tree.text(PAGE)
    start, end = place(text)
    return f"{text[:start]}\n{draw(tree)}\n{text[end:]}"


def picture(tree):
    """the rooms in ARCHITECTURE.md as they are"""
    if PAGE not in tree.paths or not place(tree.text(PAGE)):
        yield Problem(PAGE, 1, f'the picture of the rooms stands between "{BEGIN}" and "{END}"')
        return
    if put(tree) != tree.text(PAGE):
        line = tree.text(PAGE)[:place(tree.text(PAGE))[0]].count("\n") + 1
        yield Problem(PAGE, line, "the picture of the rooms is an old one: run tools/rooms --write")
