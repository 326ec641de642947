"""Small changes of C++ code, one at a time: what a slip of the hand could have written in its place.

The code is taken as tokens in the form that clang-format gives it: an operator with two operands stands between
blanks, so that `a < b` compares and `list<int>` does not. What does not compile is for the caller to find out.
"""
import bisect
import collections
import re

# A piece of a text, what stands there instead, and what that is called.
Change = collections.namedtuple('Change', 'start end text')

SKIPPED = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:\\\n|[^\n])*|R"([^(]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"'
                     r"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'", re.S | re.M)
OPERATORS = {'<': ('<=', '>='), '<=': ('<', '>'), '>': ('>=', '<='), '>=': ('>', '<'), '==': ('!=',), '!=': ('==',),
             '&&': ('||',), '||': ('&&',), '+': ('-',), '-': ('+',), '*': ('/',), '/': ('*',), '%': ('*',),
             '&': ('|',), '|': ('&',), '<<': ('>>',), '>>': ('<<',), '+=': ('-=',), '-=': ('+=',),
             '|=': ('&=',), '&=': ('|=',)}
LONGEST = sorted(OPERATORS, key=len, reverse=True)
BINARY = re.compile(r'(?<=[ \n])(?:' + '|'.join(map(re.escape, LONGEST)) + r')(?=[ \n])')
NUMBER = re.compile(r'(?<![\w.\'])(?:0x[0-9a-fA-F]+|0|[1-9]\d*)(?=[uUlL]*(?![\w.\']))')
WORDS = {'true': 'false', 'false': 'true', 'break;': ';', 'continue;': ';'}
WORD = re.compile(r'(?<!\w)(?:true\b|false\b|break;|continue;)')
STEP = re.compile(r'\+\+|--')
NOT = re.compile(r'!(?=[\w(:])')
CONDITION = re.compile(r'(?<!\w)(if|while) \(')
# A call or an assignment that stands as a statement of its own; a declaration begins with two names.
STATEMENT = re.compile(r'(?:(?<=[;{}]\n)|(?<=\) )) *((?:[\w:.>\-\[\]]|\(\*\w+\))+(?:\(| [-+|&]?= |\+\+|--))')
KEYWORDS = re.compile(r'(?:return|case|default|using|namespace|if|while|for|switch|static_assert|throw|delete|new'
                      r'|constexpr)\b')
DECLARED = re.compile(r'\{|= (?:delete|default)$')
# What must not be changed at all: a slip there could end a process of somebody else.
NEVER = re.compile(r'\bkill\(')


def blanked(text):
    """The text, with blanks for what is no code: comments, texts, directives."""
    return SKIPPED.sub(lambda found: re.sub(r'[^\n]', ' ' if found[0][0] in '/#' else '_', found[0]), text)


def closing(code, start):
    """The index of the bracket that closes the one at `start`."""
    depth = 0
    for index in range(start, len(code)):
        depth += (code[index] in '([{') - (code[index] in ')]}')
        if depth == 0:
            return index
    return len(code)


def of_operators(code):
    for found in BINARY.finditer(code):
        for other in OPERATORS[found[0]]:
            yield Change(found.start(), found.end(), other)
    for found in STEP.finditer(code):
        yield Change(found.start(), found.end(), {'++': '--', '--': '++'}[found[0]])
    for found in NOT.finditer(code):
        yield Change(found.start(), found.end(), '')


def of_constants(code):
    for found in NUMBER.finditer(code):
        value = int(found[0], 0)
        for other in {value + 1, max(value - 1, 0)} - {value}:
            yield Change(found.start(), found.end(), str(other))
    for found in WORD.finditer(code):
        yield Change(found.start(), found.end(), WORDS[found[0]])


def of_characters(text):
    """A constant that is a character: its successor."""
    for found in SKIPPED.finditer(text):
        if re.fullmatch(r"'[0-9A-Za-z _.,;:=*#\-]'", found[0]):
            yield Change(found.start(), found.end(), "'%c'" % (ord(found[0][1]) + 1))


def of_conditions(code, text):
    for found in CONDITION.finditer(code):
        opening = found.end() - 1
        condition = text[opening + 1:closing(code, opening)]
        if ';' not in condition:
            for word in ('true || ', 'false && ') if found[1] == 'if' else ('false && ',):
                yield Change(opening + 1, opening + 1 + len(condition), f'{word}({condition})')


def of_statements(code):
    for found in STATEMENT.finditer(code):
        end = code.find(';', found.start(1))
        piece = code[found.start(1):end]
        whole = piece.count('(') == piece.count(')')
        if whole and not KEYWORDS.match(piece) and not DECLARED.search(piece):
            yield Change(found.start(1), end, '')


def changes_of(text):
    """All changes of a text, in the order of their places."""
    code = blanked(text)
    found = [*of_operators(code), *of_constants(code), *of_characters(text), *of_conditions(code, text),
             *of_statements(code)]
    never = [(piece.start(), code.find(';', piece.start())) for piece in NEVER.finditer(code)]
    return sorted(change for change in found
                  if not any(start < change.end and change.start < end for start, end in never))


def changed(text, change):
    return text[:change.start] + change.text + text[change.end:]


class Lines:
    """Where the lines of a text begin: for the number of the line in which a place is."""

    def __init__(self, text):
        self.starts = [0, *(found.end() for found in re.finditer('\n', text))]
        self.lines = text.split('\n')

    def number(self, place):
        return bisect.bisect_right(self.starts, place)

    def shown(self, text, change):
        """The line as it was and as it is, without what is the same for all: the blanks before it."""
        number = self.number(change.start)
        before, after = self.lines[number - 1], changed(text, change).split('\n')[number - 1]
        return before.strip(), after.strip()
