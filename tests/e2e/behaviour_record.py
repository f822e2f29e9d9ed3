"""Turns what was seen of a run into a text that is the same for every run.

What depends on chance or on how busy the machine is, is made the same here and
nowhere else, and never left out:

1. Times, folders, the port of the cloud, the boundary between parts of a form and the
   program's version become words: they are of this run, or of this build.
2. Each thread has a section of its own, in its own order: how threads take
   turns is chance. So have the checks, whose facts come from a thread, and what was
   written into OpenVR's paths file, which three threads write.
3. What comes to the GUI thread from elsewhere, whenever it likes (ANSWERS in
   face_turns.py: cloud, network, adb, the launch of Steam), has a section for each
   of them, in its own order. The rest is in order among itself.
4. How often the program looks depends on how long it lives, and on how late it
   notices: what is exactly like what was before is counted, as "(x 4)". So are
   questions with their answers, of the control link and of adb. Counts may differ
   by half (differences.py). That adb is asked while it is at work, and that it is
   ended, which only happens if it runs, is counted, too.
5. Numbers that only count such looks are cut short: "switch: 3" to "2...", the last
   digit of the lines from the streaming server to "N". Of an installer's progress
   the end is noted: it comes in as many pieces as the network likes.
6. The requests of one moment reach the cloud over several connections: they are
   sorted.
7. In some lives (lives.races()) a cable, a real adb or a delay of 5 or 10 s meets the look
   every 5 s, and either may be first. There each property has a history of its own;
   signals of the stages, the start of SteamVR and the looks that bring no news (of
   which there may be one more or less between any two that do) have sections of their
   own; adb's reports do not say what the link is like meanwhile.
8. Where it still went this way or that when it was recorded, a section stands there
   more than once: one of them has to be met.
"""
import difflib
import json
import re

from behaviour_run import read
from face_turns import GUI, Face
from lives import races

DATA = 'home/.local/share/KOLM/KOLM_Streaming_Assistant'
FILES = ['work/session.json', 'work/compare.json', DATA + '/set.json', DATA + '/setting.inf',
         DATA + '/feedback.json', 'home/AppData/Local/openvr/openvrpaths.vrpath']

PROGRESS = re.compile(r'orbupdate\.processStatus')
PROPERTY = re.compile(r'  orb\w*\.')
STAGES = re.compile(r'orbstages\.')
CHECKS = re.compile(r'(  )?orbchecks\.')
ADB_BUSY = 'log Warning: QProcess::start: Process is already running'
START = re.compile(r'log \w+: Successfully set external_drivers|orb\.showToast\("正在重启，请等待')
NO_NEWS = re.compile(r'log Info: sendWired|orb\.(vrIsConnectChange|showVrList|handleEvent)\(|'
                     r'log Warning: \[steam\] hasLaunchSteamVR:false; switch: 2')
LIST_SHOWN = re.compile(r'orb\.showVrList\(\w+,')

LINK = 'thread QThread'
# What begins a question with its answers.
LINK_TURNS = re.compile(r'log \w+: (m_hmd_info_back vector size|"DeviceConnectBack")')
LINK_COUNT = re.compile(r'(log \w+: "DeviceConnectBack" "\w+") \d$')
PORT_TURNS = re.compile(r'log \w+: forward tcp')
END_OF_ADB = 'program: terminate adb.exe'
SERVER_TURNS = re.compile(r'< (HMDInfoRequest|WiredConnect)')
ECHO_TURNS = re.compile(r'Send data exchange command response: (HMDInfoRequest|WiredConnect)')


