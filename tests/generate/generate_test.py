#!/usr/bin/env python3
"""The code that `optxv generate` writes is compiled in each language, and moves values to and from a handle.

With names of definitions as arguments, the code for these is tried instead. OPTXV_COMMAND, OPTXV_LIBRARY and
OPTXV_INCLUDE say where the command, the library and its headers are.
"""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
from programs import LANGUAGES, package  # noqa: E402  (found beside this file)

SKIPPED = 77
EXAMPLES = Path(__file__).parents[2] / 'examples'

# Names that are words of the languages, or begin or end with what they do not allow; texts that could end a comment or
# a literal; limits of numbers; every kind with one value and with two.
NASTY = r'''
general group 1 1 General
class integer 1 minint minint maxint 1 1 A word of C++ and Python */ // } *) \
Double double 2 1e299 mindouble maxdouble 1 1 A type of Pascal
end boolean 3 1 1 1 A word of Fortran and Pascal
under_ string 4 "it's a \"quote\"" 1 1 Underscore ??/
none string 5 "back\slash ??/ {brace} %d #7" 1 1 A word of Python
a__b integer.TWO 6 3 0 9 1 1 Two integers
a_b double.TWO 7 1e-300 0 1 1 1 Two reals, and the name of the one before
flags boolean.TWO 8 0 1 1 Two Booleans
names string.TWO 9 "x y" 1 1 Two texts
options enumstr 10 default 1 1 A name of the generated code
 default 1 A word of C
 "two words" 1 Blanks
 two-words 1 The same in letters
 -1 1 A number
 1 1 Another
mode enumstr.TWO 11 END 1 1 Two items, the default in other letters
 end 1 A word
 begin 1 A word
level enumint 12 -1 1 1 Integers, not in order
 5 1 Five
 -1 1 Minus one
 maxint 1 The largest
 1 1 One
levels enumint.TWO 13 2 1 1 Two integers of a list
 2 1 Two
 7 1 Seven
very_long_names_of_options_come_from_paths_of_a_registry_number_one integer 14 1 0 9 1 1 Cut in Fortran
very_long_names_of_options_come_from_paths_of_a_registry_number_two integer 15 2 0 9 1 1 Cut too
paths strlist 16 1 1 A list
.class integer 17 0 0 9 1 1 A dot attribute
.end double 18 0 0 9 1 1 Another
every macro 1 1 A macro
 end
both multilist 19 1 1 A multi-list
 class Double
'''.lstrip()
LARGE = ''.join(f'option_{i} integer {i} {i} 0 maxint 1 1 Number {i}\nreal_{i} double {i} {i}.5 0 1e9 1 1 Real {i}\n'
                for i in range(700))


def generate(definition, language, *words):
    return subprocess.run([os.environ['OPTXV_COMMAND'], 'generate', definition, '--lang', language, *words],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60)


class Compiled(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))

    def run_program(self, language, definition, prefix, *words):
        """What the program of a language prints, over the code for a definition."""
        folder = self.folder / language.name
        folder.mkdir(exist_ok=True)
        code = folder / language.code.replace('%s', prefix)
        done = generate(definition, language.name, '--prefix', prefix, '--embed', '-o', code)
        self.assertEqual(done.returncode, 0, done.stderr)
        program = language.make(folder, prefix, bool(words))
        ran = subprocess.run([*program, *words], cwd=folder, env={**os.environ, 'PYTHONPATH': str(package())},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=120)
        self.assertEqual(ran.returncode, 0, ran.stdout)
        return ran.stdout

    def languages(self):
        """Those that can be tried here."""
        for language in LANGUAGES:
            if language.missing():
                print(f'{language.name} is not tried: not installed: {language.missing()}')
        return [language for language in LANGUAGES if not language.missing()]

    def table(self, name, text):
        file = self.folder / f'{name}.def'
        file.write_text(text)
        return file

    def test_values_are_found_changed_and_written_back(self):
        user = self.folder / 'user.opt'
        user.write_text('time_limit 900\nscale_range 0.25 40\ndive_first\nlog_file "a b"\nmethod BARRIER\nprint_level 2\n')
        for language in self.languages():
            with self.subTest(language.name):
                printed = self.run_program(language, EXAMPLES / 'solver.def', 'solver', user).splitlines()
                self.assertEqual(printed[0].replace('0.250', '0.25'), '900 1 0.25,40 1 a b barrier 2')
                lists = [] if language.name == 'c' else ['read_path=/a', 'read_path=/b']
                self.assertEqual(printed[1:], ['time_limit=12', 'scale_range=0.25 77', 'presolve=0', 'dive_first',
                                               'log_file="a b"', 'basis_file="two words"', 'method=dual',
                                               'print_level=9', *lists])

    def test_defaults_are_those_of_the_handle_whatever_the_names(self):
        tables = [Path(name).resolve() for name in sys.argv[1:]] or [
            self.table('nasty', NASTY), EXAMPLES / 'minimizer/minimizer.def', self.table('large', LARGE)]
        for table in tables:
            for language in self.languages():
                with self.subTest(f'{language.name} {table.stem}'):
                    self.assertEqual(self.run_program(language, table, table.stem), '-5\n')


class Text(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))

    def test_it_does_not_depend_on_the_folder(self):
        for folder in ('one', 'two'):
            (self.folder / folder).mkdir()
            (self.folder / folder / 'solver.def').write_bytes((EXAMPLES / 'solver.def').read_bytes())
        for language in LANGUAGES:
            one, two = (generate(self.folder / folder / 'solver.def', language.name) for folder in ('one', 'two'))
            self.assertEqual(one.stdout, two.stdout)
            self.assertIn(f'made by: optxv generate solver.def --lang {language.name} --prefix solver',
                          one.stdout.splitlines()[0])

    def test_names_that_meet_are_told_with_their_place(self):
        definition = self.folder / 'meet.def'
        definition.write_text('a__b integer 1 0 0 9 1 1 A\na_b_2 integer 2 0 0 9 1 1 B\na_b integer 3 0 0 9 1 1 C\n'
                              'm enumstr 4 x-y 1 1 M\n x-y 1 One\n x.y 1 Other\n')
        told = f'{definition}:1:1: warning: "a_b" and "a__b" are both a_b in c: the second becomes a_b_3\n'
        items = f'{definition}:4:1: warning: "m x-y" and "m x.y" are both MEET_M_X_Y in c: the second becomes MEET_M_X_Y_2\n'
        done = generate(definition, 'c')
        self.assertEqual(done.stderr, told + items)
        for line in ('  int32_t a_b;', '  int32_t a_b_2;', '  int32_t a_b_3;', '  MEET_M_X_Y_2 = 1'):
            self.assertIn(line, done.stdout.splitlines())

    def test_a_wrong_language_or_definition_writes_nothing(self):
        bad = self.folder / 'bad.def'
        bad.write_text('good boolean 1 0 1 1 G\nbad integr 1 1 0 9 1 1 x\n')
        for table, language, status, words in (
                (EXAMPLES / 'solver.def', 'cobol', 2, '--lang cannot be "cobol"'),
                (bad, 'c', 1, 'nothing is written to standard output')):
            done = generate(table, language)
            self.assertEqual((done.returncode, done.stdout), (status, ''))
            self.assertIn(words, done.stderr)


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
