"""The built library as a Python class: what the runner of the documents and the test of the examples share.

OPTXV_LIBRARY names the shared library.
"""
import ctypes
import os

TEXT = 256
ENTER, LEAVE = 6, 7
STRLIST = 7
TWO_VALUES = 3


def load():
    return ctypes.CDLL(os.environ['OPTXV_LIBRARY'])


class Options:
    """One handle, freed by close(). Text is latin-1: bytes stay what they are."""

    def __init__(self, library):
        self.library = library
        self.handle = ctypes.c_void_p()
        library.xcreate(ctypes.byref(self.handle))

    def close(self):
        self.library.xfree(ctypes.byref(self.handle))

    def call(self, name, *arguments):
        return getattr(self.library, name)(self.handle, *(
            argument.encode('latin-1') if isinstance(argument, str) else argument for argument in arguments))

    def texts(self, name, *arguments, count=1):
        """Calls a function whose last arguments are out texts; gives its result and the texts."""
        out = [ctypes.create_string_buffer(TEXT) for _ in range(count)]
        result = self.call(name, *arguments, *out)
        return [result] + [text.value.decode('latin-1') for text in out]

    def define(self, path):
        return self.call('coptreaddefinition', str(path))

    def read(self, path):
        return self.call('coptreadparameterfile', str(path))

    def messages_with_kinds(self):
        """Takes the messages out of the queue, as pairs of text and kind."""
        found = []
        kind = ctypes.c_int32()
        text = ctypes.create_string_buffer(TEXT)
        for number in range(1, self.call('optmessagecount') + 1):
            self.call('coptgetmessage', number, text, ctypes.byref(kind))
            found.append((text.value.decode('latin-1'), kind.value))
        self.call('optclearmessages')
        return found

    def messages(self):
        return [text for text, _ in self.messages_with_kinds()]

    def counts(self):
        errors, warnings = ctypes.c_int32(), ctypes.c_int32()
        self.call('opterrorcount', ctypes.byref(errors), ctypes.byref(warnings))
        return errors.value, warnings.value

    def find(self, name):
        """The name of the option that a key finds, or None."""
        number, refnr = ctypes.c_int32(), ctypes.c_int32()
        if self.call('coptfindstr', name, ctypes.byref(number), ctypes.byref(refnr)) != 1:
            return None
        return self.texts('coptgethelpnr', number.value, count=2)[1]

    def help(self, request):
        self.call('coptshowhelp', request)
        return self.messages()

    def values(self):
        """What is set, as lines `name = value`: options in the order of the table, dot options, indicators."""
        lines = []
        for number in range(1, self.call('optcount') + 1):
            lines += self._option(number)
        return lines + self._dots() + self._indicators()

    def _option(self, number):
        info = [ctypes.c_int32() for _ in range(6)]
        self.call('optgetinfonr', number, *map(ctypes.byref, info))
        defined, _, _, _, kind, subtype = [field.value for field in info]
        name = self.texts('coptgetnamenr', number)[1]
        if kind == STRLIST:
            count = self.call('coptlistcountstr', name)
            return [f'{name}[{item}] = ' + self.texts('coptreadfromliststr', name, item)[1]
                    for item in range(1, count + 1)]
        if not defined:
            return []
        value = self.texts('coptgetstrnr', number)[1]
        if subtype == TWO_VALUES:
            value += ' ' + self.texts('coptgetstr2nr', number)[1]
        return [f'{name} = {value}']

    def _dots(self):
        lines, dropped = [], ctypes.c_int32()
        for entry in range(1, self.call('optdotoptcount', ctypes.byref(dropped)) + 1):
            symbol = ctypes.create_string_buffer(TEXT)
            number, dimension, value = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_double()
            self.call('coptgetdotoptnr', entry, symbol, *map(ctypes.byref, (number, dimension, value)))
            labels = [self.texts('coptgetdotoptuel', entry, index)[1] for index in range(1, dimension.value + 1)]
            lines.append(f'{symbol.value.decode("latin-1")}{self.texts("coptgetnamenr", number.value)[1]}'
                         f'{"(" + ",".join(labels) + ")" if labels else ""} = {value.value:g}')
        return lines

    def _indicators(self):
        lines, dropped = [], ctypes.c_int32()
        for entry in range(1, self.call('optindicatorcount', ctypes.byref(dropped)) + 1):
            names = [ctypes.create_string_buffer(TEXT) for _ in range(2)]
            sizes = [ctypes.c_int32() for _ in range(2)]
            mark = ctypes.c_int32()
            self.call('coptgetindicatornr', entry, *names, *map(ctypes.byref, sizes), ctypes.byref(mark))
            sides = []
            for name, size, side in zip(names, sizes, ('coptgetequindicatornr', 'coptgetvarindicatornr')):
                labels = [self.texts(side, entry, index)[1] for index in range(1, size.value + 1)]
                sides.append(name.value.decode('latin-1') + (f'({",".join(labels)})' if labels else ''))
            lines.append(f'{"$".join(sides)} = {mark.value}')
        return lines
