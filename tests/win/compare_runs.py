"""Compares the run of the Windows program with that of the same program on the
simulated PC: what it logged, what the streaming server saw, and the files that
are left, line for line.

    compare_runs.py RESULT LINUX_BIN WORK

RESULT is what tst_program_win has kept. The program of LINUX_BIN makes the run
of same-run.json in the folder WORK. Times, process ids and folders are masked;
whatever else differs has to be listed in run_differences.txt, and what is
listed has to differ.
"""
import difflib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
SPEED = 4
LIMIT = 150  # seconds


def walk_simulated(linux_bin, work):
    """Lets the program connect and close; its home, working folder and server log."""
    shutil.rmtree(work, ignore_errors=True)
    home, folder = work / 'home', work / 'work'
    for each in (home, folder, work / 'run'):
        each.mkdir(parents=True, mode=0o700)
    scenario = HERE / 'same-run.json'
    subprocess.run([linux_bin / 'simpc-seed', scenario, '--home', home, '--work', folder],
                   check=True)
    for translation in linux_bin.glob('*.qm'):
        shutil.copy(translation, folder)
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith(('LC_', 'XDG_', 'SIMPC_'))}
    environment.update({
        'HOME': str(home), 'XDG_RUNTIME_DIR': str(work / 'run'),
        # The program speaks English, and its log is in UTF-8.
        'LANG': 'en_US.UTF-8', 'LC_CTYPE': 'C.UTF-8',
        'QT_QPA_PLATFORM': 'offscreen', 'QT_QUICK_BACKEND': 'software',
        'SIMPC_SCENARIO': str(scenario), 'SIMPC_SPEED': str(SPEED),
        'SIMPC_SERVER_LOG': str(work / 'server.log'),
        'SIMPC_UNTIL': 'connected', 'SIMPC_LIMIT': str(LIMIT * SPEED),
    })
    done = subprocess.run([linux_bin / 'KOLM_Streaming_Assistant'], cwd=folder, env=environment,
                          stdin=subprocess.DEVNULL, timeout=LIMIT, check=False)
    if done.returncode != 0:
        sys.exit(f'the program on the simulated PC ended with {done.returncode}')
    data = home / '.local/share/KOLM/KOLM_Streaming_Assistant'
    logs = sorted(data.glob('????-??-??.txt'))
    return {
        'log.txt': ''.join(log.read_text('utf-8') for log in logs),
        'server.log': (work / 'server.log').read_text('utf-8'),
        'set.json': (data / 'set.json').read_text('utf-8'),
        'setting.inf': (data / 'setting.inf').read_text('utf-8'),
        'session.json': (folder / 'session.json').read_text('utf-8'),
        'openvrpaths.vrpath':
            (home / 'AppData/Local/openvr/openvrpaths.vrpath').read_text('utf-8'),
    }, [str(folder), str(linux_bin.resolve())]


def mask_events(match):
    """What a PC is, and when something happened, in the list of usage events."""
    try:
        events = json.loads(match.group(0))
    except ValueError:
        return match.group(0)
    for event in events:
        event['timestamp'] = 'TIME'
        if 'duration' in event.get('extraData', {}):
            event['extraData']['duration'] = 'TIME'
        for name in ('GUID', 'ram', 'vram'):
            if name in event.get('defaultData', {}):
                event['defaultData'][name] = 'PC'
    return json.dumps(events, ensure_ascii=False)


# The cloud's answers come whenever they like.
DOWNLOAD = re.compile(r'^\[\w+:TIME [^\n]*Download of [^\n]*\n\n', re.MULTILINE)


def masked(text, folders):
    text = text.replace('\r\n', '\n')
    for folder in folders:
        text = text.replace(folder, 'FOLDER')
    text = re.sub(r'\d\d:\d\d:\d\d\.\d{3}', 'TIME', text)
    text = re.sub(r'\b\d+ms\b', 'TIME', text)
    text = re.sub(r'\[\{.*\}\]', mask_events, text)
    text = ''.join([DOWNLOAD.sub('', text), *DOWNLOAD.findall(text)])
    return text.rstrip('\n').split('\n')


def differences(name, simulated, windows):
    """Lines as the table has them: file, which side has it alone, the line."""
    for line in difflib.ndiff(simulated, windows):
        if line[0] in '-+':
            side = 'simulated' if line[0] == '-' else 'windows'
            yield f'{name} {side}: {line[2:]}'.rstrip()


def table():
    lines = (HERE / 'run_differences.txt').read_text('utf-8').split('\n')
    return [line.rstrip() for line in lines if line.strip() and not line.startswith('#')]


def main(result, linux_bin, work):
    simulated, folders = walk_simulated(linux_bin, work)
    found = []
    compared = 0
    for name, text in simulated.items():
        windows = (result / name).read_bytes().decode('utf-8')
        # The log is in the code page of Wine, which knows no Chinese.
        here = masked(text, folders)
        there = masked(windows, ['C:/? ? & é', 'C:/中 文 & é'])
        compared += len(there)
        (work / f'{name}.simulated').write_text('\n'.join(here) + '\n', 'utf-8')
        (work / f'{name}.windows').write_text('\n'.join(there) + '\n', 'utf-8')
        found += differences(name, here, there)
    listed = table()
    unlisted = list(found)
    for line in listed:
        if line in unlisted:
            unlisted.remove(line)
    gone = list(listed)
    for line in found:
        if line in gone:
            gone.remove(line)
    for line in unlisted:
        print('differs, but is not listed:', line)
    for line in gone:
        print('is listed, but does not differ:', line)
    print(f'{compared} lines compared, {len(found)} differ, {len(listed)} are listed')
    return 1 if unlisted or gone or compared < 100 else 0


if __name__ == '__main__':
    sys.exit(main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:4])))
