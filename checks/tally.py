#!/usr/bin/env python3
"""Prints the closing line `N passed, N failed` from the JUnit file that ctest wrote.

Usage: tally.py <junit.xml>. Whatever did not run counts as failed. The exit status is 0 only if at
least one test passed and none failed.
"""
import sys
import xml.etree.ElementTree as xml

cases = xml.parse(sys.argv[1]).getroot().findall('testcase')
failed = [case.get('name') for case in cases if case.get('status') != 'run']
passed = len(cases) - len(failed)
if failed:
    print('failed: ' + ' '.join(failed))
print(f'{passed} passed, {len(failed)} failed')
sys.exit(0 if passed and not failed else 1)
