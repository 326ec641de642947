"""The library beside what works in another way: number text beside the C library, over 100 million texts, and
parameter text beside a slow and plain reader (tests/support/plainreader.py), over a million texts at random.

  differential.py [--sample] [--texts N] [--seed N]

With --sample, a share of both in some seconds. The last line has the figures; the status is 1 where anything differs.
"""

import argparse
import ctypes
import multiprocessing
import os
import random
import subprocess
import sys

from aid.build import TREE, build, built

sys.path.insert(0, str(TREE / "tests" / "support"))

import plainreader  # noqa: E402  (the path comes first)
from plainreader import Option, Table  # noqa: E402

NUMBERS, TEXTS = 100_000_000, 1_000_000
SAMPLE_NUMBERS, SAMPLE_TEXTS = 1_000_000, 4_000
CHUNK = 1_000


# --- The table, as both readers get it

LARGE = 1e299
TAKES = {"one": "", "none": ".NV", "optional": ".OPT", "two": ".TWO"}
PLAIN = [
    ("step_limit", "integer", "one", 10, 0, 100),
    ("steps", "integer", "optional", 5, plainreader.MININT, plainreader.MAXINT),
    ("span_two", "integer", "two", 1, -10, 10),
    ("tolerance", "double", "one", 1e-6, 0.0, 1.0),
    ("range_of", "double", "two", 0.0, -LARGE, LARGE),
    ("huge", "double", "one", 0.0, -LARGE, LARGE),
    ("logname", "string", "one", "run.log", None, None),
    ("pair_text", "string", "two", "a", None, None),
    ("flag", "boolean", "one", 0, None, None),
    ("verbose", "boolean", "none", 1, None, None),
    ("maybe", "string", "optional", "some", None, None),
]
ENUMERATIONS = [
    ("method", "enumstr", "auto", ["auto", "primal_simplex", "two words"]),
    ("level", "enumint", 1, [0, 1, -7]),
]
ATTRIBUTES = [
    (".scale", "double", 1.0, 0.0, LARGE),
    (".prior", "integer", 0, 0, 1000),
    (".onoff", "boolean", 0, None, None),
]
GROUPED = [("both", "multilist", ["step_limit", "tolerance"]),
           ("mixed_in", "multilist", ["logname", "level", "flag"]),
           ("fast_mode", "macro", ["flag", "level", "both"])]
IMMEDIATE = [("linewise", "EolFlag"), ("nobounds", "NoBounds"), ("say_this", "Message")]
SYNONYMS = {"stplim": "step_limit", "oldflag": "flag", "steplimit": "step_limit"}
MARKS = [("stplim", "deprecated", "Say step_limit."), ("huge", "obsolete", "Too large"),
         ("oldflag", "obsolete", "Say flag."), ("steps", "deprecated", "Use step_limit")]
RULES = ("Normal", "Path", "Minos")


def field(value):
    return plainreader.bound(value) if isinstance(value, (int, float)) else value


def definition(rule):
    """The definition as the library reads it."""
    lines = [f"{rule} lookup", "mark eolcomm !#"]
    for name, kind, takes, default, low, high in PLAIN:
        bounds = "" if low is None else f" {field(low)} {field(high)}"
        lines.append(f"{name} {kind}{TAKES[takes]} 1 {field(default)}{bounds} 1 1 Text")
    for name, kind, default, items in ENUMERATIONS:
        lines += [f"{name} {kind} 1 {default} 1 1 Text"] + [f' "{item}" 1 Item' for item in items]
    lines.append("paths strlist 1 1 1 Text")
    for name, kind, members in GROUPED:
        lines += [f"{name} {kind} 1 1 1 Text" if kind == "multilist" else f"{name} {kind} 1 1 Text"]
        lines += [f" {member}" for member in members]
    lines += [f"{name} immediate {action} 1 1 Text" for name, action in IMMEDIATE]
    lines += [f"{name} synonym {target}" for name, target in SYNONYMS.items()]
    for mark in ("deprecated", "obsolete"):
        lines += [f"{mark}s {mark}"] + [f" {name} {text}" for name, each, text in MARKS if each == mark]
    for name, kind, default, low, high in ATTRIBUTES:
        bounds = "" if low is None else f" {field(low)} {field(high)}"
        lines.append(f"{name} {kind} 1 {field(default)}{bounds} 1 1 Text")
    lines.append("indic indicator")
    return "\n".join(lines) + "\n"


