"""A Windows PC for one test: a fresh copy of one Wine prefix, and what is seen of it
from outside.
"""
import os
import pathlib
import re
import shutil
import struct
import subprocess
import time

LIMIT = 60  # seconds, for whatever is waited for
PROGRAM = 'KOLM_Streaming_Assistant.exe'


def wait_until(condition, what, limit=LIMIT):
    end = time.monotonic() + limit
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f'waited in vain: {what}')
        time.sleep(0.1)


def _log_option(log):
    return '/LOG=Z:' + str(log).replace('/', '\\')


def _unquoted(option):
    """The option as NSIS wants it: without quotation marks, whatever is in it."""
    return option.split(' ')


def working_folder(shortcut):
    """The one that the bytes of a shortcut name."""
    flags = struct.unpack_from('<I', shortcut, 0x14)[0]
    place = 0x4c
    if flags & 1:  # what is behind it, for the shell
        place += 2 + struct.unpack_from('<H', shortcut, place)[0]
    if flags & 2:  # where it lies
        place += struct.unpack_from('<I', shortcut, place)[0]
    for flag in (4, 8, 16):  # description, relative path, working folder
        if flags & flag:
            length = struct.unpack_from('<H', shortcut, place)[0]
            text = shortcut[place + 2:place + 2 + 2 * length].decode('utf-16-le').rstrip('\0')
            place += 2 + 2 * length
    return text if flags & 16 else ''


class Base:
    """The prefix that all others are copies of, and the screen of all."""

    def __init__(self, folder, session):
        self.folder = pathlib.Path(folder)
        self._session = session
        environment = {**os.environ, 'PROFILES': 'C:\\用 户', 'DIRECT3D': 'no3d'}
        subprocess.run([session, 'up', folder], check=True, env=environment)
        said = subprocess.run(
            ['bash', '-c', '. "$1"; wineserver -k; wineserver -w; wineserver -p; '
             'wine cmd /c exit; wineserver -k; wineserver -w; env -0', 'bash',
             self.folder / 'environment'],
            check=True, capture_output=True).stdout
        self.environment = dict(entry.split('=', 1) for entry in
                                said.decode('utf-8', 'surrogateescape').split('\0') if entry)

    def close(self):
        subprocess.run([self._session, 'down', self.folder], check=True)


