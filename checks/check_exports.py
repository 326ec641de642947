#!/usr/bin/env python3
"""Compares the symbols that a built library exports with the list in its linker version script.

Usage: check_exports.py <exports.map> <library>. It finds names in the list that the library does not
export, and exported symbols that no entry of the list covers. Entries of an extern "C++" block are
compared with demangled names; an entry may contain the linker's wildcards. The exit status is 1 if the
two differ.
"""
import re
import subprocess
import sys
from fnmatch import fnmatchcase
from pathlib import Path

CPP_BLOCK = re.compile(r'extern\s*"C\+\+"\s*\{(.*?)\}\s*;', re.DOTALL)


def entries_of(text):
    """The entries of a version script's global sections, as (plain, C++)."""
    text = re.sub(r'/\*.*?\*/|#[^\n]*', ' ', text, flags=re.DOTALL)
    cpp = [entry for block in CPP_BLOCK.findall(text) for entry in split(block)]
    plain = []
    for section in re.findall(r'global\s*:(.*?)(?:local\s*:|\}\s*[\w.]*\s*;)', CPP_BLOCK.sub(' ', text), re.DOTALL):
        plain += split(section)
    return plain, cpp


def split(block):
    return [entry.strip().strip('"') for entry in block.split(';') if entry.strip()]


def exported(library, *options):
    """The defined dynamic symbols, without the names that the linker makes for versions."""
    lines = subprocess.run(['nm', '-D', '--defined-only', *options, library],
                           capture_output=True, text=True, check=True).stdout.splitlines()
    rows = [line.split(None, 2) for line in lines]
    return [row[2].split('@@')[0] for row in rows if len(row) == 3 and row[1] != 'A']


def differences(entries, mangled, readable):
    """The faults. `mangled` and `readable` are the same symbols in the same order."""
    plain, cpp = entries
    symbols = list(zip(mangled, readable))
    for entry in plain:
        if not any(fnmatchcase(raw, entry) for raw, _ in symbols):
            yield f'listed, not exported: {entry}'
    for entry in cpp:
        if not any(fnmatchcase(name, entry) for _, name in symbols):
            yield f'listed, not exported: {entry}'
    for raw, name in symbols:
        if not any(fnmatchcase(raw, entry) for entry in plain) and not any(fnmatchcase(name, entry) for entry in cpp):
            yield f'exported, not listed: {name}'


if __name__ == '__main__':
    script, library = sys.argv[1:3]
    wanted = entries_of(Path(script).read_text(encoding='utf-8'))
    faults = list(differences(wanted, exported(library), exported(library, '--demangle')))
    if not any(wanted):
        faults.append(f'{script}: no global entry was read')
    print('\n'.join(faults) if faults else f'exports: ok, {len(exported(library))} symbols')
    sys.exit(1 if faults else 0)