def table(rule):
    """The same for the plain reader."""
    options = [Option("Help", "immediate", action="Help")]
    options += [Option(name, kind, takes, default, low, high) for name, kind, takes, default, low, high in PLAIN]
    options += [Option(name, kind, default=default, items=items) for name, kind, default, items in ENUMERATIONS]
    options.append(Option("paths", "list"))
    by_name = {each.name: each for each in options}
    for name, kind, members in GROUPED:
        by_name[name] = Option(name, kind, members=[by_name[member] for member in members])
        options.append(by_name[name])
    options += [Option(name, "immediate", action=action) for name, action in IMMEDIATE]
    for name, mark, text in MARKS:
        way = "synonym" if name in SYNONYMS else "option"
        by_name[SYNONYMS.get(name, name)].marks[way] = (mark, text)
    options += [Option(name, kind, default=default, low=low, high=high)
                for name, kind, default, low, high in ATTRIBUTES]
    return Table(options, rule, SYNONYMS, "indic", "!#")


# --- Texts at random

NAMES = ([row[0] for row in PLAIN] + [row[0] for row in ENUMERATIONS] + [row[0] for row in GROUPED] +
         [row[0] for row in IMMEDIATE] + list(SYNONYMS) + ["paths", "indic", "ste_lim", "ran_of", "step limit",
                                                           "range of", "STEP_LIMIT", "stepp_limm", "unknown", "mix"])
VALUES = ["5", "0", "-5", "101", "1e2", "2.5", "2.5e1", "1e-7", "1d-3", "$1F", "0x1f", "$", "0x", "08", "maxint", "MinInt",
          "maxdouble", "mindouble", "eps", "1e300", "1e999", "-1e-400", ".", "-.", ".5", "5.", ".e5", "+7", "- 7",
          "2147483648", "-2147483649", "99999999999999999999", "123456789.123456789", "1e15", "0.00001", "0.0001",
          "yes", "No", "T", "off", "perhaps", "auto", "AUTO", "primal_simplex", "two words", '"two words"', '"', '""',
          '"a', 'a"b', '"a" b', '"a"b"', '"ab"c" d"', "a b", "a,b", "'x y'", "*", "* 5", "5 *", "a:b", "5:0.5",
          "5:0.5:7", ":", "5:", ":0.5", " 5 : 0.5", "a:1:y", "::", "run.log", "x!y", "x #y", "1 2", "1, 2", "\t5", "-7",
          "1", "nan", "inf", "1e", "1e+", "1.5.5"]
LINES = ["x.scale 2", "x.scale('a',*) := 2.5", 'y.scale[ "feb" , \'low tide\' ] 0.5', "x.scale(jan) 2", "x.scale('jan') -1",
         "x.weight 2", "x. 5", "x.prior(1) 2", "x.onoff{'a'} yes", "x.onoff maybe", "x.scale('a'] 1", "x.scale",
         "x.prior 5 y.prior 6", "x.scale('a b ",
         "indic eq(i,'oslo')$open(i) = yes", "indic meet$close no", "indic late(i)$open(j) yes", "indic early open yes",
         "indic never$open perhaps", "indic e(*)$v 1", "indic e(i $v 1", "indic $v 1", "indic e$v", "-indic a$b 1",
         "--note first try", "--note \"a b\"", "--n_b 5", "//x = 5", "-/x 5", "linewise no", "linewise yes",
         "linewise perhaps", "nobounds yes", "nobounds no", "say_this hello", "say_this \"two words\"", "say_this",
         "* comment", "! comment", " # comment", "", "  ", "verbose", "verbose extra", "steps", "steps 5", "maybe",
         "range_of 1 50", "range_of * 60", "span_two 3", "step_limit:=5", "tolerance, 0.1", "steplimt = 5", ",", "5",
         "\x1a", "\xe4\xb6", "step_limit 5 tolerance 0.5, flag yes", "=", "\r", "step_limit\r",
         "both 5:0.5", "both = 20:2", "both 5:0.5:7", "mixed_in a:1:y", "mixed_in x::no", "fast_mode 1", "fast_mode no",
         "span_two 3 5", "span_two -10 11", "pair_text 'a' b", "method auto", "method two words", "level -7", "level 5",
         "tolerance 2", "step_limit 101", "flag on", "huge 5", "paths /one two", "logname a ! b", "stplim 7",
         "x.scale(" + ",".join(["*"] * 20) + ") 2", "x.scale(" + ",".join(["'a'"] * 21) + ") 2",
         "indic e(" + ",".join("abcdefghijklmnopqrstu") + ")$v(a) 1", "indic e(i)$v(" + ",".join("i" * 21) + ") 1",
         "x" * 64 + ".scale 2", "indic " + "e" * 64 + "$v 1", "indic e$" + "v" * 64 + " 1",
         "indic e('" + "a" * 64 + "')$v('" + "b" * 64 + "') yes"]
SEPARATORS = [" ", " ", " ", "=", " = ", " := ", ":=", "\t", "  ", " : ", ",", "", "=="]
LETTERS = "abcdefgilmnoprstuvxyz_ABXE0123456789 \t=:,.\"'*-/!#$()[]{}\x1a\x80\xe4+\r"


