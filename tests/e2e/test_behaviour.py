"""What counts as the same behaviour, and what does not."""
import pathlib
import tempfile
import unittest

import behaviour_record
import differences
from face_turns import GUI, Face

RECORD = {'log': [['a', 'b   (x 4)']], 'signals': [['one'], ['two']], 'empty': [[]]}


class Differences(unittest.TestCase):
    def test_a_record_comes_back_as_it_was_written(self):
        self.assertEqual(differences.parse(differences.unparse(RECORD)), RECORD)

    def found(self, **sections):
        seen = {'log': ['a', 'b   (x 4)'], 'signals': ['one'], 'empty': [], **sections}
        return list(differences.differences(RECORD, list(seen.items())))

    def test_equal_is_equal(self):
        self.assertEqual(self.found(), [])

    def test_counts_may_differ_by_half(self):
        self.assertEqual(self.found(log=['a', 'b   (x 2)']), [])
        self.assertEqual(self.found(log=['a', 'b   (x 8)']), [])
        self.assertEqual(self.found(log=['a', 'b']), ['log'])
        self.assertEqual(self.found(log=['a', 'b   (x 9)']), ['log'])

    def test_order_and_number_count(self):
        self.assertEqual(self.found(log=['b   (x 4)', 'a']), ['log'])
        self.assertEqual(self.found(log=['a', 'a', 'b   (x 4)']), ['log'])
        self.assertEqual(self.found(log=['b   (x 4)']), ['log'])

    def test_any_recorded_way_is_good_but_no_mixture(self):
        self.assertEqual(self.found(signals=['two']), [])
        self.assertEqual(self.found(signals=['one', 'two']), ['signals'])
        self.assertEqual(self.found(signals=[]), ['signals'])

    def test_a_section_that_is_new_differs(self):
        self.assertEqual(self.found(empty=['x']), ['empty'])
        self.assertEqual(self.found(other=['x']), ['other'])

    def test_ways_are_added_when_they_are_new(self):
        record = {}
        for seen in (['a   (x 2)'], ['a   (x 3)'], ['b']):
            differences.add_ways(record, [('log', seen)])
        self.assertEqual(record, {'log': [['a   (x 2)'], ['b']]})
        differences.add_ways(record, [('more', ['c'])])
        self.assertEqual(record, {'log': [['a   (x 2)'], ['b'], []], 'more': [[], ['c']]})


class Turns(unittest.TestCase):
    @staticmethod
    def face(*lines):
        return Face(''.join(f'0.0\t{line}\n' for line in lines))

    def test_a_turn_within_another_does_not_tear_it(self):
        face = self.face('1\tgui\ta', '2\tgui\tb', '1\tgui\tc')
        self.assertEqual(face.sections, {GUI: [['a', 'c'], ['b']]})

    def test_answers_go_with_their_whole_turn(self):
        face = self.face('1\tgui\ta', '2\tgui\tlog Info: start update', '2\tgui\tb')
        self.assertEqual(face.sections,
                         {GUI: [['a']], 'answers of the cloud': [['log Info: start update', 'b']]})

    def test_a_file_belongs_to_the_turn_in_which_it_was_written(self):
        face = self.face('1\tgui\ta', '1\tfile\twrote set.json', '1\tgui\tb')
        self.assertEqual(face.sections, {GUI: [['a', 'wrote set.json', 'b']]})

    def test_threads_are_apart_and_the_end_is_seen(self):
        face = self.face('1\tgui\tlog Info: a', '1\tT\tlog Info: b')
        self.assertFalse(face.complete)
        self.assertEqual(face.sections, {GUI: [['log Info: a']], 'thread T': [['log Info: b']]})
        self.assertEqual(face.logged, ['log Info: a', 'log Info: b'])
        self.assertTrue(self.face('1\tgui\ta', '0\tend\t').complete)


class Sections(unittest.TestCase):
    def test_equal_turns_side_by_side_are_counted(self):
        self.assertEqual(behaviour_record.counted([['a', 'b'], ['a', 'b'], ['c'], ['a', 'b']]),
                         ['a', 'b   (x 2)', 'c', 'a', 'b'])
        self.assertEqual(behaviour_record.counted([]), [])

    def test_a_signal_twice_in_a_turn_is_not_counted_away(self):
        self.assertEqual(behaviour_record.counted([['a', 'a']]), ['a', 'a'])

    def test_levels_and_line_ends_of_the_log_count(self):
        line = '[Info:01:02:03.004  "(0)"]:'
        self.assertEqual(behaviour_record.log_lines(f'{line}a\r\nb\r\n{line}c\r\n'),
                         ['log Info: a\\r\\nb', 'log Info: c'])
        self.assertEqual(behaviour_record.log_lines(f'{line}a\n'),
                         ['the log does not end with a line end'])
        self.assertEqual(behaviour_record.log_lines('[Info:a\r\n'), ['no log line: [Info:a'])

    def test_what_became_of_a_file(self):
        change = behaviour_record.change
        self.assertEqual(change('a', 'a'), ['as it was'])
        self.assertEqual(change(None, None), ['there is none'])
        self.assertEqual(change('a', None), ['it is gone'])
        self.assertEqual(change(None, 'a\nb'), ['it is new', 'a', 'b'])
        self.assertEqual(change('a\nb', 'a\nc')[1:], [' a', '-b', '+c'])

    def test_words_stand_for_what_is_of_this_run(self):
        place = pathlib.Path(tempfile.gettempdir())
        words = behaviour_record.Seen(place, pathlib.Path('/bin'), '127.0.0.1:5').words
        self.assertEqual(words(f'{place}/work/a in 15ms at 127.0.0.1:5'), 'WORK/a in TIMEms at CLOUD')
        self.assertEqual(words('hasLaunchSteamVR:false; switch: 1'),
                         'hasLaunchSteamVR:false; switch: 1')
        self.assertEqual(words('hasLaunchSteamVR:false; switch: 12'),
                         'hasLaunchSteamVR:false; switch: 2...')


if __name__ == '__main__':
    unittest.main()
