"""Every function of the two C headers, called for each option, line or entry of a table that doubles.

The functions and their arguments are read from the headers' own tables: src/frame/api.def, where a row is a function,
and the declarations of include/optxv/embedding.h. A function that does something for one option is called for each of
them; one that does it for all is called once.
"""
import ctypes
import re
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
# What does its work for the whole table, or the queue of messages, in one call.
WHOLE = ('errorcount', 'error_count', 'resetall', 'resetallrecent', 'resetrecentchanges', 'reset_all',
         'clearmessages', 'clear_messages', 'showhelp', 'show_help', 'writeparameterfile', 'write_parameters')
# What other rows of the growth have, or what takes a function, a list of arguments or a place for a handle.
ELSEWHERE = ('readdefinition', 'readparameterfile', 'read_definition', 'read_parameters', 'read_definition_text',
             'read_parameter_text', 'create', 'free', 'listen', 'take_snapshot', 'restore_snapshot', 'free_snapshot',
             'write_parameter_text', 'read_arguments', 'nearest_names', 'message_nearest')


def mixed_table(n):
    """Options of all kinds, with synonyms that are marked, in groups of ten."""
    kinds = ['integer {0} 5 0 100 1 {1} An option', 'double {0} 5 0 100 1 {1} An option',
             'string {0} word 1 {1} An option', 'boolean {0} 1 1 {1} An option', 'strlist {0} 1 {1} An option',
             'enumint {0} 1 1 {1} An option']
    lines = [f'group{i} group {i} 1 A group' for i in range(1, n // 10 + 2)]
    for i in range(n):
        lines.append(f'option_{i} ' + kinds[i % len(kinds)].format(i + 1, i // 10 + 1))
        if i % len(kinds) == 5:
            lines += [' 1 1 The first', ' 2 1 The second']
        if i % 2:
            lines.append(f'other_{i} synonym option_{i}')
    lines += ['old deprecated'] + [f' other_{i} Say option_{i}' for i in range(1, n, 2)]
    return lines + ['.scale double 1 1 0 100 1 1 Scale', 'rowtype indicator']


def mixed_lines(n):
    """A value for each option, as many dot options and indicators, and some faults."""
    return ([f'option_{i} 1' for i in range(n)] + [f"x{i}.scale('a') 2" for i in range(n // 2)] +
            [f'rowtype e{i}$y{i} 1' for i in range(n // 2)] + [f'no_option_{i} 1' for i in range(n // 4)])


class Function:
    """One of them: its name, and the kinds of its arguments after the handle."""

    def __init__(self, name, kinds, once):
        self.name, self.kinds, self.once = name, kinds, once

    def arguments(self, i, scratch):
        """What it is called with for the option at place i: a number counts from 1, an entry is the first."""
        name, seen = b'/dev/null' if self.once else f'option_{i}'.encode(), 0
        for kind in self.kinds:
            if kind == 'integer':
                yield i + 1 if seen == 0 else 1
                seen += 1
            elif kind == 'real':
                yield ctypes.c_double(1)
            elif kind == 'text':
                yield name
            elif kind == 'size':
                yield ctypes.c_size_t(len(name))
            else:
                yield scratch[len(kind) % len(scratch)]


def rows_of_table():
    """The functions of api.def, under the names for zero-terminated text where there is one."""
    text = re.sub(r'//.*', '', (TREE / 'src/frame/api.def').read_text())
    for twin, row in re.findall(r'OPTXV_(TWIN|PLAIN)\(([^)]*)\)', text):
        name, kinds = [word.strip() for word in row.split(',')][1], [word.strip() for word in row.split(',')][3:]
        short = name.removeprefix('opt')
        if short not in ELSEWHERE:
            yield Function(('c' if twin == 'TWIN' else '') + name,
                           ['text' if kind == 'pchar' else kind for kind in kinds], short in WHOLE)


def kind_of(declared):
    """The kind of an argument of the second header."""
    if re.fullmatch(r'const char\*\s*\w+', declared):
        return 'text'
    if declared.startswith('size_t '):
        return 'size'
    if re.match(r'u?int(32|64)_t \w+$', declared):
        return 'integer'
    return 'real' if re.match(r'double \w+$', declared) else 'out' + declared


def declarations():
    """The functions of the second header that take a handle."""
    text = re.sub(r'/\*.*?\*/', '', (TREE / 'include/optxv/embedding.h').read_text(), flags=re.S)
    for name, row in re.findall(r'OPTXV_EMBEDDING_API\s+[\w\s*]*?\b(optxv_\w+)\(optxv_handle \w+,?([^()]*)\);', text):
        short = name.removeprefix('optxv_')
        if short not in ELSEWHERE:
            kinds = [kind_of(' '.join(each.split())) for each in row.split(',') if each.strip()]
            yield Function(name, kinds, short in WHOLE)


def prepared(function):
    """What makes the table and gives the call that is timed."""
    def prepare(library, n):
        library.define(mixed_table(n))
        library.read(mixed_lines(n))
        scratch = [ctypes.create_string_buffer(4096) for _ in range(3)]
        call, handle = getattr(library.calls, function.name), library.handle
        rows = [tuple(function.arguments(i, scratch)) for i in range(1 if function.once else n)]

        def run():
            for row in rows:
                call(handle, *row)
        return run
    prepare.__name__ = function.name
    return prepare


EVERYCALL = tuple(prepared(function) for found in (rows_of_table(), declarations()) for function in found)
