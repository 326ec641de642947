#!/usr/bin/env python3
"""Counts the instructions that one parameter line costs, without a listener and with, and one option of a definition.

Usage: instructions.py <optxv_bench>. Runs the program under callgrind with two numbers of reads of the same
file; the difference leaves only the lines, without the start of the program and the definition. Of a definition
only its reading counts, not what the end of a table takes. Counts do not depend on what else the machine does.
"""
import os
import re
import subprocess
import sys

FEW, MANY = 2, 12
SIZES = 100, 2700
LINE, OPTION, GROWTH = (2000, 1200), (3800, 3200), (1.1,)  # a limit, and the goal where that is another
# What a line cost in the version that had no listener, and how much more it may cost since.
BEFORE, MORE = {100: 1843.7, 2700: 1760.6}, (1.01,)
LISTENED, HEARD = (1.4,), (1.6,)


def instructions(program, how, options, reads):
    only = ['--toggle-collect=coptreaddefinition'] if how == '--define' else []
    run = subprocess.run(['valgrind', '--tool=callgrind', f'--callgrind-out-file={os.devnull}', *only, program, how,
                          str(options), str(reads)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, text=True)
    if run.returncode != 0:
        sys.exit(run.stderr)
    return int(re.search(r'Collected : (\d+)', run.stderr).group(1))


def each(program, options, how='--read'):
    more = instructions(program, how, options, MANY) - instructions(program, how, options, FEW)
    return more / ((MANY - FEW) * options)


def row(what, measured, bounds):
    limit, goal = bounds[0], bounds[-1]
    shown = f'{goal:8.2f}' if len(bounds) > 1 else ' ' * 8
    met = 'NO' if measured > limit else 'limit' if measured > goal else 'yes'
    print(f'{what:<72} {measured:9.2f} {limit:8.2f} {shown}  {met}', flush=True)


program = sys.argv[1]
lines = {options: each(program, options) for options in SIZES}
for options, count in lines.items():
    row(f'instructions a parameter line, table of {options:,}', count, LINE)
row('instructions an option set up, table of 2,700', each(program, 2700, '--define'), OPTION)
for options, before in BEFORE.items():
    row(f'instructions a line, table of {options:,}, to those before there was a listener', lines[options] / before, MORE)
for how, what, bounds in (('--listen', 'has no function', LISTENED), ('--hear', 'does nothing', HEARD)):
    row(f'instructions a line with a listener that {what}, to those without', each(program, 2700, how) / lines[2700],
        bounds)
row('instructions a line in a table of 2,700, to those of 100', lines[2700] / lines[100], GROWTH)
