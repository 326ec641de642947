"""Values of Python to values of options and back, one way for each kind."""
from __future__ import annotations

import ctypes
import dataclasses
import operator
from typing import Any, Callable

from . import _table
from ._handle import REFUSED, TOO_LONG, Handle
from ._library import Text, encoded
from ._snapshot import whole
from .errors import RefusedValueError, WrongTypeError
from .facts import Kind, Takes

INTEGERS = range(-2**31, 2**31)


@dataclasses.dataclass(frozen=True, slots=True)
class Way:
    """How a scalar of one kind travels. `give` makes the last arguments of the setter, and raises a TypeError for what
    is no such value, a ValueError for one that is beyond the type's limits."""

    takes: str  # for messages: "an int"
    data: str  # as in the names of the functions
    place: Any  # the type of what the getter fills
    take: Callable[[Any], Any]
    give: Callable[[Any], tuple[Any, ...]]


def _integer(value: Any) -> tuple[int]:
    number = operator.index(value)
    if number not in INTEGERS:
        raise ValueError
    return (number,)


def _boolean(value: Any) -> tuple[int]:
    number = operator.index(value)
    if number not in (0, 1):
        raise ValueError
    return (number,)


def _real(value: Any) -> tuple[float]:
    if isinstance(value, (str, bytes)):
        raise TypeError
    return (float(value),)


def _text(value: Any) -> tuple[bytes, int]:
    if not isinstance(value, str):
        raise TypeError
    text = encoded(value)
    return text, len(text)


def _value(place: Any) -> Any:
    return place.value


def _truth(place: Any) -> bool:
    return bool(place.value)


WAYS = {
    Kind.INTEGER: Way('an int', 'integer', ctypes.c_int32, _value, _integer),
    Kind.REAL: Way('a float', 'real', ctypes.c_double, _value, _real),
    Kind.TEXT: Way('a str', 'text', Text, str, _text),
    Kind.BOOLEAN: Way('a bool', 'integer', ctypes.c_int32, _truth, _boolean),
    Kind.ENUMERATED_TEXT: Way('a str', 'text', Text, str, _text),
    Kind.ENUMERATED_INTEGER: Way('an int', 'integer', ctypes.c_int32, _value, _integer),
}


def shortened(value: Any) -> str:
    text = repr(value)
    return text if len(text) <= 60 else text[:57] + '...'


