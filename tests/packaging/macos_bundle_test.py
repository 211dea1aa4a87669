"""The bundle for macOS, as far as it can be judged without a Mac: its files, their content, and that it says what is missing.

    macos_bundle_test.py CMAKE ASSEMBLER TREE VERSION    TREE is dist/macos of a build on another system
"""
import plistlib
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import readers

CMAKE = ASSEMBLER = TREE = VERSION = None

WITHOUT_CODE = [
    'Exflate.plugin/Contents/Info.plist', 'Exflate.plugin/Contents/PkgInfo',
    'Exflate.plugin/Contents/Resources/Exflate.rsrc', 'INSTALL.txt']


def files_under(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob('*') if not path.is_dir())


class Tree(unittest.TestCase):
    def test_made_elsewhere_has_everything_but_code_and_says_so(self):
        self.assertEqual(files_under(TREE), ['Exflate.plugin.cdx.json'] + WITHOUT_CODE + ['NOT-BUILT-HERE.txt'])

    def test_property_list_says_what_the_application_looks_for(self):
        content = (TREE / 'Exflate.plugin/Contents/Info.plist').read_bytes()
        self.assertEqual(plistlib.loads(content, fmt=plistlib.FMT_XML), {
            'CFBundleExecutable': 'Exflate',
            'CFBundleIdentifier': 'org.exflate.Exflate',
            'CFBundleInfoDictionaryVersion': '6.0',
            'CFBundleName': 'Exflate',
            'CFBundlePackageType': 'AEgx',
            'CFBundleShortVersionString': VERSION,
            'CFBundleSignature': 'FXTC',
            'CFBundleVersion': VERSION,
            'LSRequiresCarbon': True,
        })

    def test_package_information_is_type_and_creator(self):
        self.assertEqual((TREE / 'Exflate.plugin/Contents/PkgInfo').read_bytes(), b'AEgxFXTC')

    def test_resource_names_the_entry_point_for_both_processors(self):
        [resource] = readers.resources_of((TREE / 'Exflate.plugin/Contents/Resources/Exflate.rsrc').read_bytes())
        self.assertEqual((resource.kind, resource.number, len(resource.data)), (b'PiPL', 16000, 148))
        properties = dict(readers.macos_properties(resource.data))
        self.assertEqual(properties['kind'], b'AEgx')
        self.assertEqual(readers.pascal_string(properties['name']), 'Exflate')
        self.assertEqual(readers.pascal_string(properties['ma64']), 'EntryPointFunc')
        self.assertEqual(readers.pascal_string(properties['mi64']), 'EntryPointFunc')


class Assembling(unittest.TestCase):
    """With a stand-in for the module and for the signer."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.output = self.folder / 'made'
        parts = self.folder / 'parts'
        parts.mkdir()
        for name in ('Info.plist', 'PkgInfo', 'Exflate.rsrc'):
            (parts / name).write_text(name)
        self.module = self.folder / 'libmodule.so'
        self.module.write_bytes(b'stand-in')

    def assemble(self, *options):
        return subprocess.run([CMAKE, '-DNAME=Exflate', f'-DPARTS={self.folder}/parts', f'-DOUTPUT={self.output}', *options,
                               '-P', ASSEMBLER], stdout=subprocess.PIPE, stderr=subprocess.STDOUT).returncode

    def signer(self, exit_code):
        """A program that notes its arguments and what stands in the bundle, and ends with the code."""
        program = self.folder / 'sign'
        program.write_text(f'#!/bin/sh\necho "$@" >> {self.folder}/signed\n'
                           f'(cd {self.output} && find . -type f | sort) >> {self.folder}/signed\nexit {exit_code}\n')
        program.chmod(0o755)
        return f'-DCODESIGN={program}'

    def test_puts_the_module_in_place_under_the_bundles_name(self):
        self.assertEqual(self.assemble(f'-DMODULE={self.module}'), 0)
        self.assertEqual(files_under(self.output), sorted([*WITHOUT_CODE, 'Exflate.plugin/Contents/MacOS/Exflate']))
        self.assertEqual((self.output / 'Exflate.plugin/Contents/MacOS/Exflate').read_bytes(), b'stand-in')

    def test_leaves_nothing_of_an_earlier_tree(self):
        self.assertEqual(self.assemble(), 0)
        (self.output / 'Exflate.plugin/Contents/old').write_text('')
        self.assertEqual(self.assemble(f'-DMODULE={self.module}'), 0)
        self.assertNotIn('NOT-BUILT-HERE.txt', files_under(self.output))
        self.assertNotIn('Exflate.plugin/Contents/old', files_under(self.output))

    def test_signs_the_whole_bundle_last(self):
        self.assertEqual(self.assemble(f'-DMODULE={self.module}', self.signer(0)), 0)
        listing = [f'./{name}' for name in files_under(self.output)]
        bundle = self.output / 'Exflate.plugin'
        self.assertEqual((self.folder / 'signed').read_text().splitlines(),
                         [f'--force --sign - {bundle}', *listing, f'--verify --strict {bundle}', *listing])

    def test_fails_when_signing_fails(self):
        self.assertNotEqual(self.assemble(f'-DMODULE={self.module}', self.signer(1)), 0)


if __name__ == '__main__':
    CMAKE, ASSEMBLER, TREE, VERSION = sys.argv[1:5]
    TREE = Path(TREE)
    del sys.argv[1:5]
    unittest.main()
