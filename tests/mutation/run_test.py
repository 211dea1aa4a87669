# The whole tool on a made project: a weak test leaves survivors, a better one does not.
#   run_test.py <folder of the tool>
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path(sys.argv.pop()) / 'mutate'

PROJECT = {
    'CMakeLists.txt': 'cmake_minimum_required(VERSION 3.24)\nproject(made CXX)\nadd_subdirectory(tests/plugin)\n',
    'tests/plugin/CMakeLists.txt': 'add_executable(gate_tests gate_test.cpp ../../plugin/src/gate.cpp ../../plugin/src/wall.cpp)\n'
                                   'target_include_directories(gate_tests PRIVATE ../../aegp/include)\n',
    'aegp/include/bricks.h': '',
    'plugin/src/wall.cpp': '#include "bricks.h"\n',  # which no compiler finds before it is told where
    'plugin/src/gate.cpp': '''int digits(int n) {
    int count = 1;
    for (; n >= 10; ++count) {
        n /= 10;
    }
    return count;
}

bool is_open(int age) {
    static_assert(sizeof(int) == 4);
    return age >= 18;
}
''',
}
TEST = '''bool is_open(int);
int digits(int);
int main() {{ return {} && digits(9) == 1 && digits(10) == 2 && digits(99) == 2 && digits(100) == 3 ? 0 : 1; }}
'''
WEAK = 'is_open(30) && !is_open(3)'
STRONG = 'is_open(18) && !is_open(17)'
BOUNDARY = 'plugin/src/gate.cpp, is_open, neighbouring comparison\n- return age >= 18;\n+ return age > 18;'
LATER = 'plugin/src/gate.cpp, is_open, off by one\n- return age >= 18;\n+ return age >= 19;'
EARLIER = 'plugin/src/gate.cpp, is_open, off by one\n- return age >= 18;\n+ return age >= 17;'

SCRIPT_PROJECT = {
    'CMakeLists.txt': PROJECT['CMakeLists.txt'],
    'cmake/embed_files.cmake': (TOOL.parent.parent / 'cmake/embed_files.cmake').read_text(),
    'tests/plugin/CMakeLists.txt': '''set(root "${CMAKE_SOURCE_DIR}")
add_custom_command(OUTPUT scripts.cpp
  COMMAND "${CMAKE_COMMAND}" "-DFILES=${root}/plugin/scripts/gate.jsx" -DOUTPUT=scripts.cpp -DHEADER=scripts.h -DTYPE=Script
          -DTABLE=scripts -P "${root}/cmake/embed_files.cmake"
  DEPENDS "${root}/plugin/scripts/gate.jsx" "${root}/cmake/embed_files.cmake")
add_executable(script_tests script_test.cpp scripts.cpp ../../plugin/src/wall.cpp)
target_include_directories(script_tests PRIVATE ../../plugin/src)
''',
    'plugin/src/scripts.h': 'struct Script { const char* name; const char* text; unsigned long size; };\nextern const Script scripts[];\n',
    'plugin/src/wall.cpp': 'int height() {\n    return 3;\n}\n',
    'plugin/scripts/gate.jsx': 'gate.isOpen = true;\ngate.isGreen = true;\n',
    'tests/plugin/script_test.cpp': '''#include <cstring>
#include "scripts.h"
int height();
int main() { return height() == 3 && std::strstr(scripts[0].text, "isOpen = true") != nullptr ? 0 : 1; }
''',
}


