#!/usr/bin/env python3
"""The checkers of the tree: each is given trees that break one rule, and one that breaks none."""
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / 'checks'))
import changes  # noqa: E402
import check_exports  # noqa: E402
import check_floors  # noqa: E402
import check_symbols  # noqa: E402
import check_tree  # noqa: E402
import coverage  # noqa: E402

FLOORS = '''tree src\n0 base\n1 mid/low base\n2 mid base mid/low\n2 side base\n3 top *
tree command\n1 page optxv\n2 jobs page <lib/all.hpp> src/side/way\n3 cli *\n'''
GOOD = {
    'checks/floors.txt': FLOORS,
    'checks/modules.txt': 'bodies src/top/extra src/top/main.h\nuntested src/mid/low a table without code\n'
                          'untested command/jobs run from outside\nprogram command/cli/run the command\n',
    'src/base/text.h': '#include <string>\n#include <sys/stat.h>\n', 'src/base/text.cpp': '#include "base/text.h"\n',
    'src/mid/low.h': '/* #include "top/main.h" */\n#include "base/text.h"\n',
    'src/mid/low.cpp': '#include "mid/low.h"\n// #include "side/way.h"\n',
    'src/mid/high.h': '#include "mid/low.h"\n', 'src/side/way.h': '#include "base/text.h"\n',
    'src/top/main.h': '#include <optxv/optxv.h>\n#include "side/way.h"\n',
    'src/top/main.cpp': '#include "top/main.h"\n#include "mid/high.h"\n', 'src/top/extra.cpp': '#include "top/main.h"\n',
    'command/page/glyph.h': '#include "optxv/optxv.h"\n', 'command/page/glyph.cpp': '#include "page/glyph.h"\n',
    'command/jobs/print.h': '#include <lib/all.hpp>\n#include "page/glyph.h"\n#include "side/way.h"\n',
    'command/jobs/print.cpp': '#include "jobs/print.h"\n', 'command/cli/run.cpp': '#include "jobs/print.h"\n',
    'tests/command/glyph_test.cpp': '',
    'tests/base/text_test.cpp': '', 'tests/top/main_test.cpp': '', 'tests/top/extra_test.cpp': ''}

# What changes in the good tree (None removes a file), and a piece of the one fault that is expected.
BAD_INCLUDES = [
    ('up', {'src/base/solo.h': '#include "mid/high.h"\n'}, 'base may not include this'),
    ('public header below', {'src/base/text.h': '#include <optxv/optxv.h>\n'}, 'base may not include this'),
    ('cycle', {'src/mid/low.h': '#include "mid/low2.h"\n', 'src/mid/low2.h': '#include "mid/high.h"\n',
               'checks/floors.txt': FLOORS.replace('1 mid/low base', '').replace(' mid/low', '')}, 'include cycle'),
    ('from beside', {'src/mid/high.h': '#include "low.h"\n'}, 'written from src/'),
    ('missing', {'src/side/way.h': '#include "base/gone.h"\n'}, 'no file there'),
    ('foreign library', {'src/side/way.h': '#include <boost/any.hpp>\n'}, 'C++ standard library'),
    ('macro', {'src/side/way.h': '#include HEADER\n'}, 'cannot be checked'),
    ('room above', {'command/page/glyph.cpp': '#include "jobs/print.h"\n'}, 'command/page may not include this'),
    ('all below is not above', {'src/top/main.h': '#include "page/glyph.h"\n'}, 'src/top may not include this'),
    ('foreign library of another room', {'command/cli/run.cpp': '#include <lib/all.hpp>\n'}, 'what floors.txt grants'),
    ('another tree', {'command/jobs/print.cpp': '#include "base/text.h"\n'}, 'command/jobs may not include this'),
    ('unit of no tree', {'checks/floors.txt': '0 lost\n' + FLOORS}, 'not a row'),
    ('no floor', {'src/attic/old.h': ''}, 'is on no floor'),
    ('grant of a higher floor', {'checks/floors.txt': FLOORS.replace('0 base', '0 base side')}, 'may not be granted'),
    ('grant of no unit', {'checks/floors.txt': FLOORS.replace('3 cli *', '3 cli * src/attic')}, 'may not be granted'),
    ('grant of a later tree', {'checks/floors.txt': FLOORS.replace('3 top *', '3 top * command/page')},
     'may not be granted'),
    ('unit twice', {'checks/floors.txt': FLOORS + '1 page\n'}, 'not a row'),
]
BAD_FILES = [
    ('word taken', {'src/side/text.h': ''}, 'the word is taken by src/base/text'),
    ('no header', {'src/base/text.h': None}, 'has no header'),
    ('no test', {'tests/base/text_test.cpp': None}, 'has no test file'),
    ('test name twice', {'tests/side/text_test.cpp': ''}, 'the name is taken in tests/base'),
    ('stale bodies row', {'src/top/extra.h': ''}, 'no longer holds: bodies src/top/extra'),
    ('no test in the command', {'tests/command/glyph_test.cpp': None}, 'no test file tests/command/glyph_test.cpp'),
    ('stale row of a room', {'tests/command/print_test.cpp': ''}, 'no longer holds: untested command/jobs'),
    ('stale program', {'command/cli/run.h': ''}, 'no longer holds: program command/cli/run'),
    ('no such header', {'src/top/main.h': None, 'src/top/main.cpp': None}, 'no such header'),
    ('word of another tree', {'command/page/low.h': '', 'command/jobs/low.h': ''}, 'taken by command/jobs/low'),
    ('too deep', {'src/top/inner/deep.h': ''}, 'belong in a folder of src/'),
    ('machine path', {'docs/notes.md': 'see ' + '/home' + '/me/notes'}, 'a path of one machine'),
]

