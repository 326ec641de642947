#!/usr/bin/env python3
"""The runner of the documents finds the faults it is there to find, and the lists in the documents are complete.

OPTXV_SOURCE is the tree; the runner's own variables as it says.
"""
import os
import re
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import documents  # noqa: E402  (found beside this file)

TABLE = '```definition\na integer 1 5 0 9 1 1 A number\n```\n'
SOURCE = Path(os.environ['OPTXV_SOURCE'])
# Texts in the sources of the readers that no text of a user can cause.
UNTOLD = {'Cannot AddIndex to DotObj', 'Cannot SetValue to DotObj', 'Bad message number ='}
FORMS = {'action hc group text', 'item hc text', 'marked text'}  # the fields of records, which are no messages
ROWS = (
    ('nothing to say', TABLE + '```parameters\na 6\n```\n```values\na = 6\n```\n', None),
    ('an unknown kind', '```fortran\na\n```\n', 'nothing runs a block of kind "fortran"'),
    ('not closed', '```values\na\n', 'the block is not closed'),
    ('a message that nobody shows', TABLE + '```parameters\nb 6\n```\n', 'nothing shows:\n*** Error line 1: Unknown'),
    ('a message too many', TABLE + '```parameters\na 6\n```\n```messages\n*** Error\n```\n', 'there are no messages'),
    ('another value', TABLE + '```parameters\na 6\n```\n```values\na = 7\n```\n', '+a = 6'),
    ('a program that fails', '```python\nraise SystemExit(3)\n```\n', 'fails with 3'),
    ('output that nobody shows', '```python\nprint(1)\n```\n', 'no output block follows'),
    ('other output', '```python\nprint(1)\n```\n```output\n2\n```\n', '+1'),
    ('an excerpt in another order', '```excerpt examples/tight.opt\nread_path /models/tight\nfeasibility_tol 1e-8\n```\n',
     'not in this order: feasibility_tol'),
    ('output without a command', '```console\nls\n```\n', 'does not begin with a command'),
    ('a link to nothing', '[a](b.md)\n', 'b.md: there is no such file'),
    ('commands that say nothing of a test', '```sh\nls\n```\n', 'says not-run'),
)


class Runner(unittest.TestCase):
    def test_rows(self):
        for name, text, expected in ROWS:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                path = Path(folder) / 'document.md'
                path.write_text(text, encoding='utf-8')
                found = '\n'.join(documents.faults(path))
                self.assertIn(expected, found) if expected else self.assertEqual(found, '')


class Completeness(unittest.TestCase):
    def test_the_map_names_every_module(self):
        text = (SOURCE / 'docs/map.md').read_text(encoding='utf-8')
        modules = {path.stem for path in SOURCE.glob('src/*/*') if path.suffix in ('.h', '.cpp')}
        self.assertEqual([module for module in sorted(modules) if not re.search(rf'`([\w/]+/)?{module}\b', text)], [])

    def test_the_page_of_the_command_names_every_subcommand_and_field(self):
        page = (SOURCE / 'docs/command.md').read_text(encoding='utf-8')
        code = ''.join((SOURCE / f'command/{name}.cpp').read_text(encoding='utf-8')
                       for name in ('cli/optxv', 'output/reporter', 'tasks/show'))
        words = re.findall(r'\badd(?:document)?\(\w+, (?:given, )?"(\w+)"', code)
        fields = re.findall(r'(?:\{|row\[)"([a-z]+)"', code)
        self.assertEqual((len(words), 'nearest' in fields, 'variable' in fields), (9, True, True))  # it does find them
        manual = (SOURCE / 'docs/optxv.1').read_text(encoding='utf-8')
        flags = re.findall(r'"(?:-o,)?-(-[a-z-]+)"', code)
        self.assertIn('-no-bounds', flags)
        self.assertEqual([word for word in words if f'`optxv {word}' not in page or f'.It Cm {word}\n' not in manual], [])
        self.assertEqual([flag for flag in flags if not re.search(rf'^\.It Fl .*{flag}\b', manual, re.M)], [])
        self.assertEqual([field for field in fields if not re.search(rf'[`"]{field}[`"]', page)], [])

    def test_the_documents_list_every_message_of_the_readers(self):
        told = ' '.join(' '.join((SOURCE / f'docs/{name}-language.md').read_text(encoding='utf-8').split())
                        for name in ('definition', 'parameter'))
        texts = set()
        for path in SOURCE.glob('src/*/*.cpp'):
            if path.parent.name in ('definition', 'parameter', 'options'):
                code = re.sub(r'^\s*(//|#).*$', '', path.read_text(encoding='utf-8'), flags=re.M)
                literals = {text.strip() for text in re.findall(r'"((?:[^"\\\n]|\\.)*)"', code)}
                texts |= {text for text in literals if re.search(r'[A-Za-z]{2} | [A-Za-z]{2}', text)}
        self.assertGreater(len(texts), 50)  # it does find them
        self.assertEqual(sorted(text for text in texts - UNTOLD - FORMS if text not in told), [])


if __name__ == '__main__':
    unittest.main()
