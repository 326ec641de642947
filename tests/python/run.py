"""Runs a module of Python as a program, as `python3 -m` does; tells ctest of a module that is not installed.

Usage: run.py module [argument]...
"""
import importlib.util
import runpy
import sys

SKIPPED = 77

if importlib.util.find_spec(sys.argv[1]) is None:
    print(f'skipped: not installed: {sys.argv[1]}')
    sys.exit(SKIPPED)
sys.argv = sys.argv[1:]
sys.path[0] = ''
runpy.run_module(sys.argv[0], run_name='__main__', alter_sys=True)
