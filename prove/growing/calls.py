"""Calls of the library that need something prepared: each function makes it and gives the call that is timed."""
import ctypes
import sys

from growing.inputs import by_rule, groups, long_list, members, runtime_lists, table


class Library:
    def __init__(self, path):
        self.calls = ctypes.CDLL(path)
        self.handle = ctypes.c_void_p()

    def define(self, lines):
        if self.handle:
            self.calls.xfree(ctypes.byref(self.handle))
        self.calls.xcreate(ctypes.byref(self.handle))
        text = '\n'.join(lines).encode()
        self.calls.optxv_read_definition_text(self.handle, b'table', text, ctypes.c_size_t(len(text)))
        if self.calls.optmessagecount(self.handle) != 0:
            sys.exit('growth: faults in a definition')

    def read(self, lines):
        text = '\n'.join(lines).encode()
        self.calls.optxv_read_parameter_text(self.handle, b'values', text, ctypes.c_size_t(len(text)))


def reset_of_macros(library, n):
    """Macros, each the member of the next."""
    library.define(table(1) + ['all0 macro 1 1 All', ' option_000000'] +
                   [line for i in range(1, n) for line in (f'all{i} macro 1 1 All', f' all{i - 1}')])
    return lambda: library.calls.optresetall(library.handle)


def indicator(library, n):
    """One indicator with many identifiers."""
    library.define(['rowtype indicator'] + table(1))
    names = ','.join(f'i{i}' for i in range(n))
    text = f'rowtype equation({names})$variable({names}) 1'.encode()
    return lambda: library.calls.optreadfrompchar(library.handle, text)


def groups_by_number(library, n):
    """Definition of groups; each number must be new."""
    return lambda: library.define(groups(n)[0])


def members_of_list(library, n):
    """Definition of a list; each member must be new."""
    return lambda: library.define(members(n)[0])


def item_values(library, n):
    library.define(['method enumstr 1 item0 1 1 Method'] + [f' item{i} {i} An item' for i in range(n)])
    lines = [f'method item{i}' for i in range(n)]
    return lambda: library.read(lines)


def named(library, rule, n):
    library.define(by_rule(rule, n)[0])
    number, reference = ctypes.c_int32(), ctypes.c_int32()
    keys = [line[:-len(' = 7')].replace(' ', '_').encode() for line in by_rule(rule, n)[1]]

    def find():
        for key in keys:
            library.calls.coptfindstr(library.handle, key, ctypes.byref(number), ctypes.byref(reference))
        if number.value != n + 1:
            sys.exit(f'growth: no option has the name {keys[-1]}')
    return find


def path_lookups(library, n):
    return named(library, 'Path', n)


def minos_lookups(library, n):
    return named(library, 'Minos', n)


def drained(take, n):
    if sum(1 for _ in iter(take, 0)) != n:
        sys.exit('growth: a list gives another number of items than it has')


def drained_list(library, n):
    library.define(long_list(0)[0])
    library.read([f'words word{i}' for i in range(n)])
    text = ctypes.create_string_buffer(257)
    return lambda: drained(lambda: library.calls.coptgetfromliststr(library.handle, b'words', text), n)


def drained_lists(library, n):
    library.define(table(10))
    library.read(runtime_lists(n)[1])
    option, text = ctypes.create_string_buffer(257), ctypes.create_string_buffer(257)
    return lambda: drained(lambda: library.calls.coptgetfromanystrlist(library.handle, 1, option, text), n)


CALLS = (reset_of_macros, indicator, groups_by_number, members_of_list, item_values, path_lookups, minos_lookups,
         drained_list, drained_lists)
