#!/usr/bin/env python3
"""Holds the tree to its rules of files: names, headers, test files, and no path of somebody's machine.

Usage: check_tree.py [tree]. Prints a line for each fault; the exit status is 1 where there is one.
checks/modules.txt lists the modules that differ from the rule, with the reason.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

WORD = re.compile(r'[a-z][a-z0-9]*')
# Folders that exist on one machine only. Plain system folders (/usr, /etc, /tmp) are everywhere.
MACHINE_PATH = re.compile(rb'(?<![\w.}/])/(?:home|root|Users|work|farm|mnt)/[\w.]')
SUFFIXES = {'.h', '.cpp', '.def', '.inc', '.map'}


def rows_of(tree):
    """The rows of modules.txt as {kind: {module: rest}}, and the faults in them."""
    rows, faults = {'bodies': {}, 'untested': {}}, []
    for number, line in enumerate((tree / 'checks/modules.txt').read_text(encoding='utf-8').splitlines(), 1):
        fields = line.split('#')[0].split(maxsplit=2)
        if not fields:
            continue
        if len(fields) < 3 or fields[0] not in rows:
            faults.append(f'modules.txt:{number}: not a row: {line.strip()}')
        else:
            rows[fields[0]][fields[1]] = fields[2]
    return rows, faults


def tracked(tree):
    """The files of the tree that are its own: what git tracks, or all where there is no git."""
    git = shutil.which('git') or 'false'  # a machine that got the sources as an archive need not have git
    listed = subprocess.run([git, '-C', str(tree), 'ls-files', '-z'], capture_output=True, check=False)
    if listed.returncode == 0 and listed.stdout:
        return [tree / name.decode() for name in listed.stdout.split(b'\0') if name]
    return [path for path in tree.rglob('*') if not re.match(r'build|\.git/', path.relative_to(tree).as_posix())]


def machine_paths(tree):
    for path in tracked(tree):
        if path.is_file():
            for number, line in enumerate(path.read_bytes().split(b'\n'), 1):
                if MACHINE_PATH.search(line):
                    yield f'{path.relative_to(tree)}:{number}: a path of one machine'


def names(sources):
    home = {}
    for path in sources:
        folder, word = path.parent.name, path.stem
        if not WORD.fullmatch(word):
            yield f'src/{folder}/{path.name}: a file takes one lower-case word'
        if home.setdefault(word, folder) != folder:
            yield f'src/{folder}/{path.name}: the word is taken by src/{home[word]}/{word}'


def modules(tree, sources, rows):
    """Each module's header and test file, or its row in modules.txt; and rows that no longer hold."""
    tests = {path.relative_to(tree / 'tests').as_posix() for path in tree.glob('tests/*/*_test.cpp')}
    found = {f'{path.parent.name}/{path.stem}' for path in sources if path.suffix == '.cpp'}
    for module in sorted(found):
        has_header = (tree / f'src/{module}.h').is_file()
        if not has_header and module not in rows['bodies']:
            yield f'src/{module}.cpp: has no header'
        if f'{module}_test.cpp' not in tests and module not in rows['untested']:
            yield f'src/{module}.cpp: has no test file tests/{module}_test.cpp'
    for module, header in rows['bodies'].items():
        if module not in found or (tree / f'src/{module}.h').is_file() or not (tree / 'src' / header).is_file():
            yield f'modules.txt: the row no longer holds: bodies {module} {header}'
    for module in rows['untested']:
        if module not in found or f'{module}_test.cpp' in tests:
            yield f'modules.txt: the row no longer holds: untested {module}'


def test_names(tree):
    home = {}
    for path in sorted(tree.glob('tests/*/*_test.cpp')):
        if home.setdefault(path.name, path.parent.name) != path.parent.name:
            yield f'tests/{path.parent.name}/{path.name}: the name is taken in tests/{home[path.name]}'


def check(tree):
    """The faults of the tree, a line each."""
    tree = Path(tree)
    sources = sorted(path for path in tree.glob('src/*/*') if path.suffix in SUFFIXES)
    rows, faults = rows_of(tree)
    faults += [f'{path.relative_to(tree)}: sources stand in a folder of src/'
               for path in sorted(tree.glob('src/*.*')) + sorted(tree.glob('src/*/*/*'))]
    for part in (names(sources), modules(tree, sources, rows), test_names(tree), machine_paths(tree)):
        faults += part
    return faults


if __name__ == '__main__':
    lines = check(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent)
    print('\n'.join(lines) if lines else 'tree: ok')
    sys.exit(1 if lines else 0)
