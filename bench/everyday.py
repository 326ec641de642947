#!/usr/bin/env python3
"""How long the everyday commands take, start included.

Usage: everyday.py <optxv> [word...]. With words, the rows whose name is one of them. First on a table of 3,158 options
and a parameter file that sets each once: milliseconds. Then on the same table and a million lines: seconds, and how
many times as long as `check` takes for the same lines. The least processor time of some runs counts, since other work
on a machine only adds to it. The last column says whether the limit is met.
"""
import resource
import subprocess
import sys
import tempfile
from pathlib import Path

OPTIONS, LINES = 3158, 1_000_000
MILLISECONDS, TIMES_CHECK = 100, 3
ROUNDS, LONG = 5, 2  # runs of a command, and of one that takes more than a second

# The commands: a name, and the words. {table} is the definition, {lines} the parameter file, {folder} an empty folder.
COMMANDS = (
    ('check', 'check {table} {lines}'),
    ('check-json', 'check --json {table} {lines}'),
    ('check-sarif', 'check --format sarif {table} {lines}'),
    ('check-github', 'check --format github {table} {lines}'),
    ('check-gcc', 'check --format gcc {table} {lines}'),
    ('show', 'show {table} {lines}'),
    ('fix', 'fix {table} {lines}'),
    ('help', 'help {table}'),
    ('help-name', 'help {table} option_001234'),
    ('reference', 'reference {table} -o {folder}/site'),
    ('reference-md', 'reference {table} --markdown -o {folder}/page.md'),
    ('reference-man', 'reference {table} --man -o {folder}/page.5'),
)


def table():
    return ['limits group 1 1 Limits', 'words strlist 0 1 1 Words'] + [
        f'option_{i:06} integer {i} 5 0 100 1 1 The option with the number {i}' for i in range(1, OPTIONS)]


def each_once():
    return [f'option_{i:06} {i % 100}' for i in range(1, OPTIONS)] + ['words last']


def items_of_a_list():
    """Lines of which there is nothing to tell."""
    return each_once() + [f'words item{i}' for i in range(LINES - OPTIONS)]


def set_again():
    """Lines with a finding and a repair each, but for the first ones."""
    return [f'option_{i % (OPTIONS - 1) + 1:06} {i % 100}' for i in range(LINES)]


# The parameter files of a million lines. Commands that read no parameter file are left out there.
LONG_INPUTS = (items_of_a_list, set_again)


def reads(words):
    return '{lines}' in words


def spent():
    """The processor time of all programs that were started and have ended."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def once(command, folder):
    """The processor time of one run."""
    before = spent()
    status = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, check=False)
    if status.returncode not in (0, 1):
        sys.exit(f'{" ".join(command)}: {status.stderr.decode(errors="replace")[-1000:]}')
    return spent() - before


def seconds(program, words, folder):
    places = {'table': 'table.def', 'lines': 'lines.opt', 'folder': folder}
    command = [program] + [word.format(**places) for word in words.split()]
    times = [once(command, folder)]
    while len(times) < (LONG if times[0] > 1 else ROUNDS):
        times.append(once(command, folder))
    return min(times)


def put(folder, lines):
    (folder / 'lines.opt').write_text('\n'.join(lines) + '\n')


def row(name, lines, measured, unit, limit, met):
    print(f'{name:<14} {lines:>9,} {measured:>8} {unit:<12} {limit:>5}  {"yes" if met else "NO"}', flush=True)
    return not met


def short_rows(program, folder, commands):
    put(folder, each_once())
    missed = 0
    for name, words in commands:
        took = seconds(program, words, folder) * 1000
        missed += row(name, OPTIONS, f'{took:.0f}', 'ms', MILLISECONDS, took <= MILLISECONDS)
    return missed


def long_rows(program, folder, commands, make):
    put(folder, make())
    missed, check = 0, seconds(program, COMMANDS[0][1], folder)
    print(f'{make.__name__}: check takes {check:.2f} s')
    for name, words in commands:
        if reads(words) and name != 'check':
            times = seconds(program, words, folder) / check
            missed += row(name, LINES, f'{times:.2f}', 'times check', TIMES_CHECK, times <= TIMES_CHECK)
    return missed


def main(program, wanted):
    commands = [each for each in COMMANDS if not wanted or each[0] in wanted]
    print(f'{"command":<14} {"lines":>9} {"measured":>8} {"":<12} {"limit":>5}  met')
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / 'table.def').write_text('\n'.join(table()) + '\n')
        missed = short_rows(program, folder, commands)
        missed += sum(long_rows(program, folder, commands, make) for make in LONG_INPUTS)
    print(f'{missed} of them miss their limit')


main(str(Path(sys.argv[1]).resolve()), sys.argv[2:])
