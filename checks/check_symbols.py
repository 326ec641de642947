#!/usr/bin/env python3
"""Compares the Debian package's list of C symbols with the linker version script that exports them.

Usage: check_symbols.py [record] <exports.map> <symbols file> [version]. A name of one that the other lacks is a fault,
and the exit status is then 1. `record` writes the list anew: a name that is new to it gets the version, the others
keep theirs. The lines of C++ symbols, which are patterns, stay as they are.
"""
import re
import sys
from pathlib import Path

from check_exports import entries_of

ROW = re.compile(r' ([\w.*?]+)@Base (\S+)')  # a pattern too, which then is no name of a function


def rows_of(lines):
    """The C symbols of the list, with the versions that they came with."""
    return dict(row.groups() for row in map(ROW.fullmatch, lines) if row)


def recorded(lines, names, version):
    """The lines of the list with just these names."""
    known = rows_of(lines)
    rows = [f' {name}@Base {known.get(name, version)}' for name in sorted(names)]
    return [line for line in lines if not ROW.fullmatch(line)] + rows


def differences(lines, names):
    known = rows_of(lines)
    return [f'exported, not in the list of symbols: {name}' for name in sorted(names - known.keys())] + \
        [f'in the list of symbols, not exported: {name}' for name in sorted(known.keys() - names)]


def main(arguments):
    record = arguments[:1] == ['record']
    script, listed, *version = arguments[record:]
    names, path = set(entries_of(Path(script).read_text(encoding='utf-8'))[0]), Path(listed)
    lines = path.read_text(encoding='utf-8').splitlines()
    if record:
        lines = recorded(lines, names, version[0])
        path.write_text('\n'.join(lines) + '\n', encoding='utf-8')
    faults = differences(lines, names)
    print('\n'.join([*faults, 'to bring it up to date: ./dev abi record']) if faults else f'symbols: ok, {len(names)} names')
    return 1 if faults or not names else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
