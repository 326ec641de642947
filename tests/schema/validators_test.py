#!/usr/bin/env python3
"""What the schema of a table takes, by validators that others wrote, is what the command converts.

OPTXV_COMMAND is the command. The validators are python3-jsonschema, and ajv in the folder OPTXV_AJV, where
./dev check installs it. Without the first the test is skipped (77); without the second it says so.
"""
import json
import os
import subprocess
import sys
import unittest
from pathlib import Path

try:
    import jsonschema
except ImportError:
    print('skipped: python3-jsonschema is not installed')
    sys.exit(77)

HERE = Path(__file__).parent
SOURCE = HERE.parent.parent
COMMAND = os.environ['OPTXV_COMMAND']
AJV = os.environ.get('OPTXV_AJV', '')
EVERYKIND = SOURCE / 'tests/support/everykind.def'
SOLVER = SOURCE / 'examples/solver.def'

DOT = {'symbol': 'x', 'attribute': '.scale', 'labels': ['a', '*'], 'value': 2.5}
TIE = {'equation': 'e', 'equationlabels': ['i', "'a b'"], 'variable': 'v', 'variablelabels': ['i'], 'value': True}
GOOD = (
    {}, {'$schema': 'x'}, {'steplim': 0}, {'steplim': 5000}, {'steplim': 1e3}, {'tol': [0, 1]}, {'tol': [None, 1e-300]},
    {'tol': [0.1, None]}, {'logname': ''}, {'logname': 'a ! b'}, {'logname': 'x' * 255}, {'logname': ' a '}, {'method': 'dual'},
    {'level': 2}, {'level': 1.0}, {'verbose': True}, {'verbose': False}, {'quick': None}, {'quick': 99}, {'names': []},
    {'names': ['a', '']}, {'old': 9}, {'range': [99, None]}, {'title': ['a b', None]}, {'scale': False}, {'--note': ['a', 'b c']},
    {'dot-options': [DOT, {'symbol': 'y', 'attribute': '.keep', 'value': True}]}, {'indicator-entries': [TIE]},
)
BAD = (
    [], 1, {'$schema': 1}, {'stepslim': 1}, {'maxsteps': 1}, {'Steplim': 1}, {'gone': 1}, {'both': 1}, {'pair': '1:2'}, {'read': 'x'},
    {'.scale': 1}, {'steplim': -1}, {'steplim': 5001}, {'steplim': 0.5}, {'steplim': '1'}, {'steplim': None}, {'steplim': True},
    {'tol': 0.5}, {'tol': [0]}, {'tol': [0, 1, 0]}, {'tol': [None, None]}, {'tol': [0, 1.5]}, {'logname': 1}, {'logname': None},
    {'logname': 'a"b'}, {'logname': 'a\n'}, {'logname': 'a\x1ab'}, {'logname': 'x' * 256}, {'method': 'none'}, {'method': 1},
    {'level': 3}, {'level': 1.5}, {'level': '1'}, {'verbose': 1}, {'verbose': None}, {'quick': 100}, {'quick': False}, {'names': 'a'},
    {'names': [1]}, {'old': 10}, {'range': [1.5, 2]}, {'title': ['*', 'a']}, {'title': ['a']}, {'scale': 1}, {'--note': 'a'},
    {'--1': ['a']}, {'--': []}, {'--a\n': ['b']}, {'dot-options': DOT}, {'dot-options': [dict(DOT, value=-1)]},
    {'dot-options': [dict(DOT, attribute='.keep')]}, {'dot-options': [dict(DOT, attribute='.none')]},
    {'dot-options': [dict(DOT, symbol='x y')]}, {'dot-options': [dict(DOT, symbol='x\n')]}, {'dot-options': [dict(DOT, more=1)]},
    {'dot-options': [{'symbol': 'x', 'value': 1}]}, {'dot-options': [dict(DOT, labels=['a'] * 21)]},
    {'indicator-entries': [dict(TIE, value=1)]}, {'indicator-entries': [dict(TIE, variablelabels=['a b'])]},
    {'indicator-entries': [dict(TIE, equation='')]}, {'indicator-entries': [{'equation': 'e', 'value': True}]},
)


def run(*words, text=''):
    return subprocess.run([COMMAND, *words], input=text, capture_output=True, text=True, check=False)


def schema_of(definition):
    return json.loads(run('schema', definition).stdout)


def converted(instance, definition):
    return run('convert', definition, '-', '--to', 'parameters', text=json.dumps(instance)).returncode == 0


def by_python(schema, instances):
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    return [validator.is_valid(each) for each in instances]


def by_ajv(schema, instances):
    told = subprocess.run(['node', HERE / 'validate.mjs', Path(AJV).resolve()], capture_output=True, text=True, check=False,
                          input=json.dumps({'schema': schema, 'instances': instances}))
    if told.returncode != 0 or told.stderr:
        raise AssertionError(told.stderr)
    return json.loads(told.stdout)


class Validators(unittest.TestCase):
    def validators(self):
        yield by_python
        if AJV and (Path(AJV) / 'node_modules/ajv').is_dir():
            yield by_ajv
        else:
            print('ajv is not installed: python3-jsonschema alone judges', file=sys.stderr)

    def test_what_is_taken(self):
        for expected, instances in ((True, GOOD), (False, BAD)):
            for each in instances:
                self.assertEqual(converted(each, EVERYKIND), expected, each)
            for validator in self.validators():
                taken = validator(schema_of(EVERYKIND), list(instances))
                self.assertEqual([each for each, is_taken in zip(instances, taken) if is_taken != expected], [], validator)

    def test_what_is_written(self):
        told = [json.loads(run('convert', SOLVER, SOURCE / 'examples/solver.opt', '--to', 'json', *flags).stdout)
                for flags in ((), ('--all',))]
        for validator in self.validators():
            self.assertEqual(validator(schema_of(SOLVER), told), [True, True])

    def test_what_is_told_of_an_option(self):
        schema = schema_of(EVERYKIND)
        members = schema['properties']
        self.assertEqual(members['steplim'], {'description': 'Step limit\nEnds the run after so many steps.', 'type': 'integer',
                                              'minimum': 0, 'maximum': 5000, 'default': 1000})
        self.assertTrue(members['old']['deprecated'])
        self.assertIn({'const': 'dual', 'description': 'Dual method'}, members['method']['anyOf'])
        self.assertEqual(schema['$defs']['group-limits']['title'], 'Limits of a run')


if __name__ == '__main__':
    unittest.main()
