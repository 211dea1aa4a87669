"""The module for Windows: what it asks of a machine, what it shows to the application, what it carries.

    windows_module_test.py MODULE VERSION
"""
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

import readers

MODULE = VERSION = None

# On every 64-bit Windows.
SYSTEM_LIBRARIES = {'kernel32.dll', 'msvcrt.dll'}


def output_of(*command):
    if not shutil.which(command[0]):
        raise AssertionError(f'{command[0]} is missing: run tools/setup test')
    return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout


def headers():
    return output_of('x86_64-w64-mingw32-objdump', '-p', MODULE).decode()


class Module(unittest.TestCase):
    def test_needs_only_libraries_of_the_system(self):
        needed = {name.lower() for name in re.findall(r'DLL Name: (\S+)', headers())}
        self.assertEqual(needed, SYSTEM_LIBRARIES)

    def test_exports_the_entry_point_and_nothing_else(self):
        table = re.search(r'\[Ordinal/Name Pointer\] Table\n((?:\t\[.*\n)+)', headers()).group(1)
        self.assertEqual(re.findall(r'\] (\S+)', table), ['EntryPointFunc'])

    def test_is_a_library_for_64_bit_windows_that_tells_no_time(self):
        content = MODULE.read_bytes()
        header = int.from_bytes(content[0x3C:0x40], 'little')
        self.assertEqual(content[header:header + 6], b'PE\0\0\x64\x86')
        self.assertEqual(content[header + 8:header + 12], bytes(4))
        self.assertTrue(int.from_bytes(content[header + 22:header + 24], 'little') & 0x2000)

    def test_tells_nothing_of_the_machine_that_built_it(self):
        self.assertNotIn(str(Path(__file__).resolve().parents[2]).encode(), MODULE.read_bytes())
        # The linker makes its own out of the output file's path, unless told otherwise.
        self.assertRegex(headers(), r'ImageBase\s+0000000180000000\n')

    def test_carries_the_property_resource(self):
        # Resource compilers write names in capitals, and Windows looks for them so.
        resource = output_of('wrestool', '--extract', '--raw', '--type=PIPL', '--name=16000', MODULE)
        self.assertEqual(len(resource), 118)
        properties = dict(readers.windows_properties(resource))
        self.assertEqual(properties['kind'], b'xgEA')
        self.assertEqual(readers.padded_pascal_string(properties['name']), 'Exflate')
        self.assertEqual(readers.padded_pascal_string(properties['catg']), 'General Plugin')
        self.assertEqual(readers.padded_text(properties['8664']), 'EntryPointFunc')

    def test_carries_its_version(self):
        resource = output_of('wrestool', '--extract', '--raw', '--type=16', MODULE).decode('utf-16-le', 'replace')
        self.assertIn(f'FileVersion\0\0{VERSION}\0', resource)
        numbers = [*map(int, VERSION.split('.')), 0]
        fixed = resource.encode('utf-16-le', 'replace')
        packed = b''.join(((numbers[i] << 16) + numbers[i + 1]).to_bytes(4, 'little') for i in (0, 2))
        self.assertIn(packed, fixed)


if __name__ == '__main__':
    MODULE, VERSION = Path(sys.argv[1]), sys.argv[2]
    del sys.argv[1:3]
    unittest.main()
