"""The installer and the uninstaller, on a PC of its own for each test.

    test_installer.py INSTALLERS SESSION WORK [unittest options]

INSTALLERS is what make_installers.py has made, SESSION is tests/win/session.
"""
import os
import pathlib
import resource
import shutil
import signal
import subprocess
import sys
import time
import unittest

from make_installers import INSTALLER
from pc import Base, Pc, PROGRAM, wait_until

DEFAULT = r'C:\KOLM_Streaming_Assistant'
AWKWARD = r'C:\VR & games\串流 助手'
UNINSTALL_KEY = r'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\KOLM_Streaming_Assistant'

installers = session = work = base = None


def now():
    return installers / 'now' / INSTALLER


def later():
    return installers / 'next' / INSTALLER


def version(name):
    """That of the one of the two installers."""
    folder, = (path for path in (installers / name / 'stage').iterdir()
               if path.name[0].isdigit())
    return folder.name


def setUpModule():
    global base
    base = Base(work / 'base', session)


def tearDownModule():
    base.close()


class InstallerTest(unittest.TestCase):
    """One PC for all tests of a class."""

    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.pc = Pc(base, work / cls.__name__)
        cls.addClassCleanup(cls.pc.down)

    def installed(self, folder=DEFAULT):
        return {str(path.relative_to(self.pc.path(folder)))
                for path in self.pc.path(folder).rglob('*') if path.is_file()}

    def shipped(self, name):
        stage = installers / name / 'stage'
        return {str(path.relative_to(stage)) for path in stage.rglob('*') if path.is_file()}

    def assert_whole(self, name, folder=DEFAULT):
        """Exactly this version is there, byte for byte."""
        self.assertEqual(self.installed(folder),
                         self.shipped(name) | {'uninstall.exe', 'compare.json'})
        stage = installers / name / 'stage'
        for inner in self.shipped(name):
            self.assertEqual((self.pc.path(folder) / inner).read_bytes(),
                             (stage / inner).read_bytes(), inner)

    def assert_starts(self):
        """The program starts as a user starts it, and closes."""
        self.pc.start_from_shortcut()
        self.assertIn('json language: English', self.pc.log())
        self.assertNotIn('load fail', self.pc.log())
        self.pc.close_program()


