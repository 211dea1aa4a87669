# Each operator makes exactly the expected mutants of a small made source.
#   operators_test.py <folder of the tool>
import sys
import unittest

sys.path.insert(0, sys.argv.pop())

from mutation import constants  # noqa: E402
from mutation.mutants import Names, mutants_of  # noqa: E402

DECLARATIONS = '''
enum { Mode_Layer, Mode_Comp };
enum { Flag_NONE = 0, Flag_A = 1 << 0, Flag_B = 1 << 1, Flag_ALSO_B = Flag_B, Flag_C };
#define AT_TOP 0
#define AT_BOTTOM (-1)

#define ALONE 3
'''
SUITES = '''
SLOT(AEGP_LayerSuite4, 0, GetName)
SLOT(AEGP_LayerSuite5, 0, GetName)
SLOT(AEGP_LayerSuite7, 0, GetName)
SLOT(AEGP_LayerSuite7, 1, OnlyHere)
'''
NAMES = Names(constants.families([DECLARATIONS]), constants.suite_versions(SUITES))


def made(operator, text, path='plugin/src/made.cpp'):
    """The added lines of the operator's mutants, in order."""
    mutants = [mutant for mutant in mutants_of(path, text, NAMES) if mutant.operator == operator]
    return ['\n'.join(line[2:] for line in mutant.identity.split('\n') if line.startswith('+ ')) for mutant in mutants]


