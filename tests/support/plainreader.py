"""A slow and plain reader of parameter text, to hold the library's against.

It shares nothing with the library but the rules of docs/parameter-language.md, and is written to be read beside
them: one function a rule, a text and a position, no state but what a text sets. It covers

- lines of a file and text that comes as one line; comments, end-of-line comments; both modes and the switch between
  them; the three rules of lookup; synonyms, deprecated and obsolete names;
- values of all kinds, of one value, none, an optional one and two; macros, multi-lists, lists; keys with two dashes;
- the switch for bounds and messages of the text; dot options and indicators;
- every message of these, with its kind and all of its text; and all values, exactly.

It leaves out nested files, help, the echo of lines, the limit of the queue, and what the writer writes. Texts are
str, a character for a byte.
"""

import re

LIMIT = 255
ENDS = "\n\x1a"
BLANKS = " \t"
LETTERS = frozenset("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ")
DIGITS = frozenset("0123456789")
BRACKETS = {"(": ")", "[": "]", "{": "}"}
YES = {"1", "Y", "YES", "ON", "TRUE", "T"}
NO = {"0", "N", "NO", "OFF", "FALSE", "F"}
MAXINT, MININT = 2147483647, -2147483648
ERROR, VALUE_ERROR, WARNING, DEPRECATED, ENTER, LEAVE = 9, 3, 4, 5, 6, 7
DECORATION = {ERROR: "*** Error ", VALUE_ERROR: "*** Value Error ", WARNING: "*** Warning ",
              DEPRECATED: "*** Warning "}


def upper(text):
    """Only the ASCII letters have cases."""
    return "".join(c.upper() if c in LETTERS else c for c in text)


def cut(text):
    return text[:LIMIT]


def crowded(text):
    """What a reader of tokens keeps of a long text: the last character stands in the last place."""
    return text if len(text) <= LIMIT else text[:LIMIT - 1] + text[-1]


def quoted(text):
    return f'"{text}"'


def unquoted(label):
    """A label that is too long has lost its last quote."""
    if label == "*":
        return label
    return label[1:-1] if len(label) > 1 and label[-1] == label[0] else label[1:]


def boolean(word):
    return True if upper(word) in YES else False if upper(word) in NO else None


# --- Numbers

def integer(text):
    """The value of a text in the syntax of whole numbers, or None; too large a number is the nearest limit."""
    if upper(text) == "MAXINT":
        return MAXINT
    if upper(text) == "MININT":
        return MININT
    found = (re.fullmatch(r" *([+-]?)()([0-9]+)", text) or re.fullmatch(r" *([+-]?)(0[xX])([0-9a-fA-F]+)", text) or
             re.fullmatch(r" *([+-]?)(\$)(?:0[xX](?=[0-9a-fA-F]))?([0-9a-fA-F]+)", text))
    if not found:
        return None
    sign, base, digits = found.groups()
    value = int(digits, 16 if base else 10)
    return max(MININT, min(MAXINT, -value if sign == "-" else value))


