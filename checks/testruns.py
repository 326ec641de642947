"""The tests of a build folder as ctest knows them, run one by one: for checkers that ask each test something.

A test is {'name', 'command', 'folder', 'labels', 'settings'}: its words, where it runs, and its environment
beside ours.
"""
import json
import os
import signal
import subprocess

TIMED_OUT = -1000  # a status that no process has


def tests_of(build):
    """The tests of a build folder that try the code: the unit tests, the documents, what is generated."""
    shown = subprocess.run(['ctest', '--test-dir', build, '--show-only=json-v1'], check=True,
                           stdout=subprocess.PIPE).stdout
    found = [test_of(test) for test in json.loads(shown)['tests'] if 'command' in test]
    return [test for test in found if test['labels'] & {'unit', 'document'} or test['name'] == 'generate']


def test_of(test):
    kept = {property['name']: property['value'] for property in test['properties']}
    settings = dict(setting.split('=', 1) for setting in kept.get('ENVIRONMENT', []))
    return {'name': test['name'], 'command': test['command'], 'folder': kept.get('WORKING_DIRECTORY', '.'),
            'labels': set(kept.get('LABELS', [])), 'settings': settings}


def run(test, settings, limit, output=subprocess.DEVNULL, prepare=None):
    """The exit status of a test; TIMED_OUT after so many seconds, when all that it started is ended too.

    prepare: what the process does before the test begins.
    """
    process = subprocess.Popen(test['command'], cwd=test['folder'], env=os.environ | test['settings'] | settings,
                               stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                               start_new_session=True, preexec_fn=prepare)
    try:
        return process.wait(limit)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        return TIMED_OUT