SCRIPT = '''OPTXV_2 { # the list
  global: xcreate; opt*; extern "C++" { "optxv::store::put(int)"; optxv::pool::*; };
  /* not; these; */
  local: *; };'''
EXPORTS = [('xcreate', 'xcreate'), ('optcount', 'optcount'), ('_Zput', 'optxv::store::put(int)'),
           ('_Ztake', 'optxv::pool::take()')]
BAD_EXPORTS = [
    (EXPORTS[1:], 'listed, not exported: xcreate'),
    (EXPORTS + [('not', 'not')], 'exported, not listed: not'),
    (EXPORTS + [('_Zget', 'optxv::store::get()')], 'exported, not listed: optxv::store::get()'),
]

# A text, and every line that a small change makes of it: none of what is no code, of types or of declarations.
CHANGES = [
    ('list<int> all; // a < b', []),
    ('x = a < b;', ['x = a <= b;', 'x = a >= b;']),
    ('f(1\'000, "2 + 2", \'a\');', ["f(1'000, \"2 + 2\", 'b');"]),
    ('if (!open(2)) return true;', ['if (open(2)) return true;', 'if (!open(1)) return true;', 'if (!open(3)) return true;',
                                   'if (true || (!open(2))) return true;', 'if (false && (!open(2))) return true;',
                                   'if (!open(2)) return false;']),
    ('{\n  names.clear();\n  int n = count();\n}', ['  ;']),
    ('kill(1, 0);', []),
]

# Lines of code with the times that each is reached and the ways of its branches; the lines that are marked, and
# the faults of the marks.
MARKED = [
    ([('if (a)  // unreached: why', 1, [1, 0]), ('  b();', 0, [])], [(1, 1)], 0),
    ([('if (a)  // unreached: why', 1, [1, 2]), ('  b();', 1, [])], [(1, 1)], 1),
    ([('  if (a) {  // unreached: why', 1, [1, 0]), ('    b(c);', 0, []), ('  }', 0, []), ('  d();', 1, [])], [(1, 3)], 0),
    ([('  int a(int b,', 0, []), ('        int c) {  // unreached: why', 0, []), ('    d();', 0, []), ('  }', 0, [])],
     [(2, 4)], 0),
    ([('if (a)  // unreached:', 1, [1, 0])], [], 0),
]


def faults(check, changes):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**GOOD, **changes}.items():
            if text is not None:
                path = Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding='utf-8')
        return check(folder)


class Checkers(unittest.TestCase):
    def test_trees(self):
        for check, rows in ((check_floors.check, BAD_INCLUDES), (check_tree.check, BAD_FILES)):
            self.assertEqual(faults(check, {}), [])
            for name, changes, expected in rows:
                with self.subTest(name):
                    found = faults(check, changes)
                    self.assertEqual(len(found), 1, found)
                    self.assertIn(expected, found[0])

    def test_exports(self):
        entries = check_exports.entries_of(SCRIPT)
        for symbols, expected in [(EXPORTS, None)] + BAD_EXPORTS:
            with self.subTest(expected):
                found = list(check_exports.differences(entries, *zip(*symbols)))
                self.assertEqual(found, [expected] if expected else [])

    def test_changes(self):
        for text, expected in CHANGES:
            with self.subTest(text):
                lines = changes.Lines(text)
                shown = [lines.shown(text, change)[1] for change in changes.changes_of(text)]
                self.assertCountEqual(shown, [line.strip() for line in expected])

    def test_marks(self):
        for rows, expected, wrong in MARKED:
            with self.subTest(rows[0][0]):
                lines, reached, taken = zip(*rows)
                file = coverage.File(dict(enumerate(reached, 1)), dict(enumerate(taken, 1)))
                marked = coverage.marks(lines)
                self.assertEqual(marked, expected)
                self.assertEqual(len(coverage.wrong_marks('a', file, marked)), wrong)
                left = coverage.without(file, marked)
                self.assertNotIn(expected[0][0] if expected else 0, left.lines)

    def test_symbols(self):
        listed = ['lib.so.2 lib2 #MINVER#', ' (c++|regex)"^ns::.*@Base$" 2.0.0', ' gone_*@Base 2.0.0', ' kept@Base 2.0.0']
        names = {'kept', 'anew'}
        self.assertEqual([fault.split(': ')[1] for fault in check_symbols.differences(listed, names)], ['anew', 'gone_*'])
        after = check_symbols.recorded(listed, names, '2.1.0')
        self.assertEqual(after, [*listed[:2], ' anew@Base 2.1.0', ' kept@Base 2.0.0'])
        self.assertEqual(check_symbols.differences(after, names), [])


if __name__ == '__main__':
    unittest.main()
