"""The list of what is in the package, in the terms of SPDX 2.3."""
import datetime
import hashlib
import json

QT_SOURCE = 'https://snapshot.debian.org/package/{}-opensource-src/'


def _part(identifier, name, version, licence, supplier, location='NOASSERTION', purl=None):
    part = {
        'SPDXID': f'SPDXRef-{identifier}', 'name': name, 'versionInfo': version,
        'licenseConcluded': licence, 'licenseDeclared': licence,
        'copyrightText': 'NOASSERTION', 'downloadLocation': location,
        'supplier': supplier, 'filesAnalyzed': False,
    }
    if purl:
        part['externalRefs'] = [{'referenceCategory': 'PACKAGE-MANAGER',
                                 'referenceType': 'purl', 'referenceLocator': purl}]
    return part


def _parts(version, qt, compiler, supplies):
    debian = 'Organization: Debian'
    for module in ('qtbase', 'qtdeclarative', 'qtmultimedia'):
        yield _part(module, module, qt, 'LGPL-3.0-only', debian, QT_SOURCE.format(module),
                    f'pkg:deb/debian/{module}-opensource-src@{qt}?arch=source')
    yield _part('gcc-runtime', 'GCC runtime libraries', compiler,
                'GPL-3.0-or-later WITH GCC-exception-3.1', debian)
    yield _part('winpthreads', 'winpthreads of MinGW-w64', compiler, 'MIT AND BSD-3-Clause', debian)
    yield _part('font', 'Source Han Sans CN Medium', '2', 'OFL-1.1', 'Organization: Adobe')
    for name in supplies:
        yield _part(name, name, 'NOASSERTION', 'NOASSERTION', 'NOASSERTION')


def _owner(path, libraries):
    """Which part a file belongs to."""
    name = path.name
    if path.parts[0] in ('ADB', 'installaudio'):
        return path.parts[0]
    if name in ('libstdc++-6.dll', 'libgcc_s_seh-1.dll'):
        return 'gcc-runtime'
    if name == 'libwinpthread-1.dll':
        return 'winpthreads'
    if path.parts[0] != libraries or name.endswith('.manifest'):
        return 'program'
    if 'Multimedia' in name or 'qtaudio' in name:
        return 'qtmultimedia'
    if 'Qml' in name or 'Quick' in name or 'qml' in path.parts:
        return 'qtdeclarative'
    return 'qtbase'


def _digest(algorithm, data):
    return {'algorithm': algorithm.upper(),
            'checksumValue': hashlib.new(algorithm, data).hexdigest()}


def document(folder, version, qt, compiler, supplies, epoch):
    """The document on all files below `folder`, as text."""
    files = []
    relations = [('DOCUMENT', 'DESCRIBES', 'program')]
    everything = hashlib.sha256()
    for index, path in enumerate(sorted(p for p in folder.rglob('*') if p.is_file())):
        data = path.read_bytes()
        inner = path.relative_to(folder)
        everything.update(inner.as_posix().encode() + b'\0' + hashlib.sha256(data).digest())
        files.append({
            'SPDXID': f'SPDXRef-file-{index}', 'fileName': './' + inner.as_posix(),
            'checksums': [_digest('sha1', data), _digest('sha256', data)],
            'licenseConcluded': 'NOASSERTION', 'copyrightText': 'NOASSERTION',
        })
        relations.append((_owner(inner, version), 'CONTAINS', f'file-{index}'))
    parts = list(_parts(version, qt, compiler, supplies))
    relations += [('program', 'CONTAINS', part['SPDXID'][len('SPDXRef-'):]) for part in parts]
    made = datetime.datetime.fromtimestamp(epoch, datetime.timezone.utc)
    program = _part('program', 'KOLM Streaming Assistant', version, 'NOASSERTION',
                    'Organization: KOLM')
    return json.dumps({
        'spdxVersion': 'SPDX-2.3', 'dataLicense': 'CC0-1.0', 'SPDXID': 'SPDXRef-DOCUMENT',
        'name': f'KOLM_Streaming_Assistant-{version}',
        'documentNamespace': 'https://kolm.example/spdx/KOLM_Streaming_Assistant-'
                             f'{version}-{everything.hexdigest()}',
        'creationInfo': {'created': made.strftime('%Y-%m-%dT%H:%M:%SZ'),
                         'creators': ['Tool: packaging/windows/spdx.py', 'Organization: KOLM']},
        'packages': [program, *parts], 'files': files,
        'relationships': [{'spdxElementId': f'SPDXRef-{one}', 'relationshipType': how,
                           'relatedSpdxElement': f'SPDXRef-{other}'}
                          for one, how, other in relations],
    }, indent=1) + '\n'
