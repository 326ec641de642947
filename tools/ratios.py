#!/usr/bin/env python3
"""Prints a Google Benchmark result as a table: time of one round, and its ratio to the family's first row.

Usage: ratios.py <result.json>. A family is what stands before the first `/` of a name, so that a ratio
shows how cost grows with the argument, or how one way compares with the way that was named first.
"""
import json
import sys

with open(sys.argv[1], encoding='utf-8') as file:
    text = file.read()
if not text:
    sys.exit('no benchmark has such a name')
rows = json.loads(text)['benchmarks']
first = {}
print(f'{"benchmark":<52}{"time":>14}{"ratio":>9}')
for row in rows:
    if 'error_message' in row:
        print(f'{row["name"]:<52}{row["error_message"]:>23}')
    elif row.get('run_type', 'iteration') == 'iteration' or row.get('aggregate_name') == 'median':
        time = row['cpu_time']
        base = first.setdefault(row['name'].split('/')[0], time)
        print(f'{row["name"]:<52}{time:>11.1f} {row["time_unit"]}{time / base if base else 0:>9.2f}')
sys.exit(1 if any('error_message' in row for row in rows) else 0)
