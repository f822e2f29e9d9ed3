"""The installers that the tests use: of the installed program, and of a later version.

    make_installers.py INSTALLED VERSION TARGET

Packed quickly rather than well. Under TARGET are "now/" and "next/", each with the
folder that is installed and "KOLM setup & more 安装.exe".
"""
import pathlib
import shutil
import subprocess
import sys

import newer_version

ROOT = pathlib.Path(__file__).resolve().parents[3]
SCRIPT = ROOT / 'packaging/windows/make_package.py'
INSTALLER = 'KOLM setup & more 安装.exe'


def pack(stage, version, target):
    subprocess.run(
        [sys.executable, SCRIPT, '--stage', stage, '--output', target, '--version', version,
         '--qt', '5.15', '--compiler', 'any', '--tools', 'x86_64-w64-mingw32-',
         '--contact', 'nobody', '--compressor', 'zlib', '--only', 'installer'],
        check=True, stdout=subprocess.DEVNULL)
    made, = target.glob('*-setup.exe')
    made.rename(target / INSTALLER)


def main(installed, version, target):
    shutil.rmtree(target, ignore_errors=True)
    for name in ('now', 'next'):
        stage = target / name / 'stage'
        if name == 'now':
            shutil.copytree(installed, stage)
        else:
            version = newer_version.make(installed, version, stage)
        pack(stage, version, target / name)


if __name__ == '__main__':
    main(pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3]))
