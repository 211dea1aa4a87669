# The operators: each makes, from a source, edits that a good test notices.
#
# An edit is (start, end, replacement) in the source's text.
import re

NEIGHBOUR = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==', '===': '!==', '!==': '==='}


def replaced(source, index, text):
    token = source.tokens[index]
    return token.start, token.end, text


def marks(source, texts):
    return [i for i, token in enumerate(source.tokens) if token.kind == 'mark' and token.text in texts]


def loop_conditions(source):
    """First and last token of the middle part of each for loop that has one."""
    for i, token in enumerate(source.tokens):
        if token.text == 'for' and source.word(i + 1) == '(':
            close = source.partner[i + 1]
            ends = [j for j in range(i + 2, close) if source.word(j) == ';']
            if len(ends) == 2 and ends[1] - ends[0] > 1:
                yield ends[0] + 1, ends[1] - 1


def negate_guard(source, _):
    guards = list(loop_conditions(source))
    for i, token in enumerate(source.tokens):
        if token.text in ('if', 'while') and source.word(i + 1) == '(':
            guards.append((i + 2, source.partner[i + 1] - 1))
        elif token.text == '?' and token.kind == 'mark':
            guards.append((start_of_operand(source, i), i - 1))
    for first, last in guards:
        start, end = source.span(first, last)
        yield start, end, f'!({source.text[start:end]})'


def start_of_operand(source, question):
    first = question
    while source.word(first - 1) not in ('(', '[', '{', ',', ';', ':', '=', 'return'):
        first -= 1
        first = min(first, source.partner.get(first, first))
    return first


def change_comparison(source, _):
    for i in marks(source, NEIGHBOUR):
        if source.is_spaced(i):
            yield replaced(source, i, NEIGHBOUR[source.word(i)])


def drop_call(source, _):
    for statement in source.statements:
        if statement.kind == 'call':
            yield (*source.span(statement.first, statement.last), ';')


def swap_calls(source, _):
    calls = [statement for statement in source.statements if statement.kind == 'call']
    for one, other in zip(calls, calls[1:]):
        if other.first == one.last + 1 and not source.closes_control(one.first - 1):
            (start, between), (after, end) = source.span(one.first, one.last), source.span(other.first, other.last)
            text = source.text
            if text[start:between] != text[after:end]:
                yield start, end, text[after:end] + text[between:after] + text[start:between]


def off_by_one(source, _):
    for i, token in enumerate(source.tokens):
        if token.kind == 'number':
            digits, rest = re.fullmatch(r'(0[xX][0-9a-fA-F]+|\d+)(.*)', token.text).groups()
            value = int(digits, 0)
            for other in (value + 1, value - 1):
                if other >= 0:
                    yield replaced(source, i, (hex(other) if digits[:2] in ('0x', '0X') else str(other)) + rest)
    for first, last in loop_conditions(source):
        bound = next((i for i in range(first, last) if source.word(i) in ('<', '<=', '!=') and source.is_spaced(i)), last)
        if bound < last and source.tokens[last].kind in ('name', 'mark'):
            position = source.tokens[bound].end
            yield position, position, ' -1 +'


def wrong_suite(source, names):
    for i, token in enumerate(source.tokens):
        match = re.fullmatch(r'(\w*?Suite)(\d+)', token.text)
        if match and source.word(i + 1) == '(' and source.word(i + 3) == '->':
            other = names.versions.get((*match.groups(), source.word(i + 4)))
            if other is not None:
                yield replaced(source, i, f'{match.group(1)}{other}')


def wrong_constant(source, names):
    declared = set()
    if source.is_script:
        return
    for i, token in enumerate(source.tokens):
        if token.text == 'enum':
            body = next(j for j in range(i, len(source.tokens)) if source.word(j) == '{')
            declared.update(range(body, source.partner[body]))
        if token.kind == 'name' and token.text in names.neighbour and i not in declared:
            yield replaced(source, i, names.neighbour[token.text])


def wrong_text(source, _):
    for i, token in enumerate(source.tokens):
        if token.kind not in ('text', 'character') or source.word(i - 1) == 'extern':
            continue
        opening, inside, closing = re.fullmatch(r'''(\w*["'])(.*)(["'])''', token.text, re.DOTALL).groups()
        units = re.findall(r'\\x[0-9a-fA-F]+|\\u\w{4}|\\.|.', inside, re.DOTALL) or ['']
        middle = len(units) // 2
        units[middle] = other_character(units[middle])
        yield replaced(source, i, opening + ''.join(units) + closing)


def other_character(unit):
    return unit.swapcase() if unit.isalpha() and unit.isascii() else '7' if unit != '7' else '8'


def drop_assignment(source, _):
    for statement in source.statements:
        if statement.kind == 'assignment':
            yield (*source.span(statement.first, statement.last), ';')


def flip_boolean(source, _):
    for i, token in enumerate(source.tokens):
        if token.text in ('true', 'false'):
            yield replaced(source, i, 'false' if token.text == 'true' else 'true')


def flip_logic(source, _):
    for i in marks(source, ('&&', '||')):
        if source.is_spaced(i):
            yield replaced(source, i, '||' if source.word(i) == '&&' else '&&')


def drop_not(source, _):
    for i in marks(source, ('!',)):
        yield replaced(source, i, '')


def ignore_error(source, _):
    for i, token in enumerate(source.tokens):
        if token.text == 'return' and source.word(i + 1) in ('err', 'missing_suite') and source.word(i + 2) == ';':
            yield replaced(source, i + 1, 'A_Err_NONE')


OPERATORS = {
    'negate a guard': negate_guard,
    'neighbouring comparison': change_comparison,
    'drop a call': drop_call,
    'swap two calls': swap_calls,
    'off by one': off_by_one,
    'wrong suite version': wrong_suite,
    'wrong constant': wrong_constant,
    'wrong text': wrong_text,
    'drop an assignment': drop_assignment,
    'flip true and false': flip_boolean,
    'flip and and or': flip_logic,
    'drop a not': drop_not,
    'ignore the error': ignore_error,
}
