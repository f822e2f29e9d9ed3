"""Makes of an installed folder one of the next version: the program says so wherever
it speaks of its version, and finds its libraries in the folder of that version.

    newer_version.py FOLDER VERSION TARGET
"""
import pathlib
import shutil
import struct
import sys


def next_version(version):
    """A later version of the same length."""
    parts = version.split('.')
    later = str(int(parts[2]) + 1)
    assert len(later) == len(parts[2]), 'the version would become longer'
    return '.'.join([*parts[:2], later, *parts[3:]])


def _fixed_info(version):
    first, second, third, fourth = (int(part) for part in version.split('.'))
    return struct.pack('<HHHH', second, first, fourth, third)


def renew(data, version, later):
    """The program with the other version: as text in both encodings, and as numbers."""
    count = 0
    for old, new in ((version.encode('ascii'), later.encode('ascii')),
                     (version.encode('utf-16-le'), later.encode('utf-16-le')),
                     (_fixed_info(version), _fixed_info(later))):
        count += data.count(old)
        data = data.replace(old, new)
    assert count >= 6, 'the program does not speak of its version where it should'
    return data


def make(folder, version, target):
    later = next_version(version)
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(folder, target)
    program = target / 'KOLM_Streaming_Assistant.exe'
    program.write_bytes(renew(program.read_bytes(), version, later))
    libraries = target / version
    manifest = libraries / f'{version}.manifest'
    manifest.write_text(manifest.read_text('utf-8').replace(version, later), 'utf-8')
    manifest.rename(libraries / f'{later}.manifest')
    libraries.rename(target / later)
    return later


if __name__ == '__main__':
    print(make(pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])))
