"""The bridge to argparse: an argument for each option."""
from __future__ import annotations

import argparse
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, Callable, Optional, Union

from .errors import OptxvError
from .facts import Kind, Option, Takes

if TYPE_CHECKING:
    from .options import Options

WORDS = {Kind.INTEGER: 'INTEGER', Kind.REAL: 'REAL', Kind.TEXT: 'TEXT', Kind.LIST: 'TEXT', Kind.MACRO: 'VALUE',
         Kind.MULTILIST: 'VALUE:VALUE'}
TYPES: dict[Kind, Callable[[str], Any]] = {Kind.INTEGER: int, Kind.REAL: float, Kind.ENUMERATED_INTEGER: int}
HANDED = (Kind.LIST, Kind.MACRO, Kind.MULTILIST)


def add_arguments(options: Options, parser: argparse.ArgumentParser, prefix: str) -> None:
    """Adds the options to the parser, in an argument group for each of their groups."""
    titles = {group.number: group.name for group in options.groups}
    sections: dict[int, argparse._ArgumentGroup] = {}
    for option in options.options:
        if _is_offered(option):
            if option.group not in sections:
                sections[option.group] = parser.add_argument_group(titles.get(option.group, 'options of the definition'))
            _add(sections[option.group], options, option, prefix)


def _is_offered(option: Option) -> bool:
    return not (option.obsolete or option.runtime or option.is_attribute or option.kind is Kind.IMMEDIATE)


def _spellings(option: Option, prefix: str) -> list[str]:
    """The name with hyphens, as command lines have it, and as the definition writes it."""
    names = (option.name.replace('_', '-'), option.name)
    return list(dict.fromkeys(f'--{prefix}{name}' for name in names))


def _add(section: argparse._ArgumentGroup, options: Options, option: Option, prefix: str) -> None:
    spellings = _spellings(option, prefix)
    has_off = option.kind is Kind.BOOLEAN and option.takes is not Takes.NONE
    off = [f'--no-{spelling[2:]}' for spelling in spellings] if has_off else []
    section.add_argument(
        *spellings, *off, action=_Setter, dest=prefix.replace('-', '_') + option.name, default=argparse.SUPPRESS,
        help=_help(option), options=options, option=option, off=off, **_form(option))


def _form(option: Option) -> dict[str, Any]:
    """How many words the argument takes, their type and how the usage shows them."""
    if option.kind is Kind.BOOLEAN:
        return {'nargs': 0}
    nargs = {Takes.TWO: 2, Takes.OPTIONAL: '?', Takes.NONE: 0}.get(option.takes)
    form: dict[str, Any] = {'nargs': nargs, 'type': TYPES.get(option.kind, str)}
    if option.choices:
        shown = '{' + ','.join(str(choice.value) for choice in option.choices) + '}'
        form['metavar'] = (shown, shown) if nargs == 2 else shown
    elif nargs != 0:
        form['metavar'] = (WORDS[option.kind],) * 2 if nargs == 2 else WORDS[option.kind]
    return form


def _help(option: Option) -> str:
    """The option's help and its default, as argparse formats it; deprecated ones are taken and not shown."""
    if option.deprecated or option.helpcontext < 0:
        return argparse.SUPPRESS
    default = '' if option.default in (None, [], '') else f' (default: {_shown(option.default)})'
    return (option.help + default).replace('%', '%%')


def _shown(value: object) -> str:
    if isinstance(value, tuple):
        return ' '.join(map(_shown, value))
    return {True: 'yes', False: 'no'}[value] if isinstance(value, bool) else \
        f'{value:.15g}' if isinstance(value, float) else str(value)


class _Setter(argparse.Action):
    """Sets the option as soon as the parser has its argument, and notes the value in the parser's result."""

    def __init__(self, options: Options, option: Option, off: list[str], **rest: Any) -> None:
        super().__init__(**rest)
        self._options = options
        self._option = option
        self._off = off  # the spellings that mean False

    def __call__(self, parser: argparse.ArgumentParser, namespace: argparse.Namespace,
                 values: Union[str, Sequence[Any], None], option_string: Optional[str] = None) -> None:
        try:
            setattr(namespace, self.dest, self._set(values, option_string or ''))
        except OptxvError as error:
            raise argparse.ArgumentError(self, str(error)) from None

    def _set(self, values: Any, spelling: str) -> Any:
        number = self._option.number
        if self._option.kind in HANDED:
            self._options.parse_value(number, values)
            return self._options.get_value(number) if self._option.has_value else values
        self._options.set_value(number, self._value(values, spelling))
        return self._options.get_value(number)

    def _value(self, values: Any, spelling: str) -> Any:
        if self._option.kind is Kind.BOOLEAN:
            return spelling not in self._off
        if values is None or (self._option.takes is Takes.NONE and not values):
            return self._option.default
        return tuple(values) if self._option.takes is Takes.TWO else values
