# What is said about outcomes: the file of explained survivors, complaints, the score, earlier results.
#   records_test.py <folder of the tool>
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, sys.argv.pop())

from mutation.mutants import Mutant  # noqa: E402
from mutation.records import Results, complaints, read_explained, summary  # noqa: E402


def mutant(name):
    return Mutant('plugin/src/a.cpp', 1, 'off by one', name, f'plugin/src/a.cpp, f, off by one\n- a\n+ {name}', 'digest')


ONE, TWO, THREE, FOUR = map(mutant, ('one', 'two', 'three', 'four'))


class InFolder(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.file = Path(self.folder.name) / 'file'

    def tearDown(self):
        self.folder.cleanup()


class Explained(InFolder):
    def test_blocks_are_a_reason_and_an_identity(self):
        self.file.write_text(f'# A remark.\n\nNobody reads\nit.\n{ONE.identity}\n\n\nNeither.\n{TWO.identity}\n')
        self.assertEqual(read_explained(self.file), {ONE.identity: 'Nobody reads it.', TWO.identity: 'Neither.'})

    def test_an_entry_without_a_reason_or_twice_is_refused(self):
        for text in (f'{ONE.identity}\n', f'Yes.\n{ONE.identity}\n\nYes.\n{ONE.identity}\n'):
            self.file.write_text(text)
            self.assertRaises(ValueError, read_explained, self.file)

    def test_no_file_explains_nothing(self):
        self.assertEqual(read_explained(self.file), {})


class Complaints(unittest.TestCase):
    def test_are_about_unexplained_survivors_and_explanations_that_do_not_hold(self):
        explained = {TWO.identity: 'Yes.', THREE.identity: 'Yes.', FOUR.identity: 'Yes.'}
        outcomes = {ONE: 'survived', TWO: 'survived', THREE: 'killed'}
        found = complaints(outcomes, {ONE.identity, TWO.identity, THREE.identity}, explained)
        self.assertEqual([text.split('\n')[0] for text in found],
                         ['survived without an explanation, line 1:', 'explained as a survivor, but killed:',
                          'explained, but no such mutant is made:'])

    def test_a_mutant_that_was_not_tried_may_be_explained(self):
        self.assertEqual(complaints({}, {ONE.identity}, {ONE.identity: 'Yes.'}), [])


class Summary(unittest.TestCase):
    def test_counts_each_outcome_and_scores_what_was_built(self):
        outcomes = {ONE: 'killed', TWO: 'timeout', THREE: 'survived', FOUR: 'unbuildable'}
        self.assertEqual(summary(outcomes, {}).split('\n')[-1], '| **all** | 4 | 1 | 1 | 0 | 1 | 1 | 66.7 % |')
        self.assertEqual(summary(outcomes, {THREE.identity: 'Yes.'}).split('\n')[-1],
                         '| **all** | 4 | 1 | 1 | 1 | 0 | 1 | 66.7 % |')


class Resuming(InFolder):
    def test_takes_over_all_but_survivors_of_the_same_file(self):
        first = Results(self.file, False)
        first.add(ONE, 'killed', 'a test')
        first.add(TWO, 'survived', '')
        first.add(THREE, 'unbuildable', '')
        again = Results(self.file, True)
        self.assertEqual([again.known(m) for m in (ONE, TWO, THREE, FOUR)], ['killed', None, 'unbuildable', None])
        self.assertIsNone(again.known(ONE._replace(digest='other')))

    def test_is_not_done_unless_asked_for(self):
        Results(self.file, False).add(ONE, 'killed', 'a test')
        self.assertIsNone(Results(self.file, False).known(ONE))


if __name__ == '__main__':
    unittest.main()
