"""The built library as a Python class: what the runner of the documents and the test of the examples share.

OPTXV_LIBRARY names the shared library.
"""
import ctypes
import os

TEXT = 256
ENTER, LEAVE = 6, 7
STRLIST = 7
TWO_VALUES = 3


class Options:
    """One handle, freed by close(). Text is latin-1: bytes stay what they are."""

    def __init__(self):
        self.library = ctypes.CDLL(os.environ['OPTXV_LIBRARY'])
        self.handle = ctypes.c_void_p()
        self.library.xcreate(ctypes.byref(self.handle))

    def close(self):
        self.library.xfree(ctypes.byref(self.handle))

    def call(self, name, *arguments):
        return getattr(self.library, name)(self.handle, *(
            argument.encode('latin-1') if isinstance(argument, str) else argument for argument in arguments))

    def asked(self, name, *arguments, out):
        """The result of a function, and what it puts into its last arguments: i is an integer, d a double, t a text."""
        makers = {'i': ctypes.c_int32, 'd': ctypes.c_double, 't': lambda: ctypes.create_string_buffer(TEXT)}
        places = [makers[kind]() for kind in out]
        result = self.call(name, *arguments, *map(ctypes.byref, places))
        return [result] + [place.value.decode('latin-1') if kind == 't' else place.value for kind, place in zip(out, places)]

    def told(self, name, *arguments, out):
        return self.asked(name, *arguments, out=out)[1:]

    def define(self, path):
        return self.call('coptreaddefinition', str(path))

    def read(self, path):
        return self.call('coptreadparameterfile', str(path))

    def messages_with_kinds(self):
        """Takes the messages out of the queue, as pairs of text and kind."""
        found = [tuple(self.told('coptgetmessage', number, out='ti'))
                 for number in range(1, self.call('optmessagecount') + 1)]
        self.call('optclearmessages')
        return found

    def messages(self):
        return [text for text, _ in self.messages_with_kinds()]

    def find(self, name):
        """The name of the option that a key finds, or None."""
        found, number, _ = self.asked('coptfindstr', name, out='ii')
        return self.told('coptgethelpnr', number, out='tt')[0] if found == 1 else None

    def help(self, request):
        self.call('coptshowhelp', request)
        return self.messages()

    def values(self):
        """What is set, as lines `name = value`: options in the order of the table, dot options, indicators."""
        return [line for number in range(1, self.call('optcount') + 1) for line in self._option(number)] + [
            self._dot(entry) for entry in range(1, self.asked('optdotoptcount', out='i')[0] + 1)] + [
            self._indicator(entry) for entry in range(1, self.asked('optindicatorcount', out='i')[0] + 1)]

    def _option(self, number):
        defined, _, _, _, kind, subtype = self.told('optgetinfonr', number, out='iiiiii')
        name, = self.told('coptgetnamenr', number, out='t')
        if kind == STRLIST:
            return [f'{name}[{item}] = ' + self.told('coptreadfromliststr', name, item, out='t')[0]
                    for item in range(1, self.call('coptlistcountstr', name) + 1)]
        getters = ['coptgetstrnr', 'coptgetstr2nr'][:2 if subtype == TWO_VALUES else 1] if defined else []
        values = [self.told(getter, number, out='t')[0] for getter in getters]
        return [f'{name} = {" ".join(values)}'] if values else []

    def _labels(self, getter, entry, count):
        labels = [self.told(getter, entry, index, out='t')[0] for index in range(1, count + 1)]
        return f'({",".join(labels)})' if labels else ''

    def _dot(self, entry):
        symbol, number, dimension, value = self.told('coptgetdotoptnr', entry, out='tiid')
        suffix, = self.told('coptgetnamenr', number, out='t')
        return f'{symbol}{suffix}{self._labels("coptgetdotoptuel", entry, dimension)} = {value:g}'

    def _indicator(self, entry):
        equation, variable, *sizes, mark = self.told('coptgetindicatornr', entry, out='ttiii')
        rows, columns = map(self._labels, ('coptgetequindicatornr', 'coptgetvarindicatornr'), (entry, entry), sizes)
        return f'{equation}{rows}${variable}{columns} = {mark}'
