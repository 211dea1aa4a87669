# All mutants of a tree, in a fixed order, each with an identity that outlives changes elsewhere in its file.
import hashlib
from pathlib import Path
from typing import NamedTuple

from mutation import constants
from mutation.first_values import unread_first_values
from mutation.operators import OPERATORS
from mutation.sources import Source

PATTERNS = ('plugin/src/*.cpp', 'plugin/src/*.h', 'plugin/scripts/*.jsx')
# Built on another platform only.
NOT_BUILT = ('plugin/src/platform_text_utf16.cpp', 'plugin/src/utf16_core_foundation.cpp')
DECLARATIONS = ('aegp/include/**/*.h', 'plugin/src/*.h', 'plugin/src/*.cpp')


class Names(NamedTuple):
    neighbour: dict
    versions: dict


class Mutant(NamedTuple):
    path: str      # within the tree
    line: int
    operator: str
    text: str      # the whole mutated file
    identity: str  # the first line says file, function and operator, the others are removed (-) and added (+) lines
    digest: str    # of the file without the mutation


def read(path):
    return path.read_bytes().decode('utf-8')


def names_of(root):
    texts = [read(path) for pattern in DECLARATIONS for path in sorted(root.glob(pattern))]
    suites = root / 'aegp/include/suites.def'
    return Names(constants.families(texts), constants.suite_versions(read(suites) if suites.exists() else ''))


def source_paths(root, chosen):
    """Paths within the tree, those that a choice names or all."""
    paths = [str(path.relative_to(root)) for pattern in PATTERNS for path in sorted(root.glob(pattern))]
    return [path for path in paths if path not in NOT_BUILT and (not chosen or any(name in path for name in chosen))]


def all_mutants(root, chosen=()):
    names = names_of(root)
    return [mutant for path in source_paths(root, chosen) for mutant in mutants_of(path, read(root / path), names)]


def mutants_of(path, text, names):
    source = Source(path, text)
    digest = hashlib.sha256(text.encode()).hexdigest()
    unread = [] if source.is_script else list(unread_first_values(source))
    found = {}
    for operator, edits in OPERATORS.items():
        for start, end, replacement in edits(source, names):
            mutated = text[:start] + replacement + text[end:]
            is_unread = any(first <= start and end <= last for first, last in unread)
            if mutated != text and mutated not in found and not is_unread:
                found[mutated] = (start, operator)
    mutants = []
    seen = {}
    for mutated, (start, operator) in sorted(found.items(), key=lambda item: item[1][0]):
        place = f'{path}, {source.function_at(start) or "outside of functions"}, {operator}'
        lines = changed_lines(text, mutated)
        seen[place, lines] = seen.get((place, lines), 0) + 1
        which = f' (number {seen[place, lines]})' if seen[place, lines] > 1 else ''
        mutants.append(Mutant(path, text.count('\n', 0, start) + 1, operator, mutated, f'{place}{which}\n{lines}', digest))
    return mutants


def changed_lines(before, after):
    """The lines that differ, without their indentation."""
    old, new = before.split('\n'), after.split('\n')
    while old and new and old[0] == new[0]:
        del old[0], new[0]
    while old and new and old[-1] == new[-1]:
        del old[-1], new[-1]
    return '\n'.join(['- ' + line.strip() for line in old] + ['+ ' + line.strip() for line in new])
