#!/usr/bin/env python3
"""Checks the tree against its rules for files: names, headers, test files, and no path of somebody's machine.

Usage: check_tree.py [tree]. Prints one line per fault; the exit status is 1 if there is one.
checks/modules.txt lists the modules that differ from the rule, with their reasons.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

WORD = re.compile(r'[a-z][a-z0-9]*')
# Folders that exist on one machine only. Plain system folders (/usr, /etc, /tmp) are everywhere.
MACHINE_PATH = re.compile(rb'(?<![\w.}/])/(?:home|root|Users|work|farm|mnt)/[\w.]')
TREES = ('src', 'command')
SUFFIXES = {'.h', '.cpp', '.def', '.inc', '.map'}


def rows_of(tree):
    """The rows of modules.txt as {kind: {module: rest}}, modules with their tree; and the faults in them."""
    rows, faults = {'bodies': {}, 'untested': {}, 'program': {}}, []
    for number, line in enumerate((tree / 'checks/modules.txt').read_text(encoding='utf-8').splitlines(), 1):
        fields = line.split('#')[0].split(maxsplit=2)
        if not fields:
            continue
        if len(fields) < 3 or fields[0] not in rows:
            faults.append(f'modules.txt:{number}: not a row: {line.strip()}')
        else:
            rows[fields[0]][fields[1]] = fields[2].strip()
    return rows, faults


def tracked(tree):
    """The tree's own files: those that git tracks, or all of them if there is no git."""
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
        top, word = path.split('/')[0], Path(path).stem
        if not WORD.fullmatch(word):
            yield f'{path}: a file takes one lower-case word'
        if home.setdefault((top, word), Path(path).parent) != Path(path).parent:
            yield f'{path}: the word is taken by {home[top, word]}/{word}'


def test_of(module):
    """The test file of a module: in the folder of that name; for the command, all in one folder."""
    top, folder, word = module.split('/')
    return f'tests/{top if top == "command" else folder}/{word}_test.cpp'


def lacks_of(tree, sources):
    """What each module lacks, as {kind of row: modules}."""
    found = [path.removesuffix('.cpp') for path in sources if path.endswith('.cpp')]
    return {'bodies': [module for module in found if not (tree / f'{module}.h').is_file()],
            'untested': [module for module in found if not (tree / test_of(module)).is_file()]}


def modules(tree, sources, rows):
    """Each module's header and test file, or its row in modules.txt; and rows that no longer hold."""
    lacks = {kind: [module for module in lacking if module not in rows['program']]
             for kind, lacking in lacks_of(tree, sources).items()}
    told = {'bodies': lambda module: 'has no header', 'untested': lambda module: f'has no test file {test_of(module)}'}
    for kind, lacking in lacks.items():
        for module in lacking:
            if module not in rows[kind] and module.rsplit('/', 1)[0] not in rows[kind]:
                yield f'{module}.cpp: {told[kind](module)}'
        for row in rows[kind]:
            if not any(f'{module}/'.startswith(f'{row}/') for module in lacking):
                yield f'modules.txt: the row no longer holds: {kind} {row}'
    for module, header in rows['bodies'].items():
        if not (tree / header).is_file():
            yield f'modules.txt: no such header: bodies {module} {header}'
    for module in rows['program']:
        if f'{module}.cpp' not in sources or f'{module}.h' in sources:
            yield f'modules.txt: the row no longer holds: program {module}'


def test_names(tree):
    home = {}
    for path in sorted(tree.glob('tests/*/*_test.cpp')):
        if home.setdefault(path.name, path.parent.name) != path.parent.name:
            yield f'tests/{path.parent.name}/{path.name}: the name is taken in tests/{home[path.name]}'


def check(tree):
    """The faults of the tree, one line each."""
    tree = Path(tree)
    sources = sorted(path.relative_to(tree).as_posix() for top in TREES for path in tree.glob(f'{top}/*/*')
                     if path.suffix in SUFFIXES)
    rows, faults = rows_of(tree)
    faults += [f'{path.relative_to(tree)}: sources belong in a folder of {top}/'
               for top in TREES for path in sorted(tree.glob(f'{top}/*.*')) + sorted(tree.glob(f'{top}/*/*/*'))]
    for part in (names(sources), modules(tree, sources, rows), test_names(tree), machine_paths(tree)):
        faults += part
    return faults


if __name__ == '__main__':
    lines = check(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent)
    print('\n'.join(lines) if lines else 'tree: ok')
    sys.exit(1 if lines else 0)