class Pc:
    def __init__(self, base, folder):
        self.folder = pathlib.Path(folder)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.prefix = self.folder / 'prefix'
        subprocess.run(['cp', '-a', base.folder / 'prefix', self.prefix], check=True)
        self.environment = {**base.environment, 'WINEPREFIX': str(self.prefix),
                            'QT_QUICK_BACKEND': 'software', 'WINEPATH': ''}
        self.drive = self.prefix / 'drive_c'
        self._started = []
        self.up()

    def up(self):
        """Starts the system, as after it was switched on."""
        # The one before may take a moment to be gone.
        wait_until(lambda: subprocess.run(['wineserver', '-p'], check=False, env=self.environment,
                                          stdout=subprocess.DEVNULL,
                                          stderr=subprocess.DEVNULL).returncode == 0,
                   'the system')
        # Whoever looks for windows first starts the desktop: no test's program shall.
        self.run('taskkill', '/im', 'nothing.exe')

    def down(self):
        """Ends everything at once; the registry is on the disk then."""
        subprocess.run(['wineserver', '-k'], env=self.environment, check=False)
        subprocess.run(['wineserver', '-w'], env=self.environment, check=True)
        for process in self._started:
            process.wait()
        self._started.clear()

    def start(self, *command, **options):
        process = subprocess.Popen(['wine', *command], env=self.environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **options)
        self._started.append(process)
        return process

    def run(self, *command, **options):
        """The exit code of a Windows program."""
        process = self.start(*command, **options)
        return process.wait(LIMIT)

    def install(self, installer, *more, folder=None, **options):
        """Installs silently; the exit code, and what was said."""
        log = self.folder / 'said.txt'
        log.unlink(missing_ok=True)
        where = _unquoted(f'/D={folder}') if folder else []
        code = self.run(installer, '/S', _log_option(log), *more, *where, **options)
        return code, self._said(log)

    def uninstall(self, folder, *more):
        """Uninstalls silently; the exit code, and what was said."""
        log = self.folder / 'said.txt'
        log.unlink(missing_ok=True)
        # As a copy of itself, which it waits for: it cannot remove what runs.
        tool = self.folder / 'uninstall.exe'
        shutil.copy(self.path(folder) / 'uninstall.exe', tool)
        code = self.run(tool, '/S', _log_option(log), *more, *_unquoted(f'_?={folder}'))
        return code, self._said(log)

    @staticmethod
    def _said(log):
        return log.read_text('utf-16').strip() if log.exists() else ''

    def path(self, windows_path):
        """Where a file of drive C: is."""
        return self.drive / windows_path[3:].replace('\\', '/')

    # --- the program -------------------------------------------------------------

    def data(self):
        """Where the program keeps its files."""
        user, = (p for p in (self.drive / '用 户').iterdir()
                 if p.name not in ('Public', 'Default'))
        return user / 'AppData/Local/KOLM/KOLM_Streaming_Assistant'

    def log(self):
        return ''.join(path.read_text('utf-8', 'replace')
                       for path in sorted(self.data().glob('*-*-*.txt')))

    def runs(self):
        """Whether the program does, in this prefix."""
        prefix = f'WINEPREFIX={self.prefix}\0'.encode()
        for process in pathlib.Path('/proc').glob('[0-9]*'):
            try:
                if (PROGRAM.encode() in (process / 'cmdline').read_bytes()
                        and prefix in (process / 'environ').read_bytes()):
                    return True
            except OSError:
                pass  # it has ended, or is another user's
        return False

    def shows(self, *search):
        """Whether there is such a window, in the words of xdotool."""
        try:
            said = subprocess.run(['xdotool', 'search', '--onlyvisible', *search],
                                  env=self.environment, capture_output=True, check=False,
                                  timeout=5).stdout
        except subprocess.TimeoutExpired:
            return False  # it may wait for ever when a window goes just then
        return bool(said.strip())

    def has_window(self):
        return self.shows('--class', PROGRAM.lower())

    def press_return(self, name):
        """In the window of that name that came last."""
        try:
            windows = subprocess.run(['xdotool', 'search', '--onlyvisible', '--name', name],
                                     env=self.environment, capture_output=True, check=False,
                                     timeout=5).stdout.split()
            if windows:
                subprocess.run(['xdotool', 'key', '--window', windows[-1], 'Return'],
                               env=self.environment, capture_output=True, check=False, timeout=5)
        except subprocess.TimeoutExpired:
            pass  # the window went just then

    def start_from_shortcut(self):
        """As a click in the Start menu. Wine follows no shortcut that NSIS has made."""
        shortcut, = (self.drive / 'ProgramData/Microsoft/Windows/Start Menu/Programs').glob('*.lnk')
        folder = working_folder(shortcut.read_bytes())
        self.start(f'{folder}\\{PROGRAM}', cwd=self.path(folder))
        wait_until(self.has_window, 'the window of the program')

    def close_program(self):
        """As the task bar asks for it."""
        self.run('taskkill', '/im', PROGRAM)
        wait_until(lambda: not self.runs(), 'the end of the program')

    # --- comparisons -------------------------------------------------------------

    def files(self):
        """All files of the drive that are not Windows' own, and their contents."""
        found = {}
        for path in self.drive.rglob('*'):
            inner = path.relative_to(self.drive)
            if inner.parts[0] != 'windows' and not path.is_symlink():
                found[str(inner)] = path.read_bytes() if path.is_file() else None
        return found

    def registry(self):
        """Every value of the registry, after down(), but for what every Windows has already
        and Wine makes when it is asked for: devices, and stores of certificates."""
        values = {}
        for name in ('system.reg', 'user.reg', 'userdef.reg'):
            key = ''
            for line in (self.prefix / name).read_text('utf-8', 'replace').splitlines():
                if line.startswith('['):
                    key = name + ' ' + re.sub(r'\] \d+$', ']', line)
                    values[key] = ''
                elif line.startswith(('"', '@')):
                    values[key] += line + '\n'
        return {key: value for key, value in values.items()
                if '[System\\\\CurrentControlSet\\\\' not in key and '\\SystemCertificates' not in key}
