#!/usr/bin/env python3
"""Writes docs/limits.md: what odd and oversized files come to, with an older build and with this one.

usage: limits.py COMMAND --plugin FILE --before COMMAND --before-commit COMMIT --bombs-commits WORDS --figures FILE
                 --animations FOLDER... > PAGE
       limits.py COMMAND --plugin FILE --check PAGE

Both run the cases of cases.py. The first adds what they took, and what `check` takes for every animation in the folders, to the
figures of check_bombs.py, which take hours: `--sizes 100,1000,10000`, and for larger ones `--commands run,check,flatten` at least.
The second, a test, says whether each case still ends as the page has it, and whether the tests that it names are there.
"""
import argparse
import hashlib
import json
import multiprocessing
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import textwrap

import cases
import figures
from check_bombs import COMMANDS
from bombs import KINDS
from growth import fast_growing
from limited_run import SLOW, run

ROOT = pathlib.Path(__file__).resolve().parents[2]
SMALL = 35  # MB
SLOW_BEFORE = 15  # seconds after which an older build is ended
BUILDS = ("before", "now")
THREE = ("run", "check", "flatten")


def without_new_options(arguments):
    """What an older build knows of them."""
    at = arguments.index("--picture-time") if "--picture-time" in arguments else len(arguments)
    return arguments[:at] + arguments[at + 2:]  # without its value


def try_case(case, command, is_now):
    """Its input's size, its result, and what is wrong with that."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        case.make(folder)
        size = sum(file.stat().st_size for file in folder.glob("a.*") if file.is_file())
        environment = {key: value.format(folder=name) for key, value in case.environment.items()}
        feeder = subprocess.Popen(["sh", "-c", "exec cat /dev/zero > a.json"], cwd=name) if case.is_fed else None
        arguments, more = (case.arguments, {}) if is_now else (without_new_options(case.arguments), {"slow": SLOW_BEFORE})
        result = run(command, arguments, cwd=name, env=os.environ | environment, **more, **case.options)
        if feeder:
            feeder.kill()
            feeder.wait()
        problem = "" if result.code == case.code else f"ended with {result.code} and not with {case.code}"
        if not problem and (case.says not in result.said or "\x1b" in result.said):
            problem = f"does not say '{case.says}'"
        if not problem and not case.holds(folder):
            problem = "left the folder in another state"
        return size, result, problem


def sections(plugin):
    return {"numbers": cases.numbers(), "work": cases.work(), "files": cases.files(plugin)}


def command_text(case):
    return " ".join(case.arguments).encode("unicode_escape").decode().removesuffix(" a.json")


def key_of(build, case):
    return build, "case", case.name, command_text(case)


def is_test(name):
    """Whether there is a test or a program of tests with that name."""
    if "/" in name:
        return (ROOT / name).exists()
    group, _, test = name.partition(".")
    pattern = re.compile(rf"TEST(_F|_P)?\({group},\s*{test}\)")
    return any(pattern.search(file.read_text(encoding="utf-8")) for file in (ROOT / "tests").glob("*/*.cpp"))


def bytes_text(count):
    units = ((1e6, "MB"), (1e3, "kB"))
    return next((f"{count / unit:.1f} {name}" for unit, name in units if count >= unit), f"{count} bytes")


def table(columns, rows):
    def line(cells):
        return "| " + " | ".join(map(str, cells)) + " |\n"

    return line(columns) + "|---" * len(columns) + "|\n" + "".join(map(line, rows))


def sentence(result):
    """What was said, without the names of files and what a run says that went well."""
    said = re.sub(r"(?m)^\S*?(a\.json|exflate|/dev/zero|ends_early\.so): ", "", result.said)
    said = re.sub(r"(: )?1 nest of composition .*", "", said)
    said = ". ".join(filter(None, said.splitlines()))
    return said.replace("|", "\\|").encode("ascii", "backslashreplace").decode().replace("\x1b", "\\x1b")


def case_rows(known, chosen, has_sentences):
    for case in chosen:
        was, now = (known[key_of(build, case)] for build in BUILDS)
        said = [sentence(each.result) if has_sentences else "" for each in (was, now)]
        yield [case.name, f"`{command_text(case)}`", bytes_text(now.size) if now.size else "",
               *(f"{each.result}" + (f": {words}" if words else "") for each, words in zip((was, now), said)),
               *([f"`{case.test}`"] if case.test else [])]


def bomb_rows(known, sizes):
    for size in sizes:
        for kind in KINDS:
            row = [known.get(("now", kind, size, name)) for name in THREE]
            if any(row):
                yield [f"{kind} {size:,}", bytes_text(next(filter(None, row)).size), *(figure.result if figure else "" for figure in row)]


def bombs_now(known):
    """Results by kind, size and command."""
    return {key[1:]: figure.result for key, figure in known.items() if key[0] == "now" and key[1] in KINDS}


def sizes_of(bombs):
    return sorted({size for _, size, _ in bombs})


def slowest_rows(bombs):
    for kind in KINDS:
        row = [kind]
        for size in sizes_of(bombs):
            here = {name: result for (each, of, name), result in bombs.items() if (each, of) == (kind, size)}
            slowest = max(here, key=lambda name: here[name].seconds, default=None)
            row.append(f"`{slowest}`: {here[slowest]}" if here else "")
        yield row


def count_rows(bombs):
    for size in sizes_of(bombs):
        here = {key: result for key, result in bombs.items() if key[1] == size}
        codes = [result.code for result in here.values()]
        yield [f"{size:,}", len({kind for kind, _, _ in here}), len({name for _, _, name in here}), len(here),
               *(sum(code in counted for code in codes) for counted in ((0, 1), (2,), (3,), (4,))), sum(code < 0 for code in codes),
               f"{max(result.seconds for result in here.values()):.1f} s", f"{max(result.megabytes for result in here.values()):.0f} MB"]


def animation_digest(file):
    """Of its bytes; None if it is no animation."""
    content = file.read_bytes()
    try:
        read = json.loads(content)
    except ValueError:
        return None
    is_one = isinstance(read, dict) and isinstance(read.get("layers"), list) and "fr" in read and "op" in read
    return hashlib.sha256(content).hexdigest() if is_one else None


def animations_in(folders):
    """Each once, whatever its name, by its digest."""
    files = sorted(file for folder in folders for file in pathlib.Path(folder).rglob("*.json"))
    with multiprocessing.Pool(1) as apart:  # its memory does not count as this process's
        return {digest: file for digest, file in zip(apart.map(animation_digest, files), files) if digest}


def measure_animations(commands, folders, known, file):
    for digest, path in animations_in(folders).items():
        for build in BUILDS:
            key = (build, "animation", digest, "check")
            if key not in known:
                figures.add(file, key, path.stat().st_size, run(commands[build], ["check", path]))


def animation_rows(known):
    chosen = {build: [figure for key, figure in known.items() if key[:2] == (build, "animation")] for build in BUILDS}
    for build, all_of_it in chosen.items():
        times = [figure.result.seconds for figure in all_of_it]
        slowest = max(all_of_it, key=lambda figure: figure.result.seconds)
        yield [build, len(all_of_it), bytes_text(sum(figure.size for figure in all_of_it)), f"{sum(times):.1f} s",
               f"{max(times):.2f} s ({bytes_text(slowest.size)})", sum(time > 1 for time in times),
               f"{max(figure.result.megabytes for figure in all_of_it):.0f} MB"]


HEAD = """# Limits

