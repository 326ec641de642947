#!/usr/bin/env python3
"""The checkers of the tree, each shown trees that break one rule, and one that breaks none."""
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / 'checks'))
import check_exports  # noqa: E402
import check_floors  # noqa: E402
import check_tree  # noqa: E402

FLOORS = '0 base\n1 mid/low base\n2 mid base mid/low\n2 side base\n3 top *\n'
GOOD = {
    'checks/floors.txt': FLOORS,
    'checks/modules.txt': 'bodies top/extra top/main.h\nuntested mid/low a table without code\n',
    'src/base/text.h': '#include <string>\n#include <sys/stat.h>\n', 'src/base/text.cpp': '#include "base/text.h"\n',
    'src/mid/low.h': '/* #include "top/main.h" */\n#include "base/text.h"\n',
    'src/mid/low.cpp': '#include "mid/low.h"\n// #include "side/way.h"\n',
    'src/mid/high.h': '#include "mid/low.h"\n', 'src/side/way.h': '#include "base/text.h"\n',
    'src/top/main.h': '#include <optxv/optxv.h>\n#include "side/way.h"\n',
    'src/top/main.cpp': '#include "top/main.h"\n#include "mid/high.h"\n', 'src/top/extra.cpp': '#include "top/main.h"\n',
    'tests/base/text_test.cpp': '', 'tests/top/main_test.cpp': '', 'tests/top/extra_test.cpp': ''}

# What is laid over the good tree (None takes a file away), and a piece of the one fault expected.
BAD_INCLUDES = [
    ('up', {'src/base/solo.h': '#include "mid/high.h"\n'}, 'base may not include this'),
    ('public header below', {'src/base/text.h': '#include <optxv/optxv.h>\n'}, 'base may not include this'),
    ('cycle', {'src/mid/low.h': '#include "mid/low2.h"\n', 'src/mid/low2.h': '#include "mid/high.h"\n',
               'checks/floors.txt': FLOORS.replace('1 mid/low base', '').replace(' mid/low', '')}, 'include cycle'),
    ('from beside', {'src/mid/high.h': '#include "low.h"\n'}, 'written from src/'),
    ('missing', {'src/side/way.h': '#include "base/gone.h"\n'}, 'no file there'),
    ('foreign library', {'src/side/way.h': '#include <boost/any.hpp>\n'}, 'C++ standard library'),
    ('macro', {'src/side/way.h': '#include HEADER\n'}, 'cannot be checked'),
    ('no floor', {'src/attic/old.h': ''}, 'stands on no floor'),
    ('grant of a higher floor', {'checks/floors.txt': FLOORS.replace('0 base', '0 base side')}, 'may not be granted'),
    ('unit twice', {'checks/floors.txt': FLOORS + '1 base\n'}, 'not a row'),
]
BAD_FILES = [
    ('word taken', {'src/side/text.h': ''}, 'the word is taken by src/base/text'),
    ('no header', {'src/base/text.h': None}, 'has no header'),
    ('no test', {'tests/base/text_test.cpp': None}, 'has no test file'),
    ('test name twice', {'tests/side/text_test.cpp': ''}, 'the name is taken in tests/base'),
    ('stale bodies row', {'src/top/extra.h': ''}, 'no longer holds: bodies top/extra'),
    ('too deep', {'src/top/inner/deep.h': ''}, 'stand in a folder of src/'),
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


if __name__ == '__main__':
    unittest.main()
