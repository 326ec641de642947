#!/usr/bin/env python3
"""How the time of the command and of the library grows: inputs that double, seconds and the exponent for each.

Usage: growth.py <optxv> [word...]. With words, the inputs, subcommands or calls whose name is one of them. The
library is the one beside the command. The exponent is that of a power of the size over the last two doublings, of
processor time, for the command less that of a run on almost nothing; n log n shows as about 1.1. The least of some
runs counts. A row ends where a run takes long.
"""
import ctypes
import math
import resource
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

FIRST, LAST = 250, 32000
FIRST_CALL, LAST_CALL = 4000, 128000
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


def letters(i):
    """A word of three letters for each number below 15,625; without an h, so that none is like that of Help."""
    return ''.join('abcdefgijklmnopqrstuvwxyz'[i // power % 25] for power in (625, 25, 1))


def words(i):
    """A name whose words a lookup by their first letters tells apart."""
    return f'{letters(i // 15625)}_{letters(i % 15625)}'


def two_runs(n):
    """Names in two rising runs, each of which lies among the other."""
    half = n // 2
    return table(0) + [f'option_{i % half:06}x{i // half} integer 0 5 0 100 1 1 An option' for i in range(2 * half)], [
        'option_000000x0 7']


def by_rule(rule, n):
    """A table that is made and used under a rule of lookup; the words are longer than what counts of them."""
    names = [words(i).replace('_', 'ing_') + 'ing' for i in range(n)]
    keys = [words(i) if rule == 'Path' else words(i).replace('_', ' ') + 'ing' for i in range(n)]
    return ([f'{rule} lookup'] + [f'{name} integer 0 5 0 100 1 1 An option' for name in names],
            [f'{key} = 7' for key in keys])


def path_names(n):
    return by_rule('Path', n)


def minos_names(n):
    return by_rule('Minos', n)


INPUTS = (unknown_names, missing_files, groups, faulty_lines, faulty_records, good_lines, settings_twice,
          runtime_lists, long_list, items, members, synonyms, dot_options, long_help, long_lines, path_names, minos_names,
          two_runs)
# What each subcommand gets after its definition; {} is the parameter file.
SUBCOMMANDS = {'check': ['{}'], 'show': ['{}', '--all'], 'help': ['3'], 'search': ['--search', 'number', '7'],
               'unknown': ['optoin_000001'], 'write': ['{}', '--force'], 'reference': ['-o', 'site', '--force']}
NAMES = {'search': 'help', 'unknown': 'help'}
# These read no parameters, so that they are of use where the definition grows.
ALONE = ('help', 'search', 'unknown', 'reference')


# --- The library's own calls: each function makes what it needs and gives the call that is timed


class Library:
    def __init__(self, path):
        self.calls = ctypes.CDLL(path)
        self.handle = ctypes.c_void_p()

    def define(self, lines):
        if self.handle:
            self.calls.xfree(ctypes.byref(self.handle))
        self.calls.xcreate(ctypes.byref(self.handle))
        text = '\n'.join(lines).encode()
        self.calls.optxv_read_definition_text(self.handle, b'table', text, ctypes.c_size_t(len(text)))
        if self.calls.optmessagecount(self.handle) != 0:
            sys.exit('growth.py: faults in a definition')

    def read(self, lines):
        text = '\n'.join(lines).encode()
        self.calls.optxv_read_parameter_text(self.handle, b'values', text, ctypes.c_size_t(len(text)))


def reset_of_macros(library, n):
    """Macros, each the member of the next."""
    library.define(table(1) + ['all0 macro 1 1 All', ' option_000000'] +
                   [line for i in range(1, n) for line in (f'all{i} macro 1 1 All', f' all{i - 1}')])
    return lambda: library.calls.optresetall(library.handle)


def indicator(library, n):
    """One indicator with many identifiers."""
    library.define(['rowtype indicator'] + table(1))
    names = ','.join(f'i{i}' for i in range(n))
    text = f'rowtype equation({names})$variable({names}) 1'.encode()
    return lambda: library.calls.optreadfrompchar(library.handle, text)


def groups_by_number(library, n):
    """Definition of groups; each number must be new."""
    return lambda: library.define(groups(n)[0])


def members_of_list(library, n):
    """Definition of a list; each member must be new."""
    return lambda: library.define(members(n)[0])


def item_values(library, n):
    library.define(['method enumstr 1 item0 1 1 Method'] + [f' item{i} {i} An item' for i in range(n)])
    lines = [f'method item{i}' for i in range(n)]
    return lambda: library.read(lines)


def named(library, rule, n):
    library.define(by_rule(rule, n)[0])
    number, reference = ctypes.c_int32(), ctypes.c_int32()
    keys = [line[:-len(' = 7')].replace(' ', '_').encode() for line in by_rule(rule, n)[1]]

    def find():
        for key in keys:
            library.calls.coptfindstr(library.handle, key, ctypes.byref(number), ctypes.byref(reference))
        if number.value != n + 1:
            sys.exit(f'growth.py: no option has the name {keys[-1]}')
    return find


def path_lookups(library, n):
    return named(library, 'Path', n)


def minos_lookups(library, n):
    return named(library, 'Minos', n)


def drained(take, n):
    if sum(1 for _ in iter(take, 0)) != n:
        sys.exit('growth.py: a list gives another number of items than it has')


def drained_list(library, n):
    library.define(long_list(0)[0])
    library.read([f'words word{i}' for i in range(n)])
    text = ctypes.create_string_buffer(257)
    return lambda: drained(lambda: library.calls.coptgetfromliststr(library.handle, b'words', text), n)


def drained_lists(library, n):
    library.define(table(10))
    library.read(runtime_lists(n)[1])
    option, text = ctypes.create_string_buffer(257), ctypes.create_string_buffer(257)
    return lambda: drained(lambda: library.calls.coptgetfromanystrlist(library.handle, 1, option, text), n)


CALLS = (reset_of_macros, indicator, groups_by_number, members_of_list, item_values, path_lookups, minos_lookups,
         drained_list, drained_lists)


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


def measure_call(library, prepare):
    """As measure, for a call of the library."""
    times, size = [], FIRST_CALL // 2
    while size < LAST_CALL and (not times or times[-1] < 1):
        size *= 2
        times.append(seconds_of_call(library, prepare, size))
    return size, times[-1], exponent(times, 0.005)


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
    """The last size, its seconds, and the exponent. A run that does not end in time counts as one that just did."""
    put(folder, *make(10))
    least = seconds(command_of(program, subcommand), folder)
    times, size = [], FIRST // 2
    while size < LAST and (not times or times[-1] < LONGEST):
        size *= 2
        put(folder, *make(size))
        times.append(max(seconds(command_of(program, subcommand), folder) - least, 0))
    return size, times[-1], exponent(times, 0.05)


def row(name, subcommand, size, took, power):
    """Prints a row; whether it grows too fast."""
    fast = power is not None and power > LIMIT
    shown = '    short' if power is None else f'{power:9.2f}'
    print(f'{name:<16} {subcommand:<10} {size:>7,} {took:8.2f} {shown} {LIMIT:>6}  {"NO" if fast else "yes"}', flush=True)
    return fast


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
                missed += row(make.__name__, subcommand, *measure(program, make, subcommand, Path(name)))
    library = Library(Path(program).parent / 'liboptxv.so')
    for prepare in CALLS:
        if not wanted or prepare.__name__ in wanted or 'call' in wanted:
            missed += row(prepare.__name__, 'call', *measure_call(library, prepare))
    print(f'{missed} of them grow faster than n log n')


main(str(Path(sys.argv[1]).resolve()), sys.argv[2:])
