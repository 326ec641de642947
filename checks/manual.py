#!/usr/bin/env python3
"""Makes the parts of the manual page that list subcommands and flags, from what the command says about itself.

Usage: manual.py <command> [page]. Rewrites the page, docs/optxv.1 if none is named; the rest of it stays.
"""
import json
import re
import subprocess
import sys
from pathlib import Path


def rows_of(command):
    listed = subprocess.run([command, '--subcommands'], capture_output=True, check=True)
    return json.loads(listed.stdout)


def name_of(argument):
    return argument['name'] if 'name' in argument else argument['names'][-1]


def form(argument):
    """A word or a flag with its value, in the macros of the page."""
    many = ' ...' if argument['many'] else ''
    if 'name' in argument:
        return f'Ar {argument["name"].lower()}{many}'
    value = f' Ar {argument["value"].lower()}{many}' if argument['value'] else ''
    return f'Fl {argument["names"][0][1:]}{value}'


def alternatives(row):
    """The arguments in groups of those that exclude each other; a group that begins with a flag comes first."""
    groups = []
    for argument in row['words'] + row['flags']:
        group = next((group for group in groups if argument['excludes'] in map(name_of, group)), None)
        groups.append([argument]) if group is None else group.append(argument)
    return sorted(groups, key=lambda group: 'name' in group[0])


def synopsis(rows):
    for row in rows['subcommands']:
        yield f'.Nm\n.Cm {row["word"]}\n'
        for group in alternatives(row):
            yield ('.' if group[0]['required'] else '.Op ') + ' | '.join(map(form, group)) + '\n'


def subcommands(rows):
    for row in rows['subcommands']:
        yield f'.It Cm {row["word"]}\n{row["help"]}.\n' + (row['more'] + '\n' if row['more'] else '')


def flags(rows):
    told = set()
    for flag in [flag for row in rows['subcommands'] for flag in row['flags']] + rows['flags']:
        names = ' , '.join(name[1:] for name in flag['names'])
        value = form(flag).partition(' Ar ')[2]
        head = f'.It Fl {names}' + (f' Ar {value}' if value else '') + '\n'
        if head not in told:
            told.add(head)
            yield f'{head}{flag["help"]}.\n'


def page_of(rows, page):
    """The page with each part made again."""
    for start, end, part in ((r'\.Sh SYNOPSIS', r'\.Sh', synopsis), (r'\.Bl [^\n]*reference', r'\.El', subcommands),
                             (r'\.Bl [^\n]*output[^\n]*', r'\.El', flags)):
        made = ''.join(part(rows))
        page = re.sub(rf'(?ms)(^{start}\n).*?(?=^{end}\b)', lambda found, made=made: found[1] + made, page, count=1)
    return page


def main():
    path = Path(sys.argv[2] if len(sys.argv) > 2 else Path(__file__).parent.parent / 'docs/optxv.1')
    path.write_text(page_of(rows_of(sys.argv[1]), path.read_text(encoding='utf-8')), encoding='utf-8')


if __name__ == '__main__':
    main()
