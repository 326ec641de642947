// Generated code in Python: a dataclass over the package optxv.

#include "code/languages.h"

namespace command {
namespace {

constexpr std::string_view skeleton = R"code(# The options of $(source), made by: $(made)
# Change the definition and make this anew: what is changed here is lost.
"""The options of a solver as a dataclass: Options.from_options(o) takes them from an optxv.Options, apply(o) sets them there."""
from __future__ import annotations

import dataclasses
import enum
import typing

import optxv

# The table of options that the numbers are of; see optxv.Options.table_mark.
TABLE_MARK = 0x$(mark)


class Number(enum.IntEnum):
    """The numbers of the options."""

%each options
    $(ID) = $(number)
%end


class Reference(enum.IntEnum):
    """The numbers that the definition gives them."""

%each references
    $(ID) = $(reference)
%end
%each enumerations


$(comment)
%if choice
class $(Id)(str, enum.Enum):
    """The items of $(id)."""

%end
%if listed
class $(Id)(enum.IntEnum):
    """The items of $(id)."""

%end
%each items
    $(comment)
    $(constant) = $(literal)
%end
%end

_Item = typing.TypeVar('_Item', bound=enum.Enum)


def _check(options: optxv.Options) -> None:
    if options.table_mark != TABLE_MARK:
        raise optxv.DefinitionError('these options are of another definition than ' + $(file))


def _item(kind: type[_Item], value: object) -> _Item:
    for item in kind:
        if item.value == value or str(item.value).lower() == str(value).lower():
            return item
    raise optxv.RefusedValueError(f'{value!r} is no item of {kind.__name__}', kind.__name__)


def _plain(value: typing.Any) -> typing.Any:
    if isinstance(value, tuple):
        return tuple(map(_plain, value))
    return value.value if isinstance(value, enum.Enum) else value


def _same(value: typing.Any, now: typing.Any) -> bool:
    if isinstance(value, tuple):
        return all(map(_same, value, now))
    if isinstance(value, enum.Enum):  # the case of a default may be another one than that of the item
        return str(value.value).lower() == str(now).lower()
    return bool(value == now)


@dataclasses.dataclass
class Options:
    """The values of the options, with the defaults of the definition."""

%each fields
    $(comment)
    $(declaration) = $(default)
%end

    @classmethod
    def from_options(cls, options: optxv.Options) -> Options:
        """The values of an optxv.Options.

        Errors: optxv.DefinitionError for one of another definition; optxv.RefusedValueError where an option has a
        value that is none of its items, which is so while bounds are off.
        """
        _check(options)
        get = options.get_value
        return cls(
%each fields
%if enumerated
%unless pair
            $(id)=_item($(Id), get($(number))),
%end
%if pair
            $(id)=(_item($(Id), get($(number))[0]), _item($(Id), get($(number))[1])),
%end
%end
%unless enumerated
            $(id)=get($(number)),
%end
%end
        )

    def apply(self, options: optxv.Options) -> None:
        """Sets the options whose values differ from those of an optxv.Options.

        Errors: optxv.DefinitionError; the first optxv.RefusedValueError, once all the others are set.
        """
        _check(options)
        values: list[tuple[int, typing.Any]] = [
%each fields
            ($(number), self.$(id)),
%end
        ]
        refused = None
        for number, value in values:
            try:
                if not _same(value, options.get_value(number)):
                    options.set_value(number, _plain(value))
            except optxv.RefusedValueError as error:
                refused = refused or error
        if refused is not None:
            raise refused
%if embedded


def read_definition() -> optxv.Options:
    """The options of the definition that this was made from. Its text is here, so that no file is needed."""
    return optxv.Options.from_text(_DEFINITION, $(file))


_DEFINITION = (
%each lines
    $(literal)
%end
    b''
)
%end
)code";

}  // namespace

const language pythonlanguage = {
    .name = "python",
    .rules = {.keywords =
                  " false none true and as assert async await break class continue def del elif "
                  "else except finally for from global if import in is lambda nonlocal not or pass "
                  "raise return try while with yield match case type ",
              .cased = false},
    .ownwords =
        "options number reference enum dataclasses typing optxv list tuple int float str bool "
        "object classmethod from_options apply int_enum",
    .scoped = true,
    .lowercase = true,
    .comment = {"# ", "# ", "", ""},
    .textliteral = pythontext,
    .rawliteral = pythonbytes,
    .realliteral = plainreal,
    .integerliteral = plaininteger,
    .booleans = {"False", "True"},
    .declarations = {{{"$(id): int", "$(id): tuple[int, int]"},
                      {"$(id): float", "$(id): tuple[float, float]"},
                      {"$(id): str", "$(id): tuple[str, str]"},
                      {"$(id): bool", "$(id): tuple[bool, bool]"},
                      {"$(id): $(Id)", "$(id): tuple[$(Id), $(Id)]"},
                      {"$(id): $(Id)", "$(id): tuple[$(Id), $(Id)]"},
                      {"$(id): list[str]", ""}}},
    .constant = "$(ITEM)",
    .itemvalue = "$(Id).$(constant)",
    .pairvalue = "($(first), $(second))",
    .listvalue = "dataclasses.field(default_factory=list)",
    .parts = {"[0]", "[1]"},
    .skeleton = skeleton};

}  // namespace command
