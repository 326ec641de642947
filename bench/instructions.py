#!/usr/bin/env python3
"""Counts the instructions that one parameter line costs, in tables of 100 and 2,700 options, without a listener and with.

Usage: instructions.py <optxv_bench>. Runs the program under callgrind with two numbers of reads of the same
file; the difference leaves only the lines, without the start of the program and the definition. Counts do
not depend on what else the machine does.
"""
import os
import re
import subprocess
import sys

FEW, MANY = 2, 12
SIZES = 100, 2700
LIMIT, GROWTH = 2000, 1.1
# What a line cost in the version that had no listener, and how much more it may cost since.
BEFORE, MORE = {100: 1843.7, 2700: 1760.6}, 1.01
LISTENED, HEARD = 1.4, 1.6


def instructions(program, how, options, reads):
    run = subprocess.run(['valgrind', '--tool=callgrind', f'--callgrind-out-file={os.devnull}', program, how,
                          str(options), str(reads)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, text=True)
    if run.returncode != 0:
        sys.exit(run.stderr)
    return int(re.search(r'Collected : (\d+)', run.stderr).group(1))


def a_line(program, options, how='--read'):
    more = instructions(program, how, options, MANY) - instructions(program, how, options, FEW)
    return more / ((MANY - FEW) * options)


def row(what, measured, limit):
    print(f'{what:<68} {measured:9.2f} {limit:7.2f}  {"yes" if measured <= limit else "NO"}')


lines = {options: a_line(sys.argv[1], options) for options in SIZES}
for options, count in lines.items():
    row(f'instructions a parameter line, table of {options:,}', count, LIMIT)
for options, before in BEFORE.items():
    row(f'instructions a line, table of {options:,}, to those before there was a listener', lines[options] / before, MORE)
for how, what, limit in (('--listen', 'has no function', LISTENED), ('--hear', 'does nothing', HEARD)):
    row(f'instructions a line with a listener that {what}, to those without', a_line(sys.argv[1], 2700, how) / lines[2700],
        limit)
row('instructions a line in a table of 2,700, to those of 100', lines[2700] / lines[100], GROWTH)
