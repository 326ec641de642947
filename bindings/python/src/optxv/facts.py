"""Plain facts: options, messages and the rest, as dataclasses that do not change and outlive the options."""
from __future__ import annotations

import dataclasses
import enum
from typing import Any, Optional, Union

Scalar = Union[int, float, str]  # a bool is an int
Value = Union[Scalar, tuple[Any, Any], list[str]]


class Kind(enum.IntEnum):
    """The kinds of option."""

    INTEGER = 0
    REAL = 1
    TEXT = 2
    BOOLEAN = 3
    ENUMERATED_TEXT = 4
    ENUMERATED_INTEGER = 5
    MULTILIST = 6  # hands its values on to its members, one each
    LIST = 7  # of texts
    MACRO = 8  # hands its value on to all its members
    IMMEDIATE = 9  # acts when it is read


class Takes(enum.IntEnum):
    """How many values an option takes in parameter text."""

    ONE = 0
    NONE = 1
    OPTIONAL = 2
    TWO = 3


class Said(enum.IntEnum):
    """The kinds of message."""

    ECHO = 0
    HELP = 1
    DEFINITION_ERROR = 2
    VALUE_ERROR = 3
    VALUE_WARNING = 4
    DEPRECATED = 5
    FILE_ENTER = 6
    FILE_LEAVE = 7
    QUEUE_FULL = 8
    ERROR = 9


class Road(enum.IntEnum):
    """The road by which an option got its value."""

    NONE = 0
    ENTRY = 1  # an entry that names it
    MACRO = 2
    LIST = 3  # a multi-list handed it on
    DOT = 4
    CALL = 5  # the program set it


class Switch(enum.IntEnum):
    """The switches of the readers."""

    LINE_MODE = 0  # one option a line; on at first
    NO_BOUNDS = 1  # values out of bounds are taken, with a warning
    ECHO = 2  # lines that are read become messages
    RECENT = 3  # setting an option marks it as recently set; on at first
    PRINT = 4  # help prints its table for debugging on standard output; on at first


@dataclasses.dataclass(frozen=True, slots=True)
class Place:
    """A piece of text in its source. Lines and columns count from 1; columns and length are in bytes of the line."""

    file: str
    line: int
    column: int
    length: int

    def __str__(self) -> str:
        return f'{self.file}:{self.line}:{self.column}'


@dataclasses.dataclass(frozen=True, slots=True)
class Message:
    """One message of the queue. str() gives the line that is shown to people."""

    kind: Said
    text: str  # without the words for its kind and without its line number
    shown: str  # with them
    fault: Optional[str]  # the cause by name, such as 'unknown-option'; None if it tells of no fault
    detail: bool  # it adds to the message before it
    option: Optional[str]  # the option that it is about
    about: str  # the name, key or file that it is about
    seen: str  # what was found where something else was expected
    place: Optional[Place]  # where the fault is
    nearest: tuple[str, ...]  # what may have been meant, the nearest first

    def __str__(self) -> str:
        return self.shown


@dataclasses.dataclass(frozen=True, slots=True)
class Choice:
    """An allowed value of an enumeration."""

    value: Union[int, str]
    help: str
    helpcontext: int


@dataclasses.dataclass(frozen=True, slots=True)
class Option:
    """One option of the table, as it was when it was asked for."""

    number: int  # from 1, its position in the table
    name: str
    kind: Kind
    takes: Takes
    default: Optional[Value]  # None if it has no value of its own
    low: Union[int, float, None]  # bounds of a number; None elsewhere
    high: Union[int, float, None]
    choices: tuple[Choice, ...]  # of an enumeration
    members: tuple[str, ...]  # of a macro or multi-list: the names of the options that get its values
    help: str
    long_help: tuple[str, ...]  # lines
    reference: int  # the program's own number
    group: int
    helpcontext: int  # below 0 for an option that help does not list
    deprecated: bool
    obsolete: bool
    marked_text: str  # what the definition says of a deprecated or obsolete name
    runtime: bool  # a list that parameter text has made
    is_set: bool
    recently_set: bool

    @property
    def has_value(self) -> bool:
        """Whether it has a value of its own. Macros, multi-lists and instructions to the reader have none."""
        return self.default is not None

    @property
    def is_attribute(self) -> bool:
        """Whether it is an attribute of the model's symbols, as in x.scale('a') = 2."""
        return self.name.startswith('.')


@dataclasses.dataclass(frozen=True, slots=True)
class Group:
    """A group of options."""

    number: int  # as in the definition; two groups may have the same
    name: str
    help: str
    helpcontext: int


@dataclasses.dataclass(frozen=True, slots=True)
class Synonym:
    """A second name of an option."""

    name: str
    option: Optional[str]  # None if the definition names one that is not there
    deprecated: bool
    obsolete: bool
    marked_text: str


@dataclasses.dataclass(frozen=True, slots=True)
class DotOption:
    """A value of an attribute of a symbol: x.scale('a', *) = 2."""

    symbol: str
    attribute: str  # the option, with its dot
    labels: tuple[str, ...]  # without quotes, or *
    value: float


@dataclasses.dataclass(frozen=True, slots=True)
class Indicator:
    """A tie between an equation and a variable. Quoted labels keep their quotes."""

    equation: str
    equation_labels: tuple[str, ...]
    variable: str
    variable_labels: tuple[str, ...]
    mark: bool


@dataclasses.dataclass(frozen=True, slots=True)
class Origin:
    """Where an option got its value."""

    road: Road
    place: Optional[Place]  # None for a value that the program set
    through: Optional[str]  # the macro or multi-list that handed it on
