#!/usr/bin/env python3
"""Holds every #include under src/ to the floors of checks/floors.txt and refuses include cycles.

Usage: check_floors.py [tree]. Prints a line for each fault; the exit status is 1 where there is one.
"""
import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(.*?)[ \t]*$', re.MULTILINE)
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|("(?:\\.|[^"\\\n])*")', re.DOTALL)
SUFFIXES = {'.h', '.cpp', '.def', '.inc'}
PUBLIC = 'optxv'


class Floors:
    """The rows of floors.txt: `faults` says what is wrong with the rows themselves."""

    def __init__(self, text):
        self.level, self.grants, self.faults = {}, {}, []
        for number, line in enumerate(text.splitlines(), 1):
            fields = line.split('#')[0].split()
            if not fields:
                continue
            if len(fields) < 2 or not fields[0].isdigit() or fields[1] in self.level:
                self.faults.append(f'floors.txt:{number}: not a row, or a unit twice: {line.strip()}')
                continue
            self.level[fields[1]], self.grants[fields[1]] = int(fields[0]), fields[2:]
        for unit, grants in self.grants.items():
            self.faults += [f'floors.txt: {unit} may not be granted {grant}: unknown, or not below it'
                            for grant in grants if not self._stands_below(grant, unit)]

    def _stands_below(self, grant, unit):
        if grant == '*':
            return True
        inner = grant.startswith(unit + '/')
        return grant in self.level and (inner or self.level[grant] < self.level[unit])

    def unit_of(self, path):
        """The unit of a path below src/ without its suffix, or None."""
        folder = path.split('/')[0]
        return next((unit for unit in (path, folder) if unit in self.level), None)

    def allows(self, source, target):
        """Whether the file `source` may include `target`, both below src/ without suffix."""
        unit = self.unit_of(source)
        grants = [unit] + self.grants[unit]
        if unit == self.unit_of(target) or '*' in grants:
            return True
        return any(target == grant or target.startswith(grant + '/') for grant in grants)


def stem(path):
    return path.rsplit('.', 1)[0]


def includes_of(path):
    text = path.read_text(encoding='utf-8', errors='replace')
    return INCLUDE.findall(COMMENT.sub(lambda match: match.group(1) or ' ', text))


def fault_of(tree, floors, source, written):
    """What is wrong with one include directive as written, or None."""
    name = written[1:-1]
    if written.startswith('<') and written.endswith('>'):
        if (tree / 'src' / name).exists():
            return 'a header of the tree is included in double quotes'
        if '/' in name and not name.startswith(('sys/', PUBLIC + '/')):
            return 'only the C++ standard library and POSIX may be included'
    elif not (written.startswith('"') and written.endswith('"') and len(written) > 2):
        return 'an include that cannot be checked'
    elif not name.startswith(PUBLIC + '/') and not (tree / 'src' / name).is_file():
        return 'includes are written from src/, and this is no file there'
    elif name.endswith('.cpp'):
        return 'a source is not included'
    inside = (tree / 'src' / name).is_file() or name.startswith(PUBLIC + '/')
    if inside and not floors.allows(stem(source), stem(name)):
        return f'{floors.unit_of(stem(source))} may not include this'
    return None


def cycles_of(graph):
    """Each include cycle once, as the list of its files."""
    found, done = [], set()

    def visit(node, trail):
        if node in trail:
            found.append(trail[trail.index(node):] + [node])
        elif node not in done:
            for target in graph.get(node, ()):
                visit(target, trail + [node])
            done.add(node)

    for node in sorted(graph):
        visit(node, [])
    return found


def check(tree):
    """The faults of the tree, a line each."""
    tree = Path(tree)
    floors = Floors((tree / 'checks/floors.txt').read_text(encoding='utf-8'))
    faults, graph = list(floors.faults), {}
    for path in sorted((tree / 'src').rglob('*')):
        if path.suffix not in SUFFIXES:
            continue
        source = path.relative_to(tree / 'src').as_posix()
        if floors.unit_of(stem(source)) is None:
            faults.append(f'src/{source}: stands on no floor')
            continue
        graph[source] = [written[1:-1] for written in includes_of(path)]
        for written in includes_of(path):
            fault = fault_of(tree, floors, source, written)
            if fault:
                faults.append(f'src/{source}: #include {written}: {fault}')
    faults += ['include cycle: ' + ' -> '.join(cycle) for cycle in cycles_of(graph)]
    return faults


if __name__ == '__main__':
    lines = check(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent)
    print('\n'.join(lines) if lines else 'floors: ok')
    sys.exit(1 if lines else 0)
