# First values that nothing can read, however good the tests: a call of the host replaces them, and when that call fails
# nothing that follows runs.
#
# Such a variable is declared with a plain value; the next mention of it is its address, given to a host function inside
# ERR(...); and every later one stands inside ERR(...), which makes no call after a failure, in a condition that asks for
# the error first, or in one that decides about nothing but such statements.



def unread_first_values(source):
    """Start and end of each such value in the text."""
    for i, token in enumerate(source.tokens):
        if token.text == '=' and source.word(i - 3) in (';', '{', '}') and is_declared(source, i):
            last = next(j for j in range(i, len(source.tokens)) if source.word(j) == ';') - 1
            if is_plain(source, i + 1, last) and is_replaced(source, last + 1, source.word(i - 1)):
                yield source.span(i + 1, last)


def is_declared(source, equals):
    return all(source.tokens[equals - back].kind == 'name' for back in (1, 2)) and source.word(equals - 2) != 'constexpr'


def is_plain(source, first, last):
    """A number, a negative one, a constant, true or false."""
    if source.word(first) == '-':
        first += 1
    return first == last and source.tokens[first].kind in ('number', 'name')


def is_replaced(source, declared, name):
    end = end_of_block(source, declared)
    mentions = [i for i in range(declared, end) if source.word(i) == name and source.word(i - 1) not in ('.', '->', '::')]
    if not mentions:
        return False
    written, *later = mentions
    call = guarded_call(source, written, declared)
    if call is None or not is_host_call(source, call, written) or source.closes_control(call - 1) or source.word(call - 1) == 'else':
        return False
    behind, block_end = source.partner[call + 1], end_of_block(source, call)
    return all(behind < i < block_end and is_stopped(source, i, call) for i in later)


def end_of_block(source, index):
    """The bracket that closes the innermost block around the token, or the end of the text."""
    while index < len(source.tokens):
        if source.word(index) == '}':
            return index
        index = source.partner[index] + 1 if source.word(index) in ('(', '[', '{') else index + 1
    return index


def enclosing(source, index, after):
    """The brackets around the token that are opened behind `after`, the innermost first."""
    return [i for i in range(index - 1, after, -1) if source.word(i) in ('(', '[', '{') and source.partner[i] > index]


def guarded_call(source, index, after):
    """The ERR of the ERR(...) that the token stands in."""
    return next((i - 1 for i in enclosing(source, index, after) if source.word(i) == '(' and source.word(i - 1) == 'ERR'), None)


def is_host_call(source, call, argument):
    """Is it ERR(suites.SomeSuite1()->AEGP_Function(..., &argument, ...))?"""
    words = [source.word(call + n) for n in range(2, 9)]
    is_address = source.word(argument - 1) == '&' and source.word(argument + 1) in (',', ')')
    return is_address and words[:2] == ['suites', '.'] and words[3:6] == ['(', ')', '->'] and \
        words[6].startswith('AEGP_') and enclosing(source, argument, call)[0] == call + 9


def is_stopped(source, mention, after):
    """Does a failure before keep the mention, or what it decides, from mattering?"""
    if guarded_call(source, mention, after) is not None:
        return True
    around = [i for i in enclosing(source, mention, after) if source.word(i) == '(']
    if not around:
        return False
    condition = around[-1]
    if source.word(condition - 1) not in ('if', 'while', 'for'):
        return False
    asks_first = [source.word(condition + n) for n in range(1, 5)] == ['err', '==', 'A_Err_NONE', '&&']
    return asks_first and '||' not in words_between(source, condition) or is_inert(source, condition - 1)


def words_between(source, bracket):
    return [source.word(i) for i in range(bracket, source.partner[bracket])]


def is_inert(source, first):
    """Does the statement do nothing after a failure?"""
    return end_of_inert(source, first) is not None


def end_of_inert(source, first):
    """Behind the statement, if it is an ERR(...), an empty declaration, or if, for or a block with only such; else None."""
    word = source.word(first)
    if word == '{':
        at = first + 1
        while at is not None and source.word(at) != '}':
            at = end_of_inert(source, at)
        return None if at is None else at + 1
    if word == 'ERR' and source.word(first + 1) == '(':
        return source.partner[first + 1] + 2
    if word in ('if', 'for') and source.word(first + 1) == '(':
        at = end_of_inert(source, source.partner[first + 1] + 1)
        if at is not None and source.word(at) == 'else':
            at = end_of_inert(source, at + 1)
        return at
    words = [source.word(first + n) for n in range(6)]
    if source.tokens[first].kind == 'name' and source.tokens[first + 1].kind == 'name' and words[2] == '=':
        if words[3:6] == ['{', '}', ';']:
            return first + 6
        if words[3] in ('nullptr', '0') and words[4] == ';':
            return first + 5
    return None
