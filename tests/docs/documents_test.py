#!/usr/bin/env python3
"""The runner of the documents finds the faults it is there to find, and the lists in the documents are complete.

OPTXV_SOURCE is the tree; the runner's own variables as it says.
"""
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import documents  # noqa: E402  (found beside this file)

SOURCE = Path(os.environ['OPTXV_SOURCE'])
sys.path.insert(0, str(SOURCE / 'checks'))
import manual  # noqa: E402

TABLE = '```definition\na integer 1 5 0 9 1 1 A number\n```\n'
COMMAND = os.environ.get('OPTXV_COMMAND')
ROWS_OF_COMMAND = manual.rows_of(COMMAND) if COMMAND else {}
# What prints JSON, with something in every field.
PRINTERS = ('check --json faulty.opt', 'show --json solver.opt', 'origin --json solver.opt',
            'diff --json solver.opt tight.opt')
# What the documents tell, and the rows of the tests of the readers, with the messages that came of them.
TOLD_LINES = ''.join((SOURCE / f'docs/{name}-language.md').read_text(encoding='utf-8') for name in ('definition', 'parameter'))
TOLD = ' '.join(' '.join(TOLD_LINES.replace('option/synonym', word).split()) for word in ('option', 'synonym'))
SEEN = ''.join(path.read_text(encoding='utf-8').replace('\\"', '"') for folder in ('definition', 'parameter', 'options')
               for path in sorted((SOURCE / 'tests' / folder).iterdir()))
ROWS = (
    ('nothing to say', TABLE + '```parameters\na 6\n```\n```values\na = 6\n```\n', None),
    ('an unknown kind', '```ada\na\n```\n', 'nothing runs a block of kind "ada"'),
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
    ('a rule that nothing breaks', '```lint D101\na integer 1 5 0 9 1 1 A\n```\n', 'does not break the rule'),
    ('a fault that stays', '```lint D101\na integer 1 5 0 9 1 1\n```\n```clean\na integer 1 6 0 9 1 1\n```\n', 'still breaks D101'),
    ('a link to nothing', '[a](b.md)\n', 'b.md: there is no such file'),
    ('commands that say nothing of a test', '```sh\nls\n```\n', 'says not-run'),
)


def printed(words):
    task, flag, *parameters = words.split()
    files = [SOURCE / 'examples' / name for name in ('solver.def', *parameters)]
    return subprocess.run([COMMAND, task, flag, *files], capture_output=True, check=False).stdout


def fields_of(value):
    """The names of all fields in a value of JSON."""
    inner = value.values() if isinstance(value, dict) else value if isinstance(value, list) else []
    return set(value if isinstance(value, dict) else ()).union(*map(fields_of, inner))


class Runner(unittest.TestCase):
    def test_rows(self):
        for name, text, expected in ROWS:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                path = Path(folder) / 'document.md'
                path.write_text(text, encoding='utf-8')
                found = '\n'.join(documents.faults(path))
                self.assertIn(expected, found) if expected else self.assertEqual(found, '')