class Operators(unittest.TestCase):
    def expect(self, operator, text, *added, path='plugin/src/made.cpp'):
        self.assertEqual(made(operator, text, path), list(added))

    def test_guards_of_if_while_for_and_choices_are_negated(self):
        self.expect('negate a guard', 'if (a == f(b)) c();', 'if (!(a == f(b))) c();')
        self.expect('negate a guard', 'while (*p) ++p;', 'while (!(*p)) ++p;')
        self.expect('negate a guard', 'for (int i = 0; i < n; ++i) f(i);', 'for (int i = 0; !(i < n); ++i) f(i);')
        self.expect('negate a guard', 'x = f(a) != 0 ? b : c;', 'x = !(f(a) != 0) ? b : c;')
        self.expect('negate a guard', 'for (const int x : xs) f(x);')

    def test_comparisons_become_their_neighbours(self):
        self.expect('neighbouring comparison', 'a = b < c;', 'a = b <= c;')
        self.expect('neighbouring comparison', 'a = b >= c;', 'a = b > c;')
        self.expect('neighbouring comparison', 'a = b == c;', 'a = b != c;')
        self.expect('neighbouring comparison', 'a = b !== c;', 'a = b === c;', path='plugin/scripts/made.jsx')
        self.expect('neighbouring comparison', 'std::vector<int> a = static_cast<T>(b);')

    def test_calls_are_dropped_and_declarations_are_not(self):
        self.expect('drop a call', 'ERR(suites.f()->g(a, &b));', ';')
        self.expect('drop a call', 'if (a) ERR(f());', 'if (a) ;')
        self.expect('drop a call', '(void)f(a);', ';')
        self.expect('drop a call', 'list[i].add(a);', ';')
        self.expect('drop a call', 'Handler suites(info); return f(a); int b = f(a); int g(); b = f(a);')

    def test_neighbouring_calls_are_swapped(self):
        self.expect('swap two calls', 'f(a);\ng(b);\n', 'g(b);\nf(a);')
        self.expect('swap two calls', 'f(a);  // first\ng(b);\nh();', 'g(b);  // first\nf(a);', 'h();\ng(b);')
        self.expect('swap two calls', 'f(a);\nint b = 0;\ng(b);\nif (b) f(a);\n')
        self.expect('swap two calls', 'f(a); f(a);')

    def test_numbers_and_loop_bounds_are_off_by_one(self):
        self.expect('off by one', 'int a = 10;', 'int a = 11;', 'int a = 9;')
        self.expect('off by one', 'int a = 0;', 'int a = 1;')
        self.expect('off by one', 'x = 1.0f;', 'x = 2.0f;', 'x = 0.0f;')
        self.expect('off by one', 'int a = 0xFF;', 'int a = 0x100;', 'int a = 0xfe;')
        self.expect('off by one', 'for (; i < n; ++i) f(i);', 'for (; i < -1 + n; ++i) f(i);')

    def test_suites_become_the_next_version_that_has_the_function(self):
        self.expect('wrong suite version', 's.LayerSuite4()->GetName(a);', 's.LayerSuite5()->GetName(a);')
        self.expect('wrong suite version', 's.LayerSuite7()->GetName(a);', 's.LayerSuite4()->GetName(a);')
        self.expect('wrong suite version', 's.LayerSuite7()->OnlyHere(a);')

    def test_constants_become_another_of_their_family_and_value(self):
        self.expect('wrong constant', 'f(Mode_Comp);', 'f(Mode_Layer);')
        self.expect('wrong constant', 'f(Flag_A);', 'f(Flag_B);')
        self.expect('wrong constant', 'f(Flag_B);', 'f(Flag_C);')
        self.expect('wrong constant', 'f(AT_BOTTOM);', 'f(AT_TOP);')
        self.expect('wrong constant', 'enum { Mode_Comp }; f(ALONE);')

    def test_texts_differ_in_one_character(self):
        self.expect('wrong text', 'f("abc");', 'f("aBc");')
        self.expect('wrong text', 'f("");', 'f("7");')
        self.expect('wrong text', r'f("a\"b");', r'f("a7b");')
        self.expect('wrong text', "f('t');", "f('T');")
        self.expect('wrong text', '#include "abc.h"\nextern "C" int f();  // "abc"')

    def test_assignments_are_dropped_and_initialisations_are_not(self):
        self.expect('drop an assignment', '*a = b;', ';')
        self.expect('drop an assignment', 'a->b[i].c += d;', ';')
        self.expect('drop an assignment', '++count;', ';')
        self.expect('drop an assignment', 'int a = b; const auto c = d; T* e = f; T& g = h;')
        self.expect('drop an assignment', 'var a = b; c.d = e;', 'var a = b; ;', path='plugin/scripts/made.jsx')

    def test_true_and_false_are_flipped(self):
        self.expect('flip true and false', 'f(true, false);', 'f(false, false);', 'f(true, true);')

    def test_and_and_or_are_flipped(self):
        self.expect('flip and and or', 'a = b && c || d;', 'a = b || c || d;', 'a = b && c && d;')
        self.expect('flip and and or', 'void f(T&& a);')

    def test_nots_are_dropped(self):
        self.expect('drop a not', 'a = !b && c != d;', 'a = b && c != d;')

    def test_returned_errors_are_ignored(self):
        self.expect('ignore the error', 'return err;', 'return A_Err_NONE;')
        self.expect('ignore the error', 'return missing_suite;', 'return A_Err_NONE;')
        self.expect('ignore the error', 'return text;')


