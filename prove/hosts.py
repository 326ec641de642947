#!/usr/bin/env python3
"""The library and the command in hosts that have changed something: the same bytes and the same statuses, or a
status and a sentence.

Usage: hosts.py [--sample]

The library: prove/hosts_prove.cpp does the same in each host and notes all that it gets. The command: its runs on the
examples, in each host that can be made around a program. What this machine does not allow to be made is named at the
end, and not counted.
"""
import os
import resource
import subprocess
import sys
import tempfile
from pathlib import Path

from aid.build import BUILD, build, built
from aid.commandruns import RUNS, differing, outcome

# The hosts of the library, each with the one whose notes it must repeat.
SAME = {host: 'plain' for host in ['locale', 'upward', 'downward', 'towardzero', 'flush', 'flushboth', 'traps', 'closed',
                                   'ticks', 'smallstack', 'noproc']} | {'nestedsmall': 'nested'}
# What a limit may do: the status of each step.
LIMITED = {'statuses': 'create 0\ndefinition 0\nparameters 0\nwrite 0\n',
           'nofiles': 'create 0\ndefinition 24\nparameters 24\nwrite 24\n',
           'nobytes': 'create 0\ndefinition 0\nparameters 0\nwrite 27\n',
           'fewbytes': 'create 0\ndefinition 0\nparameters 0\nwrite 27\n'}
LOADS, SAMPLE_LOADS = 10_000, 500
LEVELS, FILES = 500, 9
MEBIBYTE = 1 << 20
COMMAND = built('optxv')
COMMA = 'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\ngrouping 3;3\nEND LC_NUMERIC\n'


# --- What the hosts have

def make_locale(folder):
    """A locale with a decimal comma: a system may have none. It is named by LOCPATH."""
    (folder / 'source').write_text(COMMA, encoding='ascii')
    subprocess.run(['localedef', '-c', '-i', 'source', '-f', 'ANSI_X3.4-1968', './comma'], cwd=folder,
                   capture_output=True, check=False)
    return {'LOCPATH': str(folder), 'LC_ALL': 'comma'} if (folder / 'comma').is_dir() else None


def make_nested(folder):
    """Lists and macros in one another, to the last level that is allowed and one beyond it; and an entry with them in
    the last of the files in one another."""
    lines = ['Group group 1 1 Group', 'last integer 1 5 0 100 1 1 The last', 'read immediate ReadFile 1 1 Reads a file']
    inner = 'last'
    for level in range(1, LEVELS + 2):
        kind = 'macro' if level % 2 else f'multilist {level + 1}'
        lines += [f'level{level} {kind} 1 1 A level', f' {inner}']
        inner = f'level{level}'
    (folder / 'nested.def').write_text('\n'.join(lines) + '\n', encoding='ascii')
    for depth in range(1, FILES + 1):
        text = f'read {folder}/nested{depth + 1}.opt' if depth < FILES else f'level{LEVELS} 19\nlevel{LEVELS + 1} 20'
        (folder / f'nested{depth}.opt').write_text(text + '\n', encoding='ascii')


def without_proc():
    """A program's start in which there is no /proc, or None."""
    start = ['unshare', '--mount', 'sh', '-c', 'mount -t tmpfs none /proc && exec "$0" "$@"']
    try:
        run = subprocess.run([*start, 'sh', '-c', 'test ! -e /proc/self'], capture_output=True, check=False)
    except FileNotFoundError:
        return None
    return start if run.returncode == 0 else None


# --- The library

def notes_of(host, folder, start=(), variables=None, arguments=()):
    """Status and notes of the program in one host."""
    target = folder / 'notes'
    target.unlink(missing_ok=True)
    run = subprocess.run([*start, built('hosts_prove'), 'plain' if host == 'noproc' else host, folder, target,
                          *arguments], cwd=folder, env=os.environ | (variables or {}), capture_output=True, check=False)
    return run.returncode, target.read_bytes() if target.exists() else b''


def try_library(folder, locale, noproc, left_out):
    """Every host of the library: how many were tried, and the faults."""
    variables = {'locale': locale}
    starts = {'noproc': noproc}
    wanted = {host: notes_of(host, folder) for host in ('plain', 'nested', 'statuses')}
    faults = [f'{host}: status {status}' for host, (status, _) in wanted.items() if status != 0]
    if b'\nlast 1 19 ' not in wanted['nested'][1] or b'Members nested too deep' not in wanted['nested'][1]:
        faults.append('nested: not as deep as can be')
    tried = len(wanted)
    for host, model in SAME.items():
        if variables.get(host, {}) is None or starts.get(host, []) is None:
            left_out.append(host)
            continue
        seen = notes_of(host, folder, starts.get(host, []), variables.get(host))
        if seen[0] == 3:
            left_out.append(host)
            continue
        tried += 1
        if seen != wanted[model]:
            faults.append(f'{host}: status {seen[0]}, or other notes than {model}')
    return tried, faults


def try_limits(folder):
    """Limits of open files and of the size of files: each step gives its documented status."""
    faults = []
    for host, wanted in LIMITED.items():
        status, notes = notes_of(host, folder)
        if status != 0 or notes.decode() != wanted:
            faults.append(f'{host}: status {status}, {notes.decode().split()}')
    return len(LIMITED), faults


def try_loads(folder, count):
    """Loads and unloads, with children between them."""
    status, notes = notes_of('loads', folder, arguments=[built('liboptxv.so'), str(count)])
    good = (0, b'bad loads: 0\nmemory as before\n')
    return count, [] if (status, notes) == good else [f'loads: status {status}, {notes.decode().split()}']


# --- The command