@unittest.skipUnless(COMMAND, 'the command is not built')
class Command(unittest.TestCase):
    def test_the_manual_page_is_made_from_the_rows(self):
        page = (SOURCE / 'docs/optxv.1').read_text(encoding='utf-8')
        self.assertEqual(page, manual.page_of(ROWS_OF_COMMAND, page), 'run checks/manual.py with the command')

    def test_the_page_of_the_command_has_every_usage_and_field(self):
        page = (SOURCE / 'docs/command.md').read_text(encoding='utf-8')
        self.assertEqual([row['usage'] for row in ROWS_OF_COMMAND['subcommands'] if f'`{row["usage"]}`' not in page], [])
        fields = set().union(*(fields_of(json.loads(printed(words))) for words in PRINTERS))
        self.assertLessEqual({'nearest', 'variable', 'unreadable'}, fields)  # it does find them
        self.assertEqual([field for field in sorted(fields) if not re.search(rf'[`"]{field}[`"]', page)], [])

    def test_the_page_of_the_command_has_every_code_with_its_level(self):
        page = (SOURCE / 'docs/command.md').read_text(encoding='utf-8')
        rows = re.findall(r'^\| (`[^|]*) \| (error|warning|note) \| *([^|]*?) *\|$', page, re.M)
        told = {code: (level, text) for codes, level, text in rows for code in re.findall('`([a-z-]+)`', codes)}
        log = json.loads(printed('check --format=sarif solver.opt'))['runs'][0]['tool']['driver']['rules']
        rules = {rule['id']: (rule['defaultConfiguration']['level'], rule['shortDescription']['text']) for rule in log}
        self.assertEqual({code: level for code, (level, _) in told.items()}, {code: level for code, (level, _) in rules.items()})
        faults = re.findall(r'^  optxv_fault_(\w+) = [1-9]', (SOURCE / 'include/optxv/embedding.h').read_text(encoding='utf-8'), re.M)
        library = [code for code in rules if code.replace('-', '_') in faults]
        self.assertEqual([code for code in library if told[code] != rules[code]], [])
        self.assertEqual(len(library), len(faults))
    def test_the_page_of_the_rules_has_each_with_an_example(self):
        page = (SOURCE / 'docs/lint.md').read_text(encoding='utf-8')
        table = re.findall(r'^\| `(\w+)` \| (\w+) \| (.*) \|$', page, re.M)
        self.assertEqual(table, [tuple(rule.values()) for rule in ROWS_OF_COMMAND['rules']])
        examples = re.findall(r'^### (\w+)\n(?:(?!###)(?!```lint)[^\n]*\n)*```lint \1\n(?:[^`][^\n]*\n)+```\n```clean\n', page, re.M)
        self.assertEqual(sorted(examples), [code for code, *_ in table])

    def test_every_example_of_the_help_has_words_that_are_taken(self):
        for row in ROWS_OF_COMMAND['subcommands']:
            names = {name for flag in row['flags'] for name in flag['names']}
            for example in row['examples']:
                words = re.search(r'\boptxv (\w+)([^|]*)', example)
                self.assertEqual((words[1], set(re.findall(r' (-[a-z-]+)', words[2])) - names), (row['word'], set()))


class Completeness(unittest.TestCase):
    def test_the_map_names_every_module(self):
        text = (SOURCE / 'docs/map.md').read_text(encoding='utf-8')
        modules = {path.stem for path in SOURCE.glob('src/*/*') if path.suffix in ('.h', '.cpp')}
        self.assertEqual([module for module in sorted(modules) if not re.search(rf'`([\w/]+/)?{module}\b', text)], [])

    def test_the_documents_tell_the_messages_that_the_tests_have_seen(self):
        """What the rows of the tests hold after "> ***" is what the library has made of their texts."""
        for text in re.findall(r'^> \*\*\* [\w ]*?(?:Error|Warning)(?: (?:line|argument|variable) \w+:)? (.*?)(?: for option "[^"]*")?$', SEEN, re.M):
            parts = [part.strip() for part in re.split(r'"[^"]*"|[=;] .*|(?<=are)  .*|[-\d.]+', text)]
            self.assertEqual([part for part in parts if ' ' in part and part not in TOLD], [], text)

    def test_the_library_makes_every_message_of_the_tables(self):
        tables = re.findall(r'^\| Text \|.*\n\|---.*\n((?:\|.*\n)*)', TOLD_LINES, re.M)
        rows = re.findall(r'^\| ([^|]*) \|', ''.join(tables), re.M)
        self.assertGreater(len(rows), 60)
        for row in rows:
            parts = re.split(r'\.\.\.|, (?=[A-Z])|option/synonym|"', row)
            self.assertEqual([part for part in parts if part.strip() not in SEEN], [], row)


if __name__ == '__main__':
    unittest.main()
