#!/usr/bin/env python3
"""Compares what the program does on every compiled-in simulated PC with what it
did when it was recorded: pages, log, journal, streaming server, cloud, files.

    same_behaviour.py BIN WORK [--once] [--record RUNS] [LIFE ...]

BIN holds the programs of a build, WORK is a folder that may be overwritten.
--record 4 writes tests/e2e/records/ anew instead. What may differ from run to run,
and why, stands in behaviour_record.py.
"""
import argparse
import concurrent.futures
import fcntl
import os
import pathlib
import subprocess
import sys
import time

import behaviour_record
import behaviour_run
import differences
import lives
import own_network

RECORDS = pathlib.Path(__file__).resolve().parent / 'records'

# Programs that each have a network of their own live side by side, and slowly
# enough for a busy machine. Where there is none they live one after another.
LANES, SPEED, SPEED_ALONE = 10, 3, 20


def live(arguments, name, speed):
    """One life of the program, in sections."""
    place = arguments.work / name
    life = arguments.lives[name]
    code, host = behaviour_run.in_a_process(arguments.bin, life.scenario, life.plan, speed, place,
                                            arguments.network)
    seen = behaviour_record.Seen(place, arguments.bin, host)
    return list(behaviour_record.sections(name, seen, code))


def compare(arguments, name):
    """What there is to say, and whether it is as recorded. A busy machine gets a
    second and a third chance, with more time: what has really changed differs at any
    speed."""
    path = RECORDS / f'{name}.txt'
    if not path.exists():
        return f'{name}: there is no record; make it with --record\n', False
    recorded = differences.parse(path.read_text('utf-8'))
    said = ''
    for attempt, factor in enumerate((1,) if arguments.once else (1, 2, 3)):
        found = differences.differences(recorded,
                                        live(arguments, name, arguments.speed / factor))
        if not found:
            return said, True
        said += f'{name}: differs in run {attempt + 1}\n'
        for title, lines in found.items():
            said += '\n'.join([f'== {title} (- recorded, + now)', *lines, ''])
    return said, False


def record(arguments, name):
    """Several lives: what goes this way or that shall be seen both ways."""
    ways = {}
    for number in range(arguments.record):
        differences.add_ways(ways, live(arguments, name, arguments.speed / (1 + number % 2)))
    (RECORDS / f'{name}.txt').write_text(differences.unparse(ways), 'utf-8')
    said = ''.join(f'{name}: {title}: {len(lines)} ways\n'
                   for title, lines in ways.items() if len(lines) > 1)
    return said, not differences.too_many_ways(ways)


def work_on(arguments, name):
    begin = time.monotonic()
    said, good = (record if arguments.record else compare)(arguments, name)
    said += f'{time.monotonic() - begin:6.1f} s  {name}' + ('' if good else '  DIFFERS')
    return name, said, good


def options():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('bin', type=pathlib.Path, help='the programs of a build')
    parser.add_argument('work', type=pathlib.Path, help='a folder that may be overwritten')
    parser.add_argument('lives', nargs='*', help='only these')
    parser.add_argument('--record', type=int, metavar='RUNS',
                        help='write the records anew, from so many runs')
    parser.add_argument('--once', action='store_true', help='no second chance')
    parser.add_argument('--speed', type=float)
    arguments = parser.parse_intermixed_args()
    arguments.bin = arguments.bin.resolve()
    arguments.work = arguments.work.resolve()
    return arguments


def main():
    arguments = options()
    names = subprocess.run([arguments.bin / 'simpc-seed', '--list'], check=True,
                           stdout=subprocess.PIPE, text=True).stdout
    every = lives.of([line.split(':')[0] for line in names.split('\n') if line.strip()])
    wanted = [name for name in every if name in (arguments.lives or every)]
    unknown = set(arguments.lives) - set(every)
    arguments.lives = every
    lanes, speed = (LANES, SPEED) if own_network.is_possible() else (1, SPEED_ALONE)
    arguments.network = 'own' if lanes > 1 else 'shared'
    arguments.speed = arguments.speed or speed
    print(f'{len(wanted)} lives at speed {arguments.speed}, network: {arguments.network}',
          flush=True)
    failed = list(unknown)
    arguments.work.mkdir(parents=True, exist_ok=True)
    here = os.open(arguments.work, os.O_RDONLY)
    fcntl.flock(here, fcntl.LOCK_EX)  # no two of these in one folder
    with concurrent.futures.ThreadPoolExecutor(lanes) as pool:
        for done in concurrent.futures.as_completed(
                [pool.submit(work_on, arguments, name) for name in wanted]):
            name, said, good = done.result()
            print(said, flush=True)
            if not good:
                failed.append(name)
    for path in sorted(RECORDS.glob('*.txt')):
        if path.stem not in every:
            failed.append(path.name)
            print(f'{path}: there is no such life any more')
    if failed:
        print('not as recorded:', ', '.join(sorted(failed)))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