def command_hosts(locale, noproc, left_out):
    """Each host of the command: its name, the start of the program, and how it is run."""
    hosts = {'closed input': ([], {'preexec_fn': lambda: os.close(0)})}
    if locale is None:
        left_out.append('the command with a comma locale')
    else:
        hosts['locale'] = ([], {'env': os.environ | locale})
    if noproc is None:
        left_out.append('the command without /proc')
    else:
        # The loader itself finds a library beside the program only by /proc.
        hosts['noproc'] = (noproc, {'env': os.environ | {'LD_LIBRARY_PATH': str(BUILD)}})
    hosts['small stack'] = ([], {'preexec_fn': lambda: resource.setrlimit(resource.RLIMIT_STACK, (256 << 10,) * 2)})
    hosts['few files'] = ([], {'preexec_fn': lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (8, 8))})
    return hosts


def try_command(folder, runs, hosts):
    """The same bytes, files and statuses in every host that changes nothing for the command."""
    faults = []
    for words in runs:
        wanted = outcome([COMMAND], words, folder)
        for host, (start, how) in hosts.items():
            seen = outcome([*start, COMMAND], words, folder, **how)
            if seen != wanted:
                faults.append(f'{host}: {" ".join(words)}: other {differing(wanted, seen)}')
    return len(runs) * len(hosts), faults


def told(seen):
    """Whether a run ended as one that could not go on: status 2 and a sentence, nothing lost."""
    return seen[0] == 2 and seen[2].strip() != b''


def limited_runs(folder, runs, which, sizes):
    """Runs under a limit: the outcome of a plain host, or status 2 and a sentence and unchanged files."""
    faults = []
    for words in runs:
        wanted = outcome([COMMAND], words, folder)
        before = outcome(['true'], [], folder)[3]
        for size in sizes:
            seen = outcome([COMMAND], words, folder, preexec_fn=lambda: resource.setrlimit(which, (size, size)))
            if seen[0] == 127 and b'shared' in seen[2]:
                continue  # the loader, before anything of ours
            if seen != wanted and not (told(seen) and seen[3] in (before, wanted[3])):
                faults.append(f'limit {size}: {" ".join(words)}: status {seen[0]}, other {differing(wanted, seen)}, '
                              f'{seen[2][-200:].decode(errors="replace")}')
    return len(runs) * len(sizes), faults


WRITING = [line.split() for line in ('fix --write solver.def faulty.opt', 'format --write solver.def solver.opt',
                                     'write solver.def solver.opt -o written.opt', 'schema solver.def -o schema.json',
                                     'reference solver.def -o page')]


def readonly_runs(folder):
    """A folder that may not be written to: what cannot be written is told, and the rest is untouched."""
    faults = []
    user = {'user': 65534, 'group': 65534, 'extra_groups': []} if os.geteuid() == 0 else {}
    for words in WRITING:
        outcome(['true'], [], folder)
        paths = [folder, *(path for path in folder.rglob('*') if path.is_dir())]
        before = sorted((path, path.read_bytes()) for path in folder.rglob('*') if path.is_file())
        for path in paths:
            path.chmod(0o555)
        run = subprocess.run([COMMAND, *words], cwd=folder, capture_output=True, check=False, **user)
        after = sorted((path, path.read_bytes()) for path in folder.rglob('*') if path.is_file())
        for path in paths:
            path.chmod(0o755)
        if run.returncode != 2 or not run.stderr.strip() or before != after:
            faults.append(f'read-only: {" ".join(words)}: status {run.returncode}, {run.stderr[-200:].decode()}')
    return len(WRITING), faults


def closed_output(folder):
    """Without the descriptors of output: a status, and no file in the place of one."""
    faults = []
    for number in (1, 2):
        for words in RUNS[:4] + WRITING:
            wanted = outcome([COMMAND], words, folder)
            seen = outcome([COMMAND], words, folder, preexec_fn=lambda: os.close(number))
            lost = number == 1 and wanted[1]
            if seen[3] != wanted[3] or seen[0] != (2 if lost else wanted[0]):
                faults.append(f'closed {number}: {" ".join(words)}: status {seen[0]} for {wanted[0]}, '
                              f'{seen[2][-200:].decode(errors="replace")}')
    return 2 * (4 + len(WRITING)), faults


def main(words):
    sample = '--sample' in words
    build('hosts_prove', 'optxv_command', 'optxv')
    left_out, tried, faults = [], 0, []
    with tempfile.TemporaryDirectory() as scratch:
        base = Path(scratch)
        base.chmod(0o755)
        folder = base / 'files'
        outcome(['true'], [], folder)
        make_nested(folder)
        locale, noproc = make_locale(base), without_proc()
        runs = RUNS[::6] if sample else RUNS
        place = base / 'runs'
        for count, found in [
                try_library(folder, locale, noproc, left_out), try_limits(folder),
                try_loads(folder, SAMPLE_LOADS if sample else LOADS),
                try_command(place, runs, command_hosts(locale, noproc, left_out)),
                limited_runs(place, WRITING, resource.RLIMIT_FSIZE, [0, 100] if sample else [0, 1, 100, 1000, 4096]),
                limited_runs(place, runs, resource.RLIMIT_AS,
                             [10 * MEBIBYTE] if sample else range(6 * MEBIBYTE, 16 * MEBIBYTE, MEBIBYTE // 2)),
                readonly_runs(place), closed_output(place)]:
            tried += count
            faults += found
    print(*faults, sep='\n')
    if left_out:
        print('not tried, as this machine does not allow it:', ', '.join(left_out))
    print(f'hosts: {tried:,} runs and loads in changed hosts, {len(faults)} faults')
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
