"""The property resource: the writer's bytes against bytes worked out by hand, its limits, and what a reader makes of them.

    pipl_test.py WRITER
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import readers

WRITER = None

MACOS = bytes.fromhex('''
    00000000 00000005
    3842494d 6b696e64 00000000 00000004 41456778
    3842494d 6e616d65 00000000 00000008 07457866 6c617465
    3842494d 63617467 00000000 0000000f 0e47656e 6572616c 20506c75 67696e00
    3842494d 6d613634 00000000 0000000f 0e456e74 7279506f 696e7446 756e6300
    3842494d 6d693634 00000000 0000000f 0e456e74 7279506f 696e7446 756e6300''')

WINDOWS = bytes.fromhex('''
    0100 00000000 04000000
    4d494238 646e696b 00000000 04000000 78674541
    4d494238 656d616e 00000000 08000000 07457866 6c617465
    4d494238 67746163 00000000 10000000 0e47656e 6572616c 20506c75 67696e00
    4d494238 34363638 00000000 10000000 456e7472 79506f69 6e744675 6e630000''')

RESOURCE_FILE = (
    bytes.fromhex('00000100 00000198 00000098 00000032') + bytes(240)
    + bytes.fromhex('00000094') + MACOS
    + bytes.fromhex('''00000100 00000198 00000098 00000032
                       00000000 00000000 001c 0032
                       0000 5069504c 0000 000a
                       3e80 ffff 00 000000 00000000'''))


def run(system, **changes):
    """(exit code, message, bytes or None)"""
    description = {'kind': 'AEgx', 'name': 'Exflate', 'category': 'General Plugin', 'entry_point': 'EntryPointFunc', **changes}
    options = [f'--{key.replace("_", "-")}={value}' for key, value in description.items()]
    with tempfile.TemporaryDirectory() as folder:
        output = Path(folder) / 'resource'
        done = subprocess.run([sys.executable, WRITER, system, *options, f'--output={output}'], stderr=subprocess.PIPE, text=True)
        return done.returncode, done.stderr, output.read_bytes() if output.exists() else None


def written(system, **changes):
    code, message, content = run(system, **changes)
    assert code == 0, message
    return content


class Bytes(unittest.TestCase):
    def test_for_macos_are_those_worked_out_by_hand(self):
        self.assertEqual(len(MACOS), 148)
        self.assertEqual(written('macos'), RESOURCE_FILE)

    def test_for_windows_are_those_worked_out_by_hand(self):
        self.assertEqual(len(WINDOWS), 118)
        self.assertEqual(written('windows'), WINDOWS)


class Reader(unittest.TestCase):
    def test_finds_one_resource_in_the_file_for_macos(self):
        self.assertEqual(readers.resources_of(written('macos')), [readers.Resource(b'PiPL', 16000, False, 0, MACOS)])

    def test_reads_back_texts_of_every_length(self):
        for length in (1, 2, 3, 4, 7, 46, 47):
            name = 'n' * length
            texts = {'name': name, 'category': 'c' * (length * 5), 'entry_point': 'e' * (length + 3)}
            [resource] = readers.resources_of(written('macos', **texts))
            self.assertEqual(
                [(key, data if key == 'kind' else readers.pascal_string(data))
                 for key, data in readers.macos_properties(resource.data)],
                [('kind', b'AEgx'), ('name', name), ('catg', texts['category']), ('ma64', texts['entry_point']),
                 ('mi64', texts['entry_point'])])
            properties = readers.windows_properties(written('windows', **texts))
            self.assertEqual([key for key, _ in properties], ['kind', 'name', 'catg', '8664'])
            kind, read_name, category, entry_point = [data for _, data in properties]
            self.assertEqual(kind, b'xgEA')
            self.assertEqual(readers.padded_pascal_string(read_name), name)
            self.assertEqual(readers.padded_pascal_string(category), texts['category'])
            self.assertEqual(readers.padded_text(entry_point), texts['entry_point'])


class Limits(unittest.TestCase):
    def refused(self, sentence, **changes):
        for system in ('macos', 'windows'):
            code, message, content = run(system, **changes)
            self.assertEqual((code, content), (1, None))
            self.assertIn(sentence, message)

    def test_of_a_name_are_1_and_47_characters(self):
        for system in ('macos', 'windows'):
            self.assertIn(b'\x2f' + b'n' * 47, written(system, name='n' * 47))
        self.refused('does not have 1 to 47 characters', name='n' * 48)
        self.refused('does not have 1 to 47 characters', name='')

    def test_of_other_texts_are_255_characters(self):
        for system in ('macos', 'windows'):
            self.assertIn(b'\xff' + b'c' * 255, written(system, category='c' * 255))
        self.refused('more than 255 characters', category='c' * 256)
        self.refused('more than 255 characters', entry_point='e' * 256)

    def test_leave_out_what_is_not_ascii(self):
        self.refused('is not all ASCII', name='Exflät')
        self.refused('is not a code of four ASCII characters', kind='AEg')
        self.refused('is not a code of four ASCII characters', kind='AEgxx')


if __name__ == '__main__':
    WRITER = sys.argv.pop(1)
    unittest.main()
