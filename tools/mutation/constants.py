# The names that a constant or a suite may be mistaken for, read from the declarations.
import re

ENUM = re.compile(r'\benum\b[^{;()]*\{([^}]*)\}')
DEFINES = re.compile(r'(?:^#define \w+ +\(?-?\w+\)? *\n){2,}', re.MULTILINE)
ACCESSOR = re.compile(r'SUITE\(\w+, (\w+?)(\d+),')
SLOT = re.compile(r'SLOT\(AEGP_(\w+?)(\d+), \d+, (\w+)\)')


def without_comments(text):
    return re.sub(r'//[^\n]*|/\*.*?\*/', '', text, flags=re.DOTALL)


def families(texts):
    """Name -> the next name of its enumeration, or of its run of #define lines, that has another value."""
    neighbour = {}
    for text in map(without_comments, texts):
        for body in ENUM.findall(text):
            rows = [[part.strip() for part in row.split('=', 1)] for row in body.split(',') if row.strip()]
            if all(re.fullmatch(r'\w+', row[0]) for row in rows):  # a body made by macros says nothing
                add_family(neighbour, rows)
        for block in DEFINES.findall(text):
            add_family(neighbour, [line.split()[1:3] for line in block.strip().split('\n')])
    return neighbour


def add_family(neighbour, rows):
    values = {}
    following = 0
    for name, *given in rows:
        value = value_of(given[0], values) if given else following
        values[name] = value
        following = value + 1 if isinstance(value, int) else f'after {name}'
    names = list(values)
    for i, name in enumerate(names):
        others = [other for other in names[i + 1:] + names[:i] if values[other] != values[name]]
        if others:
            neighbour[name] = others[0]


def value_of(text, values):
    """The number, or the text itself where it cannot be told."""
    words = [str(values.get(word, word)) for word in re.findall(r'\w+|\S', text)]
    expression = ' '.join(re.sub(r'(?<=\d)[uUlL]+$', '', word) for word in words).replace('< <', '<<')
    if re.fullmatch(r'(?:0x[0-9a-fA-F]+|\d+|<<|[-+|()]|\s)+', expression):
        return eval(expression)  # nothing but numbers and marks
    return text


def suite_versions(text):
    """(suite, version, function), all texts -> the next version, a number, of the suite that has a function of that name."""
    slots = {}
    for suite, version, function in SLOT.findall(text):
        slots.setdefault((suite, function), []).append(int(version))
    return {(suite, str(version), function): versions[(i + 1) % len(versions)]
            for (suite, function), versions in slots.items() if len(versions) > 1
            for i, version in enumerate(versions)}
