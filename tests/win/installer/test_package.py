"""What is said of the packed folder, and that the same folder gives the same bytes.

    test_package.py INSTALLED VERSION [unittest options]
"""
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / 'packaging/windows'))

import make_package  # noqa: E402
import pe_imports  # noqa: E402
import spdx  # noqa: E402

installed = version = None


class PackageTest(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name)
        self.stage = self.place / 'stage'
        shutil.copytree(installed, self.stage)
        self.libraries = self.stage / version

    def problems(self, *foreign):
        lines = (make_package.HERE / 'bare_windows_10.txt').read_text('utf-8').splitlines()
        return list(pe_imports.problems(self.stage, self.libraries, set(lines), foreign))

    def test_what_is_installed_needs_nothing_else(self):
        self.assertEqual(self.problems(), [])
        names = pe_imports.imports((self.stage / 'KOLM_Streaming_Assistant.exe').read_bytes())
        self.assertIn('Qt5Core.dll', names)
        self.assertIn('KERNEL32.dll', names)

    def test_the_guide_lies_beside_the_program_in_each_language(self):
        pages = make_package.ROOT / 'guide'
        self.assertEqual({path.name for path in (self.stage / 'guide').iterdir()},
                         {'zh.html', 'en.html', 'ja.html'})
        for path in (self.stage / 'guide').iterdir():
            self.assertEqual(path.read_bytes(), (pages / path.name).read_bytes())

    def test_a_library_that_is_missing_is_named(self):
        (self.libraries / 'libwinpthread-1.dll').unlink()
        found = self.problems()
        self.assertTrue(any('loads libwinpthread-1.dll, which is not in the package' in line
                            for line in found), found)

    def test_a_library_that_nobody_loads_is_named(self):
        shutil.copy(self.libraries / 'Qt5QmlModels.dll', self.libraries / 'Qt5Spare.dll')
        self.assertEqual(self.problems(), [f'{version}/Qt5Spare.dll is loaded by nobody'])

    def test_what_is_no_library_is_named_but_not_that_of_others(self):
        (self.stage / 'ADB').mkdir()
        (self.stage / 'ADB/adb.exe').write_bytes(b'MZ, 32 bit perhaps')
        self.assertEqual(len(self.problems()), 1)
        self.assertEqual(self.problems(self.stage / 'ADB'), [])

    def test_an_archive_does_not_depend_on_times(self):
        def packed():
            target = self.place / 'packed.zip'
            make_package.archive(self.stage, target, 'top', 1_700_000_000)
            return hashlib.sha256(target.read_bytes()).hexdigest()
        first = packed()
        for path in self.stage.rglob('*'):
            os.utime(path, (1, 1))
        self.assertEqual(packed(), first)
        (self.stage / 'chinese.qm').write_bytes(b'another one')
        self.assertNotEqual(packed(), first)

    def test_the_list_names_every_file_and_whose_it_is(self):
        bill = json.loads(spdx.document(self.stage, version, '5.15', '12', ['ADB'], 1_700_000_000))
        files = {entry['fileName'][2:]: entry for entry in bill['files']}
        self.assertEqual(set(files), {path.relative_to(self.stage).as_posix()
                                      for path in self.stage.rglob('*') if path.is_file()})
        for name, entry in files.items():
            digest = hashlib.sha256((self.stage / name).read_bytes()).hexdigest()
            self.assertIn({'algorithm': 'SHA256', 'checksumValue': digest}, entry['checksums'])
        known = {part['SPDXID'] for part in (*bill['packages'], *bill['files'], bill)}
        owners = {}
        for relation in bill['relationships']:
            self.assertIn(relation['spdxElementId'], known)
            self.assertIn(relation['relatedSpdxElement'], known)
            owners[relation['relatedSpdxElement']] = relation['spdxElementId']
        for name, owner in (('KOLM_Streaming_Assistant.exe', 'program'),
                            ('guide/en.html', 'program'),
                            (f'{version}/Qt5Core.dll', 'qtbase'),
                            (f'{version}/Qt5Quick.dll', 'qtdeclarative'),
                            (f'{version}/libstdc++-6.dll', 'gcc-runtime')):
            self.assertEqual(owners[files[name]['SPDXID']], f'SPDXRef-{owner}')

    def test_program_uninstaller_and_installer_are_signed(self):
        signer = self.place / 'signer'
        signed = self.place / 'signed'
        signer.write_text(f'#!/bin/sh\nbasename "$1" >>"{signed}"\n', 'utf-8')
        signer.chmod(0o755)
        subprocess.run([sys.executable, make_package.HERE / 'make_package.py', '--stage', self.stage,
                        '--output', self.place / 'out', '--version', version, '--qt', '5.15',
                        '--compiler', 'any', '--tools', 'x86_64-w64-mingw32-', '--contact', 'x',
                        '--compressor', 'zlib', '--only', 'installer', '--sign', signer],
                       check=True, stdout=subprocess.DEVNULL)
        names = signed.read_text('utf-8').splitlines()
        self.assertEqual(names[0], 'KOLM_Streaming_Assistant.exe')
        self.assertEqual(names[2], f'KOLM_Streaming_Assistant-{version}-setup.exe')
        self.assertEqual(len(names), 3)

    def test_supplies_are_taken_whole_or_not_at_all(self):
        supplies = self.place / 'supplies'
        (supplies / 'ADB').mkdir(parents=True)
        with self.assertRaises(SystemExit):
            make_package.take_supplies(self.stage, supplies)
        (supplies / 'ADB/adb.exe').write_bytes(b'adb')
        self.assertEqual(make_package.take_supplies(self.stage, supplies), ['ADB'])
        self.assertEqual((self.stage / 'ADB/adb.exe').read_bytes(), b'adb')


if __name__ == '__main__':
    installed, version = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
