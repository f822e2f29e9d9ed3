"""Which libraries a Windows program or library loads, and where they come from."""
import struct


class NotPe(ValueError):
    """The file is no 64-bit Windows program or library."""


def _text(data, offset):
    return data[offset:data.index(b'\0', offset)].decode('ascii')


def _sections(data, start, count):
    for index in range(count):
        size, address, raw_size, raw = struct.unpack_from('<IIII', data, start + 40 * index + 8)
        yield address, max(size, raw_size), raw


def imports(data):
    """The names in the import tables of a PE32+ image, those loaded late included."""
    if data[:2] != b'MZ':
        raise NotPe('no MZ')
    head = struct.unpack_from('<I', data, 0x3c)[0]
    if data[head:head + 4] != b'PE\0\0':
        raise NotPe('no PE')
    count, optional_size = struct.unpack_from('<H12xH', data, head + 6)
    optional = head + 24
    if struct.unpack_from('<H', data, optional)[0] != 0x20b:
        raise NotPe('not 64 bit')
    sections = list(_sections(data, optional + optional_size, count))

    def offset(address):
        for start, size, raw in sections:
            if start <= address < start + size:
                return raw + address - start
        raise NotPe(f'nothing at {address:#x}')

    names = []
    # Directory entries 1 and 13: imports, and those on demand.
    for entry, step, name_at in ((1, 20, 12), (13, 32, 4)):
        table = struct.unpack_from('<I', data, optional + 112 + 8 * entry)[0]
        if not table:
            continue
        place = offset(table)
        while True:
            name = struct.unpack_from('<I', data, place + name_at)[0]
            if not name:
                break
            names.append(_text(data, offset(name)))
            place += step
    return names


def is_image(path):
    return path.suffix.lower() in ('.exe', '.dll')


def problems(folder, libraries, system, foreign=()):
    """What is wrong with the images below `folder`. `libraries` is the folder in
    which the program finds its own, `system` the names (in small letters) of what
    Windows has, `foreign` the folders that bring what they need themselves."""
    own = {path.name.lower(): path for path in libraries.glob('*.dll')}
    used = set()
    for path in sorted(folder.rglob('*')):
        if not is_image(path) or any(place in path.parents for place in foreign):
            continue
        try:
            names = imports(path.read_bytes())
        except (NotPe, struct.error, ValueError) as error:
            yield f'{path.relative_to(folder)}: {error}'
            continue
        for name in names:
            if name.lower() in own:
                used.add(name.lower())
            elif name.lower() not in system:
                yield (f'{path.relative_to(folder)} loads {name}, which is not in the package '
                       'and not on every Windows 10 (bare_windows_10.txt)')
    for name in sorted(set(own) - used):
        yield f'{own[name].relative_to(folder)} is loaded by nobody'