class FirstValues(unittest.TestCase):
    """Mutants are made of them unless a call of the host replaces them before anything can read them."""

    def is_mutated(self, *lines, first='A_long n = 1;'):
        text = '\n    '.join(['A_Err f() {', first, *lines]) + '\n}\n'
        mutants = [mutant for mutant in mutants_of('plugin/src/made.cpp', text, NAMES) if mutant.line == 2]
        return bool(mutants)

    WRITES = 'ERR(suites.LayerSuite7()->AEGP_Get(layer, &n));'

    def test_nothing_reads_one_that_only_guarded_calls_use(self):
        self.assertFalse(self.is_mutated(self.WRITES, 'ERR(use(n));', 'return err;'))
        self.assertFalse(self.is_mutated(self.WRITES, 'if (n == 2) ERR(use());', 'return err;'))
        self.assertFalse(self.is_mutated(self.WRITES, 'for (int i = 0; i < n; ++i) {', 'Item item = {};', 'ERR(use(i));', '}'))
        self.assertFalse(self.is_mutated(self.WRITES, 'if (err == A_Err_NONE && n == 2) found = i;'))
        self.assertFalse(self.is_mutated('if (other) {', self.WRITES, 'ERR(use(n));', '}'))
        for first in ('A_long n = -1;', 'A_Boolean n = true;', 'AEGP_Mode n = Mode_Comp;'):
            self.assertFalse(self.is_mutated(self.WRITES, first=first))

    def test_one_that_is_read_after_a_failure_is_mutated(self):
        self.assertTrue(self.is_mutated(self.WRITES, 'return n;'))
        self.assertTrue(self.is_mutated(self.WRITES, 'list.push_back(n);'))
        self.assertTrue(self.is_mutated(self.WRITES, 'if (n == 2) found = true;'))
        self.assertTrue(self.is_mutated(self.WRITES, 'if (n == 2) {', 'ERR(use());', '++count;', '}'))
        self.assertTrue(self.is_mutated(self.WRITES, 'if (n == 2) ERR(use()); else ++count;'))
        self.assertTrue(self.is_mutated(self.WRITES, 'if (err == A_Err_NONE && a || n == 2) found = true;'))
        self.assertTrue(self.is_mutated(self.WRITES, 'ERR2(use(n));'))

    def test_one_that_may_not_be_replaced_is_mutated(self):
        self.assertTrue(self.is_mutated('if (other) ' + self.WRITES, 'ERR(use(n));'))
        self.assertTrue(self.is_mutated('if (other) {', self.WRITES, '}', 'ERR(use(n));'))
        self.assertTrue(self.is_mutated('ERR(our_function(info, &n));', 'ERR(use(n));'))
        self.assertTrue(self.is_mutated('ERR(suites.LayerSuite7()->AEGP_Set(layer, n));'))
        self.assertTrue(self.is_mutated('ERR(suites.LayerSuite7()->AEGP_Get(layer, &n, n));'))
        self.assertTrue(self.is_mutated('suites.LayerSuite7()->AEGP_Get(layer, &n);', 'ERR(use(n));'))
        self.assertTrue(self.is_mutated('ERR(use(n));', self.WRITES))
        self.assertTrue(self.is_mutated(self.WRITES, 'ERR(use(n));', first='A_long n = m + 1;'))


class Identity(unittest.TestCase):
    def test_says_file_function_operator_and_the_lines(self):
        text = 'int f(int a) {\n    return a < 3;\n}\n\nint g() {\n    return 4;\n}\n'
        mutants = mutants_of('plugin/src/made.cpp', text, NAMES)
        self.assertEqual(mutants[0].identity,
                         'plugin/src/made.cpp, f, neighbouring comparison\n- return a < 3;\n+ return a <= 3;')
        self.assertIn('plugin/src/made.cpp, g, off by one\n- return 4;\n+ return 5;', [m.identity for m in mutants])
        self.assertEqual(mutants[0].line, 2)

    def test_tells_equal_lines_of_one_function_apart(self):
        mutants = mutants_of('plugin/src/made.cpp', 'void f() {\n    a();\n    b = 1;\n    a();\n}\n', NAMES)
        dropped = [m.identity.split('\n')[0] for m in mutants if m.operator == 'drop a call']
        self.assertEqual(dropped, ['plugin/src/made.cpp, f, drop a call', 'plugin/src/made.cpp, f, drop a call (number 2)'])

    def test_equal_mutants_are_made_once(self):
        texts = [m.text for m in mutants_of('plugin/src/made.cpp', 'if (!a) f();', NAMES)]
        self.assertEqual(len(texts), len(set(texts)))

    def test_comments_and_patterns_are_left_alone(self):
        self.assertEqual(made('off by one', '/* 1 */ // 2\n'), [])
        self.assertEqual(made('wrong text', 'var a = /["1]+/g;', 'plugin/scripts/made.jsx'), [])


if __name__ == '__main__':
    unittest.main()
