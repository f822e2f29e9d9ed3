"""What clang-format and clang-tidy have to say."""

import json
import os
import re
import shutil
import subprocess
from concurrent.futures import ThreadPoolExecutor

from .tree import Problem

_FOUND = re.compile(r"(?P<path>[^\s:][^:]*):(?P<line>\d+):\d+: (?:error|warning): (?P<text>.*)")


def _problems(tree, output):
    for line in output.splitlines():
        match = _FOUND.match(line)
        if match:
            path = os.path.relpath(os.path.join(tree.root, match["path"]), tree.root)
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


def tidy(tree, build, base=None, everything=False):
    """clang-tidy, see .clang-tidy"""
    program = shutil.which("clang-tidy")
    if not program:
        yield Problem(".clang-tidy", 1, "clang-tidy is missing: run tools/install-packages check")
        return
    try:
        with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
            commands = json.load(file)
    except OSError:
        yield Problem("CMakePresets.json", 1, f"{build} is not built: run "
                                              "cmake --preset linux && cmake --build --preset linux")
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
