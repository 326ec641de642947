"""Reads facts off a handle: options, groups, messages and the rest, as dataclasses."""
from __future__ import annotations

import ctypes
from typing import Any, Callable, Optional

from . import _library
from ._handle import UNKNOWN, Handle
from ._library import Text, decoded
from .facts import Choice, DotOption, Group, Indicator, Kind, Message, Option, Origin, Place, Road, Said, Synonym, Takes

DEPRECATED, OBSOLETE = 1, 2
ENUMERATIONS = (Kind.ENUMERATED_TEXT, Kind.ENUMERATED_INTEGER)
NUMBERS = (Kind.INTEGER, Kind.REAL)
# The member of the struct that has the default, by data type; none for kinds without a value.
DEFAULTS: dict[int, Callable[[_library.Option], Any]] = {
    0: lambda info: None,
    1: lambda info: bool(info.default_integer) if info.kind == Kind.BOOLEAN else info.default_integer,
    2: lambda info: info.default_real,
    3: lambda info: str(info.default_text),
    4: lambda info: [],
}


def name_of(handle: Handle, number: int) -> Optional[str]:
    """The name of an option; None for 0, and for a number that a record without success would have got."""
    info = _library.Option()
    status = handle.call('optxv_option_info', number, ctypes.byref(info)) if number > 0 else UNKNOWN
    return str(info.name) if status == 0 else None


def info_of(handle: Handle, number: int) -> _library.Option:
    info: _library.Option = handle.told('optxv_option_info', _library.Option, number)
    return info


def items_of(handle: Handle, number: int, count: int) -> list[_library.Item]:
    return [handle.told('optxv_item_info', _library.Item, number, position) for position in range(1, count + 1)]


def choices_of(handle: Handle, number: int, info: _library.Option) -> tuple[Choice, ...]:
    """The allowed values of an enumeration."""
    count = info.items if info.kind in ENUMERATIONS else 0
    return tuple(Choice(item.integer if info.kind == Kind.ENUMERATED_INTEGER else str(item.text), str(item.help),
                        item.helpcontext) for item in items_of(handle, number, count))


def members_of(handle: Handle, number: int, info: _library.Option) -> tuple[str, ...]:
    """The names of the members of a macro or multi-list."""
    count = info.items if info.kind in (Kind.MACRO, Kind.MULTILIST) else 0
    return tuple(str(item.text) for item in items_of(handle, number, count))


def default_of(info: _library.Option) -> Any:
    default = DEFAULTS[info.data](info)
    return (default, default) if info.takes == Takes.TWO and default is not None else default


def bounds_of(info: _library.Option) -> tuple[Any, Any]:
    if info.kind not in NUMBERS:
        return None, None
    return (info.low_integer, info.high_integer) if info.kind == Kind.INTEGER else (info.low_real, info.high_real)


def option_of(handle: Handle, number: int) -> Option:
    info = info_of(handle, number)
    low, high = bounds_of(info)
    lines = (handle.told('optxv_help_line', Text, number, line) for line in range(1, info.helplines + 1))
    return Option(
        number=number, name=str(info.name), kind=Kind(info.kind), takes=Takes(info.takes), default=default_of(info),
        low=low, high=high, choices=choices_of(handle, number, info), members=members_of(handle, number, info),
        help=str(info.help), long_help=tuple(map(str, lines)), reference=info.reference, group=info.group,
        helpcontext=info.helpcontext, deprecated=bool(info.marks & DEPRECATED), obsolete=bool(info.marks & OBSOLETE),
        marked_text=str(info.markedtext), runtime=bool(info.runtime), is_set=info.defined != 0,
        recently_set=info.recent != 0)


def group_of(handle: Handle, position: int) -> Group:
    info = handle.told('optxv_group_info', _library.Group, position)
    return Group(info.number, str(info.name), str(info.help), info.helpcontext)


def synonym_of(handle: Handle, position: int) -> Synonym:
    info = handle.told('optxv_synonym_info', _library.Synonym, position)
    return Synonym(str(info.name), name_of(handle, info.option), bool(info.marks & DEPRECATED),
                   bool(info.marks & OBSOLETE), str(info.markedtext))


def place_of(place: _library.Place) -> Optional[Place]:
    """A place of the library; None if there is none."""
    return Place(decoded(place.file), place.line, place.column, place.length) if place.line > 0 else None


def fault_name(handle: Handle, fault: int) -> Optional[str]:
    return decoded(handle.library.optxv_fault_name(fault)) if fault > 0 else None


def message_of(handle: Handle, number: int) -> Message:
    info = handle.told('optxv_message_info', _library.Message, number)
    return Message(
        kind=Said(info.kind), text=str(info.text), shown=handle.shown('optxv_show_message', number),
        fault=fault_name(handle, info.fault), detail=bool(info.detail), option=name_of(handle, info.option),
        about=str(info.about), seen=str(info.seen), place=place_of(info.place),
        nearest=handle.names('optxv_message_nearest', number))


def messages_of(handle: Handle, first: int = 1) -> list[Message]:
    """The messages of the queue, from number `first` on."""
    return [message_of(handle, number) for number in range(first, handle.call('optxv_message_count') + 1)]


def labels_of(handle: Handle, function: str, count: int, *entry: int) -> tuple[str, ...]:
    return tuple(str(handle.told(function, Text, *entry, index)) for index in range(1, count + 1))


def dot_option_of(handle: Handle, position: int) -> DotOption:
    info = handle.told('optxv_dot_option_info', _library.DotOption, position)
    return DotOption(str(info.symbol), name_of(handle, info.option) or '',
                     labels_of(handle, 'optxv_dot_option_label', info.labels, position), info.value)


def indicator_of(handle: Handle, position: int) -> Indicator:
    info = handle.told('optxv_indicator_info', _library.Indicator, position)
    return Indicator(str(info.equation), labels_of(handle, 'optxv_indicator_label', info.equation_labels, position, 1),
                     str(info.variable), labels_of(handle, 'optxv_indicator_label', info.variable_labels, position, 2),
                     bool(info.mark))


def origin_of(handle: Handle, number: int) -> Optional[Origin]:
    """Where an option got its value; None if it is not set."""
    place, road, through = _library.Place(), ctypes.c_int32(), ctypes.c_int32()
    if not handle.call('optxv_value_place', number, ctypes.byref(place), ctypes.byref(road), ctypes.byref(through)):
        return None
    return Origin(Road(road.value), place_of(place), name_of(handle, through.value))
