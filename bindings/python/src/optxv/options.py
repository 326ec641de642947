"""Options: a set of options with their values, as a mapping."""
from __future__ import annotations

import argparse
import contextlib
import ctypes
import os
import sys
from collections.abc import Iterable, Iterator, MutableMapping
from typing import Any, Callable, NoReturn, Optional, SupportsIndex, TypeVar, Union

from . import _table
from ._handle import Handle, filename
from ._library import Taker, decoded, encoded, terminated
from ._snapshot import Snapshot
from ._values import Slot
from .arguments import add_arguments
from .errors import DefinitionError, OptxvError, UnknownOptionError, WrongTypeError
from .facts import DotOption, Group, Indicator, Message, Option, Origin, Switch, Synonym

Name = Union[str, int]  # of an option; or its number, from 1
Fact = TypeVar('Fact')
KEEP_UNKNOWN = 1


class Options(MutableMapping[str, Any]):
    """The options of a definition, and their values.

    A mapping from names to values: the keys are the names of all options that have a value of their own, in the order
    of the definition; the value of an option that is not set is its default; `del` takes an option back to that.
    A name is that of the definition, or is looked up as in parameter text: synonyms count, and case does not.

    Values have the type of their option: int, float, str, bool; a tuple of two for an option of two values; a list of
    str for a list of texts. Where a tuple is set, None keeps what is there. Macros and multi-lists have no value of
    their own and are no keys, but can be set: they hand on what they get.

    Text is UTF-8. Bytes of the user's that are not become lone surrogates (the error handler `surrogateescape`), and
    the same bytes again when they go back.

    Threads: an Options may be used by any thread, but by one at a time; different ones are free of each other.

    What the program does wrong is an exception, a subclass of OptxvError. What a user wrote wrongly is a message in
    the queue, and never stops a read.
    """

    def __init__(self, definition: Union[str, os.PathLike[str]], *, strict: bool = True) -> None:
        """Reads a definition file.

        definition: its path. strict: whether errors in it are an exception; else they are messages.
        Errors: MissingFileError, FileError; DefinitionError if it has errors; LibraryError if the shared library
        cannot be loaded.
        """
        self._open(os.fspath(definition))
        self._define(lambda: self._handle.must_file('optxv_read_definition', definition), strict)

    @classmethod
    def from_text(cls, text: Union[str, bytes], name: str = 'definition', *, strict: bool = True) -> Options:
        """The options of a definition in memory. name: what messages call it. Errors: as of a file."""
        options = cls.__new__(cls)
        options._open(name)
        content = encoded(text)
        options._define(lambda: options._handle.must(
            'optxv_read_definition_text', terminated(encoded(name)), content, len(content)), strict)
        return options

    def _open(self, name: str) -> None:
        self._source = name
        self._slots: list[Slot] = []
        self._found: dict[str, Slot] = {}
        self._handle = Handle()

    def _define(self, read: Callable[[], None], strict: bool) -> None:
        try:
            read()
            errors = [message for message in self.messages if not message.detail] if self.errors else []
            if strict and errors:
                raise DefinitionError(f'the definition {self._source} has errors:\n' + '\n'.join(map(str, errors)),
                                      tuple(self.messages))
        except BaseException:
            self.close()
            raise
        self._grow()

    # ---- Life

    def close(self) -> None:
        """Frees the options. May be called again; every other use of them is a ClosedError then."""
        self._handle.close()

    def __enter__(self) -> Options:
        self._handle.open()
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __repr__(self) -> str:
        if self._handle.address is None:
            return f'<optxv.Options of {self._source}, closed>'
        return f'<optxv.Options of {self._source}: {len(self)} options, {len(self.to_dict())} set>'

    def __reduce_ex__(self, protocol: SupportsIndex) -> NoReturn:
        raise WrongTypeError('Options cannot be pickled or copied, since they live in the library: '
                             'to_dict() gives the values, and update() takes them')

    # ---- The mapping

    def _grow(self) -> None:
        """Takes in the options that the table has gained, which are lists that parameter text made."""
        count = self._handle.call('optxv_option_count')
        if count != len(self._slots):
            self._slots += [Slot(self._handle, number) for number in range(len(self._slots) + 1, count + 1)]
            self._found = {slot.name: slot for slot in reversed(self._slots)}  # of two alike, the first

    def _slot(self, name: Name) -> Slot:
        """The option of that name or number."""
        if not isinstance(name, int):
            return self._named(name)
        if 1 <= name <= len(self._slots):
            return self._slots[name - 1]
        self._handle.open()
        raise UnknownOptionError(f'there is no option number {name}: they are 1 to {len(self._slots)}', str(name))

    def _named(self, name: str) -> Slot:
        """The option of that name: one of the definition's, or what it finds in parameter text."""
        return self._found.get(name) or self._find(name)

    def _find(self, name: str) -> Slot:
        if not isinstance(name, str):
            raise WrongTypeError(f'the name of an option is a str, not {name!r}')
        number = self._number(name)
        if number == 0:
            raise self._unknown(name)
        slot = self._found[name] = self._slots[number - 1]
        return slot

    def _number(self, key: str) -> int:
        """The number of the option that a key in parameter text finds, or 0."""
        number, text = ctypes.c_int32(), encoded(key)
        status = self._handle.call('optxv_find', text, len(text), ctypes.byref(number))
        return number.value if status == 0 else 0

    def _unknown(self, name: str) -> UnknownOptionError:
        nearest = self._handle.nearest(name)
        meant = f'; did you mean {" or ".join(nearest)}?' if nearest else ''
        return UnknownOptionError(f'there is no option "{name}"{meant}', name, nearest)

    def _keys(self) -> list[Slot]:
        self._handle.open()
        return [slot for slot in self._slots if slot.has_value() and self._found[slot.name] is slot]

    def __getitem__(self, name: str) -> Any:
        """The value of an option, its default if it is not set.

        Errors: UnknownOptionError (a KeyError) with the nearest names; WrongTypeError (a TypeError) for a macro, a
        multi-list and an instruction to the reader, which have no value.
        """
        return (self._found.get(name) or self._find(name)).get()

    def __setitem__(self, name: str, value: Any) -> None:
        """Sets an option.

        Errors: UnknownOptionError; WrongTypeError for a value of another type; RefusedValueError (a ValueError) for
        one that is not allowed, and then the option keeps what it had. What the library said of it is in messages.
        """
        self._named(name).set(value)

    def __delitem__(self, name: str) -> None:
        """Unsets an option: it has its default, and lists are empty. Errors: as of getting."""
        slot = self._named(name)
        if not slot.has_value():
            slot.get()
        self._handle.must('optxv_reset', slot.number)

    def __iter__(self) -> Iterator[str]:
        return iter([slot.name for slot in self._keys()])

    def __len__(self) -> int:
        return len(self._keys())

    def __contains__(self, name: object) -> bool:
        """Whether an option of that name or synonym has a value to get."""
        try:
            self._handle.open()
            return isinstance(name, str) and self._slot(name).has_value()
        except UnknownOptionError:
            return False

    def clear(self) -> None:
        """Unsets all options; also empties the messages, dot options and indicators."""
        self._handle.must('optxv_reset_all')

    def popitem(self) -> NoReturn:
        """Not to be had: no option ever leaves the table. A WrongTypeError."""
        raise WrongTypeError('options stay in their table: del unsets one, clear() all')

    # ---- Values, for code that knows numbers

    def get_value(self, name: Name) -> Any:
        """The value of the option of that name or number, as o[name] gives it."""
        return self._slot(name).get()

    def set_value(self, name: Name, value: Any) -> None:
        """Sets the option of that name or number, as o[name] = value does."""
        self._slot(name).set(value)

    def show_value(self, name: Name, which: int = 1) -> str:
        """The value as text; empty for a list or an option without a value. which: 1 or 2, of two values."""
        return self._handle.shown('optxv_show_value', self._slot(name).number, which)

    def parse_value(self, name: Name, text: str, which: int = 1) -> None:
        """Sets an option from a text, as parameter text would; a list gets one more item. Errors: as of setting."""
        self._slot(name).parse(text, which)

    def is_set(self, name: Name) -> bool:
        """Whether an option has been set, by whatever road. One without a value of its own never is."""
        return bool(_table.info_of(self._handle, self._slot(name).number).defined)

    def lookup(self, key: str) -> Optional[str]:
        """The name of the option that a key in parameter text finds, by the definition's rule; None if there is none."""
        number = self._number(key)
        return self._slots[number - 1].name if number else None

    def number(self, name: str) -> int:
        """The number of an option, from 1. Errors: UnknownOptionError."""
        return self._slot(name).number

    def origin(self, name: Name) -> Optional[Origin]:
        """Where an option got its value; None if it is not set."""
        return _table.origin_of(self._handle, self._slot(name).number)

    def to_dict(self, *, defaults: bool = False) -> dict[str, Any]:
        """The values by name: of the options that are set; or with `defaults` of all that have a value."""
        return {slot.name: slot.get() for slot in self._keys() if defaults or self.is_set(slot.number)}

    # ---- Reading

    def read(self, path: Union[str, os.PathLike[str]]) -> list[Message]:
        """Reads a parameter file. Gives the messages that this added; faults of the user's are among them.

        Errors: MissingFileError, FileError; the queue has messages of these too.
        """
        return self._read(lambda: self._handle.must_file('optxv_read_parameters', path))

    def read_text(self, text: Union[str, bytes], name: str = 'text') -> list[Message]:
        """Reads parameter text from memory, as a file of that name. Only files that the text names are opened."""
        content = encoded(text)
        return self._read(lambda: self._handle.must(
            'optxv_read_parameter_text', terminated(encoded(name)), content, len(content)))

    def read_arguments(self, arguments: Optional[Iterable[str]] = None, *, keep_unknown: bool = False) -> list[str]:
        """Takes options from a command line: --name=value, --name value, name=value; -- ends them.

        arguments: as in sys.argv[1:], which is used where there are none. keep_unknown: whether arguments whose name
        no option has are left, without a message. Gives those that are left. Messages and places name an argument by
        its number, from 1.
        """
        words = [terminated(os.fsencode(word)) for word in (sys.argv[1:] if arguments is None else arguments)]
        count = ctypes.c_int(len(words) + 1)
        array = (ctypes.c_char_p * (len(words) + 2))(b'', *words)
        self._read(lambda: self._handle.must('optxv_read_arguments', ctypes.byref(count), array,
                                             KEEP_UNKNOWN if keep_unknown else 0))
        return [os.fsdecode(array[i] or b'') for i in range(1, count.value)]

    def read_environment(self, prefix: str) -> list[Message]:
        """Reads options from the environment: SOLVER_TIME_LIMIT=5 with the prefix "SOLVER_" sets time_limit.

        prefix: not empty; its case counts. Gives the messages that this added.
        """
        if not prefix:
            raise ValueError('a prefix of variables is not empty')
        return self._read(lambda: self._handle.must('optxv_read_environment', terminated(encoded(prefix))))

    def _read(self, read: Callable[[], None]) -> list[Message]:
        before = self._handle.call('optxv_message_count')
        try:
            read()
        finally:
            self._grow()
        return _table.messages_of(self._handle, before + 1)

    def switch(self, which: Switch, on: bool) -> bool:
        """Sets a switch of the readers. Gives what it was."""
        return bool(self._handle.call('optxv_switch', Switch(which), int(on)))

    def add_arguments(self, parser: argparse.ArgumentParser, *, prefix: str = '') -> None:
        """Adds an argument to a parser of argparse for each option, with its type, help, choices and default.

        Only what was given is set, and is in the parser's result. prefix: stands before the names, as in
        --solver-time_limit for "solver-". Errors: argparse.ArgumentError if the parser has a name already.
        """
        add_arguments(self, parser, prefix)

    # ---- Writing

    def write(self, path: Union[str, os.PathLike[str]]) -> None:
        """Writes what is set as parameter text, to a file of which a reader sees all or nothing. Errors: FileError."""
        self._handle.must_file('optxv_write_parameters', path)

    def to_text(self) -> str:
        """What write() would write."""
        taken: list[bytes] = []

        def take(_: object, text: Optional[int], size: int) -> int:
            taken.append(ctypes.string_at(text, size) if text else b'')
            return 0

        self._handle.must('optxv_write_parameter_text', Taker(take), None)
        return decoded(taken[0])

    # ---- Snapshots

    def snapshot(self) -> Snapshot:
        """All values as they are now, to go back to."""
        return Snapshot(self._handle)

    @contextlib.contextmanager
    def trial(self) -> Iterator[Options]:
        """A block after which all values are again what they were before it."""
        with Snapshot(self._handle) as before:
            try:
                yield self
            finally:
                if self._handle.address is not None:
                    before.restore()

    # ---- Messages

    @property
    def messages(self) -> list[Message]:
        """The queue of messages, the oldest first."""
        return _table.messages_of(self._handle)

    @property
    def errors(self) -> int:
        """How many errors are in the queue; one that a second message explains counts 2."""
        return self._counts()[0]

    @property
    def warnings(self) -> int:
        """How many warnings are in the queue."""
        return self._counts()[1]

    def _counts(self) -> tuple[int, int]:
        errors, warnings = ctypes.c_int32(), ctypes.c_int32()
        self._handle.call('optxv_error_count', ctypes.byref(errors), ctypes.byref(warnings))
        return errors.value, warnings.value

    def add_message(self, text: str) -> None:
        """Adds an error of the program's own to the queue."""
        content = encoded(text)
        self._handle.must('optxv_add_message', content, len(content))

    def clear_messages(self) -> None:
        """Empties the queue."""
        self._handle.call('optxv_clear_messages')

    def show_help(self, request: str) -> list[Message]:
        """Adds lines of help to the queue, and gives them. request: the name of an option or a group, for one."""
        return self._read(lambda: self._handle.must('optxv_show_help', terminated(encoded(request))))

    # ---- The table

    def describe(self, name: Name) -> Option:
        """All that the table tells of an option. Errors: UnknownOptionError."""
        return _table.option_of(self._handle, self._slot(name).number)

    def nearest(self, name: str) -> tuple[str, ...]:
        """The names nearest to one that no option has: at most three, the nearest first."""
        return self._handle.nearest(name)

    @property
    def options(self) -> list[Option]:
        """The whole table, in order: position 0 has option number 1."""
        self._handle.open()
        return [_table.option_of(self._handle, slot.number) for slot in self._slots]

    @property
    def groups(self) -> list[Group]:
        """The groups of options."""
        return self._facts('optxv_group_count', _table.group_of)

    @property
    def synonyms(self) -> list[Synonym]:
        """The second names of options."""
        return self._facts('optxv_synonym_count', _table.synonym_of)

    @property
    def dot_options(self) -> list[DotOption]:
        """The values of symbols' attributes, in the order in which they were read."""
        return self._facts('optxv_dot_option_count', _table.dot_option_of, None)

    @property
    def indicators(self) -> list[Indicator]:
        """The ties between equations and variables, in the order in which they were read."""
        return self._facts('optxv_indicator_count', _table.indicator_of, None)

    def _facts(self, counter: str, fact: Callable[[Handle, int], Fact], *more: object) -> list[Fact]:
        return [fact(self._handle, position) for position in range(1, self._handle.call(counter, *more) + 1)]

    @property
    def table_mark(self) -> int:
        """A number of 64 bits that stands for the names, kinds and order of the options; the same on every system."""
        return int(self._handle.call('optxv_table_mark'))