class ALife(InstallerTest):
    """From the first installation to the last."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Another tool's driver, as that tool has written it: the program's first start
        # takes it out of the list.
        cls.drivers = cls.pc.data().parents[1] / 'openvr/openvrpaths.vrpath'
        cls.drivers.parent.mkdir(parents=True)
        cls.drivers.write_bytes(b'{ "runtime":["C:\\\\SteamVR"],\r\n"external_drivers" : '
                                b'["C:\\\\Gloves"]}')
        cls.pc.down()
        cls.files = cls.pc.files()
        cls.registry = cls.pc.registry()
        cls.pc.up()

    def changes(self):
        """What is there that was not, and what is not that was."""
        self.pc.down()
        files, registry = self.pc.files(), self.pc.registry()
        self.pc.up()
        return ({name for name in files.keys() | self.files.keys()
                 if files.get(name, 0) != self.files.get(name, 0)},
                {name for name in registry.keys() | self.registry.keys()
                 if registry.get(name) != self.registry.get(name)})

    def test_install_use_upgrade_and_remove(self):
        pc = self.pc
        self.assertEqual(pc.install(now(), folder=AWKWARD), (0, ''))
        self.assert_whole('now', AWKWARD)
        self.assertFalse(pc.path(AWKWARD).stat().st_mode & 0o002)

        # Nobody exchanges what is running.
        pc.start_from_shortcut()
        for said in (pc.install(later()), pc.uninstall(AWKWARD)):
            self.assertEqual(said[0], 6)
            self.assertIn('is running', said[1])
        self.assertTrue(pc.runs())
        self.assert_whole('now', AWKWARD)
        pc.close_program()
        self.assertNotIn('load fail', pc.log())
        settings = (pc.data() / 'set.json').read_bytes()
        self.assertNotIn(b'Gloves', self.drivers.read_bytes())

        # What others put beside it stays, and so does what the program wrote.
        (pc.path(AWKWARD) / 'session.json').write_text('{"a": 1}', 'utf-8')
        (pc.path(AWKWARD) / 'compare.json').write_text('{"cpu": {}}', 'utf-8')
        self.assertEqual(pc.install(later(), '/STARTUP'), (0, ''))
        (pc.path(AWKWARD) / 'session.json').unlink()
        self.assert_whole('next', AWKWARD)
        self.assertEqual((pc.path(AWKWARD) / 'compare.json').read_text('utf-8'), '{"cpu": {}}')
        self.assertEqual((pc.data() / 'set.json').read_bytes(), settings)
        self.assert_starts()
        code, said = pc.install(now())
        self.assertEqual((code, 'newer version' in said), (9, True))
        self.assert_whole('next', AWKWARD)

        (pc.path(AWKWARD) / 'session.json').write_text('{"a": 1}', 'utf-8')
        self.assertEqual(pc.uninstall(AWKWARD), (0, ''))
        self.assertEqual(self.installed(AWKWARD), {'session.json'})
        self.assertIn(b'Gloves', self.drivers.read_bytes())
        self.assertTrue((pc.data() / 'set.json').exists())
        # It may come back to its folder, and go for good.
        self.assertEqual(pc.install(later(), folder=AWKWARD), (0, ''))
        (pc.path(AWKWARD) / 'session.json').unlink()
        self.assertEqual(pc.uninstall(AWKWARD, '/REMOVE-SETTINGS'), (0, ''))
        self.assertEqual(self.changes(), (set(), set()))


class Refusals(InstallerTest):
    """Where it cannot be done, nothing is."""

    def setUp(self):
        self.before = self.pc.files()

    def assert_untouched(self):
        self.assertEqual(self.pc.files(), self.before)
        self.assertNotEqual(self.pc.run('reg', 'query', UNINSTALL_KEY), 0)

    def test_a_folder_with_files_of_others(self):
        foreign = self.pc.path(r'C:\games')
        foreign.mkdir()
        (foreign / 'version.dll').write_bytes(b'waits for a program')
        self.before = self.pc.files()
        code, said = self.pc.install(now(), folder=r'C:\games')
        self.assertEqual((code, 'files in C:\\games already' in said), (5, True), said)
        code, said = self.pc.install(now(), folder=r'C:\windows\KOLM')
        self.assertEqual((code, 'cannot be installed in' in said), (5, True), said)
        self.assert_untouched()

    def test_a_folder_that_nobody_may_write(self):
        closed = self.pc.path(r'C:\closed & 关')
        closed.mkdir()
        self.before = self.pc.files()
        with unwritable(closed):
            code, said = self.pc.install(now(), folder=r'C:\closed & 关\KOLM')
        self.assertEqual((code, 'no permission' in said), (5, True), said)
        self.assert_untouched()

    def test_a_disk_that_becomes_full(self):
        code, said = self.pc.install(now(), preexec_fn=little_space)
        self.assertEqual((code, 'disk is full' in said), (2, True), said)
        self.assert_untouched()

    def test_two_at_once(self):
        first = self.pc.start(now())

        def end():
            self.pc.run('taskkill', '/f', '/im', INSTALLER)
            first.wait()
        self.addCleanup(end)

        wait_until(lambda: self.pc.shows('--name', 'KOLM'), "the first one's window")
        code, said = self.pc.install(now())
        self.assertEqual((code, 'Another installation' in said), (3, True), said)


class Upgrades(InstallerTest):
    """Whatever happens to an upgrade, there is a program that works."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        assert cls.pc.install(now()) == (0, '')

    def test_0_a_reinstallation_repairs(self):
        pc = self.pc
        (pc.path(DEFAULT) / version('now') / 'Qt5Core.dll').write_bytes(b'broken')
        (pc.path(DEFAULT) / PROGRAM).unlink()
        self.assertEqual(pc.install(now()), (0, ''))
        self.assert_whole('now')
        code, said = pc.install(now(), folder=r'C:\elsewhere')
        self.assertEqual((code, 'in another folder' in said), (5, True))
        self.assertFalse(pc.path(r'C:\elsewhere').exists())

    def test_1_a_full_disk_leaves_the_old_version(self):
        code, said = self.pc.install(later(), preexec_fn=little_space)
        self.assertEqual((code, 'disk is full' in said), (2, True), said)
        self.assert_whole('now')

    def test_2_a_held_file_leaves_a_version_that_works(self):
        with unwritable(self.pc.path(DEFAULT) / 'licenses'):
            code, said = self.pc.install(later())
        self.assertEqual((code, 'holds a file' in said), (8, True), said)
        self.assertFalse((self.pc.path(DEFAULT) / 'new-files.tmp').exists())
        self.assert_starts()

    def test_3_whoever_is_asked_may_have_the_program_closed(self):
        self.pc.start_from_shortcut()
        self.pc.start(later())
        wait_until(lambda: self.pc.shows('--name', 'Setup'), "the installer's window")

        def is_through():
            time.sleep(1)  # a page takes nothing in its first moment
            if not (self.pc.path(DEFAULT) / version('now')).exists():
                return True
            self.pc.press_return('Setup')
            return False
        wait_until(is_through, 'the later version')
        wait_until(lambda: not self.pc.runs(), 'the end of the program')
        # As after its own close button.
        self.assertIn('stopSteamVR', self.pc.log().rsplit('getWiredOrWireless', 1)[1])
        # The installer takes the old ones away when the new ones are in their place.
        wait_until(lambda: not list(self.pc.path(DEFAULT).glob('old-files-*')),
                   'the end of the old files')
        self.pc.down()
        self.pc.up()
        self.assert_whole('next')
        self.assertEqual(self.pc.uninstall(DEFAULT), (0, ''))
        self.assertEqual(self.pc.install(now()), (0, ''))

    def test_4_whoever_is_killed_leaves_a_program_that_works(self):
        folder = self.pc.path(DEFAULT)
        moments = {
            'files are laid out': lambda: (folder / 'new-files.tmp' / PROGRAM).exists(),
            'its libraries are there': lambda: (folder / version('next')).exists(),
            'it is there': lambda: not (folder / 'new-files.tmp').exists(),
        }
        for name, reached in moments.items():
            with self.subTest(name):
                (folder / 'new-files.tmp').mkdir(exist_ok=True)
                installer = self.pc.start(later(), '/S')
                wait_until(lambda: reached() or installer.poll() is not None, name)
                self.pc.down()
                self.assertIsNotNone(installer.wait())
                self.pc.up()
                self.assert_starts()
        self.assertEqual(self.pc.install(later()), (0, ''))
        self.assert_whole('next')


def little_space():
    """For the process that is to be started: no file may be longer than that."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (5 << 20, 5 << 20))


class unwritable:
    """A folder in which nobody can make, rename or remove anything, root included."""

    def __init__(self, folder):
        self.folder = folder
        self.by_mode = os.geteuid() != 0

    def __enter__(self):
        if self.by_mode:
            self.mode = self.folder.stat().st_mode
            self.folder.chmod(0o555)
        elif subprocess.run(['chattr', '+i', self.folder], check=False).returncode != 0:
            raise unittest.SkipTest('there is no chattr on this disk')

    def __exit__(self, *_):
        if self.by_mode:
            self.folder.chmod(self.mode)
        else:
            subprocess.run(['chattr', '-i', self.folder], check=True)


if __name__ == '__main__':
    installers, session, work = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    shutil.rmtree(work, ignore_errors=True)
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
