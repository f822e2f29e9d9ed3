"""Circles of includes, of files and of rooms."""

from .tree import Problem, folder_of


def cycles(tree):
    """no circle of includes, neither of files nor of rooms"""
    known = set(tree.cpp())
    files = {path: [(path, line, name) for line, name in tree.includes(path) if name in known]
             for path in known}
    for path, line, circle in _circles(files):
        yield Problem(path, line, "circular include " + " -> ".join(circle)
                      + "; declare the class forward or move the shared part out")
    for path, line, circle in _circles(_between_rooms(files)):
        yield Problem(path, line, "circle of rooms " + " -> ".join(circle)
                      + "; offer a callback that app/ connects, or move the shared part down")


def _between_rooms(files):
    """For each folder the first include of each other one that it knows."""
    arrows = {}
    for path in sorted(files):
        arrows.setdefault(folder_of(path), {})
        for _, line, name in files[path]:
            if folder_of(name) != folder_of(path):
                arrows[folder_of(path)].setdefault(folder_of(name), (path, line, folder_of(name)))
    return {folder: list(known.values()) for folder, known in arrows.items()}


def _circles(graph):
    """(path, line, names) of each include that closes a circle. `graph` has for
    each name the (path, line, name) of what it includes."""
    state = {}  # absent: not seen, 1: on the way, 2: done
    for start in sorted(graph):
        if start in state:
            continue
        state[start] = 1
        stack = [(start, iter(graph[start]))]
        while stack:
            current, rest = stack[-1]
            for path, line, name in rest:
                if state.get(name) == 1:
                    names = [one for one, _ in stack]
                    yield path, line, names[names.index(name):] + [name]
                elif name not in state:
                    state[name] = 1
                    stack.append((name, iter(graph[name])))
                    break
            else:
                state[current] = 2
                stack.pop()
