"""The licences of what is shipped, as the build machine's packages have them."""
import pathlib

# What stands in the package, and where Debian keeps it.
TEXTS = {
    'LGPL-3.txt': '/usr/share/common-licenses/LGPL-3',
    'GPL-3.txt': '/usr/share/common-licenses/GPL-3',
    'qtbase.txt': '/usr/share/doc/qtbase5-dev/copyright',
    'qtdeclarative.txt': '/usr/share/doc/qtdeclarative5-dev/copyright',
    'gcc-runtime.txt': '/usr/share/doc/gcc-mingw-w64-base/copyright',
    'mingw-w64.txt': '/usr/share/doc/mingw-w64-common/copyright',
}

OVERVIEW = '''\
KOLM Streaming Assistant {version}: the work of others in this folder
=====================================================================

Qt {qt} (folder {version}: Qt5*.dll, plugins, qml)
    GNU Lesser General Public License, version 3 (LGPL-3.txt, which builds upon
    GPL-3.txt). Its modules contain work of others: qtbase.txt, qtdeclarative.txt.
    The libraries are unchanged and are loaded by the program at run time.

    To run the program with libraries of your own, put yours, of a Qt 5.15 built
    with MinGW-w64 for 64 bit, in the place of those in the folder {version}; what
    is new in that folder goes into the list {version}.manifest as well. In an
    installed program you need an administrator's rights for it; the portable
    folder is yours. Nothing checks which libraries they are, and you may look into
    how the program works with them.

    The source code is Debian's: the source packages qtbase-opensource-src,
    qtdeclarative-opensource-src and qtmultimedia-opensource-src, version {qt}, from
    https://snapshot.debian.org/ . Whoever has received this program gets it for
    three years after the last delivery also from
        {contact}
    for no more than the cost of sending it.

libstdc++-6.dll, libgcc_s_seh-1.dll (folder {version})
    GNU General Public License, version 3, with the GCC Runtime Library Exception,
    version 3.1, which lets programs be linked with them: gcc-runtime.txt.

libwinpthread-1.dll (folder {version})
    The MIT licence, parts of it BSD: mingw-w64.txt.

The font Source Han Sans CN Medium (in the program), unmodified
    Copyright 2014-2021 Adobe, with Reserved Font Name 'Source'.
    SIL Open Font License, version 1.1: OFL.txt.
{supplies}'''

SUPPLIED = '''
The folder {name}
    was supplied by who made this package, with the terms that lie in it.
'''


def write(folder, root, version, qt, contact, supplies):
    """Fills `folder`. `root` is the source tree, `supplies` names the folders that
    came from elsewhere."""
    folder.mkdir(parents=True, exist_ok=True)
    for name, source in TEXTS.items():
        path = pathlib.Path(source)
        if not path.is_file():
            raise SystemExit(f'make_package: a licence that has to be shipped is not on this '
                             f'machine: {source}')
        (folder / name).write_bytes(path.read_bytes())
    (folder / 'OFL.txt').write_bytes((root / 'res/OFL.txt').read_bytes())
    overview = OVERVIEW.format(version=version, qt=qt, contact=contact, supplies=''.join(
        SUPPLIED.format(name=name) for name in supplies))
    # For whoever opens it with a double click.
    (folder / 'README.txt').write_bytes(overview.replace('\n', '\r\n').encode('utf-8'))
