"""What the library reports of a definition, as plain data; the action of an immediate option is read off the text.

The tests of the documents compare what readers make of a document with these facts.
"""
import os
from pathlib import Path

import optxv

HEAD = ['Option', 'Type', 'UserMap', 'Default', 'Low', 'High', 'Group', 'Hc', 'Help Text']
LIMITS = {'maxint': 2**31 - 1, 'minint': -2**31, 'maxdouble': 1e299, 'mindouble': -1e299}
INTEGER, DOUBLE, STRING, BOOLEAN, ENUMSTR, ENUMINT, MULTILIST, STRLIST, MACRO, IMMEDIATE = range(10)
WORDS = ('integer', 'double', 'string', 'boolean', 'enumstr', 'enumint', 'multilist', 'strlist', 'macro', 'immediate')
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


def actions(path):
    """From the text: the action of each immediate option."""
    lines = Path(path).read_text(encoding='latin-1').splitlines()
    records = [line.split() for line in lines if line[:1] not in (' ', '\t', '*', '')]
    return {'Help': 'Help', **{words[0]: words[2] for words in records if len(words) > 2 and words[1].lower() == 'immediate'}}


def latin(text):
    """A text of the library with a character for each byte; other facts as they are."""
    return text.encode('utf-8', 'surrogateescape').decode('latin-1') if isinstance(text, str) else text


def option(fact, actions):
    """One option: the fields of its record, with numbers as numbers and texts as texts."""
    default = fact.default[0] if fact.takes is optxv.Takes.TWO else fact.default
    if fact.kind == IMMEDIATE:
        default = actions[fact.name]
    elif fact.kind == BOOLEAN:
        default = int(default)
    return dict(number=fact.number, name=latin(fact.name), kind=fact.kind, word=WORDS[fact.kind], modifier=fact.takes,
                refnr=fact.reference, default='' if default in (None, []) else latin(default),
                low='' if fact.low is None else fact.low, high='' if fact.high is None else fact.high,
                group=fact.group, page=fact.helpcontext, text=latin(fact.help),
                values=[[latin(choice.value), choice.helpcontext, latin(choice.help)] for choice in fact.choices],
                members=list(map(latin, fact.members)))


def facts(path):
    """The options in the order of the table, the pairs of synonym and name, and the messages of the read."""
    with optxv.Options(path, strict=False) as options:
        known = actions(path)
        synonyms = [[latin(synonym.name), latin(synonym.option or '')] for synonym in options.synonyms]
        return [option(fact, known) for fact in options.options], synonyms, list(map(str, options.messages))
