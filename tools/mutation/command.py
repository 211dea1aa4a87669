# The command: which mutants, tried by which workers, and what is said about it.
import argparse
import os
import queue
import random
import sys
import threading
from pathlib import Path

from mutation.mutants import all_mutants
from mutation.records import Results, complaints, read_explained, summary
from mutation.trees import Broken, Tree


def parse(arguments, root):
    parser = argparse.ArgumentParser(
        prog='mutate', description='Changes the plug-in\'s sources in one place at a time and tells which changes no test notices.')
    parser.add_argument('--root', type=Path, default=root, help='the tree (default: the one the tool stands in)')
    parser.add_argument('--work', type=Path, help='folder for the copies and builds (default: build/mutate in the tree)')
    parser.add_argument('--results', type=Path, help='file for the outcomes (default: results.jsonl in the work folder)')
    parser.add_argument('--resume', action='store_true', help='go on with an earlier results file; its survivors are tried again')
    parser.add_argument('--files', nargs='+', default=[], metavar='PART', help='only files whose path contains one of these')
    parser.add_argument('--sample', type=int, metavar='N', help='only N mutants, drawn by the seed')
    parser.add_argument('--seed', default='1', help='any text (default: 1)')
    parser.add_argument('--tests', nargs='+', default=['tests/plugin', 'tests/end_to_end'], metavar='FOLDER',
                        help='folders of test programs, likeliest killers first (default: tests/plugin tests/end_to_end)')
    parser.add_argument('--workers', type=int, default=2)
    parser.add_argument('--list', action='store_true', help='print the mutants and try none')
    parser.add_argument('--check', action='store_true', help='only check that every explained survivor is still a mutant')
    given = parser.parse_args(arguments)
    given.root = given.root.resolve()
    given.work = (given.work or given.root / 'build/mutate').resolve()
    given.results = given.results or given.work / 'results.jsonl'
    return given


def main(arguments, root):
    given = parse(arguments, root)
    every = all_mutants(given.root)
    chosen = [mutant for mutant in every if not given.files or any(part in mutant.path for part in given.files)]
    if given.sample is not None and given.sample < len(chosen):
        places = sorted(random.Random(given.seed).sample(range(len(chosen)), given.sample))
        chosen = [chosen[place] for place in places]
    if given.list:
        print('\n\n'.join(f'line {mutant.line} of {mutant.identity}' for mutant in chosen))
        return 0

    explained = read_explained(given.root / 'tools/mutation_survivors.txt')
    try:
        outcomes = {} if given.check else try_all(given, chosen)
    except Broken as broken:
        print(f'mutate: {broken}', file=sys.stderr)
        return 2
    if outcomes:
        print(summary(outcomes, explained))
    wrong = complaints(outcomes, {mutant.identity for mutant in every}, explained)
    for complaint in wrong:
        print(f'\n{complaint}')
    if wrong:
        print(f'\n{len(wrong)} to mend: add a test, or explain the survivor in tools/mutation_survivors.txt')
    return 1 if wrong else 0


def try_all(given, mutants):
    """Mutant -> outcome, in the order of the mutants."""
    results = Results(given.results, given.resume)
    outcomes = {mutant: results.known(mutant) for mutant in mutants}
    waiting = queue.SimpleQueue()
    for mutant, outcome in outcomes.items():
        if outcome is None:
            waiting.put(mutant)
    total = waiting.qsize()
    if total == 0:
        return outcomes
    print(f'mutate: {len(mutants)} mutants, {total} to try; sample seed {given.seed}', file=sys.stderr, flush=True)

    writing = threading.Lock()
    broken = []

    def work(number):
        try:
            tree = Tree(given.root, given.work / f'worker{number}', given.tests, max(1, (os.cpu_count() or 1) // workers))
            while not broken:
                mutant = waiting.get_nowait()
                outcome, by = tree.try_mutant(mutant)
                with writing:
                    outcomes[mutant] = outcome
                    results.add(mutant, outcome, by)
                    if outcome == 'survived':
                        print(f'mutate: survived: {mutant.identity}\n', file=sys.stderr, flush=True)
        except queue.Empty:
            return
        except Broken as problem:
            broken.append(problem)

    workers = min(given.workers, total)
    threads = [threading.Thread(target=work, args=(number,)) for number in range(1, workers + 1)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if broken:
        raise broken[0]
    return outcomes