What the command does with files that ask for more than can be held or done, and with files that are odd in ways that players take.
`tests/bombs/limits.py` has made this page: it makes each input and runs the command from before there were these limits ("before",
commit {before}) and today's ("now") on it, with 2 GB of address space and {slow} s of the processor's time ({slow_before} s for
"before"). A cell gives the exit code, the processor's time with all child processes, and the resident memory of the largest
process. Small figures of memory, below {small} MB, are those of the process that starts the command. A negative exit code is the
signal that ended it. Bombs take hours: their figures are of {bombs_commits}.

The test `bombs.limits` runs the cases of the first three tables again and compares exit codes and sentences with this page. The last
column names a test of the same thing, seen from nearer.

## Numbers, and what players take

"""

WORK = """
## Work and pictures

Some files are small and ask for a great deal of work. What a command does with one file is counted in steps: what a run makes
the plug-in walk past and copy, what is written anew, what the judge looks at, what is done to mend a look. Beyond 800 million
of them, which take some ten seconds (up to 23 in the figures below, of a busy machine), `run`, `check` and `report` end with exit
code 3 and one sentence, and `flatten` leaves the rest as it is. The count is the same on every machine. Real files take a
hundredth of it. Pictures are drawn in a child process with a limit of memory, and all of a file have one budget of time,
`--picture-time`; a nest without pictures says why.

`tests/bombs/bombs.py` makes the animations; a case is their kind and size. "Before" there was no `--picture-time`.

"""

FILES = """
## Files, terminals and other people's plug-ins

With what the command said, if it was not only that all went well.

"""

HELD = """
What no exit code shows:

"""

BOMBS = """
What remains: an expression can send its own frame elsewhere, which ends the animation; the browser opens a connection to that
place before it asks the page's policy, though it sends nothing.

## Bombs

The largest of each kind, today:

"""

COUNTS = """
A million of most kinds needs more memory than 2 GB, which is said in one sentence, with exit code 4.

## Every command on every bomb

"""

SLOWEST = """
None may be ended by a signal, and whatever ends with 2, 3 or 4 must say so in a sentence that names the file. The slowest command
line of each kind and size:

"""

GROWTH = """
## Growth