def real(text):
    """The value of a text in the syntax of reals, or None."""
    named = {"MAXDOUBLE": 1e299, "MINDOUBLE": -1e299, "EPS": 1e-20}.get(upper(text))
    if named is not None:
        return named
    text = text.lstrip(" ").replace("d", "e").replace("D", "E")
    if re.fullmatch(r"[+-]?\.", text):
        return 0.0
    if re.fullmatch(r"[+-]?\.[eE][+-]?[0-9]+", text):  # a point before the exponent is a 0
        return -0.0 if text[0] == "-" else 0.0
    if not re.fullmatch(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?", text):
        return None
    value = float(text)
    return None if value in (float("inf"), float("-inf")) else value


def whole(text):
    """A whole number in either syntax, or None."""
    value = integer(text)
    if value is None:
        value = real(text)
        if value is None or not MININT <= value <= MAXINT or value != int(value):
            return None
    return int(value)


def shown(value):
    """A real with at most 15 digits, as messages show it."""
    if value == 0:
        return "0"
    mantissa, exponent = f"{value:.14E}".split("E")
    digits = mantissa.replace(".", "").replace("-", "")
    power = int(exponent)
    sign = "-" if value < 0 else ""
    if not 0.0001 <= abs(value) < 1e15:
        fraction = digits[1:].rstrip("0")
        return sign + digits[0] + ("." + fraction if fraction else "") + (f"E{power}" if power else "")
    if power < 0:
        return sign + "0." + "0" * (-power - 1) + digits.rstrip("0")
    digits = digits.ljust(power + 1, "0")
    fraction = digits[power + 1:].rstrip("0")
    return sign + digits[:power + 1] + ("." + fraction if fraction else "")


def bound(value):
    named = {MAXINT: "maxint", MININT: "minint"} if isinstance(value, int) else {1e299: "maxdouble",
                                                                                  -1e299: "mindouble"}
    return named.get(value) or (str(value) if isinstance(value, int) else shown(value))


# --- The table

class Option:
    """An option, and what is set. `takes` is "one", "none", "optional" or "two"."""

    def __init__(self, name, kind, takes="one", default=0, low=None, high=None, items=(), members=(), action=""):
        self.name, self.kind, self.takes, self.default = name, kind, takes, default
        self.low, self.high, self.items, self.members, self.action = low, high, items, members, action
        self.marks = {}  # what the definition says of a name: "deprecated" or "obsolete", and its text
        self.values = [None, None]
        self.list = []


class Table:
    """The options of a definition, and what a read of parameter text makes of them."""

    def __init__(self, options, lookup="Normal", synonyms=None, indicator=None, comments=""):
        self.options, self.lookup, self.synonyms = options, lookup, synonyms or {}
        self.indicator, self.comments = indicator, comments
        self.messages, self.dots, self.indicators = [], [], []
        self.dropped_dots = self.dropped_indicators = 0
        self.nobounds = False
        self.current = ""
        self.line = 0

    # Messages

    def say(self, kind, text):
        if kind in DECORATION and self.line > 0:
            text = f"line {self.line}: " + text
        self.messages.append((kind, cut(text)))

    def fault(self, text):
        self.say(ERROR, text)

    def told(self):
        frames = {ENTER: "Reading parameter(s) from ", LEAVE: "Finished reading from "}
        return [(kind, cut(frames[kind] + quoted(text) if kind in frames else DECORATION[kind] + text))
                for kind, text in self.messages]

    def errors(self):
        return sum(kind in (ERROR, VALUE_ERROR) for kind, _ in self.messages)

    # Names

    def by_name(self, name):
        return next((each for each in self.options if found_by(self.lookup, name, each.name)), None)

    def find(self, name):
        self.current = name
        if (found := self.by_name(name)) is None:
            target = next((to for synonym, to in self.synonyms.items() if upper(synonym) == upper(name)), None)
            found = next((each for each in self.options if each.name == target), None)
        return found

    # Values

    def assign(self, option, text, which=0):
        """The value of an option from its text, which may be refused."""
        if which == 0 and option.takes == "none":
            option.values[0] = option.default
        elif '"' in text:
            self.say(VALUE_ERROR, "Bad double-quote in value")
        elif which == 1 and option.kind in ("list", "macro", "multilist", "immediate"):
            pass
        elif option.kind == "list":
            option.list.append(text)
            option.values[0] = True
        elif option.kind == "macro":
            for member in option.members:
                self.assign(member, text)
        elif option.kind == "multilist":
            self.hand_out(option, text)
        elif option.kind != "immediate":
            self.store(option, text, which)

    def hand_out(self, option, text):
        """One value for each member, between colons; an empty one at the very end is none."""
        position, given = 0, []
        while position < len(text):
            while position < len(text) and text[position] in BLANKS:
                position += 1
            if position >= len(text):
                break
            end = text.find(":", position)
            end = len(text) if end < 0 else end
            token, position = text[position:end], end + 1
            if not token and position >= len(text):
                break
            given.append(token)
        for number, token in enumerate(given):
            if number >= len(option.members):
                return self.say(VALUE_ERROR, "Too many items for multilist " + quoted(self.current))
            self.assign(option.members[number], token)

    def store(self, option, text, which):
        kind, complaint = option.kind, None
        if kind == "string":
            option.values[which] = text
            return
        if kind == "integer":
            value, complaint = whole(text), "Integer expected, for option "
        elif kind == "enumint":
            value, complaint = integer(text), "Integer expected, for option "
        elif kind == "double":
            value, complaint = real(text), "Double expected for option "
        elif kind == "boolean":
            value, complaint = boolean(text), "Boolean value expected for option "
            value = None if value is None else int(value)
        else:
            value = text
        if value is None:
            return self.say(VALUE_ERROR, f'{complaint}"{self.current}" saw "{text}"')
        if kind == "enumstr":
            match = next((item for item in option.items if upper(item) == upper(text)), None)
            allowed = match is not None
            value = match if allowed else ""
        elif kind == "enumint":
            allowed = value in option.items
        elif kind == "boolean":
            allowed = True
        else:
            allowed = option.low <= value <= option.high
        if not allowed:
            self.refuse(option, text if kind == "enumstr" else value)
            if not self.nobounds:
                return
        option.values[which] = value

    def refuse(self, option, value):
        kind = WARNING if self.nobounds else VALUE_ERROR
        first = {"integer": "Integer range error for option ", "double": "Double out of range for option "}
        saw = shown(value) if option.kind == "double" else str(value)
        self.say(kind, f'{first.get(option.kind, "Unknown value for option ")}"{self.current}" saw "{saw}"')
        if option.kind in first:
            self.say(kind, f"   Valid range is {bound(option.low)} to {bound(option.high)}")
        else:
            self.say(kind, cut("   Possible values are " + "".join(f" {item}" for item in option.items)))

    # Whole texts

    def read_text(self, name, text, linewise=True):
        """The text of a file; a line has 1,020 bytes at most."""
        self.messages.append((ENTER, name))
        lines = text.split("\n")
        if lines[-1] == "":
            lines.pop()
        source = self.lines_of(lines)
        for line in source:
            linewise = Line(self, line, source).read(linewise)
        self.line = 0
        self.leave(name)

    def lines_of(self, lines):
        """One line after another, without the empty ones and those that are comments."""
        for self.line, line in enumerate(map(as_read, lines), 1):
            if line and not line.startswith("*"):
                yield line

    def read_line(self, text, linewise=True):
        """Text that comes as one line; it ends at a line feed, and has no comment lines."""
        self.messages.append((ENTER, "pchar"))
        if text:
            Line(self, text).read(linewise)
        self.leave("pchar")

    def leave(self, name):
        if self.messages[-1] == (ENTER, name):
            self.messages.pop()
        else:
            self.messages.append((LEAVE, name))


def as_read(line):
    """A line of a file is read in pieces of 255 bytes, four at most, each without a carriage return at its end."""
    read = ""
    for start in range(0, 4 * LIMIT, LIMIT):
        piece = line[start:start + LIMIT]
        kept = piece[:-1] if piece.endswith("\r") else piece
        read += kept
        if len(kept) < LIMIT:
            break
    return read


def found_by(lookup, key, name):
    """Whether a key is a name, by a rule of lookup."""
    key, name = upper(key), upper(name)
    if lookup == "Normal":
        return key == name
    words, others = key.split("_"), name.split("_")
    if len(words) != len(others):
        return False
    if lookup == "Path":
        return all(min(len(one), len(two)) >= 3 and one[:3] == two[:3] for one, two in zip(words, others))
    if key[:3] != name[:3]:
        return False
    return all(one[:4] == two[:4] for one, two in zip(words[1:], others[1:]))


class Line:
    """One line, read entry by entry. `at` is the position of the character that is looked at. `source` has the lines
    after it, of which an index without its closing quote takes the next one."""

    def __init__(self, table, text, source=None):
        self.table, self.text, self.at, self.source = table, text, 0, source
        self.skipped = None  # the character where the rest of the line was given up

    # Characters

    @property
    def ch(self):
        return self.text[self.at] if self.at < len(self.text) else "\n"

    def ended(self):
        return self.ch in ENDS

    def blanks(self):
        """Skips blanks and a comment; whether there is anything after them."""
        while self.ch in BLANKS:
            self.at += 1
        if self.ch in self.table.comments and not self.ended():
            while not self.ended():
                self.at += 1
        return not self.ended()

    def separator(self):
        """Skips = or :=, which may be left out; whether a value can follow."""
        if not self.blanks():
            return False
        if self.ch == "=":
            self.at += 1
            return self.blanks()
        if self.ch == ":":
            self.at += 1
            if self.ch != "=":
                return False
            self.at += 1
            return self.blanks()
        return True

    def passed(self, wanted):
        self.blanks()
        if self.ch not in wanted or self.ended():
            return None
        self.at += 1
        return self.text[self.at - 1]

    # Tokens

    def run(self, belongs):
        start = self.at
        while not self.ended() and belongs(self.ch):
            self.at += 1
        return self.text[start:self.at]

    def identifier(self):
        if self.ch not in LETTERS:
            return ""
        return crowded(self.run(lambda c: c in LETTERS or c in DIGITS or c == "_"))

    def token(self):
        """A token and whether it is good."""
        if not self.blanks():
            return "", False
        if self.ch != '"':
            return crowded(self.run(lambda c: c not in BLANKS and c != ",")), True
        self.at += 1
        inside, start = True, self.at
        while not self.ended():
            isquote = self.ch == '"'
            inside ^= isquote
            self.at += 1
            if isquote and not inside and (self.ch in BLANKS or self.ch == ","):
                break
        text = self.text[start:self.at]
        kept = crowded(text)
        return (kept[:-1], True) if kept.endswith('"') else (kept, False)

    def index(self):
        """An index as it is kept, or an empty text for none."""
        if not self.blanks():
            return ""
        if self.ch in LETTERS:
            return self.identifier()
        if self.ch == "*":
            self.at += 1
            return "*"
        if self.ch not in "'\"":
            return ""
        quote = self.ch
        self.at += 1
        text = self.run(lambda c: c != quote)
        self.close(quote)
        return cut(quote + crowded(text).rstrip(BLANKS) + quote)

    def close(self, quote):
        if self.ch != "\x1a" and self.at < len(self.text):
            self.at += 1
        elif self.ch == "\n":
            following = next(self.source, None) if self.source else None
            self.text, self.at = "\x1a" if following is None else following, 0

    def rest(self):
        """The value of a key with two dashes: all that is left, quotes and comments too."""
        if not self.blanks():
            return ""
        return crowded(self.run(lambda c: True)).rstrip(BLANKS)

    def restvalue(self):
        """A value that reaches to the end of the line or to a comment, and whether there is one."""
        if not self.blanks():
            return "", False
        if self.ch != '"':
            text = self.run(lambda c: c not in self.table.comments)
        else:
            self.at += 1
            start, inside = self.at, True
            while not self.ended() and (inside or self.ch not in self.table.comments):
                inside ^= self.ch == '"'
                self.at += 1
            text = cut(self.text[start:self.at]).strip(BLANKS)
            if text:
                text = text[:-1] if text.endswith('"') else text + '"'
        while not self.ended():
            self.at += 1
        return cut(text).strip(BLANKS), True

    # Entries

    def read(self, linewise):
        """Reads the line; gives the mode after it."""
        while True:
            if self.skipped is not None:
                # The character where the rest was given up is still looked at.
                first, self.skipped = self.skipped, None
                self.text, self.at = first, 0
            if not self.blanks():
                return linewise
            after = self.entry(linewise)
            if after is None:
                return linewise
            linewise = after

    def entry(self, linewise):
        """Reads one entry; gives the mode after it, or None where the line is over."""
        table = self.table
        if self.ch == ",":
            self.at += 1
            self.blanks()
        dashes = len(self.run(lambda c: c in "-/"))
        key = self.identifier()
        if not key:
            return table.fault(f'Option keyword expected, saw "{self.ch}"')
        if self.ch not in ".= \t\n":
            return table.fault("Bad separator after key " + quoted(key))
        if dashes == 0 and self.ch == ".":
            self.dot_option(key)
            return linewise
        if dashes == 0 and table.indicator is not None and upper(key) == upper(table.indicator):
            self.indicator()
            return linewise
        if dashes > 1:
            key = cut("--" + key)
        key, option = self.keyword(key)
        if option is None and not key.startswith("--"):
            table.fault("Unknown option " + quoted(key))
            self.rest() if linewise else self.token()
            return linewise
        if option is None:
            option = Option(key, "list")
            table.options.append(option)
        if key.startswith("--"):
            self.own_key(option, linewise)
        elif option.kind == "immediate":
            return self.immediate(option, key, linewise)
        else:
            self.plain(option, key, linewise)
        return linewise

    def keyword(self, key):
        """The key with its words, where names have several, and its option or None."""
        table = self.table
        option = table.find(key)
        if table.lookup != "Minos":
            return key, option
        if "_" in key:  # blanks stand for underscores, which nobody may write
            option = None
        for _ in range(3):
            if option is not None:
                break
            if not self.blanks() or self.ch in "=+-." or self.ch in DIGITS:
                return key, None
            word = self.run(lambda c: c in LETTERS or c in DIGITS) if self.ch in LETTERS else ""
            key = cut(key + "_" + crowded(word))
            option = table.find(key)
        return key, option

    def own_key(self, option, linewise):
        self.separator()
        if linewise:
            self.table.assign(option, self.rest())
            return
        text, good = self.token()
        if good:
            self.table.assign(option, text)

    def immediate(self, option, key, linewise):
        self.separator()
        text, good = self.token()
        if not good:
            self.table.fault("Value expected for immediate option " + quoted(key))
        elif option.action == "EolFlag":
            return boolean(text) is not False
        elif option.action == "NoBounds":
            self.table.nobounds = boolean(text) is not False
        elif option.action == "Message":
            self.table.fault(text)
        return linewise

    def plain(self, option, key, linewise):
        table = self.table
        if option.takes == "none" or (option.takes == "optional" and not self.blanks()):
            self.allowed(option, key)
            if option.kind not in ("list", "macro", "multilist"):
                option.values[0] = option.default
        elif not self.separator():
            name = option.name.replace("_", " ") if table.lookup == "Minos" else option.name
            table.fault("Value expected for key " + quoted(name))
        elif option.takes == "two":
            first = self.token()
            second = ("", False)
            if self.blanks():
                second = self.restvalue() if linewise else self.token()
            self.assign_two(option, key, first, second)
        else:
            text, good = self.restvalue() if linewise else self.token()
            if self.allowed(option, key) and good:
                table.assign(option, text)
        if linewise and self.blanks():
            table.fault("Remainder of line ignored")
            self.skipped = self.ch

    def assign_two(self, option, key, first, second):
        if not self.allowed(option, key):
            return
        if first[1] and first[0] != "*":
            self.table.assign(option, first[0])
            if not second[1]:
                return self.table.assign(option, first[0], 1)
        if second[1] and second[0] != "*":
            self.table.assign(option, second[0], 1)

    def allowed(self, option, key):
        """Whether a name may be used; a mark on it is told. Marks are of the own name or of synonyms."""
        own = upper(key) == upper(option.name)
        mark, text = option.marks.get("option" if own else "synonym", (None, ""))
        if mark is None:
            return True
        words = {each[0] for each in option.marks.values()}
        word = "deprecated" if "deprecated" in words else "obsolete"
        self.table.say(DEPRECATED, f'{word} {"option" if own else "synonym"} "{key}"; {text}')
        return mark != "obsolete"

    # Dot options and indicators

    def dot_option(self, symbol):
        table = self.table
        self.at += 1
        suffix = self.identifier()
        if not suffix:
            return table.fault(".suffix expected for key " + quoted(symbol))
        suffix = cut("." + suffix)
        option = table.by_name(suffix)
        if option is None:
            return table.fault(f'unknown .suffix "{suffix}" for key "{symbol}"')
        before = table.errors()
        if len(symbol) > 63:
            table.fault(".Option ID too long " + quoted(symbol))
        labels = []
        if self.dot_indices(symbol, labels):
            self.separator()
            text, good = self.token()
            if good:
                table.current = option.name
                table.assign(option, text)
            else:
                table.fault("Value expected for .option " + quoted(symbol))
        if table.errors() > before:
            table.dropped_dots += 1
        else:
            value = option.values[0] if option.values[0] is not None else option.default
            table.dots.append((symbol, option.name, [unquoted(label) for label in labels], float(value)))
        return None

    def dot_indices(self, symbol, labels):
        """Whether the value can follow."""
        opened = self.passed("([{")
        while opened:
            label = self.index()
            if not label:
                self.table.fault("Element expected for .option " + quoted(symbol))
                return False
            if label[0] not in "*'\"":
                self.table.fault("Set name not allowed .option " + quoted(symbol))
                return False
            labels.append(label)
            if len(labels) > 20:
                self.table.fault("Too many dimensions for .option " + quoted(symbol))
            if not self.passed(","):
                if self.ch != BRACKETS[opened]:
                    self.table.fault(f'Closing bracket "{BRACKETS[opened]}" expected for .option "{symbol}"')
                else:
                    self.at += 1
                break
        return True

    def indicator(self):
        table, before = self.table, self.table.errors()
        sides = [["", []], ["", []]]
        value = self.indicator_value(sides)
        if value is None:
            self.rest()
        if table.errors() == before:
            table.indicators.append((sides[0][0], sides[0][1], sides[1][0], sides[1][1], value))
        elif sides[0][0]:
            table.dropped_indicators += 1

    def indicator_value(self, sides):
        if not self.symbol(sides, 0):
            return None
        if not self.passed("$"):
            return self.table.fault("$ expected after equation identifier " + quoted(sides[0][0]))
        if not self.symbol(sides, 1):
            return None
        self.separator()
        text, good = self.token()
        value = boolean(text) if good else None
        if value is None:
            self.table.fault("Boolean value expected for equation indicator " + quoted(sides[0][0]) +
                             (f', Saw "{text}"' if good else ""))
        return value

    def symbol(self, sides, side):
        """A name with its indices; False where there is no name."""
        table = self.table
        self.blanks()
        name = self.identifier()
        if not name:
            table.fault("Equation ID expected for indicator")
            return False
        sides[side][0] = name
        if len(name) > 63:
            table.fault("Not a good equation identifier " + quoted(name) if side == 0 else
                        f'Variable "{name}" is not a good identifier')
        opened = self.passed("([{")
        while opened:
            label = self.index()
            if not label or label == "*":
                table.fault(("Universe not allowed" if label else "Unique element expected") +
                            " for indicator id " + quoted(name))
                return True
            self.add_label(sides, side, label)
            if not self.passed(","):
                if self.ch != BRACKETS[opened]:
                    table.fault(f'Closing bracket "{BRACKETS[opened]}" expected for id "{name}"')
                else:
                    self.at += 1
                break
        return True

    def add_label(self, sides, side, label):
        table, (name, labels) = self.table, sides[side]
        word = ("equation", "variable")[side]
        isquoted = label[0] in "'\""
        if len(labels) > 19:
            table.fault(f'Too many dimensions for {word} "{name}"')
        if len(label) > (65 if isquoted else 63):
            table.fault(("Bad Equation index = ", "Bad variable index = ")[side] + quoted(name))
        elif side == 1 and not isquoted and upper(label) not in map(upper, sides[0][1]):
            table.fault(f'Index "{label}" not controled for variable "{name}"')
        labels.append(label)
