#!/usr/bin/env python3
"""Free Pascal compiles the include files, and reads the numbers of the options in them as the library does."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / 'docs'))
import tablefacts  # noqa: E402  (found in tests/docs)
from tablefacts import BOOLEAN, DOUBLE, ENUMINT, ENUMSTR, INTEGER, MACRO, STRING  # noqa: E402

SKIPPED = 77
# The word in the names of the type and the array; the kinds without one are left out.
WORDS = {INTEGER: 'integer', BOOLEAN: 'integer', ENUMINT: 'integer', DOUBLE: 'real', STRING: 'string', ENUMSTR: 'string',
         MACRO: ''}
EDGES = ('six macro 1 1 Six', 'one_name_of_14 integer 1 5 0 9 1 1 Padded to the full', 'list strlist 1 1 1 List')


def compile_and_run(folder, words):
    """What a program prints of the include file: the word, the enumerator and its number, one per line."""
    loops = '\n'.join(f"  for k{word} := low(Tpf{word}keys) to high(Tpf{word}keys) do\n"
                      f"    writeln('{word} ', k{word}, ' ', pf{word}map[k{word}]);" for word in words)
    names = ''.join(f' k{word}: Tpf{word}keys;' for word in words)
    (folder / 'numbers.pas').write_text(
        f'program numbers;\n{{$mode objfpc}}\n{{$I options.inc}}\n{"var" + names if words else ""}\nbegin\n{loops}\nend.\n')
    done = subprocess.run([shutil.which('fpc'), '-v0ew', 'numbers.pas'], cwd=folder, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=120)
    if done.returncode != 0:
        return done.stdout
    return subprocess.run([folder / 'numbers'], check=True, stdout=subprocess.PIPE, text=True, timeout=60).stdout


class Include(unittest.TestCase):
    def numbers(self, lines):
        """The compiled numbers of a definition, and those that the library gives."""
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        definition = folder / 'options.def'
        definition.write_text('\n'.join(lines) + '\n', encoding='latin-1')
        subprocess.run([os.environ['OPTXV_COMMAND'], 'include', definition, '-o', folder / 'options.inc'], check=True,
                       timeout=60)
        expected = [(WORDS[each['kind']], 'pf' + each['name'], each['number'])
                    for each in tablefacts.facts(definition)[0] if each['kind'] in WORDS]
        words = sorted({word for word, _, _ in expected})
        printed = compile_and_run(folder, words)
        self.assertRegex(printed, r'^((integer|real|string|) pf\w+ \d+\n)*$')
        return [(word, name, int(number)) for word, name, number in re.findall(r'^(\w*) (\w+) (\d+)$', printed, re.M)], expected

    def test_the_numbers_are_the_librarys(self):
        for table in tablefacts.tables():
            with self.subTest(table.stem):
                lines = table.read_text(encoding='latin-1').splitlines()
                lines = [line for line in lines if line[:1] != '.']  # which begins no name in Pascal
                found, expected = self.numbers(lines + list(EDGES))
                self.assertEqual(sorted(found), sorted(expected))
                self.assertEqual(len(expected), len(set(expected)))


if __name__ == '__main__':
    if not shutil.which('fpc'):
        print('skipped: not installed: fpc')
        sys.exit(SKIPPED)
    unittest.main()
