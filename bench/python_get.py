#!/usr/bin/env python3
"""How long a get of a value takes through the Python package, beside one of a plain dict. Told, without a limit.

OPTXV_LIBRARY names the library; the package is on PYTHONPATH. Usage: python_get.py definition
"""
import sys
import time
import timeit

import optxv

NUMBER, REPEATS = 20_000, 5
NAMES = {'an integer': 'threads', 'a real': 'time_limit', 'a Boolean': 'presolve', 'a text': 'log_file',
         'a pair': 'scale_range'}


def nanoseconds(code, **names):
    """The least processor time of one run of the code."""
    return min(timeit.repeat(code, globals=names, number=NUMBER, repeat=REPEATS, timer=time.process_time)) / NUMBER * 1e9


def main(definition):
    with optxv.Options(definition) as options:
        plain = options.to_dict(defaults=True)
        for what, name in NAMES.items():
            number = options.number(name)
            print(f'{"python: get " + what:<28} by name {nanoseconds("options[name]", options=options, name=name):6.0f} ns'
                  f'   by number {nanoseconds("options.get_value(number)", options=options, number=number):6.0f} ns'
                  f'   dict {nanoseconds("plain[name]", plain=plain, name=name):5.0f} ns')


if __name__ == '__main__':
    main(sys.argv[1])