class Slot:
    """One option and how its value is got and set. Belongs to a handle, and is good as long as that is open."""

    __slots__ = ('handle', 'number', 'name', 'kind', 'is_pair', 'getter', 'way')

    def __init__(self, handle: Handle, number: int) -> None:
        info = _table.info_of(handle, number)
        self.handle = handle
        self.number = number
        self.name = str(info.name)
        self.kind = Kind(info.kind)
        self.is_pair = info.takes == Takes.TWO
        self.way = WAYS.get(self.kind)
        self.getter = getattr(handle.library, f'optxv_get_{self.way.data}_nr') if self.way else None

    def has_value(self) -> bool:
        """Whether it has a value that is got by its name; the attributes of symbols have one for each symbol."""
        return (self.way is not None or self.kind is Kind.LIST) and not self.name.startswith('.')

    # ---- Getting

    def get(self) -> Any:
        """Its value, or its default. A WrongTypeError for a kind without a value of its own."""
        way = self.way
        if way is None:
            return self._items() if self.kind is Kind.LIST else self._no_value()
        return (self._get(way, 1), self._get(way, 2)) if self.is_pair else self._get(way, 1)

    def _get(self, way: Way, which: int) -> Any:
        address = self.handle.address or self.handle.open()
        place = way.place()
        status = self.getter(address, self.number, which, ctypes.byref(place))
        if status != 0:
            raise self.handle.error(status)
        return way.take(place)

    def _items(self) -> list[str]:
        count = self.handle.call('optxv_list_count', self.number)
        return [str(_list_item(self.handle, self.number, position)) for position in range(1, count + 1)]

    def _no_value(self) -> Any:
        members = _table.option_of(self.handle, self.number).members
        why = f'it hands values on to {", ".join(members)}' if members else 'it acts when it is read'
        raise WrongTypeError(f'option "{self.name}" has no value of its own: {why}', self.name)

    # ---- Setting

    def set(self, value: Any) -> None:
        """Sets it as a whole: where a part is refused, it keeps what it had."""
        if self.way is None:
            self._set_handed(value)
        elif self.is_pair:
            self._set_two(self.way, value)
        else:
            self._set(self.way, 1, value)

    def _set(self, way: Way, which: int, value: Any) -> None:
        try:
            arguments = way.give(value)
        except TypeError:
            raise self._wrong(way.takes, value) from None
        except (ValueError, OverflowError):
            raise self._refused(value) from None
        self._check(self.handle.call(f'optxv_set_{way.data}_nr', self.number, which, *arguments), value)

    def _set_two(self, way: Way, value: Any) -> None:
        if not isinstance(value, (tuple, list)) or len(value) != 2:
            raise self._wrong(f'a tuple of two, each {way.takes} or None for one that stays as it is', value)
        with whole(self.handle):
            for which, part in enumerate(value, 1):
                if part is not None:
                    self._set(way, which, part)

    def _set_handed(self, value: Any) -> None:
        if self.kind is Kind.LIST:
            self._set_items(value)
        elif self.kind is Kind.IMMEDIATE:
            self._no_value()
        else:
            self.parse(_parameter_text(value), 1)

    def _set_items(self, value: Any) -> None:
        items = None if isinstance(value, (str, bytes)) else list(value) if hasattr(value, '__iter__') else None
        if items is None or not all(isinstance(item, str) for item in items):
            raise self._wrong('a list of str', value)
        with whole(self.handle):
            self.handle.must('optxv_reset', self.number)
            for item in items:
                self.parse(item, 1)

    def parse(self, text: str, which: int) -> None:
        """Sets it from a text, as a value in parameter text would. A list gets one more item."""
        if not isinstance(text, str):
            raise self._wrong('a str', text)
        value = encoded(text)
        self._check(self.handle.call('optxv_parse_value', self.number, which, value, len(value)), text)

    # ---- What is wrong

    def _check(self, status: int, value: Any) -> None:
        if status in (REFUSED, TOO_LONG):
            raise self._refused(value, status)
        if status != 0:
            raise self.handle.error(status)

    def _wrong(self, takes: str, value: Any) -> WrongTypeError:
        return WrongTypeError(f'option "{self.name}" takes {takes}, not {shortened(value)}', self.name)

    def _refused(self, value: Any, status: int = REFUSED) -> RefusedValueError:
        nearest = self._nearest(value) if self.kind is Kind.ENUMERATED_TEXT else ()
        meant = f'; did you mean {" or ".join(nearest)}?' if nearest else ''
        allowed = 'a text of at most 254 bytes' if status == TOO_LONG else self.allowed()
        return RefusedValueError(f'option "{self.name}" does not take {shortened(value)}: allowed is {allowed}{meant}',
                                 self.name, nearest)

    def _nearest(self, value: Any) -> tuple[str, ...]:
        """Allowed values near to one that was refused just now: the refusal and its detail end the queue."""
        last = self.handle.call('optxv_message_count')
        for number in range(max(1, last - 1), last + 1):
            message = _table.message_of(self.handle, number)
            if message.nearest and message.option == self.name and message.seen == value:
                return message.nearest
        return ()

    def allowed(self) -> str:
        """What the option allows, in words."""
        info = _table.info_of(self.handle, self.number)
        if self.kind in _table.NUMBERS:
            low, high = _table.bounds_of(info)
            return f'{low:.15g} to {high:.15g}' if self.kind is Kind.REAL else f'{low} to {high}'
        choices = [str(choice.value) for choice in _table.choices_of(self.handle, self.number, info)]
        return ', '.join(choices) or ('True or False' if self.kind is Kind.BOOLEAN else 'what parameter text allows')


def _list_item(handle: Handle, number: int, position: int) -> Text:
    item = Text()
    handle.call('optxv_list_item', number, position, ctypes.byref(item))
    return item


def _parameter_text(value: Any) -> str:
    """A value for members of whatever kind, as parameter text has it; several for the members of a multi-list."""
    if isinstance(value, (tuple, list)):
        return ':'.join(map(_parameter_text, value))
    return str(int(value)) if isinstance(value, bool) else str(value)