class Seen:
    """What a run has left in `place`, without what is of this run only."""

    def __init__(self, place, bin_folder, host):
        self.place = place
        self.texts = [(str(place / 'work'), 'WORK'), (str(place / 'home'), 'HOME'),
                      (str(bin_folder), 'PROGRAM'), (host, 'CLOUD')]
        self.patterns = [
            (re.compile(r'\b\d+ms\b'), 'TIMEms'),
            (re.compile(r'(hasLaunchSteamVR:\w+; switch: )\d{2,}\b|'
                        r'(hasLaunchSteamVR:\w+; switch: )[2-9]'), r'\1\g<2>2...'),
            (re.compile(r'("(?:timestamp|duration)":)\d+'), r'\1"TIME"'),
            (re.compile(r'\d{4}-\d\d-\d\d \d\d:\d\d:\d\d'), 'TIME'),
            (re.compile(r'("streamingAssistantVersion": ?")[\d.]+'), r'\1VERSION'),
            (re.compile(r'boundary_\.oOo\._[\w/+=]+'), 'BOUNDARY'),
        ]

    def words(self, text):
        for what, word in self.texts:
            text = text.replace(what, word)
        for pattern, word in self.patterns:
            text = pattern.sub(word, text)
        return text

    def read(self, name):
        """The text of a file; None when there is none."""
        text = read(self.place / name)
        return text if text is None else self.words(text)

    def lines(self, name):
        return (self.read(name) or '').split('\n')[:-1]


def counted(turns):
    """Lines of turns (lists of lines), of which equal neighbours are counted."""
    lines = []
    last, count = None, 0
    for turn in [*turns, None]:
        if turn == last:
            count += 1
            continue
        if last:
            lines += last
            if count > 1:
                lines[-1] += f'   (x {count})'
        last, count = turn, 1
    return lines


def split_before(lines, begins):
    """Turns that begin with a line that matches."""
    turns = [[]]
    for line in lines:
        if begins.match(line) and turns[-1]:
            turns.append([])
        turns[-1].append(line)
    return [turn for turn in turns if turn]


def joined(turns):
    return [line for turn in turns for line in turn]


LOG_END = re.compile(r'\r\n(?=\[\w+:\d)')  # a message may hold one as well
LOG_LINE = re.compile(r'\[(\w+):\d\d:\d\d:\d\d\.\d{3}  "\(0\)"\]:(.*)', re.DOTALL)


def log_lines(text):
    """The lines of the log file as SIMPC_FACE has them."""
    if not text.endswith('\r\n'):
        return ['the log does not end with a line end']
    lines = []
    for line in LOG_END.split(text[:-2]):
        match = LOG_LINE.fullmatch(line)
        said = f'log {match[1]}: {match[2]}' if match else 'no log line: ' + line
        lines.append(said.replace('\\', '\\\\').replace('\r', '\\r').replace('\n', '\\n'))
    return lines


def log_sections(seen, face):
    """The log before the record began; and that both are the same from then on."""
    lines = []
    for path in sorted((seen.place / DATA).glob('????-??-??.txt')):
        lines += log_lines(seen.read(path))
    begin = len(lines) - len(face.logged)
    early, late = lines[:begin], lines[begin:]
    sections = {'log before the record': early}
    # Two threads may come to the file in the other order.
    only_log, only_face = list(late), []
    for line in face.logged:
        if line in only_log:
            only_log.remove(line)
        else:
            only_face.append(line)
    sections['log file against what was logged'] = (
        [f'only in the log file: {line}' for line in only_log] +
        [f'not in the log file: {line}' for line in only_face] or ['the same lines'])
    rest = iter(late)
    if not all(line in rest for line in face.logged_by_gui):
        sections['log file against what was logged'] += ['not in the order of the GUI thread']
    return sections


def batch(body):
    """A list of usage events, one a line; of anything else, its lines."""
    try:
        events = json.loads(body)
    except ValueError:
        events = None
    if not isinstance(events, list):
        return body.replace('\r', '\\r').split('\n')
    return [json.dumps(event, ensure_ascii=False, separators=(',', ':')) for event in events]


def cloud_requests(seen):
    requests = []
    for path in sorted((seen.place / 'cloud').glob('*.head')):
        body = path.with_suffix('.body')
        length = f'Content-Length: {body.stat().st_size if body.exists() else 0}'
        head = seen.read(path).replace('\r', '').rstrip('\n').split('\n')
        head = [head[0], *sorted(line.replace(length, 'Content-Length: as it is')
                                 for line in head[1:])]
        requests.append(head + ['  ' + line for line in batch(seen.read(body) or '') if line])
    # The first ones leave in the same moment, the last one at the end.
    return sorted(requests[:-1]) + requests[-1:]