def word(rng):
    name = rng.choice(NAMES)
    return name.replace("_", " ") if rng.random() < 0.15 else name


def entry(rng):
    if rng.random() < 0.4:
        return rng.choice(LINES)
    dashes = rng.choice(["", "", "", "", "", "-", "--", "/"])
    text = dashes + word(rng) + rng.choice(SEPARATORS) + rng.choice(VALUES)
    return text + rng.choice(["", "", "", " ! note", ", " + rng.choice(VALUES), " " + rng.choice(VALUES)])


def changed(rng, text):
    """A letter taken out, put in or repeated; now and then very often."""
    at = rng.randrange(len(text) + 1)
    way = rng.random()
    if way < 0.35:
        return text[:at] + rng.choice(LETTERS) + text[at:]
    if way < 0.7:
        return text[:at] + text[at + 1:]
    if way < 0.97:
        return text[:at] + rng.choice(VALUES) + text[at:]
    return text[:at] + text[at:at + rng.randrange(1, 4)] * rng.randrange(60, 700) + text[at:]


def text_of(rng):
    lines = []
    for _ in range(rng.randrange(1, 6)):
        line = entry(rng)
        while rng.random() < 0.25:
            line += rng.choice([" ", ", "]) + entry(rng)
        while rng.random() < 0.3:
            line = changed(rng, line)
        lines.append(line)
    return "\n".join(lines) + rng.choice(["", "\n"])


# --- The library

class Text(ctypes.Structure):
    _fields_ = [("bytes", ctypes.c_void_p), ("size", ctypes.c_size_t)]


class Library:
    """A handle of the library for each text."""

    def __init__(self):
        self.functions = ctypes.CDLL(str(built("liboptxv.so")))
        self.definitions = {rule: definition(rule).encode("latin-1") for rule in RULES}
        self.buffers = [ctypes.create_string_buffer(256) for _ in range(2)]
        self.integers = [ctypes.c_int32() for _ in range(6)]
        self.real = ctypes.c_double()

    def read(self, rule, text, linewise, nobounds, asline):
        call, size, handle = self.functions, ctypes.c_size_t, ctypes.c_void_p()
        call.optxv_create(ctypes.byref(handle))
        content = self.definitions[rule]
        call.optxv_read_definition_text(handle, b"d", content, size(len(content)))
        if (faults := call.optxv_message_count(handle)) > 0:
            raise SystemExit(f"the definition has {faults} messages: {self.messages(handle)}")
        call.opteolonlyset(handle, int(linewise))
        call.optnoboundsset(handle, int(nobounds))
        content = text.encode("latin-1")
        if asline:
            call.optxv_read_line(handle, content, size(len(content)))
        else:
            call.optxv_read_parameter_text(handle, b"text", content, size(len(content)))
        result = self.messages(handle), self.values(handle), self.dots(handle), self.indicators(handle)
        call.optxv_free(ctypes.byref(handle))
        return result

    def messages(self, handle):
        text, kind = self.buffers[0], self.integers[0]
        all_of_them = []
        for number in range(1, self.functions.optxv_message_count(handle) + 1):
            self.functions.coptgetmessage(handle, number, text, ctypes.byref(kind))
            all_of_them.append((kind.value, text.value.decode("latin-1")))
        return all_of_them

    def values(self, handle):
        call, integers = self.functions, self.integers
        pointers = [ctypes.byref(each) for each in integers]
        all_of_them = {}
        for number in range(1, call.optcount(handle) + 1):
            call.optgetinfonr(handle, number, *pointers)
            defined, data, kind = integers[0].value, integers[3].value, integers[4].value
            if defined == 0:
                continue
            call.coptgetnamenr(handle, number, self.buffers[0])
            values = self.items(handle, number) if kind == 7 else self.scalars(handle, number, data, defined)
            all_of_them[number, self.buffers[0].value.decode("latin-1")] = values
        return all_of_them

    def scalars(self, handle, number, data, defined):
        call, text = self.functions, self.buffers[1]
        found = []
        for which, ending in ((1, ""), (2, "2")):
            if not defined & which:
                found.append(None)
            elif data == 1:
                getattr(call, f"optgetint{ending}nr")(handle, number, ctypes.byref(self.integers[5]))
                found.append(self.integers[5].value)
            elif data == 2:
                getattr(call, f"optgetdbl{ending}nr")(handle, number, ctypes.byref(self.real))
                found.append(self.real.value.hex())
            else:
                getattr(call, f"coptgetstr{ending}nr")(handle, number, text)
                found.append(text.value.decode("latin-1"))
        return found

    def items(self, handle, number):
        text, found = Text(), []
        for position in range(1, self.functions.optxv_list_count(handle, number) + 1):
            self.functions.optxv_list_item(handle, number, position, ctypes.byref(text))
            found.append(ctypes.string_at(text.bytes, text.size).decode("latin-1"))
        return found

    def dots(self, handle):
        call, (name, label), integers = self.functions, self.buffers, self.integers
        count, found = call.optdotoptcount(handle, ctypes.byref(integers[0])), []
        for number in range(1, count + 1):
            call.coptgetdotoptnr(handle, number, name, ctypes.byref(integers[1]), ctypes.byref(integers[2]),
                                 ctypes.byref(self.real))
            symbol, value, labels = name.value.decode("latin-1"), self.real.value.hex(), []
            for position in range(1, integers[2].value + 1):
                call.coptgetdotoptuel(handle, number, position, label)
                labels.append(label.value.decode("latin-1"))
            call.coptgetnamenr(handle, integers[1].value, label)
            found.append((symbol, label.value.decode("latin-1"), labels, value))
        return integers[0].value, found

    def indicators(self, handle):
        call, buffers, integers = self.functions, self.buffers, self.integers
        count, found = call.optindicatorcount(handle, ctypes.byref(integers[0])), []
        for number in range(1, count + 1):
            call.coptgetindicatornr(handle, number, *buffers, *[ctypes.byref(each) for each in integers[1:4]])
            names, labels = [each.value.decode("latin-1") for each in buffers], [[], []]
            for side, getter in enumerate((call.coptgetequindicatornr, call.coptgetvarindicatornr)):
                for position in range(1, integers[1 + side].value + 1):
                    getter(handle, number, position, buffers[0])
                    labels[side].append(buffers[0].value.decode("latin-1"))
            found.append((names[0], labels[0], names[1], labels[1], bool(integers[3].value)))
        return integers[0].value, found