From one size to the next that ended with a result too, a command's time should grow no faster than N log N. Of {pairs} such pairs
whose longer time reaches {least} s, the time of {fast} grew to more than {slack} times that:

"""

REAL = """
`check`, `report` and the choosing modes of `run` try each nest by itself. In each try the plug-in, the writer and the judge walk
past all layers beside the nest, though they read and write only what changed: that is the square of the number of nests, if with a
small factor, until the limit of steps ends it with its sentence. Other programs were at work on the machine of these figures.

## Real animations

`check` of each different animation in npm packages (lottie-web, lottie-ios, lottie-react-native, react-useanimations and others)
and in Debian's sources of rlottie and of qt6-lottie:

"""


def command_lines():
    names = ", ".join(f"`{name}`" for name in COMMANDS)
    text = f"`tests/bombs/check_bombs.py` knows {len(KINDS)} kinds and {len(COMMANDS)} command lines: {names}."
    return textwrap.fill(text, 128, break_on_hyphens=False) + "\n\n"


def page(known, before, bombs_commits):
    bombs = bombs_now(known)
    chosen = sections("")
    columns = ["Case", "Command", "Input", "Before", "Now"]
    growth = fast_growing(bombs)
    return "".join((
        HEAD.format(before=before, bombs_commits=bombs_commits, slow=SLOW, slow_before=SLOW_BEFORE, small=SMALL),
        table([*columns, "Test"], case_rows(known, chosen["numbers"], False)),
        WORK, table(columns, case_rows(known, chosen["work"], False)),
        FILES, table([*columns, "Test"], case_rows(known, chosen["files"], True)),
        HELD, table(["What is held", "Test"], ([what, f"`{test}`"] for what, test in cases.HELD)),
        BOMBS, table(["Bomb", "Input", *(f"`{name}`" for name in THREE)], bomb_rows(known, (100_000, 1_000_000))),
        COUNTS, command_lines(),
        table(["Size", "Kinds", "Commands", "Runs", "Exit 0, 1", "Exit 2", "Exit 3", "Exit 4", "Signal", "Longest", "Largest"],
              count_rows(bombs)),
        SLOWEST, table(["Bomb", *(f"{size:,}" for size in sizes_of(bombs))], slowest_rows(bombs)),
        GROWTH.format(pairs=growth.pairs, least=growth.least, fast=len(growth.fast), slack=growth.slack),
        table(["Bomb", "Command", "From", "Time", "To", "Time", "Times as long", "N log N"], growth.fast),
        REAL, table(["Build", "Animations", "Size", "Time of all", "Slowest", "Slower than 1 s", "Memory"], animation_rows(known))))


def check(command, plugin, document):
    """How many cases end otherwise than they should, or than the document says."""
    lines = pathlib.Path(document).read_text(encoding="utf-8").splitlines()
    problems = 0
    for case in sum(sections(plugin).values(), []):
        _, result, problem = try_case(case, command, True)
        begin = f"| {case.name} | `{command_text(case)}` |"
        rows = [line for line in lines if line.startswith(begin)]
        if not problem and not (len(rows) == 1 and re.match(rf" {case.code}, \d", rows[0].split("|")[5])):
            problem = f"stands in {document} with another exit code, or not at all"
        if not problem and case.test and not is_test(case.test):
            problem = f"there is no test {case.test}"
        if problem:
            problems += 1
            print(f"{case.name}: {problem}", result.said, sep="\n    ")
    for what, test in cases.HELD:
        if not is_test(test):
            problems += 1
            print(f"{what}: there is no test {test}")
    return problems


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command", type=os.path.abspath)
    parser.add_argument("--plugin", type=os.path.abspath, required=True, help="ends_early.so of the command's tests")
    parser.add_argument("--check", help="the page to compare with")
    parser.add_argument("--before", type=os.path.abspath, help="an older build of the command")
    parser.add_argument("--before-commit", default="", help="what it was built from")
    parser.add_argument("--bombs-commits", default="", help="what the figures of bombs are of")
    parser.add_argument("--figures", help="those of check_bombs.py; more are added")
    parser.add_argument("--animations", nargs="*", default=[], help="folders")
    options = parser.parse_args()
    if options.check:
        return 1 if check(options.command, options.plugin, options.check) else 0
    commands = dict(zip(BUILDS, (options.before, options.command)))
    known = figures.read(options.figures)
    for case in sum(sections(options.plugin).values(), []):
        for build in BUILDS:
            if key_of(build, case) not in known:
                size, result, problem = try_case(case, commands[build], build == "now")
                figures.add(options.figures, key_of(build, case), size, result)
                if problem and build == "now":
                    print(f"{case.name}: {problem}", result.said, sep="\n    ", file=sys.stderr)
    measure_animations(commands, options.animations, known, options.figures)
    print(page(figures.read(options.figures), options.before_commit, options.bombs_commits), end="")
    return 0


if __name__ == "__main__":
    sys.exit(main())
