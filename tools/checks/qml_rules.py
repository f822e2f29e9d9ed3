"""Rules about QML files."""

import re
import shutil
import subprocess

from .tree import Problem

LOOK = "qml/Utils.qml"
CONTROL = "qml/common/Clickable.qml"

_COLOUR_NAMES = """aliceblue antiquewhite aqua aquamarine azure beige bisque black blanchedalmond
blue blueviolet brown burlywood cadetblue chartreuse chocolate coral cornflowerblue cornsilk crimson
cyan darkblue darkcyan darkgoldenrod darkgray darkgreen darkgrey darkkhaki darkmagenta
darkolivegreen darkorange darkorchid darkred darksalmon darkseagreen darkslateblue darkslategray
darkslategrey darkturquoise darkviolet deeppink deepskyblue dimgray dimgrey dodgerblue firebrick
floralwhite forestgreen fuchsia gainsboro ghostwhite gold goldenrod gray grey green greenyellow
honeydew hotpink indianred indigo ivory khaki lavender lavenderblush lawngreen lemonchiffon
lightblue lightcoral lightcyan lightgoldenrodyellow lightgray lightgreen lightgrey lightpink
lightsalmon lightseagreen lightskyblue lightslategray lightslategrey lightsteelblue lightyellow lime
limegreen linen magenta maroon mediumaquamarine mediumblue mediumorchid mediumpurple mediumseagreen
mediumslateblue mediumspringgreen mediumturquoise mediumvioletred midnightblue mintcream mistyrose
moccasin navajowhite navy oldlace olive olivedrab orange orangered orchid palegoldenrod palegreen
paleturquoise palevioletred papayawhip peachpuff peru pink plum powderblue purple red rosybrown
royalblue saddlebrown salmon sandybrown seagreen seashell sienna silver skyblue slateblue slategray
slategrey snow springgreen steelblue tan teal thistle tomato turquoise violet wheat white whitesmoke
yellow yellowgreen""".split()

_HEX = re.compile(r"""["'](#(?:[0-9a-fA-F]{3,4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8}))["']""")
_FUNCTION = re.compile(r"\b(Qt\.(?:rgba|hsla|hsva))\s*\(")
_NAME = re.compile(r"""["'](""" + "|".join(_COLOUR_NAMES) + r""")["']""")
_COMMENT = re.compile(r"//[^\n]*|/\*.*?(?:\*/|\Z)|\"(?:[^\"\\\n]|\\.)*\"|'(?:[^'\\\n]|\\.)*'",
                      re.DOTALL)


def _without_comments(text):
    def keep(match):
        found = match.group(0)
        return "\n" * found.count("\n") if found.startswith("/") else found

    return _COMMENT.sub(keep, text)


def colours(tree):
    """one place for colours"""
    for path in tree.qml():
        if not path.startswith("qml/") or path == LOOK:
            continue
        for number, line in enumerate(_without_comments(tree.text(path)).split("\n"), 1):
            match = _HEX.search(line) or _FUNCTION.search(line)
            if not match and "color" in line.lower():
                match = _NAME.search(line)
            if match:
                yield Problem(path, number, f"{match.group(1)} is a literal colour: give it a name "
                                            f"in {LOOK} and use that")


_GUI_THREAD = re.compile(r"\b((?:Number|Property|Color|Rotation|Smoothed|Spring|Vector3d|Anchor|"
                         r"Parent|Path)Animation)\b")


def animators(tree):
    """movement by the render thread"""
    for path in tree.qml():
        if not path.startswith("qml/"):
            continue
        for number, line in enumerate(_without_comments(tree.text(path)).split("\n"), 1):
            match = _GUI_THREAD.search(line)
            if match:
                yield Problem(path, number, f"{match.group(1)} stands still while the GUI thread "
                                            "waits: use an Animator")


_PRESS = re.compile(r"\b(onPressAction|onToggleAction)\s*:(?!\s*press\(\))")


def controls(tree):
    """one place for what can be pressed"""
    for path in tree.qml():
        if not path.startswith("qml/") or path == CONTROL:
            continue
        for number, line in enumerate(_without_comments(tree.text(path)).split("\n"), 1):
            match = _PRESS.search(line)
            if match:
                yield Problem(path, number, f"{match.group(1)} outside of {CONTROL}: make it of "
                                            "that, which has keys, mouse and ring as well")


_TIMER = re.compile(r"\b(Timer)\s*\{")


def timers(tree):
    """no timer of real time in a page"""
    for path in tree.qml():
        if not path.startswith("qml/"):
            continue
        for number, line in enumerate(_without_comments(tree.text(path)).split("\n"), 1):
            if _TIMER.search(line):
                yield Problem(path, number, "Timer knows real time only: use ClockTimer of "
                                            "QtHeron.Window, which goes by the product's clock")


def qmllint(tree):
    """QML that parses"""
    files = tree.qml()
    if not files:
        return
    program = shutil.which("qmllint")
    if not program:
        yield Problem(files[0], 1, "qmllint is missing: run tools/install-packages check")
        return
    run = subprocess.run([program] + files, cwd=tree.root, capture_output=True, text=True)
    output = run.stdout + run.stderr
    found = False
    for line in output.splitlines():
        match = re.match(r"(?:Error: )?(.+?):(\d+)\s*:\s*(.+)", line)
        if match:
            found = True
            yield Problem(match.group(1), int(match.group(2)),
                          match.group(3).strip() + ": mend it, the page would not load")
    if run.returncode and not found:
        yield Problem(files[0], 1, "qmllint failed: " + " ".join(output.split()))
