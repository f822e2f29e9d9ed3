"""Reads SIMPC_FACE: which thread did what, and on the GUI thread, in which turn.

A turn is what the GUI thread does for one event. What it holds is in strict order.
"""
import re

GUI = 'GUI thread'
PATHS = 'OpenVR\'s paths file is written'
PATHS_FILE = 'openvrpaths.vrpath'

# What comes from elsewhere, whenever it likes: section of its own -> what is in
# such a turn.
ANSWERS = {
    'answers of the cloud': re.compile(
        r'(  )?orbupdate\.|(made|wrote) compare\.json|log \w+: (start update|Download of|'
        r'json parseError|check version|Request was|down compare|https://)'),
    'answer of the network': re.compile(r'log \w+: powershellcmd res'),
    'ports for adb': re.compile(r'log \w+: forward (tcp|list)$'),
    'adb': re.compile(r'log \w+: (adb |use \w+ adb|QProcess::)|'
                      r'orb\.hasEnumdevicesChange|orb\.showToast\("设备连接失败'),
    'toasts of the launch': re.compile(r'orb\.showToast\("(未找到Steam安装路径|启动Steam失败)'),
}


def section_of(turn):
    """Whose answer a turn of the GUI thread is about, if any's."""
    for section, pattern in ANSWERS.items():
        if any(pattern.match(line) for line in turn):
            return section
    return GUI


class Face:
    """`sections`: title -> turns, which are lists of lines; `turns`: those of the GUI
    thread, as time went by; `logged`: the lines of the log, `logged_by_gui` those of
    the GUI thread; `complete`: whether the program has ended in good order."""

    def __init__(self, text):
        self.logged = []
        self.logged_by_gui = []
        self.sections = {}
        self.complete = False
        self._turns = {}  # when it began -> lines
        self._idle = 0  # the last turn
        self._file = GUI
        for line in text.split('\n')[:-1]:
            _, number, who, what = line.split('\t', 3)
            self.complete = who == 'end'
            if what.startswith('log '):
                self.logged.append(what)
                if who == 'gui':
                    self.logged_by_gui.append(what)
            if who == 'gui':
                self._turn(int(number)).append(what)
            elif who == 'file':
                self._written(int(number), what)
            elif who != 'end':
                self.sections.setdefault('thread ' + who, []).append([what])
        self.turns = [turn for _, turn in sorted(self._turns.items())]
        for turn in self.turns:
            self.sections.setdefault(section_of(turn), []).append(turn)

    def _turn(self, number):
        # Between turns nothing has a number; it comes after all that was before.
        self._idle = max(self._idle, number)
        return self._turns.setdefault(number or self._idle + 0.5, [])

    def _written(self, number, what):
        if not what.startswith('  '):  # else it goes on
            section = section_of([what])
            self._file = PATHS if PATHS_FILE in what else section
        if self._file != GUI:
            if what.startswith('  '):
                self.sections[self._file][-1].append(what)
            else:
                self.sections.setdefault(self._file, []).append([what])
        else:
            # The end of a turn is written down with the beginning of the next.
            self._turn(number if number in self._turns else 0).append(what)
