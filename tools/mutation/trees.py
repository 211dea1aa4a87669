# A worker's own copy of the tree and its build, in which one file at a time is mutated.
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
from collections import Counter
from pathlib import Path

LEFT_OUT = {'.git', 'build', 'node_modules', '__pycache__'}
# A mutant that allocates without end must not take the machine with it.
MEMORY_LIMIT = 2 << 30
# Tests that are run by themselves before all the others.
LIKELY_KILLERS = 12
# What puts the scripts into the plug-in, and what does so in the copies.
EMBEDDING = Path('cmake/embed_files.cmake')
READING = Path(__file__).parent / 'read_scripts.cmake'


class Broken(Exception):
    """The tree does not build, or its tests fail, without any mutation."""


class Tree:
    """One copy. The folders are those of the tests, the likeliest killers first; jobs is for the first build."""

    def __init__(self, root, folder, test_folders, jobs):
        self.jobs = jobs
        self.root = folder / 'tree'
        self.build = folder / 'build'
        self.common = folder / 'common.h'
        self._copy(root)
        self._configure()
        self.suites = [Suite(path) for tests in test_folders for path in self._build_programs(tests)]
        self.unmutated = set(self.suites)  # those whose program was built without a mutation

    def try_mutant(self, mutant):
        """(outcome, the program and test that noticed): 'unbuildable', 'killed', 'timeout' or 'survived'. Raises Broken if
        the tree is not built without the mutation either."""
        path = self.root / mutant.path
        original = path.read_bytes()
        path.write_bytes(mutant.text.encode())
        try:
            for suite in self._order(mutant):
                if not self._is_built(suite, mutant):
                    path.write_bytes(original)
                    must(['ninja', '-C', self.build, '-j1', suite.path.name])
                    return 'unbuildable', ''
                outcome, by = suite.run(mutant.path)
                if outcome != 'passed':
                    return outcome, by
            return 'survived', ''
        finally:
            path.write_bytes(original)

    def _is_built(self, suite, mutant):
        is_script = mutant.path.endswith('.jsx')
        if is_script and suite in self.unmutated:  # it reads the scripts itself
            return True
        self.unmutated.discard(suite)
        # One job: the workers run side by side.
        done = subprocess.run(['ninja', '-C', self.build, '-j1', suite.path.name], capture_output=True)
        if is_script:
            self.unmutated.add(suite)
        return done.returncode == 0

    def _order(self, mutant):
        """Within its folder, the program that killed most mutants of the file comes first."""
        folders = list(dict.fromkeys(suite.path.parent for suite in self.suites))
        return sorted(self.suites, key=lambda suite: (folders.index(suite.path.parent), -suite.kills_in(mutant.path)))

    def _copy(self, root):
        """Brings the copy up to date; files that are the same keep their times, so that little is built again."""
        # Without the stand-in a script would be embedded when a program is built, and its mutants never run.
        if any(root.glob('plugin/scripts/*')) and not (root / EMBEDDING).exists():
            raise Broken(f'{EMBEDDING} is not there')
        wanted = set()
        for folder, names, files in os.walk(root):
            names[:] = [name for name in names if name not in LEFT_OUT]
            for name in files:
                source = Path(folder) / name
                target = self.root / source.relative_to(root)
                if target == self.root / EMBEDDING:
                    source = READING
                wanted.add(target)
                if not target.exists() or target.read_bytes() != source.read_bytes():
                    target.parent.mkdir(parents=True, exist_ok=True)
                    shutil.copy(source, target)
        for folder, _, files in os.walk(self.root):
            for name in files:
                if Path(folder) / name not in wanted:
                    (Path(folder) / name).unlink()
        modules = Path('tests/node_modules')
        if (root / modules).exists() and not (self.root / modules).exists():
            (self.root / modules).symlink_to(root / modules)

    def _configure(self):
        linker = next((name for name in ('mold', 'lld') if shutil.which(name)), None)
        flags = [f'-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld={linker}' for kind in ('EXE', 'MODULE')] if linker else []
        text = ''.join(f'#include {header}\n' for header in common_headers(self.root))
        is_new = not self.common.exists() or self.common.read_text() != text
        if is_new:
            self.common.write_text('')  # CMake tries the compiler with it, before our folders are known
        must(['cmake', '-S', self.root, '-B', self.build, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=',
              '-DCMAKE_EXPORT_COMPILE_COMMANDS=ON', f'-DCMAKE_CXX_FLAGS=-O0 -w -include {self.common}', *flags])
        if is_new:
            self.common.write_text(text)
            self._precompile()

    def _precompile(self):
        """Compiles the common headers once, with the flags of the plug-in's units."""
        commands = json.loads((self.build / 'compile_commands.json').read_text())
        unit = next((row for row in commands if '/plugin/src/' in row['file']), None)
        if unit:
            flags = shlex.split(unit['command'])
            del flags[flags.index('-include'):flags.index('-include') + 2]
            del flags[flags.index('-o'):]
            must([*flags, '-x', 'c++-header', self.common, '-o', f'{self.common}.gch'])

    def _build_programs(self, tests):
        must(['ninja', '-C', self.build, f'-j{self.jobs}', f'{tests}/all'])
        programs = sorted(path for path in (self.build / tests).iterdir() if path.is_file() and os.access(path, os.X_OK))
        if not programs:
            raise Broken(f'no test programs in {tests}')
        return programs


