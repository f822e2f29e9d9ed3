"""One run of the program on a simulated PC, and everything that is seen of it.

    behaviour_run.py BIN SCENARIO SPEED PLACE OWN_NETWORK STEP...

Prints the exit code, and where the program looked for the cloud.
"""
import contextlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import threading
import time

import own_network

SEEN_WITHIN = 40  # seconds
ENDS_WITHIN = 120  # seconds
PROGRAM = 'KOLM_Streaming_Assistant'


class Cloud:
    """The stand-in cloud with the answers that the scenario wants, or nobody."""

    def __init__(self, bin_folder, scenario, place):
        self.process = None
        self.host = '127.0.0.1:1'  # nobody
        answers = subprocess.run([bin_folder / 'simpc-seed', scenario, '--cloud'], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout.strip()
        if answers == 'absent':
            return
        table = place / 'work/compare.json'
        options = ['--table', table] if table.exists() else []
        self.process = subprocess.Popen(
            [bin_folder / 'cloud-sim', '--port', '0', '--store', place / 'cloud',
             '--answers', answers, *options], stdout=subprocess.PIPE, text=True)
        address = self.process.stdout.readline().strip()  # the first line says it
        self.host = '127.0.0.1:' + address.rsplit(':', 1)[1]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process:
            self.process.kill()
            self.process.wait()
            self.process.stdout.close()


def environment(scenario, speed, place, cloud):
    """Whoever runs this: the program speaks English and logs in UTF-8."""
    inherited = {name: value for name, value in os.environ.items()
                 if not name.startswith(('LC_', 'LANG', 'XDG_', 'SIMPC_', 'QT_', 'QSG_', 'QML',
                                         'ADB_SIM_', 'ANDROID_'))}
    inherited.update({
        'HOME': str(place / 'home'),
        'XDG_DATA_HOME': str(place / 'home/.local/share'),
        'XDG_RUNTIME_DIR': str(place / 'run'),
        'LANG': 'en_US.UTF-8', 'LC_CTYPE': 'C.UTF-8', 'TZ': 'UTC',
        'QT_QPA_PLATFORM': 'offscreen', 'QT_QUICK_BACKEND': 'software',
        'SIMPC_SCENARIO': scenario, 'SIMPC_SPEED': str(speed), 'SIMPC_DIRECTED': '1',
        'SIMPC_CLOUD_HOST': cloud.host,
        'SIMPC_FACE': str(place / 'face'),
        'SIMPC_JOURNAL': str(place / 'journal'),
        'SIMPC_SERVER_LOG': str(place / 'server.log'),
    })
    return inherited


class Person:
    """Does what a plan says: `seen TEXT` waits for that line of SIMPC_FACE, from
    where the last one was; everything else is told to the program."""

    def __init__(self, process, place):
        self.process = process
        self.face = place / 'face'
        self.place = 0

    def do(self, plan):
        for step in plan:
            verb, _, text = step.partition(' ')
            if verb == 'seen':
                self.await_line(text)
            elif self.process.poll() is None:
                with contextlib.suppress(BrokenPipeError):  # it has just ended
                    self.process.stdin.write((step + '\n').encode())
                    self.process.stdin.flush()

    def await_line(self, text):
        end = time.monotonic() + SEEN_WITHIN
        wanted = text.encode('utf-8')
        while time.monotonic() < end and self.process.poll() is None:
            # As bytes: it is being written, and may end in the middle of a letter.
            seen = self.face.read_bytes() if self.face.exists() else b''
            found = seen.find(wanted, self.place)
            if found >= 0:
                self.place = found + len(wanted)
                return
            time.sleep(0.02)


def run(bin_folder, scenario, plan, speed, place):
    """Lets the program live through the plan in `place`, and closes it; its exit
    code, and where it looked for the cloud."""
    shutil.rmtree(place, ignore_errors=True)
    for folder in ('home', 'work', 'run'):
        (place / folder).mkdir(parents=True, mode=0o700)
    subprocess.run([bin_folder / 'simpc-seed', scenario, '--home', place / 'home',
                    '--work', place / 'work'], check=True)
    for folder in ('home', 'work'):
        shutil.copytree(place / folder, place / 'before' / folder)
    with Cloud(bin_folder, scenario, place) as cloud, \
            open(place / 'stdout', 'wb') as out, open(place / 'stderr', 'wb') as err:
        process = subprocess.Popen([bin_folder / PROGRAM], cwd=place / 'work',
                                   env=environment(scenario, speed, place, cloud),
                                   stdin=subprocess.PIPE, stdout=out, stderr=err)
        try:
            Person(process, place).await_line('\n')
            print('up', flush=True)
            Person(process, place).do([*plan, 'close'])
            code = process.wait(ENDS_WITHIN)
        except subprocess.TimeoutExpired:
            code = 'none, it does not end'
        finally:
            process.kill()
            process.wait()
            with contextlib.suppress(BrokenPipeError):
                process.stdin.close()
        return code, cloud.host


def read(path):
    path = pathlib.Path(path)
    return path.read_bytes().decode('utf-8') if path.exists() else None


def main(bin_folder, scenario, speed, place, network, *plan):
    if network == 'own':
        own_network.enter()
    json.dump(run(pathlib.Path(bin_folder), scenario, plan, speed, pathlib.Path(place)),
              sys.stdout)


_starting = threading.Lock()


def in_a_process(bin_folder, scenario, plan, speed, place, network):
    """As run(), in a process of its own and, if `network` is "own", a network. One
    program starts at a time: that is work, and the others would be late by it."""
    with _starting:
        child = subprocess.Popen([sys.executable, __file__, bin_folder, scenario, str(speed),
                                  place, network, *plan], stdout=subprocess.PIPE, text=True)
        child.stdout.readline()
    with child:
        said = child.stdout.read()
    return json.loads(said)


if __name__ == '__main__':
    main(*sys.argv[1:])
