"""Records as files, and what differs between them.

A record is a text of sections, "== TITLE" and its lines. A title that comes again
has other lines that are as good.
"""
import difflib
import re

COUNT = re.compile(r'   \(x (\d+)\)$')
MOST_WAYS = 4  # of one section


def parse(text):
    """title -> the ways it went, each a list of lines."""
    record = {}
    for line in text.split('\n')[:-1]:
        if line.startswith('== '):
            record.setdefault(line[3:], []).append([])
            lines = record[line[3:]][-1]
        else:
            lines.append(line)
    return record


def unparse(record):
    return ''.join(f'== {title}\n' + ''.join(line + '\n' for line in lines)
                   for title, ways in record.items() for lines in ways)


def goes_with(recorded, seen):
    """Whether a count of looks may be that of another run."""
    return recorded // 2 <= seen <= recorded * 3 // 2 + 2


def with_counts_of(recorded, seen):
    """The lines of `seen`, with the counts of `recorded` where they go together."""
    bare = [[COUNT.sub('', line) for line in lines] for lines in (recorded, seen)]
    result = list(seen)
    for tag, begin, end, other, _ in difflib.SequenceMatcher(None, *bare, False).get_opcodes():
        if tag != 'equal':
            continue
        for i in range(end - begin):
            was, now = (int(found[1]) if found else 1 for found in
                        (COUNT.search(recorded[begin + i]), COUNT.search(seen[other + i])))
            if goes_with(was, now):
                result[other + i] = recorded[begin + i]
    return result


def difference(recorded, seen):
    """A diff of two lists of lines; empty if they go together."""
    return list(difflib.unified_diff(recorded, with_counts_of(recorded, seen), n=4,
                                     lineterm=''))[2:]


def differences(record, seen):
    """title -> the diff to the recorded way that is nearest, where there is any."""
    found = {}
    for title in [*record, *(title for title, _ in seen if title not in record)]:
        lines = dict(seen).get(title, [])
        diffs = [difference(way, lines) for way in record.get(title, [[]])]
        if all(diffs):
            found[title] = min(diffs, key=len)
    return found


def add_ways(record, seen):
    """Adds to the record the ways of `seen` that it does not know."""
    known = bool(record)
    for title, lines in seen:
        ways = record.setdefault(title, [[]] if known else [])
        if all(difference(way, lines) for way in ways) or not ways:
            ways.append(lines)
    for title in record.keys() - {title for title, _ in seen}:
        if all(record[title]):
            record[title].append([])


def too_many_ways(record):
    return [title for title, ways in record.items() if len(ways) > MOST_WAYS]
