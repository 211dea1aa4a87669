# What is written down: outcomes of a run, and the survivors that are explained.
import json
from collections import Counter

OUTCOMES = ('killed', 'timeout', 'survived', 'unbuildable')


class Results:
    """One line for each mutant that was tried, written at once, so that a run that was cut short can go on."""

    def __init__(self, path, is_resumed):
        self.path = path
        self._known = {}
        if is_resumed and path.exists():
            for line in path.read_text(encoding='utf-8').splitlines():
                row = json.loads(line)
                self._known[row['identity'], row['digest']] = row
        path.parent.mkdir(parents=True, exist_ok=True)
        if not is_resumed:
            path.write_text('')

    def known(self, mutant):
        """The outcome in the earlier file. Survivors are tried again: tests may have been added."""
        row = self._known.get((mutant.identity, mutant.digest))
        return row['outcome'] if row and row['outcome'] != 'survived' else None

    def add(self, mutant, outcome, by):
        row = {'identity': mutant.identity, 'digest': mutant.digest, 'outcome': outcome, 'by': by}
        with self.path.open('a', encoding='utf-8') as file:
            file.write(json.dumps(row) + '\n')


def read_explained(path):
    """Identity -> reason. Blocks stand between empty lines: the reason, then the identity. Lines with # are remarks."""
    explained = {}
    text = path.read_text(encoding='utf-8') if path.exists() else ''
    for block in text.split('\n\n'):
        lines = [line for line in block.strip('\n').split('\n') if line and not line.startswith('#')]
        if not lines:
            continue
        place = next((i for i, line in enumerate(lines) if line.startswith('plugin/')), 0)
        reason = ' '.join(lines[:place])
        identity = '\n'.join(lines[place:])
        if not reason.endswith('.') or identity in explained:
            raise ValueError(f'{path.name}: an entry without a reason, or twice:\n{block}')
        explained[identity] = reason
    return explained


def complaints(outcomes, all_identities, explained):
    """What is wrong with the outcomes (mutant -> outcome) in the light of what is explained."""
    found = []
    for mutant, outcome in outcomes.items():
        if outcome == 'survived' and mutant.identity not in explained:
            found.append(f'survived without an explanation, line {mutant.line}:\n{mutant.identity}')
        elif outcome != 'survived' and mutant.identity in explained:
            found.append(f'explained as a survivor, but {outcome}:\n{mutant.identity}')
    for identity in explained:
        if identity not in all_identities:
            found.append(f'explained, but no such mutant is made:\n{identity}')
    return found


def summary(outcomes, explained):
    """A table by operator, as Markdown."""
    rows = ['| Operator | Mutants | Killed | By timeout | Equivalent | Survived | Not buildable | Score |',
            '|---|---|---|---|---|---|---|---|']
    operators = list(dict.fromkeys(mutant.operator for mutant in outcomes))
    for operator in [*sorted(operators), None]:
        of_it = {mutant: outcome for mutant, outcome in outcomes.items() if operator in (None, mutant.operator)}
        count = Counter(of_it.values())
        equivalent = sum(outcome == 'survived' and mutant.identity in explained for mutant, outcome in of_it.items())
        rows.append(f'| {operator or "**all**"} | {len(of_it)} | {count["killed"]} | {count["timeout"]} | {equivalent} '
                    f'| {count["survived"] - equivalent} | {count["unbuildable"]} | {score(count)} |')
    return '\n'.join(rows)


def score(count):
    """The share of the buildable mutants that the tests noticed."""
    noticed = count['killed'] + count['timeout']
    built = noticed + count['survived']
    return f'{100 * noticed / built:.1f} %' if built else '-'
