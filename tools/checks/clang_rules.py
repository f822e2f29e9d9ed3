"""What clang-format and clang-tidy have to say."""

import json
import os
import re
import shlex
import shutil
import subprocess
from concurrent.futures import ThreadPoolExecutor

from .tree import Problem

_FOUND = re.compile(r"(?P<path>[^\s:][^:]*):(?P<line>\d+):\d+: (?:error|warning): (?P<text>.*)")


def _problems(tree, output, folder=None):
    for line in output.splitlines():
        match = _FOUND.match(line)
        if match:
            path = os.path.relpath(os.path.join(folder or tree.root, match["path"]), tree.root)
            yield Problem(path, int(match["line"]), match["text"])


def formatting(tree):
    """clang-format leaves everything as it is"""
    files = tree.cpp()
    if not files:
        return
    program = shutil.which("clang-format")
    if not program:
        yield Problem(files[0], 1, "clang-format is missing: run tools/install-packages check")
        return
    run = subprocess.run([program, "--dry-run", "-Werror", "--style=file"] + files, cwd=tree.root,
                         capture_output=True, text=True)
    first = {}
    for problem in _problems(tree, run.stderr):
        first.setdefault(problem.path, problem.line)
    for path, line in first.items():
        yield Problem(path, line, f"not formatted: run clang-format -i {path}")
    if run.returncode and not first:
        yield Problem(".clang-format", 1, "clang-format failed: " + " ".join(run.stderr.split()))


def changed_files(tree, base):
    """What differs from `base`; without one, from where this branch left the
    main branch, or on the main branch itself from the commit before."""

    def git(*words):
        run = subprocess.run(["git", "-C", str(tree.root), *words], capture_output=True, text=True)
        return run.stdout.strip() if run.returncode == 0 else None

    if not base:
        head = git("rev-parse", "HEAD")
        for main in ("origin/main", "main"):
            left = git("merge-base", "HEAD", main)
            if left and left != head:
                base = left
                break
        else:
            base = "HEAD~1"
    names = git("diff", "--name-only", "-z", base, "--")
    if names is None:
        raise SystemExit(f"tools/check: git knows no revision {base}")
    return [name for name in names.split("\0") if name in tree.paths]


def _commands(build):
    """How each source is compiled; None where nothing was built."""
    try:
        with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
            return json.load(file)
    except OSError:
        return None


def _not_built(build):
    return Problem("CMakePresets.json", 1, f"{build} is not built: run "
                                           "cmake --preset linux && cmake --build --preset linux")


# What is not the program: others look at it in their own way.
_NOT_THE_PROGRAM = ("tests", "peers", "bench", "build")


def locks(tree, build):
    """what a lock guards is touched with it, as clang reads base/mutex.h"""
    program = shutil.which("clang++")
    if not program:
        yield Problem("base/mutex.h", 1, "clang++ is missing: run tools/install-packages test")
        return
    commands = _commands(build)
    if commands is None:
        yield _not_built(build)
        return
    sources = {}
    for command in commands:
        path = os.path.relpath(os.path.realpath(command["file"]), tree.root)
        if path in tree.paths and not path.startswith(_NOT_THE_PROGRAM):
            sources[path] = command

    def run(path):
        words = shlex.split(sources[path]["command"])
        # From the compiler on: what stands before it is a cache.
        first = next(n for n, word in enumerate(words) if re.search(r"\+\+(-\d+)?$", word))
        words = [program] + words[first + 1:]
        output = words.index("-o")
        del words[output:output + 2]
        words.remove("-c")
        return subprocess.run(words + ["-fsyntax-only", "-Wno-everything", "-Wthread-safety",
                                       "-Werror=thread-safety"],
                              cwd=sources[path]["directory"], capture_output=True, text=True)

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, result in zip(sorted(sources), pool.map(run, sorted(sources))):
            problems = [Problem(p.path, p.line, p.message)
                        for p in _problems(tree, result.stderr, sources[path]["directory"])]
            if result.returncode and not problems:
                problems = [Problem(path, 1, "clang failed: " + result.stderr[-500:])]
            yield from problems


def tidy(tree, build, base=None, everything=False):
    """clang-tidy, see .clang-tidy"""
    program = shutil.which("clang-tidy")
    if not program:
        yield Problem(".clang-tidy", 1, "clang-tidy is missing: run tools/install-packages check")
        return
    commands = _commands(build)
    if commands is None:
        yield _not_built(build)
        return
    known = {os.path.relpath(os.path.realpath(c["file"]), tree.root) for c in commands}
    sources = sorted(known & set(tree.cpp()))
    if not everything:
        changed = set(changed_files(tree, base))
        # A header is read with the sources that include it.
        sources = [path for path in sources
                   if path in changed or any(name in changed for _, name in tree.includes(path))]

    def run(path):
        return subprocess.run([program, "--quiet", "-p", build, path], cwd=tree.root,
                              capture_output=True, text=True)

    found = set()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, result in zip(sources, pool.map(run, sources)):
            problems = list(_problems(tree, result.stdout))
            if result.returncode and not problems:
                problems = [Problem(path, 1, "clang-tidy failed: " + result.stderr[-500:])]
            found.update(problems)
    yield from found