# --- The comparison

def plain_values(options, rule):
    found = {}
    for number, each in enumerate(options, 1):
        name = each.name.replace("_", " ") if rule == "Minos" else each.name
        if each.kind == "list":
            if each.list:
                found[number, name] = each.list
        elif each.values != [None, None]:
            found[number, name] = [value.hex() if isinstance(value, float) else value for value in each.values]
    return found


def plainly(rule, text, linewise, nobounds, asline):
    """What the plain reader makes of it."""
    reader = table(rule)
    reader.nobounds = nobounds
    if asline:
        reader.read_line(text, linewise)
    else:
        reader.read_text("text", text, linewise)
    dots = [(symbol, name.replace("_", " ") if rule == "Minos" else name, labels, value.hex())
            for symbol, name, labels, value in reader.dots]
    return (reader.told(), plain_values(reader.options, rule), (reader.dropped_dots, dots),
            (reader.dropped_indicators, reader.indicators))


def compared(task):
    """Compares a row of texts; gives how many, and what differs first."""
    seed, count = task
    rng, library, tried = random.Random(seed), Library(), 0
    while tried < count:
        rule = rng.choice(RULES)
        text = text_of(rng)
        if "hel" in text.lower():  # help is not covered
            continue
        tried += 1
        case = rule, text, rng.random() < 0.5, rng.random() < 0.2, rng.random() < 0.2
        one, two = library.read(*case), plainly(*case)
        if one != two:
            return tried, (case, [pair for pair in zip(one, two) if pair[0] != pair[1]])
    return tried, None


def texts(count, seed):
    tasks = [(seed * 1_000_003 + number, min(CHUNK, count - number * CHUNK)) for number in range(-(-count // CHUNK))]
    tried = 0
    with multiprocessing.Pool(os.cpu_count()) as pool:
        for number, difference in pool.imap_unordered(compared, tasks):
            tried += number
            if difference:
                pool.terminate()
                return tried, difference
    return tried, None


def main():
    words = argparse.ArgumentParser()
    words.add_argument("--sample", action="store_true")
    words.add_argument("--texts", type=int)
    words.add_argument("--seed", type=int, default=1)
    given = words.parse_args()
    build("optxv", "numbers_prove")
    numbers = SAMPLE_NUMBERS if given.sample else NUMBERS
    done = subprocess.run([built("numbers_prove"), str(numbers), str(given.seed)], capture_output=True, text=True,
                          check=False)
    print(done.stdout, end="", flush=True)
    tried, difference = texts(given.texts or (SAMPLE_TEXTS if given.sample else TEXTS), given.seed)
    if difference:
        case, pairs = difference
        print("the readers differ for", case)
        for one, two in pairs:
            print("  the library:     ", one)
            print("  the plain reader:", two)
    faults = int(done.returncode != 0) + int(difference is not None)
    print(f"differential: {numbers:,} texts of numbers, {tried:,} of parameters, {faults} differences")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
