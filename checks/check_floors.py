#!/usr/bin/env python3
"""Checks every #include of the trees in checks/floors.txt against their floors, and finds include cycles.

Usage: check_floors.py [tree]. Prints one line per fault; the exit status is 1 if there is one.
"""
import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(.*?)[ \t]*$', re.MULTILINE)
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|("(?:\\.|[^"\\\n])*")', re.DOTALL)
SUFFIXES = {'.h', '.cpp', '.def', '.inc'}
PUBLIC = 'optxv'


class Floors:
    """The rows of floors.txt. `faults` is what is wrong with the rows themselves.

    Units, files and grants are stored with their tree before them, as in src/options.
    """

    def __init__(self, text):
        self.trees, self.level, self.grants, self.faults = [], {}, {}, []
        for number, line in enumerate(text.splitlines(), 1):
            fields = line.split('#')[0].split()
            if fields[:1] == ['tree'] and len(fields) == 2:
                self.trees.append(fields[1])
            elif fields:
                self._read_row(number, fields)
        for unit, grants in self.grants.items():
            self.grants[unit] = [self._full(grant, unit) for grant in grants]
            self.faults += [f'floors.txt: {unit} may not be granted {grant}: unknown, or not below it'
                            for grant in self.grants[unit] if not self._may_be_granted(grant, unit)]

    def _read_row(self, number, fields):
        unit = '/'.join(self.trees[-1:] + fields[1:2])
        if len(fields) < 2 or not fields[0].isdigit() or not self.trees or unit in self.level:
            self.faults.append(f'floors.txt:{number}: not a row, or a unit twice: {" ".join(fields)}')
        else:
            self.level[unit], self.grants[unit] = int(fields[0]), fields[2:]

    def _full(self, grant, unit):
        """A grant as written, with its tree: the unit's own if it names none."""
        plain = grant in ('*', PUBLIC) or grant.startswith(('<', *(f'{tree}/' for tree in self.trees)))
        return grant if plain else f'{unit.split("/")[0]}/{grant}'

    def _may_be_granted(self, grant, unit):
        if grant in ('*', PUBLIC) or grant.startswith('<'):
            return True
        tree, own = grant.split('/')[0], unit.split('/')[0]
        if tree != own:
            return self.unit_of(grant) is not None and self.trees.index(tree) < self.trees.index(own)
        return grant in self.level and (grant.startswith(unit + '/') or self.level[grant] < self.level[unit])

    def unit_of(self, path):
        """The unit of a file without its suffix, or None."""
        folder = '/'.join(path.split('/')[:2])
        return next((unit for unit in (path, folder) if unit in self.level), None)

    def allows(self, source, target):
        """Whether the file `source` may include `target`, a file without suffix or a header in <>."""
        unit, other = self.unit_of(source), self.unit_of(target)
        grants = self.grants[unit]
        below = other and other.split('/')[0] == unit.split('/')[0] and self.level[other] < self.level[unit]
        if '*' in grants and (below or target.startswith(PUBLIC + '/')):
            return True
        return unit == other or any(target == grant or target.startswith(grant + '/') for grant in [unit] + grants)


def stem(path):
    return path.rsplit('.', 1)[0]


def includes_of(path):
    text = path.read_text(encoding='utf-8', errors='replace')
    return INCLUDE.findall(COMMENT.sub(lambda match: match.group(1) or ' ', text))


def file_of(tree, floors, source, name):
    """The file that an include in `source` names, first in its own tree; a public header as it is; or None."""
    if name.startswith(PUBLIC + '/'):
        return name
    own = source.split('/')[0]
    places = (f'{top}/{name}' for top in [own] + floors.trees)
    return next((place for place in places if (tree / place).is_file()), None)


def fault_of(tree, floors, source, written):
    """What is wrong with one include directive as written, or None."""
    name, target = written[1:-1], file_of(tree, floors, source, written[1:-1])
    if written.startswith('<') and written.endswith('>'):
        if target and not name.startswith(PUBLIC + '/'):
            return 'a header of the tree is included in double quotes'
        if not target and '/' in name and not name.startswith('sys/') and not floors.allows(stem(source), written):
            return 'only the C++ standard library, POSIX and what floors.txt grants may be included'
    elif not (written.startswith('"') and written.endswith('"') and len(written) > 2):
        return 'an include that cannot be checked'
    elif not target:
        return f'includes are written from {source.split("/")[0]}/, and this is no file there'
    elif name.endswith('.cpp'):
        return 'a source is not included'
    if target and not floors.allows(stem(source), stem(target)):
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
    """The faults of the tree, one line each."""
    tree = Path(tree)
    floors = Floors((tree / 'checks/floors.txt').read_text(encoding='utf-8'))
    faults, graph = list(floors.faults), {}
    for path in sorted(path for top in floors.trees for path in (tree / top).rglob('*')):
        if path.suffix not in SUFFIXES:
            continue
        source = path.relative_to(tree).as_posix()
        if floors.unit_of(stem(source)) is None:
            faults.append(f'{source}: is on no floor')
            continue
        graph[source] = [file_of(tree, floors, source, written[1:-1]) for written in includes_of(path)]
        for written in includes_of(path):
            fault = fault_of(tree, floors, source, written)
            if fault:
                faults.append(f'{source}: #include {written}: {fault}')
    faults += ['include cycle: ' + ' -> '.join(cycle) for cycle in cycles_of(graph)]
    return faults


if __name__ == '__main__':
    lines = check(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent)
    print('\n'.join(lines) if lines else 'floors: ok')
    sys.exit(1 if lines else 0)