class Suite:
    """A test program. Remembers which of its tests noticed mutants, to run those first."""

    def __init__(self, path):
        self.path = path
        self.kills = {}  # path of the mutated file -> Counter of tests
        self.seconds = 600
        began = os.times()
        if self._execute([])[0] != 'passed':
            raise Broken(f'{path.name} fails without any mutation')
        ended = os.times()
        # Processor time, which other programs on the machine do not stretch.
        self.seconds = 2 + int(5 * (ended.children_user + ended.children_system - began.children_user - began.children_system))

    def kills_in(self, path):
        return sum(self.kills.get(path, Counter()).values())

    def run(self, path):
        """('passed', 'killed' or 'timeout', what noticed) for a mutation in the file."""
        killers = self.kills.setdefault(path, Counter())
        likely = [test for test, _ in killers.most_common(LIKELY_KILLERS) if test]
        outcome, test = self._execute([f'--gtest_filter={":".join(likely)}']) if likely else ('passed', '')
        if outcome == 'passed':
            outcome, test = self._execute([])
        if outcome != 'passed':
            killers[test] += 1
        return outcome, f'{self.path.name} {test}'.strip()

    def _execute(self, arguments):
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_CPU, (self.seconds, self.seconds + 1))
        try:
            done = subprocess.run([self.path, '--gtest_fail_fast', '--gtest_brief=1', *arguments], cwd=self.path.parent,
                                  timeout=100 * self.seconds, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, preexec_fn=limit)
        except subprocess.TimeoutExpired:
            return 'timeout', ''
        if done.returncode == 0:
            return 'passed', ''
        failed = re.search(rb'^\[  FAILED  \] ([^\s,]+)', done.stdout, re.MULTILINE)
        outcome = 'timeout' if -done.returncode in (signal.SIGXCPU, signal.SIGKILL) else 'killed'
        return outcome, failed.group(1).decode() if failed else ''


def must(command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise Broken(f'{" ".join(map(str, command))}\n{done.stdout[-4000:]}')


def common_headers(root):
    """What the plug-in's units include from outside: the C++ library, and the declarations of the host."""
    found = set()
    for path in root.glob('plugin/src/*'):
        for header in re.findall(r'^#include ([<"][\w.]+[>"])', path.read_text(encoding='utf-8'), re.MULTILINE):
            if (header[0] == '<' and '.' not in header) or (root / 'aegp/include' / header[1:-1]).exists():
                found.add(header)
    return sorted(found, reverse=True)
