"""What the library reports of a definition through its C API, as plain data; the rest is read off the text.

The tests of the documents compare what readers make of a document with these facts.
"""
import contextlib
import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import library  # noqa: E402  (found beside this file)

HEAD = ['Option', 'Type', 'UserMap', 'Default', 'Low', 'High', 'Group', 'Hc', 'Help Text']
LIMITS = {'maxint': 2**31 - 1, 'minint': -2**31, 'maxdouble': 1e299, 'mindouble': -1e299}
INTEGER, DOUBLE, STRING, BOOLEAN, ENUMSTR, ENUMINT, MULTILIST, STRLIST, MACRO, IMMEDIATE = range(10)
# For the HTML table: rows that stay open, at the end too, rows without an opening, bytes beyond ASCII, marks that are not markup.
EVERY_KIND = '''general group 2 1 General
secret group maxint 0 <b>Secret</b>
rate integer.OPT 3 1 0 maxint 1 2 Rate <b> "q" &amp; &lt;
 Long <i>help</i>,
tol double 4 1e-6 mindouble 1e299 0 2 Tolerance
small integer 14 minint minint 0 1 2 Small
logname string.OPT 5 "a, b" 6 2 Caf\xe9 \xc3\xa9 \xb8 \xa0.
none string 15 "" 6 2
flag boolean.NV 6 1 7 2 Flag
method enumstr 7 "by size" 8 2 Method
 "by size" 81 By <size>
 dual 82
level enumint 8 maxint 9 maxint Level
 -3 90 Silent
 5 91 Half
 maxint 92 All
empty enumint 18 1 9 2 No values
pair multilist 9 10 2 Pair
 rate tol
paths strlist 10 11 2 Paths
fast macro 12 2 Fast
 flag
 method
more macro 12 2 More
 flag
scales double.TWO 11 1 eps 10 13 2 Scales
.scale double.TWO 16 1 eps 10 13 2 Scale
.plain double 17 1 eps 10 13 2
rf immediate ReadFile 14 2 Read
last strlist 10 11 2 Last
stop synonym rate
halt synonym paths
'''


def tables(*more):
    """The example, the definitions given, and those in the folder OPTXV_TABLES, if that is set."""
    folder = os.environ.get('OPTXV_TABLES')
    return [Path('examples/solver.def'), *more, *(sorted(Path(folder).glob('*.def')) if folder else [])]


def written(path):
    """From the text: the action of each immediate option, the members of each list."""
    actions, members, names = {'Help': 'Help'}, {}, None
    for line in Path(path).read_text(encoding='latin-1').splitlines():
        words = line.split()
        if line[:1] in (' ', '\t') and names is not None:
            names += words if word == 'multilist' else words[:1]
        elif len(words) > 1 and words[0][0] != '*':
            word = words[1].lower()
            names = members.setdefault(words[0], []) if word in ('multilist', 'macro') else None
            if word == 'immediate':
                actions[words[0]] = words[2]
    return actions, members


def option(options, number, actions, members):
    """One option: the fields of its record, with numbers as numbers and texts as texts."""
    _, _, refnr, _, kind, modifier = options.told('optgetinfonr', number, out='iiiiii')
    name, text = options.told('coptgethelpnr', number, out='tt')
    _, page, group = options.told('coptgetopthelpnr', number, out='tii')
    low = high = default = ''
    if kind in (INTEGER, DOUBLE):
        low, high, default = (options.told('optgetboundsint', number, out='iii') if kind == INTEGER else
                              options.told('optgetboundsdbl', number, out='ddd'))
    elif kind in (BOOLEAN, ENUMINT):
        default, = options.told('optgetintnr', number, out='i')
    elif kind in (STRING, ENUMSTR):
        default, = options.told('coptgetstrnr', number, out='t')
    elif kind == IMMEDIATE:
        default = actions[name]
    values = []
    if kind in (ENUMSTR, ENUMINT):
        for entry in range(1, options.told('optgetenumcount', number, out='i')[0] + 1):
            integer, string = options.told('coptgetenumvalue', number, entry, out='it')
            values.append([integer if kind == ENUMINT else string,
                           *options.told('coptgetenumhelp', number, entry, out='it')])
    return dict(number=number, name=name, kind=kind, word=options.told('coptgettypename', kind, out='t')[0],
                modifier=modifier, refnr=refnr, default=default, low=low, high=high, group=group, page=page, text=text,
                values=values, members=members.get(name, []) if kind in (MULTILIST, MACRO) else [])


def facts(path):
    """The options in the order of the table, the pairs of synonym and name, and the messages of the read."""
    with contextlib.closing(library.Options()) as options:
        options.define(path)
        messages, found = options.messages(), written(path)
        synonyms = [options.told('coptgetsynonym', position, out='tt')
                    for position in range(1, options.call('optsynonymcount') + 1)]
        return [option(options, number, *found) for number in range(1, options.call('optcount') + 1)], synonyms, messages
