#!/usr/bin/env python3
"""The definition document, read back by the library, gives the table that it was written from.

What the document is known to leave out or to write in a form that is not read is left out of the tables given here:
lists of texts, instructions to the reader, deprecated and obsolete names, values with blanks in them. OPTXV_LIBRARY and
OPTXV_COMMAND say where they are; OPTXV_TABLES a folder of more tables.
"""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import tablefacts  # noqa: E402  (found beside this file)

LEFT_OUT = ('general', 'secret', 'empty', 'paths', 'last', 'rf', 'halt')
TABLE = ''.join(line for line in tablefacts.EVERY_KIND.replace('"by size"', 'primal').splitlines(keepends=True)
                if line.split()[0] not in LEFT_OUT)


def digits15(fact):
    """Reals are written with 15 digits."""
    return float(f'{fact:.15g}') if isinstance(fact, float) else fact


class ReadBack(unittest.TestCase):
    def test_the_tables_are_the_same(self):
        with tempfile.TemporaryDirectory() as folder:
            plain, back = Path(folder) / 'plain.def', Path(folder) / 'back.def'
            plain.write_text(TABLE, encoding='latin-1')
            for table in tablefacts.tables(plain)[1:]:
                with self.subTest(table.stem):
                    document = subprocess.run([os.environ['OPTXV_COMMAND'], 'definition', table], check=True,
                                              stdout=subprocess.PIPE, timeout=60).stdout
                    first, rest = document.split(b'\n', 1)
                    self.assertEqual(first, b'Help immediate.OPT Help 0 ')  # built in: no definition may hold it
                    back.write_bytes(rest)
                    options, synonyms, messages = tablefacts.facts(table)
                    again = tablefacts.facts(back)
                    self.assertEqual((messages, again[2]), ([], []))
                    for option, copy in zip(options, again[0], strict=True):
                        self.assertEqual(copy, {name: digits15(fact) for name, fact in option.items()})
                    self.assertEqual(again[1], synonyms)


if __name__ == '__main__':
    unittest.main()