class Run(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = Path(self.folder.name) / 'made'

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def mutate(self, *arguments):
        return subprocess.run([sys.executable, '-B', TOOL, '--root', self.root, '--work', self.root / 'build/mutate', '--workers',
                               '1', '--tests', 'tests/plugin', *arguments], text=True, capture_output=True)

    def test_scripts(self):
        for name, text in SCRIPT_PROJECT.items():
            self.write(name, text)
        done = self.mutate()
        self.assertEqual(done.returncode, 1, done.stderr)
        killed, survived = (done.stdout.split('flip true and false | ')[1].split(' | ')[column] for column in (1, 4))
        self.assertEqual((killed, survived), ('1', '1'), 'each mutant of a script is run by itself')
        self.assertIn('isGreen = true;\n+ gate.isGreen = false;', done.stdout)

    def test_a_build_that_fails_without_a_mutation_too_is_no_outcome(self):
        for name, text in PROJECT.items():
            self.write(name, text)
        fuel = Path(self.folder.name) / 'fuel'
        fuel.touch()
        self.write('tests/plugin/CMakeLists.txt', PROJECT['tests/plugin/CMakeLists.txt'] +
                   f'set_source_files_properties(gate_test.cpp PROPERTIES OBJECT_DEPENDS "{fuel}")\n')
        self.write('tests/plugin/gate_test.cpp', f'#include <cstdio>\nint main() {{ std::remove("{fuel}"); }}\n')
        done = self.mutate()
        self.assertEqual(done.returncode, 2, done.stdout)
        self.assertIn('fuel', done.stderr)

    def test_story(self):
        for name, text in PROJECT.items():
            self.write(name, text)

        # A weak test leaves survivors, and the tool fails.
        self.write('tests/plugin/gate_test.cpp', TEST.format(WEAK))
        weak = self.mutate()
        self.assertEqual(weak.returncode, 1, weak.stderr)
        for identity in (BOUNDARY, LATER, EARLIER):
            self.assertIn(f'line 11:\n{identity}', weak.stdout)
        self.assertIn('3 to mend', weak.stdout)
        total = weak.stdout.split('**all** | ')[1].split('\n')[0].split(' | ')
        mutants, _, timeouts, _, survived, unbuildable = map(int, total[:6])
        self.assertEqual(survived, 3)
        self.assertEqual(timeouts, 2, 'the loop that divides no more is endless, and so is the one with the negated guard')
        self.assertEqual(unbuildable, 3, 'the static assertion is mutated in three ways')

        # Explained, they are no reason to fail, as long as they survive.
        explained = '\n\n'.join(f'It does not matter here.\n{identity}' for identity in (BOUNDARY, LATER, EARLIER))
        self.write('tools/mutation_survivors.txt', explained)
        resumed = self.mutate('--resume')
        self.assertEqual(resumed.returncode, 0, resumed.stdout + resumed.stderr)
        self.assertIn(f'{mutants} mutants, 3 to try', resumed.stderr)

        # A better test kills them, and the explanations have to go.
        self.write('tests/plugin/gate_test.cpp', TEST.format(STRONG))
        strong = self.mutate('--resume')
        self.assertEqual(strong.returncode, 1)
        self.assertEqual(strong.stdout.count('explained as a survivor, but killed'), 3)

        # So has an explanation of what is not a mutant any more.
        self.write('tools/mutation_survivors.txt', 'It does not matter.\n' + BOUNDARY.replace('18', '21'))
        check = self.mutate('--check')
        self.assertEqual(check.returncode, 1)
        self.assertIn('explained, but no such mutant is made', check.stdout)
        self.write('tools/mutation_survivors.txt', '')
        self.assertEqual(self.mutate('--check').returncode, 0)

        # Nothing is tried on a tree whose tests fail.
        self.write('tests/plugin/gate_test.cpp', TEST.format('false'))
        broken = self.mutate()
        self.assertEqual(broken.returncode, 2)
        self.assertIn('gate_tests fails without any mutation', broken.stderr)

        # A sample is the same for the same seed.
        lists = [self.mutate('--list', '--sample', '3', '--seed', seed).stdout for seed in ('a', 'a', 'b')]
        self.assertEqual(lists[0].count('plugin/src/gate.cpp'), 3)
        self.assertEqual(lists[0], lists[1])
        self.assertNotEqual(lists[0], lists[2])


if __name__ == '__main__':
    unittest.main()
