#!/usr/bin/env python3
"""Makes what is shipped of an installed folder (cmake --install): the installer, the
portable archive, the symbols apart, and the list of what is in it. CPack calls it
(package.cmake). The same folder gives the same bytes: times are those of
SOURCE_DATE_EPOCH.
"""
import argparse
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import time
import zipfile

import licences
import pe_imports
import spdx

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
NAME = 'KOLM_Streaming_Assistant'
# Folders that whoever ships may supply, and what has to be in them.
SUPPLIES = {'ADB': 'adb.exe', 'installaudio': 'VBCABLE_Setup_x64.exe'}


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--stage', type=pathlib.Path, required=True, help='the installed folder')
    parser.add_argument('--output', type=pathlib.Path, required=True)
    parser.add_argument('--version', required=True)
    parser.add_argument('--qt', required=True, help="Qt's version")
    parser.add_argument('--compiler', required=True, help="the compiler's version")
    parser.add_argument('--tools', required=True, help='what stands before strip and objcopy')
    parser.add_argument('--contact', required=True, help='who sends the source of the libraries')
    parser.add_argument('--supplies', type=pathlib.Path)
    parser.add_argument('--compressor', default='/SOLID lzma', help="in NSIS' words")
    parser.add_argument('--sign', help='a program that signs the file it is called with')
    parser.add_argument('--only', choices=['installer'])
    return parser.parse_args()


def take_supplies(stage, supplies):
    """Copies what was supplied; the names of the folders."""
    found = []
    for name, needed in SUPPLIES.items():
        source = supplies / name if supplies else None
        if source and (source / needed).is_file():
            shutil.copytree(source, stage / name, dirs_exist_ok=True)
            found.append(name)
        elif source and source.is_dir():
            sys.exit(f'make_package: there is no {needed} in {source}')
        else:
            print(f'make_package: without {name}/, which was not supplied')
    return found


def split_symbols(stage, symbols, tools):
    """Moves the symbols of our program aside and takes those of all others away."""
    symbols.mkdir(parents=True, exist_ok=True)
    for path in sorted(stage.rglob('*')):
        if not pe_imports.is_image(path) or path.relative_to(stage).parts[0] in SUPPLIES:
            continue
        if path.name == f'{NAME}.exe':
            apart = symbols / f'{path.name}.debug'
            subprocess.run([f'{tools}objcopy', '--only-keep-debug', path, apart], check=True)
            subprocess.run([f'{tools}strip', '--strip-all', path], check=True)
            subprocess.run([f'{tools}objcopy', f'--add-gnu-debuglink={apart.name}', path.resolve()],
                           check=True, cwd=symbols)
        else:
            subprocess.run([f'{tools}strip', '--strip-unneeded', path], check=True)


def check_imports(stage, version, supplied):
    lines = (HERE / 'bare_windows_10.txt').read_text('utf-8').splitlines()
    system = {line for line in lines if line and not line.startswith('#')}
    found = list(pe_imports.problems(stage, stage / version, system,
                                     [stage / name for name in supplied]))
    if found:
        sys.exit('\n'.join(f'make_package: {line}' for line in found))


def archive(folder, target, top, epoch):
    """A zip of all files below `folder`, sorted, in the folder `top`."""
    when = time.gmtime(max(epoch, 315532800))[:6]  # 1980, where zip begins
    with zipfile.ZipFile(target, 'w', zipfile.ZIP_DEFLATED, compresslevel=9) as out:
        for path in sorted(p for p in folder.rglob('*') if p.is_file()):
            info = zipfile.ZipInfo(f'{top}/{path.relative_to(folder).as_posix()}', when)
            info.compress_type = zipfile.ZIP_DEFLATED
            info.external_attr = 0o644 << 16
            out.writestr(info, path.read_bytes())


def size_of(folder):
    return sum(path.stat().st_size for path in folder.rglob('*') if path.is_file())


def sign(path, signer):
    if signer:
        subprocess.run([signer, path.resolve()], check=True)


def make_installer(stage, target, version, supplied, compressor, signer):
    defines = {'STAGE': stage.resolve(), 'OUTPUT': target.resolve(), 'VERSION': version,
               'ICON': ROOT / 'res/image/orb.ico', 'SIZE': size_of(stage) // 1024,
               'COMPRESSOR': compressor, **{f'HAS_{name.upper()}': 1 for name in supplied}}
    if signer:
        defines['SIGNER'] = signer
    subprocess.run(['makensis', '-V2', '-WX', '-INPUTCHARSET', 'UTF8',
                    *(f'-D{name}={value}' for name, value in defines.items()),
                    HERE / 'installer/installer.nsi'], check=True)
    sign(target, signer)


def report(output, stage):
    """Says how large everything has become."""
    sums = []
    for path in sorted(output.glob(f'{NAME}-*')):
        print(f'{path.stat().st_size / 1e6:7.1f} MB  {path.name}')
        sums.append(f'{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n')
    (output / 'SHA256SUMS').write_text(''.join(sums), 'utf-8')
    print(f'{size_of(stage) / 1e6:7.1f} MB  installed, most of it:')
    largest = sorted((p for p in stage.rglob('*') if p.is_file()),
                     key=lambda p: -p.stat().st_size)[:8]
    for path in largest:
        print(f'{path.stat().st_size / 1e6:7.1f} MB      {path.relative_to(stage)}')


def main():
    options = arguments()
    stage, output, version = options.stage, options.output, options.version
    epoch = int(os.environ.get('SOURCE_DATE_EPOCH', '0'))
    output.mkdir(parents=True, exist_ok=True)
    symbols = output / 'symbols'
    shutil.rmtree(symbols, ignore_errors=True)
    supplied = take_supplies(stage, options.supplies)
    split_symbols(stage, symbols, options.tools)
    check_imports(stage, version, supplied)
    sign(stage / f'{NAME}.exe', options.sign)
    licences.write(stage / 'licenses', ROOT, version, options.qt, options.contact, supplied)
    bill = spdx.document(stage, version, options.qt, options.compiler, supplied, epoch)
    (stage / 'sbom.spdx.json').write_text(bill, 'utf-8')
    base = output / f'{NAME}-{version}'
    make_installer(stage, base.with_name(base.name + '-setup.exe'), version, supplied,
                   options.compressor, options.sign)
    if options.only == 'installer':
        return
    archive(stage, base.with_name(base.name + '-portable.zip'), NAME, epoch)
    archive(symbols, base.with_name(base.name + '-symbols.zip'), 'symbols', epoch)
    base.with_name(base.name + '.spdx.json').write_text(bill, 'utf-8')
    shutil.rmtree(symbols)
    report(output, stage)


if __name__ == '__main__':
    main()
