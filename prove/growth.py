#!/usr/bin/env python3
"""How the time of the command and of the library grows: inputs that double, seconds and the exponent for each.

Usage: growth.py [--sample] [--program OPTXV] [name...]. With names, the inputs, subcommands or calls that are called
so. The library is the one beside the command; without --program both are built. The exponent is that of a power of the
size over the last two doublings, of processor time, for the command less that of a run on almost nothing; n log n shows
as about 1.1. The least of some runs counts. A row ends where a run takes longer than a second. What grows faster is
measured again, up to three times in all, and the least time of each size counts, since a busy machine can make it seem
so.
"""
import argparse
import math
import resource
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from aid.build import build, built
from growing.calls import CALLS, Library
from growing.everycall import EVERYCALL
from growing.inputs import INPUTS

FIRST, LAST = 250, 128000
FIRST_CALL, LAST_CALL = 4000, 128000
LIMIT, LONGEST, ALLOWED, ROUNDS, MEASURES = 1.2, 1, 20, 3, 3
SHORTEST, SHORTEST_CALL = 0.05, 0.005  # seconds that say something of growth
# In a sample: the sizes of a call, one function of how many, and which inputs.
SAMPLE_CALL, SAMPLE_STEP, SAMPLE_INPUTS = 16000, 8, ('faulty_lines', 'synonyms')

# What each subcommand gets after its definition; {} is the parameter file.
SUBCOMMANDS = {'check': ['{}'], 'lint': ['{}'], 'fix': ['{}'], 'format': ['{}'], 'origin': ['{}'],
               'convert': ['{}', '--to', 'json', '--force'], 'show': ['{}', '--all'], 'help': ['3'],
               'search': ['--search', 'number', '7'], 'unknown': ['optoin_000001'], 'write': ['{}', '--force'],
               'reference': ['-o', 'site', '--force']}
NAMES = {'search': 'help', 'unknown': 'help'}
# These read no parameters, so that they are of use where the definition grows.
ALONE = ('help', 'search', 'unknown', 'reference')


def seconds_of_call(library, prepare, size):
    best = math.inf
    for _ in range(ROUNDS):
        call = prepare(library, size)
        before = time.process_time()
        call()
        best = min(best, time.process_time() - before)
        if best > 1:
            break
    return best


def measure_call(library, prepare, most):
    """As measure, for a call of the library and tables of FIRST_CALL to at most that size."""
    times, size = [], FIRST_CALL // 2
    while size < most and (not times or times[-1] < 1):
        size *= 2
        times.append(seconds_of_call(library, prepare, size))
    return times


# --- The command


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


def exponent(times, shortest):
    """The power of the size by which the time grew over the last doublings; None where all is too short to say."""
    last = [time for time in times[-3:] if time >= shortest]
    return math.log2(last[-1] / last[0]) / (len(last) - 1) if len(last) > 1 else None


def command_of(program, subcommand):
    arguments = [argument.format('example.opt') for argument in SUBCOMMANDS[subcommand]]
    return [program, NAMES.get(subcommand, subcommand), 'example.def'] + arguments


def put(folder, definition, parameters):
    (folder / 'example.def').write_text('\n'.join(definition) + '\n')
    (folder / 'example.opt').write_text('\n'.join(parameters) + '\n')


def measure(program, make, subcommand, folder):
    """The seconds for each size from FIRST on. A run that does not end in time counts as one that just did."""
    put(folder, *make(10))
    least = seconds(command_of(program, subcommand), folder)
    times, size = [], FIRST // 2
    while size < LAST and (not times or times[-1] < LONGEST):
        size *= 2
        put(folder, *make(size))
        times.append(max(seconds(command_of(program, subcommand), folder) - least, 0))
    return times


class Table:
    """The rows, and how many of them grow too fast."""

    def __init__(self):
        self.rows = self.fast = 0
        print(f'{"input":<28} {"subcommand":<10} {"size":>7} {"seconds":>8} {"exponent":>9} {"limit":>6}')

    def add(self, name, subcommand, first, shortest, measure):
        """Measures a row whose sizes begin with the first, again while it seems to grow too fast; prints it."""
        times = measure()
        for again in range(MEASURES):
            power = exponent(times, shortest)
            fast = power is not None and power > LIMIT
            if not fast or again == MEASURES - 1:
                break
            times = [min(pair) for pair in zip(times, measure())]
        size = first << (len(times) - 1)
        shown = '    short' if power is None else f'{power:9.2f}'
        print(f'{name:<28} {subcommand:<10} {size:>7,} {times[-1]:8.2f} {shown} {LIMIT:>6}  {"NO" if fast else "yes"}',
              flush=True)
        self.rows += 1
        self.fast += fast


def time_inputs(table, program, wanted):
    with tempfile.TemporaryDirectory() as name:
        for make in INPUTS:
            for subcommand in SUBCOMMANDS:
                if subcommand in ALONE and len(make(LAST)[0]) < LAST:
                    continue
                if wanted(make.__name__, subcommand):
                    table.add(make.__name__, subcommand, FIRST, SHORTEST,
                              lambda: measure(program, make, subcommand, Path(name)))


def time_calls(table, program, wanted, step, last):
    library = Library(program.parent / 'liboptxv.so')
    for prepare in CALLS + EVERYCALL[::step]:
        if wanted(prepare.__name__, 'call'):
            table.add(prepare.__name__, 'call', FIRST_CALL, SHORTEST_CALL,
                      lambda: measure_call(library, prepare, last))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('--sample', action='store_true', help='some inputs, and some calls on smaller tables')
    parser.add_argument('--program', type=Path, help='the command; else it is built')
    parser.add_argument('names', nargs='*', help='inputs, subcommands or calls')
    given = parser.parse_args()
    if not given.program:
        build('optxv_command')
    program = (given.program or built('optxv')).resolve()
    table = Table()
    time_inputs(table, program, lambda name, subcommand: (not given.names or {name, subcommand} & set(given.names)) and
                (not given.sample or (name in SAMPLE_INPUTS and subcommand == 'check')))
    time_calls(table, program, lambda name, kind: not given.names or {name, kind} & set(given.names),
               SAMPLE_STEP if given.sample else 1, SAMPLE_CALL if given.sample else LAST_CALL)
    print(f'growth: {table.rows} inputs and calls doubled, {table.fast} grow faster than n log n')
    return 1 if table.fast else 0


sys.exit(main())
