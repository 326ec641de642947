#!/usr/bin/env python3
"""How the time of the command grows with its input: inputs that double, seconds and the exponent for each.

Usage: growth.py <optxv> [word...]. With words, the inputs or subcommands whose name has one of them. The exponent
is that of a power of the size over the last two doublings, of processor time less that of a run on almost nothing;
n log n shows as about 1.1. The least of some runs counts. A row ends where a run takes long.
"""
import math
import resource
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

FIRST, LAST = 250, 32000
LIMIT, LONGEST, ALLOWED, ROUNDS = 1.2, 4, 20, 3


def table(count, group=1):
    return ['limits group 1 1 Limits'] + [f'option_{i:06} integer {i} 5 0 100 1 {group} The option with the number {i}'
                                          for i in range(count)]


def unknown_names(n):
    """Names that no option has, near to some, over a table four times as long."""
    return table(4 * n), [f'optoin_{i:06} 7' for i in range(n)]


def missing_files(n):
    return table(10) + ['read immediate ReadFile 1 1 Reads a file'], [f'read nowhere/file{i}.opt' for i in range(n)]


def groups(n):
    return ([f'group{i} group {i} 1 The group with the number {i}' for i in range(1, n + 1)] +
            [f'option_{i} integer {i} 5 0 100 1 {i} An option' for i in range(1, n + 1)]), ['option_1 7']


def faulty_lines(n):
    faults = ['option_{0:06} 700', 'option_{0:06} word', 'option_{0:06}', '!', 'option_{0:06} 7 8', '{0}']
    return table(1000), [faults[i % len(faults)].format(i % 1000) for i in range(n)]


def good_lines(n):
    return table(n), [f'option_{i:06} 7' for i in range(n)]


def settings_twice(n):
    return table(10), [f'option_{i % 10:06} 7' for i in range(n)]


def runtime_lists(n):
    return table(10), [f'--list{i} one' for i in range(n)]


def long_list(n):
    return table(10) + ['words strlist 1 1 1 Words'], [f'words word{i}' for i in range(n)]


def faulty_records(n):
    faults = ['option_{0} integer x 5 0 100 1 1 Text', 'option_{0} integr 1 5 0 100 1 1 Text',
              'option_{0} integer 1 500 0 100 1 1 Text', 'other synonym nothing{0}', 'option_1 boolean 1 0 1 1 Text']
    return [faults[i % len(faults)].format(i) for i in range(n)], ['option_1 7']


def items(n):
    return ['method enumstr 1 item0 1 1 Method'] + [f' item{i} {i} The item with the number {i}' for i in range(n)], [
        'method itm5']


def members(n):
    return (table(n) + ['all macro 1 1 All of them'] + [f' option_{i:06}' for i in range(n)] +
            ['some multilist 1 1 1 Some of them'] + [f' option_{i:06}' for i in range(n)]), ['all 7']


def synonyms(n):
    return (table(n) + [f'other_{i} synonym option_{i:06}' for i in range(n)] + ['old deprecated'] +
            [f' other_{i} Say option_{i:06}' for i in range(0, n, 2)]), [f'other_{i} 7' for i in range(n)]


def dot_options(n):
    return table(10) + ['.scale double 1 1 0 100 1 1 Scale'], [f"x{i}.scale('a','b') = 2" for i in range(n)]


def long_help(n):
    return table(1) + [f' A line of help with the number {i}' for i in range(n)], ['option_000000 7']


def long_lines(n):
    """Lines that lose most of their bytes."""
    return table(10), [f'option_{i % 10:06} 7' + ' and more' * 500 for i in range(n // 10)]


INPUTS = (unknown_names, missing_files, groups, faulty_lines, faulty_records, good_lines, settings_twice,
          runtime_lists, long_list, items, members, synonyms, dot_options, long_help, long_lines)
# What each subcommand gets after its definition; {} is the parameter file.
SUBCOMMANDS = {'check': ['{}'], 'show': ['{}', '--all'], 'help': ['3'], 'search': ['--search', 'number', '7'],
               'unknown': ['optoin_000001'], 'write': ['{}', '--force'], 'reference': ['-o', 'site', '--force']}
NAMES = {'search': 'help', 'unknown': 'help'}
# These read no parameters, so that they are of use where the definition grows.
ALONE = ('help', 'search', 'unknown', 'reference')


def limited():
    resource.setrlimit(resource.RLIMIT_CPU, (ALLOWED, ALLOWED + 1))


def spent():
    """The processor time of all programs that were started and have ended."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def seconds(command, folder):
    """The least processor time of some runs; the time allowed for a run that does not end in it."""
    best = math.inf
    for _ in range(ROUNDS):
        before = spent()
        status = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, preexec_fn=limited)
        if status.returncode == -signal.SIGXCPU:
            return ALLOWED
        if status.returncode not in (0, 1, 2):  # 2: a file could not be read, which is what some inputs are for
            sys.exit(f'{" ".join(command)}: {status.stderr.decode()}')
        best = min(best, spent() - before)
        if best > 1:
            break
    return best


def exponent(times):
    """The power of the size by which the time grew over the last doublings; None where all is too short to say."""
    last = [time for time in times[-3:] if time >= 0.05]
    return math.log2(last[-1] / last[0]) / (len(last) - 1) if len(last) > 1 else None


def command_of(program, subcommand):
    arguments = [argument.format('example.opt') for argument in SUBCOMMANDS[subcommand]]
    return [program, NAMES.get(subcommand, subcommand), 'example.def'] + arguments


def put(folder, definition, parameters):
    (folder / 'example.def').write_text('\n'.join(definition) + '\n')
    (folder / 'example.opt').write_text('\n'.join(parameters) + '\n')


def measure(program, make, subcommand, folder):
    """The last size, its seconds, and the exponent. A run that does not end in time counts as one that just did."""
    put(folder, *make(10))
    least = seconds(command_of(program, subcommand), folder)
    times, size = [], FIRST // 2
    while size < LAST and (not times or times[-1] < LONGEST):
        size *= 2
        put(folder, *make(size))
        times.append(max(seconds(command_of(program, subcommand), folder) - least, 0))
    return size, times[-1], exponent(times)


def main(program, wanted):
    missed = 0
    print(f'{"input":<16} {"subcommand":<10} {"size":>7} {"seconds":>8} {"exponent":>9} {"limit":>6}')
    with tempfile.TemporaryDirectory() as name:
        for make in INPUTS:
            for subcommand in SUBCOMMANDS:
                if subcommand in ALONE and len(make(LAST)[0]) < LAST:
                    continue
                if wanted and not any(word in (make.__name__, subcommand) for word in wanted):
                    continue
                size, took, power = measure(program, make, subcommand, Path(name))
                shown = '    short' if power is None else f'{power:9.2f}'
                missed += power is not None and power > LIMIT
                print(f'{make.__name__:<16} {subcommand:<10} {size:>7,} {took:8.2f} {shown} {LIMIT:>6}  '
                      f'{"yes" if power is None or power <= LIMIT else "NO"}', flush=True)
    print(f'{missed} of them grow faster than n log n')


main(str(Path(sys.argv[1]).resolve()), sys.argv[2:])
