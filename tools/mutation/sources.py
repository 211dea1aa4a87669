# A source file as tokens, C++ or script, with its brackets paired and its statements found.
import re
from typing import NamedTuple

CPP = re.compile(r'''
    (?P<blank>\s+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<text>(?:L|u8|u|U)?(?:R"(?P<tag>[^\s()\\]*)\(.*?\)(?P=tag)"|"(?:[^"\\\n]|\\.)*"))
  | (?P<character>L?'(?:[^'\\\n]|\\.)+')
  | (?P<number>(?:0[xX][0-9a-fA-F]+|[0-9]+(?:\.[0-9]+)?)\w*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<mark><<=|>>=|->|::|\+\+|--|&&|\|\||[-+*/%&|^=!<>]=|<<|.)
''', re.VERBOSE | re.DOTALL | re.MULTILINE)

SCRIPT = re.compile(r'''
    (?P<blank>[\s\ufeff]+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<text>"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')
  | (?P<number>0[xX][0-9a-fA-F]+|[0-9]+(?:\.[0-9]+)?)
  | (?P<name>[A-Za-z_$][\w$]*)
  | (?P<mark>[=!]==|\+\+|--|&&|\|\||[-+*/%&|^=!<>]=|.)
''', re.VERBOSE | re.DOTALL)
PATTERN = re.compile(r'/(?:[^/\\\[\n]|\\.|\[(?:[^\]\\\n]|\\.)*\])+/[gim]*')

OPENING = {'(': ')', '[': ']', '{': '}'}
# A name that stands before another one without making the statement a declaration of the second.
CONTROL = ('if', 'for', 'while', 'switch')


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


class Statement(NamedTuple):
    first: int  # index of the first token
    last: int   # that of the semicolon
    kind: str   # 'call', 'assignment'


def tokens_of(text, is_script):
    """Every token but blanks, comments and directives."""
    found = []
    at = 0
    while at < len(text):
        match = (SCRIPT if is_script else CPP).match(text, at)
        if is_script and text[at] == '/' and match.lastgroup == 'mark' and expects_a_value(found):
            match = PATTERN.match(text, at)
            found.append(Token('pattern', match.group(), at, match.end()))
        elif match.lastgroup not in ('blank', 'comment', 'directive'):
            kind = 'text' if match.group('text') else match.lastgroup
            found.append(Token(kind, match.group(), at, match.end()))
        at = match.end()
    return found


def expects_a_value(before):
    return not before or before[-1].text in ('return', 'typeof') or \
        (before[-1].kind == 'mark' and before[-1].text not in (')', ']', '}'))


class Source:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.is_script = path.endswith('.jsx')
        self.tokens = tokens_of(text, self.is_script)
        self.partner = self._pair_brackets()
        self.statements = self._find_statements()

    def word(self, index):
        """The text of the token, empty outside."""
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ''

    def is_spaced(self, index):
        """Stands the token between blanks? So do comparisons, unlike template brackets."""
        token = self.tokens[index]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def span(self, first, last):
        """Where the tokens first to last begin and end in the text."""
        return self.tokens[first].start, self.tokens[last].end

    def closes_control(self, index):
        """Is the token the bracket that ends the condition of an if, for, while or switch?"""
        return self.word(index) == ')' and self.word(self.partner.get(index, 0) - 1) in CONTROL

    def function_at(self, offset):
        """The function that the offset stands in, as far as its line shows; empty outside."""
        name = ''
        header = r'^\s*(?:function (\w+)\(|([\w.]+) = function)' if self.is_script else r'^(?=[A-Za-z]).*?(\w+)\('
        for line in self.text[:offset].split('\n'):
            match = re.match(header, line)
            if match:
                name = next(group for group in match.groups() if group)
            elif line.startswith('}') and 'catch' not in line:
                name = ''
        return name

    def _pair_brackets(self):
        partner = {}
        opened = []
        for i, token in enumerate(self.tokens):
            if token.kind != 'mark':
                continue
            if token.text in OPENING:
                opened.append(i)
            elif token.text in OPENING.values():
                partner[i] = opened.pop()
                partner[partner[i]] = i
        return partner

    def _find_statements(self):
        found = []
        for i in range(len(self.tokens)):
            before = self.word(i - 1)
            starts = before in ('', ';', '{', '}', 'else', 'do') or self.closes_control(i - 1) or \
                (before == ':' and self._ends_case(i - 1))
            if not starts:
                continue
            top = self._top_level(i)
            if top and self.word(top[-1]) == ';':
                kind = self._kind(top[:-1])
                if kind:
                    found.append(Statement(i, top[-1], kind))
        return found

    def _ends_case(self, colon):
        return 'case' in (self.word(colon - 2), self.word(colon - 3)) or self.word(colon - 1) == 'default'

    def _top_level(self, first):
        """The tokens from first to the next semicolon that stand in no bracket; none when a bracket ends first."""
        top = []
        i = first
        while i < len(self.tokens):
            top.append(i)
            word = self.word(i)
            if word == ';':
                return top
            if word in OPENING:
                i = self.partner[i]
            elif word in OPENING.values():
                return []
            i += 1
        return []

    def _kind(self, top):
        words = [self.word(i) for i in top]
        if not words or words[0] in ('return', 'throw', 'break', 'continue', 'using', 'var', 'case', 'delete', 'static_assert',
                                      *CONTROL):
            return None
        if words[0] in ('++', '--') or words[-1] in ('++', '--'):
            return 'assignment'
        if words[0] == '(' and self.word(top[0] + 1) == 'void':
            top, words = top[1:], words[1:]
        equals = next((n for n, word in enumerate(words) if word in ('=', '+=', '-=', '*=', '/=')), None)
        left = top[:equals]
        if words[0] == '*':
            left = left[1:]
        if not left or not self._is_path(left):
            return None
        if equals is not None:
            return 'assignment'
        return 'call' if words[-1] == '(' else None

    def _is_path(self, top):
        """Names joined by . -> :: and bracketed arguments: no declaration, which has two names in a row."""
        was_name = False
        for i in top:
            token = self.tokens[i]
            if token.kind == 'name':
                if was_name:
                    return False
                was_name = True
            elif token.text in ('.', '->', '::'):
                was_name = False
            elif token.text not in ('(', '['):
                return False
        return True
