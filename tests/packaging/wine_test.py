"""The module for Windows, run under Wine: it does, call for call, what journals recorded on Linux tell.

    wine_test.py PROGRAMS MODULE JOURNALS    PROGRAMS is the folder of windows_replay.exe and resource_bytes.exe
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAMS = MODULE = JOURNALS = None
PREFIX = None  # Wine's own folder, with the Windows that it plays; 700 MB, made for this test and removed after it


def program_of_wine(name):
    # Debian keeps them out of PATH when only the 64-bit part is installed.
    found = shutil.which(name) or shutil.which(f'/usr/lib/wine/{name}')
    if not found:
        raise AssertionError(f'{name} is missing: run tools/setup test')
    return found


def environment():
    return {**{key: value for key, value in os.environ.items() if key not in ('DISPLAY', 'WAYLAND_DISPLAY')},
            'HOME': PREFIX.name, 'WINEPREFIX': f'{PREFIX.name}/wine', 'WINEDEBUG': '-all',
            'WINEDLLOVERRIDES': 'mscoree,mshtml,winemenubuilder.exe='}


def setUpModule():
    global PREFIX
    PREFIX = tempfile.TemporaryDirectory(prefix='exflate-wine-')
    # One server for all programs, for a minute after the last: left to itself it ends soon after each, and the next one may
    # meet it as it goes.
    Path(environment()['WINEPREFIX']).mkdir()
    subprocess.run([program_of_wine('wineserver64'), '--persistent=60'], env=environment(), timeout=60, check=True)


def tearDownModule():
    subprocess.run([program_of_wine('wineserver64'), '--kill', '--wait'], env=environment(), timeout=60)
    PREFIX.cleanup()


def run(program, *arguments):
    """(exit code, what it printed)"""
    done = subprocess.run([program_of_wine('wine64'), PROGRAMS / program, *arguments], env=environment(), timeout=240,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return done.returncode, done.stdout.decode().strip()


def replay(journal):
    return run('windows_replay.exe', MODULE, journal)


class Replay(unittest.TestCase):
    def test_of_every_journal_from_linux_shows_the_same_calls(self):
        journals = sorted(JOURNALS.glob('*.journal'))
        self.assertGreaterEqual(len(journals), 5)
        for journal in journals:
            with self.subTest(journal.name):
                lines = journal.read_bytes().split(b'\n')[:-1]
                if lines[-1] == b'end':
                    calls = sum(line.startswith(b'call ') for line in lines)
                    visits = sum(line.startswith(b'enter ') for line in lines)
                    sentence = f'the plug-in did the same: {calls} calls in {visits} visits'
                else:
                    sentence = f'the journal is cut after line {len(lines)}; up to there the plug-in did the same'
                self.assertEqual(replay(journal), (0, sentence))

    def test_of_names_beyond_the_basic_plane_is_among_them(self):
        names = (JOURNALS / 'names_of_all_planes.journal').read_text(encoding='utf-8')
        written = re.findall(r'(?:AEGP_SetLayerName\(layer#\d+, |AEGP_CreateNullInComp\()L"([^\n]*?)"', names)
        self.assertTrue(any(ord(character) > 0xFFFF for name in written for character in name), written)
        self.assertTrue(any('ö' in name for name in written), written)
        self.assertTrue(any(re.search(r'\\uD[89AB]', name) for name in written), f'no cut through a pair in {written}')

    def test_sees_a_single_changed_unit(self):
        journal = (JOURNALS / 'names_of_all_planes.journal').read_text(encoding='utf-8')
        changed, count = re.subn(r'(AEGP_SetLayerName\(layer#\d+, L")K', r'\1k', journal, count=1)
        self.assertEqual(count, 1)
        line = next(i for i, (a, b) in enumerate(zip(journal.split('\n'), changed.split('\n')), 1) if a != b)
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / 'changed.journal'
            file.write_text(changed, encoding='utf-8', newline='')
            code, sentence = replay(file)
        self.assertEqual(code, 1)
        self.assertTrue(sentence.startswith(f'line {line}: LayerSuite6.AEGP_SetLayerName, argument 2: expected L"k'), sentence)


class Resource(unittest.TestCase):
    def test_is_found_without_running_the_module(self):
        code, found = run('resource_bytes.exe', MODULE)
        self.assertEqual(code, 0)
        self.assertEqual(len(found), 2 * 118)
        self.assertTrue(found.startswith('010000000000'), found)


if __name__ == '__main__':
    PROGRAMS, MODULE, JOURNALS = map(Path, sys.argv[1:4])
    del sys.argv[1:4]
    unittest.main()