def change(before, after):
    """What became of a file; None is one that is not there."""
    if after == before:
        return ['as it was' if after is not None else 'there is none']
    if after is None:
        return ['it is gone']
    if before is None:
        return ['it is new', *after.split('\n')]
    return list(difflib.unified_diff(before.split('\n'), after.split('\n'), n=1, lineterm=''))[2:]


def files_left(seen):
    for name in FILES:
        yield ('file ' + name.rsplit('/', 1)[1],
               change(seen.read('before/' + name), seen.read(name)))
    others = []
    for path in sorted(seen.place.rglob('*')):
        name = str(path.relative_to(seen.place))
        if path.is_file() and name.startswith(('home/', 'work/')) and name not in FILES:
            others.append(re.sub(r'\d{4}-\d\d-\d\d', 'DAY', name))
    yield 'other files', others


def taken(turns, pattern):
    """Takes what matches out of the turns."""
    for turn in turns:
        found = [line for line in turn if pattern.match(line)]
        turn[:] = [line for line in turn if not pattern.match(line)]
        yield found


def histories(turns):
    """Takes what properties became out of the turns; a line for each property."""
    became = {}
    for line in joined(taken(turns, PROPERTY)):
        name, _, value = line.strip().partition(' = ')
        became.setdefault(name, []).append(value)
    return [f'{name}: ' + ' > '.join(values) for name, values in sorted(became.items())]


def take_apart(face):
    """The turns of races, each kind for itself."""
    sections = face.sections
    looks, quiet, starts = [], [], []
    stages = list(taken(face.turns, STAGES))
    for turn in sections.pop(GUI, []):
        if START.match(turn[0] if turn else ''):
            starts.append(turn)
        else:
            (quiet if all(NO_NEWS.match(line) for line in turn) else looks).append(turn)
    questions, reports = [], []
    for turn in sections.pop('adb', []):
        turn = [LIST_SHOWN.sub('orb.showVrList(?,', line) for line in turn]
        (reports if any(not line.startswith('log ') for line in turn) else questions).append(turn)
    sections.update({GUI + ', looks': looks, GUI + ', looks without news': sorted(quiet),
                     GUI + ', stages': stages, GUI + ', start of SteamVR': starts,
                     'adb, questions': questions, 'adb, reports': reports})
    for title, turns in sections.items():
        sections[title] = [turn for turn in turns if turn]


def counted_section(title, turns):
    if title == LINK:
        turns = split_before([LINK_COUNT.sub(r'\1 N', line) for line in joined(turns)], LINK_TURNS)
    elif title == 'ports for adb':
        turns = split_before(joined(turns), PORT_TURNS)
    elif title == 'answers of the cloud':
        lines = joined(turns)
        turns = [[line] for line, after in zip(lines, [*lines[1:], ''])
                 if not (PROGRESS.match(line) and PROGRESS.match(after))]
    return counted(turns)


def sections(name, seen, code):
    """The sections of a life's record, in order: (title, lines)."""
    face = Face(seen.read('face') or '')
    yield 'end', [f'exit code {code}', 'the record of the face is ' +
                  ('whole' if face.complete else 'broken off')]
    happened = [line[10:] for line in seen.lines('journal')]  # without the time
    yield 'journal', [line for line in happened if line != END_OF_ADB]
    yield 'journal, adb', counted([[line] for line in happened if line == END_OF_ADB])
    yield from log_sections(seen, face).items()
    busy = [[line] for turns in face.sections.values() for turn in turns for line in turn
            if line == ADB_BUSY]
    yield 'adb is still at work', counted(busy)
    if races(name):
        yield 'histories', histories(face.turns)
        take_apart(face)
    yield 'checks', joined(taken(face.turns, CHECKS))
    for title, turns in sorted(face.sections.items()):
        turns = [[line for line in turn if line != ADB_BUSY] for turn in turns]
        yield title, counted_section(title, [turn for turn in turns if turn])
    echo = seen.lines('stdout')
    directed = [line for line in echo if line.startswith('directed: ')]
    yield 'standard output', counted(split_before(
        [line for line in echo if line not in directed], ECHO_TURNS))
    yield 'what it was told', directed
    yield 'standard error', seen.lines('stderr')
    yield 'streaming server', counted(split_before(seen.lines('server.log'), SERVER_TURNS))
    yield 'cloud', joined(cloud_requests(seen))
    yield from files_left(seen)
